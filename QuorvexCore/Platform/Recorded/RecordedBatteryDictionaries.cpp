#include "RecordedBatteryDictionaries.h"

namespace quorvex {

std::optional<Dictionary> RecordedBatteryDictionaries::registry() {
  const Dictionary* registry = registry_->value(clock_->positionInPass());
  return registry != nullptr ? std::optional{*registry} : std::nullopt;
}

std::optional<Dictionary> RecordedBatteryDictionaries::firstPowerSource() {
  const auto* sources = powerSources_->value(clock_->positionInPass());
  return sources != nullptr && !sources->empty() ? sources->front() : std::nullopt;
}

}  // namespace quorvex
