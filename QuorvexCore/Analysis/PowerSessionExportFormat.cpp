#include "PowerSessionExportFormat.h"

#include "RawEnum.h"
#include "RecordDecoding.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(PowerSessionMetadataDTO&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionExportEnvelope&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionSampleLine&, std::string_view, std::size_t);

PowerSessionMetadataDTO::PowerSessionMetadataDTO(const PowerSession& session)
    : id(session.id()),
      title(session.title()),
      startedAt(session.startedAt()),
      endedAt(session.endedAt()),
      status(rawValue(session.status())),
      source(rawValue(session.source())),
      sampleInterval(session.sampleInterval()) {}

}  // namespace quorvex
