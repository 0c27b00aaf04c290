#pragma once

#include <string>

#include "RecordFields.h"

namespace quorvex {

/// A process that stood out in a session.
struct PowerSessionContributor {
  std::string name;
  std::string source;        ///< "powermetrics" or "proc_pid_rusage"
  double score = 0.0;        ///< a sum over samples; it has no unit and only ranks
  std::string confidence;    ///< "derived" or "estimated"
  bool isAggregate = false;  ///< the name stands for a group of processes

  bool operator==(const PowerSessionContributor&) const = default;
};

template <>
struct RecordFields<PowerSessionContributor> {
  static constexpr std::tuple values{
      RecordField{"confidence", &PowerSessionContributor::confidence},
      RecordField{"isAggregate", &PowerSessionContributor::isAggregate},
      RecordField{"name", &PowerSessionContributor::name},
      RecordField{"score", &PowerSessionContributor::score},
      RecordField{"source", &PowerSessionContributor::source},
  };
};

}  // namespace quorvex
