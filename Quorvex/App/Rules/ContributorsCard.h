#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Appearance.h"
#include "PowerSessionContributor.h"
#include "PowerSessionNetworkAppUsage.h"
#include "PowerSessionProcessFamilySummary.h"

namespace quorvex {

/// The processes that stood out in a session.
struct ContributorsCard {
  std::string heading;
  std::vector<LabelledValue> rows;           ///< name and score
  std::optional<std::string> aggregateLine;  ///< the groups of processes, by name
  std::string emptyText;                     ///< when there are neither; else empty

  bool operator==(const ContributorsCard&) const = default;
};

[[nodiscard]] ContributorsCard contributorsCard(std::span<const PowerSessionContributor> actionable,
                                                std::span<const PowerSessionContributor> aggregate);

/// The same by coarse families of names.
struct ProcessFamiliesCard {
  std::string heading;
  std::vector<LabelledValue> rows;  ///< family and score
  std::string caption;

  bool operator==(const ProcessFamiliesCard&) const = default;
};

/// Absent without families.
[[nodiscard]] std::optional<ProcessFamiliesCard> processFamiliesCard(
    std::span<const PowerSessionProcessFamilySummary> families);

/// The apps that stood out on the network.
struct NetworkAppsCard {
  struct Row {
    std::string name;
    std::string inText;    ///< bytes received
    std::string outText;   ///< bytes sent
    std::string peakText;  ///< both peak rates
    std::string accessibilityText;

    bool operator==(const Row&) const = default;
  };

  std::string heading;
  std::string inSymbol;
  std::string outSymbol;
  std::vector<Row> rows;

  bool operator==(const NetworkAppsCard&) const = default;
};

/// Absent without apps.
[[nodiscard]] std::optional<NetworkAppsCard> networkAppsCard(
    std::span<const PowerSessionNetworkAppUsage> apps);

}  // namespace quorvex
