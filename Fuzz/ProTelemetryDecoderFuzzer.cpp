#include <cstdint>
#include <string_view>

#include "FatalError.h"
#include "PowerSessionCoders.h"
#include "ProTelemetrySnapshot.h"

/// Reads any bytes as a stored privileged sample, and what is read once more from its own text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using Record = quorvex::ProTelemetrySnapshot;
  const std::string_view json{reinterpret_cast<const char*>(data), size};
  auto decoder = quorvex::PowerSessionCoders::decoder();
  const auto record = decoder.decode<Record>(json);
  if (!record) {
    if (!record.error().description.starts_with("$")) {
      quorvex::fatalError("a refusal does not say where");
    }
    return 0;
  }
  // Dates are written in whole seconds, so that it is the second text that must hold.
  const auto written = quorvex::PowerSessionCoders::encoder().encode(*record);
  const auto again = written ? decoder.decode<Record>(*written) : record;
  if (!written || !again || *quorvex::PowerSessionCoders::encoder().encode(*again) != *written) {
    quorvex::fatalError("a record does not survive its own text");
  }
  return 0;
}
