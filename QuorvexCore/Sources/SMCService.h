#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "FanInfo.h"
#include "SMCPort.h"
#include "TemperatureSensor.h"

namespace quorvex {

/// Reads fan speeds and temperature keys from the system management controller, without privileges.
/// The connection lives between reads and is renewed once when a read comes back with nothing.
/// Reads block on kernel calls, two a key; overlapping reads run one after the other.
class SMCService {
 public:
  explicit SMCService(SMCPort& port) : port_(&port) {}
  SMCService(const SMCService&) = delete;
  SMCService& operator=(const SMCService&) = delete;
  ~SMCService();

  /// The fans in index order; empty when nothing can be read. A speed that cannot be read is 0.
  [[nodiscard]] std::vector<FanInfo> readFans();

  /// The known sensors that answer with a valid temperature, ascending by name.
  [[nodiscard]] std::vector<TemperatureSensor> readTemperatures();

 private:
  using Connection = SMCPort::Connection;

  [[nodiscard]] bool ensureConnected();
  [[nodiscard]] bool reconnect();
  void disconnect();
  [[nodiscard]] std::optional<std::int64_t> readRPM(Connection connection,
                                                    std::string_view key) const;
  [[nodiscard]] std::optional<std::int64_t> readFanCount(Connection connection) const;
  [[nodiscard]] std::vector<FanInfo> buildFans(Connection connection, std::int64_t fanCount) const;

  SMCPort* port_;
  std::mutex mutex_;
  std::optional<Connection> connection_;
};

}  // namespace quorvex
