#pragma once

#include <mutex>
#include <vector>

#include "RecordedClock.h"
#include "SMCPort.h"
#include "Track.h"

namespace quorvex {

/// The recorded SMC. It answers the key-info and the read command; a key that the frame does not
/// have, a connection that is not open and any other command are kernel errors. Any thread.
class RecordedSMCPort final : public SMCPort {
 public:
  static constexpr int noDevice = static_cast<int>(0xE00002C0);     ///< kIOReturnNoDevice
  static constexpr int badArgument = static_cast<int>(0xE00002C2);  ///< kIOReturnBadArgument
  static constexpr int unsupported = static_cast<int>(0xE00002C7);  ///< kIOReturnUnsupported
  static constexpr int notFound = static_cast<int>(0xE00002F0);     ///< kIOReturnNotFound

  RecordedSMCPort(const MachineFile& file, RecordedClock& clock)
      : keys_(&file.smc), clock_(&clock) {}

  [[nodiscard]] std::optional<Connection> open() override;
  void close(Connection connection) override;
  [[nodiscard]] int call(Connection connection, const SMCKeyRecord& input,
                         SMCKeyRecord& output) override;

 private:
  [[nodiscard]] bool isOpen(Connection connection);

  const Track<RecordedSMCKeys>* keys_;
  RecordedClock* clock_;
  std::mutex mutex_;  ///< guards the connections
  std::vector<Connection> connections_;
  Connection lastConnection_ = 0;
};

}  // namespace quorvex
