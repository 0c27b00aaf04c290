#pragma once

#include <map>
#include <mutex>

#include "UserDefaults.h"

namespace quorvex {

/// A recorded machine begins without settings and keeps those that are made as long as it lives.
/// Any thread.
class RecordedUserDefaults final : public UserDefaults {
 public:
  [[nodiscard]] std::optional<UserDefaultsValue> value(const std::string& key) override {
    const std::scoped_lock lock{mutex_};
    const auto found = values_.find(key);
    return found != values_.end() ? std::optional{found->second} : std::nullopt;
  }
  void setValue(const std::string& key, const UserDefaultsValue& value) override {
    const std::scoped_lock lock{mutex_};
    values_.insert_or_assign(key, value);
  }
  void removeValue(const std::string& key) override {
    const std::scoped_lock lock{mutex_};
    values_.erase(key);
  }

 private:
  std::mutex mutex_;  ///< guards the values
  std::map<std::string, UserDefaultsValue> values_;
};

}  // namespace quorvex
