#pragma once

#include <optional>
#include <string>
#include <vector>

#include "BatteryDictionaries.h"

namespace quorvex::testing {

/// The battery's two dictionaries as a test sets them; a machine without a battery at first.
/// Set up before reads begin; then one thread.
class FakeBatteryDictionaries final : public BatteryDictionaries {
 public:
  std::optional<Dictionary> registryAnswer;
  std::optional<Dictionary> powerSourceAnswer;

  /// Every call in order: "registry", "firstPowerSource".
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }

  std::optional<Dictionary> registry() override {
    log_.emplace_back("registry");
    return registryAnswer;
  }
  std::optional<Dictionary> firstPowerSource() override {
    log_.emplace_back("firstPowerSource");
    return powerSourceAnswer;
  }

 private:
  std::vector<std::string> log_;
};

}  // namespace quorvex::testing
