#include "RecordEncoder.h"

namespace quorvex::detail {

void writeText(JSONWriter& writer, std::string_view text) {
  if (text::isValidUTF8(text)) {
    writer.value(text);
  } else {
    writer.value(text::repairedUTF8(text));
  }
}

}  // namespace quorvex::detail
