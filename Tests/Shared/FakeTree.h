#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "TemporaryFolder.h"

namespace quorvex::testing {

/// A temporary folder that stands for one of the kernel's file trees and is removed with its
/// object.
class FakeTree {
 public:
  [[nodiscard]] std::string root() const { return folder_.path().string(); }
  [[nodiscard]] std::string path(std::string_view name) const {
    return (folder_.path() / name).string();
  }

  /// Writes a file with exactly these bytes; folders on the way are made.
  void file(std::string_view name, std::string_view text) const {
    std::filesystem::create_directories((folder_.path() / name).parent_path());
    std::ofstream stream{folder_.path() / name, std::ios::binary | std::ios::trunc};
    stream << text;
    if (!stream.flush()) {
      throw std::runtime_error("cannot write " + path(name));
    }
  }
  void folder(std::string_view name) const {
    std::filesystem::create_directories(folder_.path() / name);
  }
  /// Puts something at the name that opens but cannot be read, not even by root: a folder.
  void unreadable(std::string_view name) const {
    remove(name);
    folder(name);
  }
  void remove(std::string_view name) const { std::filesystem::remove_all(folder_.path() / name); }

 private:
  TemporaryFolder folder_;
};

}  // namespace quorvex::testing
