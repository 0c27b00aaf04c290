#include "RecordedHelperFile.h"

namespace quorvex {

const RecordedHelper* RecordedHelperFile::current() {
  const auto now = clock_->position();
  const std::lock_guard lock{mutex_};
  if (installed_ != nullptr && hasFrameSince(installedAt_, now)) {
    installed_ = nullptr;
  }
  return installed_ != nullptr ? installed_ : helper_->value(now.inPass);
}

void RecordedHelperFile::install(const RecordedHelper& helper) {
  const auto now = clock_->monotonic();
  const std::lock_guard lock{mutex_};
  installed_ = &helper;
  installedAt_ = now;
}

bool RecordedHelperFile::hasFrameSince(std::chrono::nanoseconds moment,
                                       RecordedClock::Position now) {
  if (const auto* entry = helper_->entry(now.inPass)) {
    return now.passStart + entry->at > moment;
  }
  // Nothing in this pass yet: the last frame with a helper file was in the pass before.
  const auto pass = clock_->passLength();
  const auto* entry = now.passStart > std::chrono::nanoseconds{0}
                          ? helper_->entry(pass - std::chrono::nanoseconds{1})
                          : nullptr;
  return entry != nullptr && now.passStart - pass + entry->at > moment;
}

const RecordedHelper* RecordedHelperFile::at(const std::string& path) {
  return path == helperPath ? current() : nullptr;
}

bool RecordedHelperFile::fileExists(const std::string& path) {
  return at(path) != nullptr;
}

std::optional<FileAttributeRecord> RecordedHelperFile::attributes(const std::string& path) {
  const RecordedHelper* helper = at(path);
  if (helper == nullptr) {
    return std::nullopt;
  }
  return FileAttributeRecord{
      .permissions = helper->permissions, .ownerID = helper->ownerID, .groupID = helper->groupID};
}

bool RecordedHelperFile::isExecutable(const std::string& path) {
  const RecordedHelper* helper = at(path);
  return helper != nullptr && helper->isExecutable;
}

}  // namespace quorvex
