#include "LinuxLoginItem.h"

#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "SystemTree.h"
#include "Text.h"

namespace quorvex {

namespace {

/// An "Exec" value that starts exactly this file: a quoted argument, escaped as arguments are and
/// then once more as all texts of desktop entries are.
std::string execValue(std::string_view path) {
  std::string value{"\""};
  for (const char c : path) {
    switch (c) {
      case '"':
      case '`':
      case '$':
        value.append("\\\\").push_back(c);
        break;
      case '\\':
        value.append("\\\\\\\\");
        break;
      case '%':
        value.append("%%");
        break;
      case '\n':
        value.append("\\n");
        break;
      default:
        value.push_back(c);
    }
  }
  value.push_back('"');
  return value;
}

/// Whether the entry says that it is not to be started. Other programs may have written it: spaces
/// around the equals sign do not count, and groups after the entry's own are not about it.
bool isSwitchedOff(std::string_view entry) {
  bool isOwnGroup = false;
  while (!entry.empty()) {
    const std::size_t end = entry.find('\n');
    const std::string_view line = text::trimmed(entry.substr(0, end));
    entry.remove_prefix(end == std::string_view::npos ? entry.size() : end + 1);
    if (line.starts_with('[')) {
      isOwnGroup = line == "[Desktop Entry]";
    }
    const std::size_t equals = line.find('=');
    if (!isOwnGroup || equals == std::string_view::npos) {
      continue;
    }
    const std::string_view key = text::trimmed(line.substr(0, equals));
    const std::string_view value = text::trimmed(line.substr(equals + 1));
    if ((key == "Hidden" && value == "true") ||
        (key == "X-GNOME-Autostart-enabled" && value == "false")) {
      return true;
    }
  }
  return false;
}

}  // namespace

LinuxLoginItem::LinuxLoginItem(const std::string& configurationFolder,
                               std::optional<std::string> executable)
    : entry_(std::filesystem::path{configurationFolder} / "autostart" / "quorvex.desktop"),
      executable_(std::move(executable)) {}

LoginItemStatus LinuxLoginItem::status() {
  if (!executable_) {
    return LoginItemStatus::notFound;
  }
  if (const auto entry = system_tree::readFile(entry_.string())) {
    return isSwitchedOff(*entry) ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
  }
  std::error_code error;
  return std::filesystem::exists(entry_, error) || error ? LoginItemStatus::unknown
                                                         : LoginItemStatus::notRegistered;
}

std::optional<std::string> LinuxLoginItem::registerItem() {
  if (!executable_) {
    return "The program's own file is not known.";
  }
  std::error_code error;
  std::filesystem::create_directories(entry_.parent_path(), error);
  if (error) {
    return error.message();
  }
  std::ofstream file{entry_, std::ios::binary | std::ios::trunc};
  file << "[Desktop Entry]\nType=Application\nName=Quorvex\nExec=" << execValue(*executable_)
       << "\nTerminal=false\n";
  file.close();
  return file ? std::nullopt : std::optional{entry_.string() + " cannot be written."};
}

std::optional<std::string> LinuxLoginItem::unregisterItem() {
  std::error_code error;
  std::filesystem::remove(entry_, error);
  return error ? std::optional{error.message()} : std::nullopt;
}

}  // namespace quorvex
