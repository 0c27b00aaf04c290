#include "RecordedSMCPort.h"

#include <algorithm>

namespace quorvex {

std::optional<SMCPort::Connection> RecordedSMCPort::open() {
  if (keys_->value(clock_->positionInPass()) == nullptr) {
    return std::nullopt;
  }
  const std::lock_guard lock{mutex_};
  connections_.push_back(++lastConnection_);
  return lastConnection_;
}

void RecordedSMCPort::close(Connection connection) {
  const std::lock_guard lock{mutex_};
  std::erase(connections_, connection);
}

bool RecordedSMCPort::isOpen(Connection connection) {
  const std::lock_guard lock{mutex_};
  return std::find(connections_.begin(), connections_.end(), connection) != connections_.end();
}

int RecordedSMCPort::call(Connection connection, const SMCKeyRecord& input, SMCKeyRecord& output) {
  output = {};
  if (!isOpen(connection)) {
    return badArgument;
  }
  const RecordedSMCKeys* keys = keys_->value(clock_->positionInPass());
  if (keys == nullptr) {
    return noDevice;
  }
  if (input.command != SMCKeyRecord::readKeyInfoCommand &&
      input.command != SMCKeyRecord::readBytesCommand) {
    return unsupported;
  }
  const auto found =
      std::lower_bound(keys->begin(), keys->end(), input.key,
                       [](const auto& value, std::uint32_t key) { return value.key < key; });
  if (found == keys->end() || found->key != input.key) {
    return notFound;
  }
  output.key = input.key;
  if (input.command == SMCKeyRecord::readKeyInfoCommand) {
    output.dataSize = found->dataSize;
    output.dataType = found->dataType;
  } else {
    output.bytes = found->bytes;
  }
  return 0;
}

}  // namespace quorvex
