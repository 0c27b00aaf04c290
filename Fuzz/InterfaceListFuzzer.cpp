#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "FatalError.h"
#include "InterfaceMessage.h"
#include "NetworkCounterAccumulator.h"
#include "NetworkService.h"

namespace {

/// Names every index but each seventh; index 1 is the loopback interface, as on a real machine.
std::optional<std::string> nameOf(std::uint16_t index) {
  if (index % 7 == 0) {
    return std::nullopt;
  }
  return index == 1 ? "lo0" : "en" + std::to_string(index);
}

}  // namespace

/// Walks any bytes as the kernel's interface list.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span bytes{data, size};
  const auto interfaces = quorvex::NetworkService::parseInterfaceList(std::as_bytes(bytes), nameOf);
  if (size < quorvex::interface_message::size && !interfaces.empty()) {
    quorvex::fatalError("an interface was read from less than one message");
  }
  for (const auto& interface : interfaces) {
    if (interface.isLoopback() || interface.id % 7 == 0) {
      quorvex::fatalError("an interface that must be left out was listed");
    }
    if (interface.bytesInPerSec != 0.0 || interface.bytesOutPerSec != 0.0) {
      quorvex::fatalError("a rate was made up from one reading");
    }
  }
  // The same reading twice moves nothing, whatever its counters are.
  const auto rates = quorvex::NetworkService::throughput(interfaces, interfaces, 2.0);
  if (rates.size() != interfaces.size()) {
    quorvex::fatalError("rates lost an interface");
  }
  return 0;
}
