#include "RecordedInterfaceTable.h"

#include <algorithm>
#include <concepts>

#include "InterfaceMessage.h"

namespace quorvex {

namespace {

template <std::unsigned_integral Integer>
void storeLittleEndian(std::byte* place, Integer value) {
  for (std::size_t i = 0; i < sizeof(Integer); ++i) {
    place[i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
  }
}

}  // namespace

std::optional<std::vector<std::byte>> RecordedInterfaceTable::readInterfaceList() {
  namespace message = interface_message;
  const auto position = clock_->positionInPass();
  if (const auto* buffer = buffer_->value(position)) {
    return *buffer;
  }
  const auto* entry = interfaces_->entry(position);
  if (entry == nullptr || !entry->value) {
    return std::nullopt;
  }
  const auto sinceFrame = position - entry->at;
  std::vector<std::byte> list(entry->value->size() * message::size);
  std::byte* place = list.data();
  for (const auto& interface : *entry->value) {
    storeLittleEndian(place + message::lengthOffset, static_cast<std::uint16_t>(message::size));
    storeLittleEndian(place + message::typeOffset, interface.messageType);
    storeLittleEndian(place + message::indexOffset, interface.index);
    storeLittleEndian(place + message::bytesInOffset, interface.bytesIn.value(sinceFrame));
    storeLittleEndian(place + message::bytesOutOffset, interface.bytesOut.value(sinceFrame));
    place += message::size;
  }
  return list;
}

std::optional<std::string> RecordedInterfaceTable::interfaceName(std::uint16_t index) {
  const auto* interfaces = interfaces_->value(clock_->positionInPass());
  if (interfaces == nullptr) {
    return std::nullopt;
  }
  const auto found = std::find_if(interfaces->begin(), interfaces->end(),
                                  [&](const auto& candidate) { return candidate.index == index; });
  return found != interfaces->end() ? found->name : std::nullopt;
}

}  // namespace quorvex
