#pragma once

#include "UserDefaults.h"

namespace quorvex {

/// The preferences of this application, as the system's own tools show and change them. Any thread.
class MacUserDefaults final : public UserDefaults {
 public:
  [[nodiscard]] std::optional<UserDefaultsValue> value(const std::string& key) override;
  void setValue(const std::string& key, const UserDefaultsValue& value) override;
  void removeValue(const std::string& key) override;
};

}  // namespace quorvex
