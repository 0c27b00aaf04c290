#include <cstdint>
#include <string_view>

#include "FatalError.h"
#include "NettopParser.h"

/// Parses any bytes as nettop's output and as one identity field.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  for (const auto& process : quorvex::parseNettopProcessCounters(text)) {
    if (process.name.empty() || process.name.find(',') != std::string::npos) {
      quorvex::fatalError("a process has a name that no field can hold");
    }
    if (process.attributionSource != quorvex::NetworkAttributionSource::nettop) {
      quorvex::fatalError("a process does not tell where it comes from");
    }
    const auto again =
        quorvex::parseNettopIdentity(process.name + "." + std::to_string(process.id));
    if (!again || again->name != process.name || again->pid != process.id) {
      quorvex::fatalError("an identity does not survive its own text");
    }
  }
  static_cast<void>(quorvex::parseNettopIdentity(text));
  return 0;
}
