#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "FatalError.h"
#include "SMCDecoding.h"
#include "Text.h"

namespace {

/// Whether a speed of this value is the fatal error that the decoder promises: a float that no
/// integer can hold.
bool isFatalSpeed(const quorvex::SMCValue& value) {
  float number = 0.0F;
  if (quorvex::smc::trimmedDataType(value.dataType) != "flt" ||
      value.bytes.size() < sizeof number) {
    return false;
  }
  std::memcpy(&number, value.bytes.data(), sizeof number);
  return !(std::abs(number) < 9.0e18F);
}

}  // namespace

/// Takes the first four bytes as a type, the rest as a value of at most 32 bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  quorvex::SMCValue value;
  value.dataType = quorvex::smc::fourCharCode(text);
  if (size > 4) {
    value.bytes.assign(data + 4, data + std::min<std::size_t>(size, 4 + 32));
  }
  if (!quorvex::text::isValidUTF8(quorvex::smc::dataTypeString(value.dataType))) {
    quorvex::fatalError("a type is no text");
  }
  const auto temperature = quorvex::smc::decodeTemperature(value);
  if (temperature && !(*temperature > 0.0 && *temperature < 150.0)) {
    quorvex::fatalError("a temperature is out of range");
  }
  if (!isFatalSpeed(value)) {
    static_cast<void>(quorvex::smc::decodeRPM(value));
  }
  return 0;
}
