#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FileAttributes.h"

namespace quorvex::testing {

/// One file that exists. The default is what an installed, root-owned set-uid tool has.
struct FakeFile {
  /// The three attributes; none as a whole: the file exists but cannot be examined.
  std::optional<FileAttributeRecord> attributes = FileAttributeRecord{04755, 0, 0};
  bool executable = true;
};

/// Files that exist only here. A path that was never set does not exist.
class FakeFileAttributes final : public FileAttributes {
 public:
  void set(const std::string& path, FakeFile file) {
    const std::scoped_lock lock{mutex_};
    files_.insert_or_assign(path, std::move(file));
  }
  void remove(const std::string& path) {
    const std::scoped_lock lock{mutex_};
    files_.erase(path);
  }

  /// Every call in order: "fileExists {path}", "attributes {path}", "isExecutable {path}".
  [[nodiscard]] std::vector<std::string> log() const {
    const std::scoped_lock lock{mutex_};
    return log_;
  }

  bool fileExists(const std::string& path) override {
    const std::scoped_lock lock{mutex_};
    log_.push_back("fileExists " + path);
    return files_.contains(path);
  }
  std::optional<FileAttributeRecord> attributes(const std::string& path) override {
    const std::scoped_lock lock{mutex_};
    log_.push_back("attributes " + path);
    const auto found = files_.find(path);
    return found != files_.end() ? found->second.attributes : std::nullopt;
  }
  bool isExecutable(const std::string& path) override {
    const std::scoped_lock lock{mutex_};
    log_.push_back("isExecutable " + path);
    const auto found = files_.find(path);
    return found != files_.end() && found->second.executable;
  }

 private:
  mutable std::mutex mutex_;
  std::map<std::string, FakeFile> files_;
  std::vector<std::string> log_;
};

}  // namespace quorvex::testing
