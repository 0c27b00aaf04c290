#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "InterfaceMessage.h"
#include "InterfaceTable.h"

namespace quorvex::testing {

/// One message of the kernel's interface list.
struct FakeInterfaceMessage {
  std::uint16_t index = 0;
  std::uint64_t bytesIn = 0;
  std::uint64_t bytesOut = 0;
  std::uint8_t type = interface_message::interfaceType;
  std::uint16_t length = interface_message::size;  ///< what the message claims and takes
};

/// The messages laid out one behind the other; fields that do not fit into a short one are cut.
inline std::vector<std::byte> interfaceList(std::span<const FakeInterfaceMessage> messages) {
  std::vector<std::byte> buffer;
  for (const FakeInterfaceMessage& message : messages) {
    std::vector<std::byte> bytes(std::size_t{interface_message::size} + message.length);
    const auto put = [&bytes](std::size_t offset, const auto& number) {
      std::memcpy(bytes.data() + offset, &number, sizeof number);
    };
    put(interface_message::lengthOffset, message.length);
    put(interface_message::typeOffset, message.type);
    put(interface_message::indexOffset, message.index);
    put(interface_message::bytesInOffset, message.bytesIn);
    put(interface_message::bytesOutOffset, message.bytesOut);
    buffer.insert(buffer.end(), bytes.begin(), bytes.begin() + message.length);
  }
  return buffer;
}

/// The kernel's interface list as a test sets it; the read fails at first.
/// Set up before reads begin; then one thread.
class FakeInterfaceTable final : public InterfaceTable {
 public:
  std::optional<std::vector<std::byte>> buffer;
  std::map<std::uint16_t, std::string> names;

  void set(std::vector<FakeInterfaceMessage> messages) { buffer = interfaceList(messages); }

  /// The indices that were asked for a name, in order.
  [[nodiscard]] const std::vector<std::uint16_t>& namedIndices() const { return namedIndices_; }
  [[nodiscard]] int listReads() const { return listReads_; }

  std::optional<std::vector<std::byte>> readInterfaceList() override {
    ++listReads_;
    return buffer;
  }
  std::optional<std::string> interfaceName(std::uint16_t index) override {
    namedIndices_.push_back(index);
    const auto found = names.find(index);
    return found != names.end() ? std::optional{found->second} : std::nullopt;
  }

 private:
  std::vector<std::uint16_t> namedIndices_;
  int listReads_ = 0;
};

}  // namespace quorvex::testing
