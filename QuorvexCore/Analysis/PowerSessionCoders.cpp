#include "PowerSessionCoders.h"

#include "ProcessActivityDTO.h"
#include "RecordDecoding.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(BatteryInfoDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerMetricsDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(ThermalInfoDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(FanInfoDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(NetworkSnapshotDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(SystemPowerStateDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(std::vector<ProcessActivityDTO>&, std::string_view,
                                        std::size_t);

namespace PowerSessionCoders {

RecordEncoder encoder() {
  return RecordEncoder{JSONWriter::Style::compact};
}

RecordEncoder prettyEncoder() {
  return RecordEncoder{JSONWriter::Style::pretty};
}

RecordDecoder decoder() {
  return {};
}

}  // namespace PowerSessionCoders

}  // namespace quorvex
