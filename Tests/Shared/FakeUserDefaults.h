#pragma once

#include <map>
#include <string>
#include <vector>

#include "UserDefaults.h"

namespace quorvex::testing {

/// Settings in memory, and the keys that were written. One thread.
class FakeUserDefaults final : public UserDefaults {
 public:
  std::map<std::string, UserDefaultsValue> values;
  /// The keys of all writes and removals, in their order.
  std::vector<std::string> written;

  [[nodiscard]] std::optional<UserDefaultsValue> value(const std::string& key) override {
    const auto found = values.find(key);
    return found != values.end() ? std::optional{found->second} : std::nullopt;
  }
  void setValue(const std::string& key, const UserDefaultsValue& value) override {
    written.push_back(key);
    values.insert_or_assign(key, value);
  }
  void removeValue(const std::string& key) override {
    written.push_back(key);
    values.erase(key);
  }
};

}  // namespace quorvex::testing
