#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvex::testing {

/// A temporary folder that stands for one of the kernel's file trees and is removed with its
/// object.
class FakeTree {
 public:
  FakeTree() {
    std::string name = (std::filesystem::temp_directory_path() / "quorvex-tree-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    root_ = name;
  }
  FakeTree(const FakeTree&) = delete;
  FakeTree& operator=(const FakeTree&) = delete;
  ~FakeTree() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  [[nodiscard]] std::string root() const { return root_.string(); }
  [[nodiscard]] std::string path(std::string_view name) const { return (root_ / name).string(); }

  /// Writes a file with exactly these bytes; folders on the way are made.
  void file(std::string_view name, std::string_view text) const {
    std::filesystem::create_directories((root_ / name).parent_path());
    std::ofstream stream{root_ / name, std::ios::binary | std::ios::trunc};
    stream << text;
    if (!stream.flush()) {
      throw std::runtime_error("cannot write " + path(name));
    }
  }
  void folder(std::string_view name) const { std::filesystem::create_directories(root_ / name); }
  /// Puts something at the name that opens but cannot be read, not even by root: a folder.
  void unreadable(std::string_view name) const {
    remove(name);
    folder(name);
  }
  void remove(std::string_view name) const { std::filesystem::remove_all(root_ / name); }

 private:
  std::filesystem::path root_;
};

}  // namespace quorvex::testing
