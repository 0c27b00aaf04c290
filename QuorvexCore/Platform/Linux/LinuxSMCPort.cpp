#include "LinuxSMCPort.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "SystemTree.h"

namespace quorvex {

namespace {

constexpr std::size_t keyLength = 4;

/// The first four characters as a number that reads as the text in big-endian order.
constexpr std::uint32_t code(std::string_view text) {
  std::uint32_t value = 0;
  for (std::size_t index = 0; index < keyLength; ++index) {
    value = value << 8U | static_cast<std::uint8_t>(text[index]);
  }
  return value;
}

struct Value {
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  std::array<std::uint8_t, 32> bytes{};
};

Value byteValue(std::uint8_t byte) {
  return Value{.type = code("ui8 "), .size = 1, .bytes = {byte}};
}

/// A speed as the controller's 32-bit float. What no fan can turn is a broken figure.
std::optional<Value> speedValue(std::optional<std::int64_t> revolutionsPerMinute) {
  if (!revolutionsPerMinute || *revolutionsPerMinute < 0 ||
      *revolutionsPerMinute > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  const auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(float)>>(
      static_cast<float>(*revolutionsPerMinute));
  Value value{.type = code("flt "), .size = bytes.size(), .bytes = {}};
  std::ranges::copy(bytes, value.bytes.begin());
  return value;
}

/// The paths of all fans up to and with their numbers: ".../hwmon2/fan1".
std::vector<std::string> findFans(const std::string& folder) {
  constexpr std::string_view suffix = "_input";
  std::vector<std::string> fans;
  for (const std::string& device : system_tree::folderNames(folder)) {
    const std::string path = fmt::format("{}/{}", folder, device);
    for (const std::string& file : system_tree::folderNames(path)) {
      if (file.starts_with("fan") && file.ends_with(suffix)) {
        fans.push_back(fmt::format("{}/{}", path, file.substr(0, file.size() - suffix.size())));
      }
    }
  }
  return fans;
}

}  // namespace

LinuxSMCPort::LinuxSMCPort(const std::string& sysRoot) : folder_(sysRoot + "/class/hwmon") {}

std::optional<SMCPort::Connection> LinuxSMCPort::open() {
  const std::vector<std::string> found = findFans(folder_);
  if (found.empty()) {
    return std::nullopt;
  }
  auto fans = std::make_shared<Fans>();
  fans->count = static_cast<std::uint8_t>(std::min<std::size_t>(found.size(), 255));
  for (std::size_t index = 0; index < fans->count; ++index) {
    fans->fileOfKey.emplace(code(fmt::format("F{}Ac", index)), found[index] + "_input");
    // Beyond one digit the minimum and the maximum would share a key.
    if (index < 10) {
      fans->fileOfKey.emplace(code(fmt::format("F{}Mn", index)), found[index] + "_min");
      fans->fileOfKey.emplace(code(fmt::format("F{}Mx", index)), found[index] + "_max");
    }
  }
  const std::scoped_lock lock{mutex_};
  connections_.emplace(++lastConnection_, std::move(fans));
  return lastConnection_;
}

void LinuxSMCPort::close(Connection connection) {
  const std::scoped_lock lock{mutex_};
  connections_.erase(connection);
}

int LinuxSMCPort::call(Connection connection, const SMCKeyRecord& input, SMCKeyRecord& output) {
  std::shared_ptr<const Fans> fans;
  {
    const std::scoped_lock lock{mutex_};
    const auto found = connections_.find(connection);
    if (found == connections_.end()) {
      return failure;
    }
    fans = found->second;
  }
  std::optional<Value> value;
  if (input.key == code("FNum")) {
    value = byteValue(fans->count);
  } else if (const auto file = fans->fileOfKey.find(input.key); file != fans->fileOfKey.end()) {
    value = speedValue(system_tree::readInteger(file->second));
  }
  if (!value) {
    return failure;
  }
  if (input.command == SMCKeyRecord::readKeyInfoCommand) {
    output.dataSize = value->size;
    output.dataType = value->type;
    return 0;
  }
  if (input.command == SMCKeyRecord::readBytesCommand && input.dataSize == value->size) {
    output.bytes = value->bytes;
    return 0;
  }
  return failure;
}

}  // namespace quorvex
