#pragma once

#include "SMCPort.h"

namespace quorvex {

/// The user client of the service "AppleSMC". Any thread.
class MacSMCPort final : public SMCPort {
 public:
  [[nodiscard]] std::optional<Connection> open() override;
  void close(Connection connection) override;
  [[nodiscard]] int call(Connection connection, const SMCKeyRecord& input,
                         SMCKeyRecord& output) override;
};

}  // namespace quorvex
