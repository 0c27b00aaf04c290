#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>

namespace quorvex::testing {

/// A folder of its own for one test, removed with all that is in it.
class StoreFolder {
 public:
  StoreFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "quorvex-store-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
    std::filesystem::permissions(path_, std::filesystem::perms{0755});
  }
  StoreFolder(const StoreFolder&) = delete;
  StoreFolder& operator=(const StoreFolder&) = delete;
  ~StoreFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// Where the test's store lies.
  [[nodiscard]] std::filesystem::path store() const { return path_ / "QuorvexSessions.store"; }

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
    for (const auto& entry : std::filesystem::directory_iterator{path_}) {
      names.insert(entry.path().filename().string());
    }
    std::string result;
    for (const auto& name : names) {
      result.append(name).append(" ");
    }
    return result;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace quorvex::testing
