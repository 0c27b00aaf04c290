// The decoders of the records of this folder that are read from JSON.

#include "ProTelemetrySnapshot.h"
#include "RecordDecoding.h"
#include "TemperatureSensor.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(ProTelemetrySnapshot&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(std::vector<TemperatureSensor>&, std::string_view,
                                        std::size_t);

}  // namespace quorvex
