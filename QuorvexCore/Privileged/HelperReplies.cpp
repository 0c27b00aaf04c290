#include "HelperReplies.h"

#include "RecordDecoding.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(HelperStatus&, std::string_view, std::size_t);

namespace {

template <typename Value>
Result<Value, DecodingError> decodeReply(std::string_view json) {
  if (json.size() > maximumReplySize) {
    return DecodingError{"$: longer than " + std::to_string(maximumReplySize) + " bytes"};
  }
  return RecordDecoder{}.decode<Value>(json);
}

}  // namespace

Result<HelperStatus, DecodingError> decodeHelperStatus(std::string_view json) {
  return decodeReply<HelperStatus>(json);
}

Result<ProTelemetrySnapshot, DecodingError> decodeProTelemetrySnapshot(std::string_view json) {
  return decodeReply<ProTelemetrySnapshot>(json);
}

std::optional<std::vector<TemperatureSensor>> decodeTemperatureReply(std::string_view json) {
  auto reply = decodeReply<std::vector<TemperatureSensor>>(json);
  return reply ? std::optional{*std::move(reply)} : std::nullopt;
}

}  // namespace quorvex
