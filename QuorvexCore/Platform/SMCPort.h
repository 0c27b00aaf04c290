#pragma once

#include <cstdint>
#include <optional>

#include "SMCKeyRecord.h"

namespace quorvex {

/// The system management controller's user client (IOKit service "AppleSMC"). Calls block.
class SMCPort {
 public:
  /// An open connection's handle.
  using Connection = std::uint32_t;

  SMCPort() = default;
  SMCPort(const SMCPort&) = delete;
  SMCPort& operator=(const SMCPort&) = delete;
  virtual ~SMCPort() = default;

  /// Opens a connection; none when there is no such service or it refuses.
  [[nodiscard]] virtual std::optional<Connection> open() = 0;
  virtual void close(Connection connection) = 0;

  /// One call of selector 2: a record in, a record out. 0 on success, else the kernel's error.
  [[nodiscard]] virtual int call(Connection connection, const SMCKeyRecord& input,
                                 SMCKeyRecord& output) = 0;
};

}  // namespace quorvex
