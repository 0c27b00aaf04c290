#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>

#include "UserDefaults.h"

namespace quorvex {

/// Settings as one JSON object in the file "quorvex/defaults.json" of the configuration folder. A
/// file that is no JSON object counts as empty and is replaced by the next write; keys with values
/// of other types are dropped then. Any thread; between processes the last writer wins.
class LinuxUserDefaults final : public UserDefaults {
 public:
  explicit LinuxUserDefaults(const std::string& configurationFolder);

  [[nodiscard]] std::optional<UserDefaultsValue> value(const std::string& key) override;
  void setValue(const std::string& key, const UserDefaultsValue& value) override;
  void removeValue(const std::string& key) override;

 private:
  using Values = std::map<std::string, UserDefaultsValue>;

  [[nodiscard]] Values read() const;
  void write(const Values& values) const;

  std::filesystem::path file_;
  std::mutex mutex_;  ///< a change is a read and a write
};

}  // namespace quorvex
