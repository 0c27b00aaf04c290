#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "BatteryDictionaries.h"
#include "BatteryInfo.h"

namespace quorvex {

/// Turns the two dictionaries about the internal battery into one `BatteryInfo`. The registry is
/// the authority; the power source fills what it lacks. Nothing is averaged, smoothed or
/// remembered. Stateless; any thread.
class BatteryService {
 public:
  explicit BatteryService(BatteryDictionaries& dictionaries) : dictionaries_(&dictionaries) {}

  /// One reading; none exactly when neither dictionary is there (a machine without a battery).
  [[nodiscard]] std::optional<BatteryInfo> read() const;

  [[nodiscard]] std::optional<Dictionary> readIORegistry() const;
  [[nodiscard]] std::optional<Dictionary> readIOPowerSources() const;

  /// The reading that the given dictionaries amount to; null stands for a missing one. An overflow
  /// of a capacity times 100 is a fatal error.
  [[nodiscard]] static std::optional<BatteryInfo> parse(const Dictionary* registry,
                                                        const Dictionary* powerSource);

  /// A time estimate: minutes and the way they count.
  struct TimeEstimate {
    std::int64_t minutes = 0;
    BatteryTimeRemainingKind kind = BatteryTimeRemainingKind::untilEmpty;
    bool operator==(const TimeEstimate&) const = default;
  };

  /// Minutes from a raw value (null: absent): 0 to 10080; everything else is none, which covers the
  /// platform's marks for "still computing". A float that does not fit an integer is a fatal error.
  [[nodiscard]] static std::optional<std::int64_t> validMinutes(const DictionaryValue* value);

  /// The first valid entry of a list; absent and invalid ones are passed over, 0 is valid.
  [[nodiscard]] static std::optional<std::int64_t> firstValidMinutes(
      std::span<const DictionaryValue* const> values);

  /// Minutes until full from the missing charge (mAh) and the current (amperes, above 0.05).
  [[nodiscard]] static std::optional<std::int64_t> estimatedMinutesToFull(
      std::int64_t currentCapacity, std::int64_t maxCapacity, double amperage);

  /// What decides the time estimate, beside the two dictionaries.
  struct LoadState {
    bool isCharging = false;
    bool isFullyCharged = false;
    bool acConnected = false;
    double wattage = 0.0;              ///< watts, negative leaves the battery
    std::int64_t currentCapacity = 0;  ///< mAh
    std::int64_t maxCapacity = 0;      ///< mAh
    double amperage = 0.0;             ///< amperes, negative while discharging
  };

  [[nodiscard]] static std::optional<TimeEstimate> timeEstimate(const Dictionary* registry,
                                                                const Dictionary* powerSource,
                                                                const LoadState& load);

 private:
  BatteryDictionaries* dictionaries_;
};

}  // namespace quorvex
