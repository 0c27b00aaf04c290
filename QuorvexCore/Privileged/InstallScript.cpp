#include "InstallScript.h"

#include <filesystem>

namespace quorvex {

std::string shellQuoted(std::string_view value) {
  std::string quoted = "'";
  for (const char c : value) {
    if (c == '\'') {
      quoted += R"('\'')";
    } else {
      quoted += c;
    }
  }
  quoted += '\'';
  return quoted;
}

std::string appleScriptEscaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\' || c == '"') {
      escaped += '\\';
    }
    escaped += c;
  }
  return escaped;
}

std::string helperInstallScript(std::string_view sourcePath, std::string_view helperPath) {
  const std::string folder = std::filesystem::path{helperPath}.parent_path().string();
  const std::string command = "/usr/bin/install -d -m 755 " + shellQuoted(folder) +
                              " && /usr/bin/install -o root -g wheel -m 4755 " +
                              shellQuoted(sourcePath) + " " + shellQuoted(helperPath);
  return "do shell script \"" + appleScriptEscaped(command) + "\" with administrator privileges";
}

}  // namespace quorvex
