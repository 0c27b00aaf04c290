#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ReaderParts.h"
#include "RecordReaders.h"

namespace quorvex::record_readers {

namespace {

enum class RunField { output, error, seconds };

/// One run of a tool. `onOther` reads the keys that the run itself does not have; it gives false
/// for a key that nobody knows.
template <typename OnOther>
RecordedRun readRun(StrictJSON& json, std::initializer_list<RunField> fields, OnOther onOther) {
  const auto has = [&](RunField field) {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
  };
  RecordedRun run;
  std::optional<std::int32_t> status;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key == "status") {
      status = readInteger<std::int32_t>(child);
    } else if (key == "output" && has(RunField::output)) {
      run.output = child.string();
    } else if (key == "error" && has(RunField::error)) {
      run.error = child.string();
    } else if (key == "seconds" && has(RunField::seconds)) {
      run.duration = readSeconds(child);
    } else if (!onOther(key, child)) {
      child.fail("unknown key");
    }
  });
  run.status = required(json, "status", status);
  return run;
}

bool knowsNoOther(std::string_view /*key*/, StrictJSON& /*child*/) {
  return false;
}

RecordedRun readReply(StrictJSON& json) {
  return readRun(json, {RunField::output, RunField::error, RunField::seconds}, knowsNoOther);
}

/// Permission bits as people write them: octal digits.
std::uint32_t readMode(StrictJSON& json) {
  constexpr std::string_view problem = "must be a string of 1 to 4 octal digits";
  const std::string digits = json.string();
  if (digits.empty() || digits.size() > 4) {
    json.fail(problem);
  }
  std::uint32_t mode = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '7') {
      json.fail(problem);
    }
    mode = mode * 8 + static_cast<std::uint32_t>(digit - '0');
  }
  return mode;
}

}  // namespace

RecordedRun readNettop(StrictJSON& json) {
  return readRun(json, {RunField::output, RunField::seconds}, knowsNoOther);
}

RecordedHelper readHelper(StrictJSON& json) {
  RecordedHelper helper;
  std::optional<bool> isExecutable;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key == "mode") {
      helper.permissions = orNull(child, readMode);
    } else if (key == "owner") {
      helper.ownerID = orNull(child, readInteger<std::int64_t>);
    } else if (key == "group") {
      helper.groupID = orNull(child, readInteger<std::int64_t>);
    } else if (key == "executable") {
      isExecutable = child.boolean();
    } else if (key == "replies") {
      child.forEachField([&](std::string_view command, StrictJSON& reply) {
        helper.replies.emplace(command, readReply(reply));
      });
    } else {
      child.fail("unknown key");
    }
  });
  helper.isExecutable = required(json, "executable", isExecutable);
  return helper;
}

RecordedScript readScript(StrictJSON& json) {
  RecordedScript script;
  script.run = readRun(json, {RunField::output, RunField::error},
                       [&](std::string_view key, StrictJSON& child) {
                         if (key != "installs") {
                           return false;
                         }
                         script.installs = orNull(child, readHelper);
                         return true;
                       });
  return script;
}

}  // namespace quorvex::record_readers
