#include <cstdint>
#include <cstdlib>
#include <string>

#include "HelperCommands.h"
#include "HelperReplies.h"

namespace {

void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

}  // namespace

/// Any bytes in place of powermetrics' output: the tool either fails in words or writes a reply
/// that its client reads and that fits into a pipe.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvex;  // NOLINT(google-build-using-namespace): this function only
  const std::string output{reinterpret_cast<const char*>(data), size};
  const HelperAnswer answer = answerTelemetry(output, Date{std::chrono::seconds{1'800'000'000}});
  check((answer.exitStatus == 0) == answer.error.empty());
  check((answer.exitStatus == 0) == !answer.output.empty());
  if (answer.exitStatus == 0) {
    check(answer.output.size() <= longestTelemetryReply);
    const auto snapshot = decodeProTelemetrySnapshot(answer.output);
    check(snapshot.hasValue() && snapshot->isAvailable);
  }
  return 0;
}
