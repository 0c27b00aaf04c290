#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "TemporaryFolder.h"

namespace quorvex::testing {

/// A folder of its own for one test, removed with all that is in it.
class StoreFolder {
 public:
  StoreFolder() { std::filesystem::permissions(path(), std::filesystem::perms{0755}); }

  [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }
  /// Where the test's store lies.
  [[nodiscard]] std::filesystem::path store() const { return path() / "QuorvexSessions.store"; }

  void write(const std::filesystem::path& file, const std::string& content) const {
    std::ofstream{file, std::ios::binary} << content;
  }
  [[nodiscard]] std::string contentOf(const std::filesystem::path& file) const {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, std::istreambuf_iterator<char>{}};
  }
  /// Names of everything in the folder, sorted.
  [[nodiscard]] std::string listing() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{path()}) {
      names.insert(entry.path().filename().string());
    }
    std::string result;
    for (const auto& name : names) {
      result.append(name).append(" ");
    }
    return result;
  }

 private:
  TemporaryFolder folder_;
};

}  // namespace quorvex::testing
