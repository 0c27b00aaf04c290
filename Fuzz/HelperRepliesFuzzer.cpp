#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "HelperReplies.h"
#include "RecordEncoder.h"

namespace {

using namespace quorvex;  // NOLINT(google-build-using-namespace): this file only

void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// What was read can be written, and what is written then reads as the same again.
template <typename Decode>
void checkReply(std::string_view json, Decode decode) {
  const auto first = decode(json);
  if (!first) {
    check(first.error().description.starts_with("$"));
    return;
  }
  const RecordEncoder encoder{JSONWriter::Style::compact};
  const auto text = encoder.encode(*first);
  check(text.hasValue());
  const auto second = decode(*text);
  check(second.hasValue());
  const auto again = encoder.encode(*second);
  check(again.hasValue() && *again == *text);
}

}  // namespace

/// Any bytes in place of the helper tool's three replies.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view json{reinterpret_cast<const char*>(data), size};
  checkReply(json, decodeHelperStatus);
  checkReply(json, decodeProTelemetrySnapshot);
  if (const auto sensors = decodeTemperatureReply(json)) {
    const auto text = RecordEncoder{JSONWriter::Style::compact}.encode(*sensors);
    check(text.hasValue() && decodeTemperatureReply(*text) == sensors);
  }
  return 0;
}
