#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "SMCPort.h"

namespace quorvex {

/// The fans of /sys/class/hwmon as the keys of a system management controller: FNum ("ui8 ", the
/// number of fan inputs, at most 255) and for each fan FiAc, FiMn and FiMx ("flt ", revolutions per
/// minute: speed, minimum, maximum). Fans are counted from 0, device after device and input after
/// input in their numbers' order, as they were when the connection was opened. A file that is
/// missing, cannot be read or makes no sense has no key. Any thread.
///
/// A key has four characters, so from fan 10 on only "FiiA", the speed, is left.
class LinuxSMCPort final : public SMCPort {
 public:
  /// What call() gives for anything that it cannot answer.
  static constexpr int failure = 1;

  explicit LinuxSMCPort(const std::string& sysRoot);

  /// None when no fan is found.
  [[nodiscard]] std::optional<Connection> open() override;
  void close(Connection connection) override;
  [[nodiscard]] int call(Connection connection, const SMCKeyRecord& input,
                         SMCKeyRecord& output) override;

 private:
  /// What one connection knows: the number of fans, and the file behind each key.
  struct Fans {
    std::uint8_t count = 0;
    std::map<std::uint32_t, std::string> fileOfKey;
  };

  std::string folder_;
  std::mutex mutex_;
  Connection lastConnection_ = 0;
  std::map<Connection, std::shared_ptr<const Fans>> connections_;
};

}  // namespace quorvex
