#include "PowerSessionSummary.h"

#include "RecordDecoding.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(PowerSessionSummary&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionPowerSegment&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionContributor&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionNetworkAppUsage&, std::string_view,
                                        std::size_t);

const PowerSessionSummary& PowerSessionSummary::empty() {
  static const PowerSessionSummary summary;
  return summary;
}

}  // namespace quorvex
