#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "LoginItem.h"

namespace quorvex {

/// The program's entry in the user's autostart folder, which desktops read at login. The user may
/// switch it off in the desktop's settings: that leaves the entry there, marked as hidden or
/// disabled. Main thread.
class LinuxLoginItem final : public LoginItem {
 public:
  /// `executable` is the program that is to start; none when it is not known.
  LinuxLoginItem(const std::string& configurationFolder, std::optional<std::string> executable);

  [[nodiscard]] LoginItemStatus status() override;
  [[nodiscard]] std::optional<std::string> registerItem() override;
  [[nodiscard]] std::optional<std::string> unregisterItem() override;

 private:
  std::filesystem::path entry_;
  std::optional<std::string> executable_;
};

}  // namespace quorvex
