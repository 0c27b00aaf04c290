#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <optional>
#include <string>

#include "BatteryService.h"
#include "SampleBatteryDictionaries.h"

// The time estimates of `BatteryService`: valid minutes, both directions, and which one is given.

namespace quorvex {
namespace {

using samples::fullPowerSource;
using samples::fullRegistry;

using TimeEstimate = BatteryService::TimeEstimate;
using LoadState = BatteryService::LoadState;

constexpr auto untilEmpty = BatteryTimeRemainingKind::untilEmpty;
constexpr auto untilFull = BatteryTimeRemainingKind::untilFull;

std::optional<TimeEstimate> estimate(const LoadState& load, const Dictionary& registry = {},
                                     const Dictionary& powerSource = {}) {
  return BatteryService::timeEstimate(&registry, &powerSource, load);
}

// Valid minutes

TEST(BatteryServiceValidMinutesTests, AnAbsentValueGivesNone) {
  EXPECT_EQ(BatteryService::validMinutes(nullptr), std::nullopt);
}

TEST(BatteryServiceValidMinutesTests, SevenDaysAreAcceptedAndAMinuteMoreIsNot) {
  const auto minutes = [](const DictionaryValue& value) {
    return BatteryService::validMinutes(&value);
  };
  EXPECT_EQ(minutes(10080), 10080);
  EXPECT_EQ(minutes(10081), std::nullopt);
  EXPECT_EQ(minutes(0), 0);
  EXPECT_EQ(minutes(-1), std::nullopt);
  EXPECT_EQ(minutes(65535), std::nullopt);
  EXPECT_EQ(minutes(std::numeric_limits<std::int64_t>::min()), std::nullopt);
}

TEST(BatteryServiceValidMinutesTests, AFloatOfADictionaryIsTruncated) {
  const auto minutes = [](double value) {
    const DictionaryValue dynamic{value};
    return BatteryService::validMinutes(&dynamic);
  };
  EXPECT_EQ(minutes(89.9), 89);
  EXPECT_EQ(minutes(-0.9), 0);
  EXPECT_EQ(minutes(10080.9), 10080);
  EXPECT_EQ(minutes(-1.0), std::nullopt);
}

TEST(BatteryServiceValidMinutesTests, OtherTypesGiveNone) {
  for (const DictionaryValue& value :
       {DictionaryValue{}, DictionaryValue{true}, DictionaryValue{"90"},
        DictionaryValue{Dictionary{{"minutes", 90}}}}) {
    EXPECT_EQ(BatteryService::validMinutes(&value), std::nullopt);
  }
}

TEST(BatteryServiceTimeDeathTests, AFloatThatIsNoIntegerIsFatalAsMinutes) {
  const std::string message =
      "Fatal error: a floating-point value does not fit a signed 64-bit integer";
  for (const double value :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e19}) {
    const DictionaryValue dynamic{value};
    EXPECT_DEATH(static_cast<void>(BatteryService::validMinutes(&dynamic)), message);
  }
}

TEST(BatteryServiceValidMinutesTests, TheFirstValidEntryWins) {
  const DictionaryValue sentinel{65535};
  const DictionaryValue computing{-1};
  const DictionaryValue valid{42};
  const DictionaryValue later{43};
  const std::array<const DictionaryValue*, 5> values{nullptr, &sentinel, &computing, &valid,
                                                     &later};
  EXPECT_EQ(BatteryService::firstValidMinutes(values), 42);
}

TEST(BatteryServiceValidMinutesTests, AValidZeroEndsTheWalk) {
  const DictionaryValue zero{0};
  const DictionaryValue later{43};
  const std::array<const DictionaryValue*, 2> values{&zero, &later};
  EXPECT_EQ(BatteryService::firstValidMinutes(values), 0);
}

TEST(BatteryServiceValidMinutesTests, AnEmptyOrExhaustedListGivesNone) {
  const DictionaryValue sentinel{65535};
  const std::array<const DictionaryValue*, 2> values{&sentinel, nullptr};
  EXPECT_EQ(BatteryService::firstValidMinutes({}), std::nullopt);
  EXPECT_EQ(BatteryService::firstValidMinutes(values), std::nullopt);
}

// Time to empty

TEST(BatteryServiceTimeTests, InvalidTimesToEmptyArePassedOver) {
  const LoadState onBattery{.wattage = -18.0};
  for (const int invalid : {65535, -1, 10081}) {
    EXPECT_EQ(estimate(onBattery, {{"TimeRemaining", 131}}, {{"Time to Empty", invalid}}),
              (TimeEstimate{131, untilEmpty}));
  }
  EXPECT_EQ(estimate(onBattery, {{"TimeRemaining", 131}}, {{"Time to Empty", 10080}}),
            (TimeEstimate{10080, untilEmpty}));
}

TEST(BatteryServiceTimeTests, ATimeToEmptyOfZeroIsAnEstimateAndStopsTheSearch) {
  EXPECT_EQ(estimate({.wattage = -18.0}, {{"TimeRemaining", 131}}, {{"Time to Empty", 0}}),
            (TimeEstimate{0, untilEmpty}));
}

TEST(BatteryServiceTimeTests, OnBatteryWithoutTimeKeysTheTimeToEmptyIsComputed) {
  // 3000 mAh at 3000 mA last one hour.
  EXPECT_EQ(estimate({.wattage = -36.0, .currentCapacity = 3000, .amperage = -3.0}),
            (TimeEstimate{60, untilEmpty}));
}

TEST(BatteryServiceTimeTests, ComputedMinutesAreRoundedToNearest) {
  // 1000 mAh at 1200 mA last 50 min, 1010 mAh 50.5 min, 1009 mAh 50.45 min.
  const auto minutes = [](std::int64_t charge) {
    return estimate({.wattage = -14.4, .currentCapacity = charge, .amperage = -1.2})
        .value()
        .minutes;
  };
  EXPECT_EQ(minutes(1000), 50);
  EXPECT_EQ(minutes(1009), 50);
  EXPECT_EQ(minutes(1011), 51);
}

TEST(BatteryServiceTimeTests, ACurrentOfExactlyMinusFiftyMilliamperesGivesNoEstimate) {
  EXPECT_EQ(estimate({.currentCapacity = 500, .amperage = -0.05}), std::nullopt);
  // 100 mAh at 60 mA last 100 min.
  EXPECT_EQ(estimate({.currentCapacity = 100, .amperage = -0.06}), (TimeEstimate{100, untilEmpty}));
}

TEST(BatteryServiceTimeTests, AnEmptyBatteryGivesNoComputedEstimate) {
  EXPECT_EQ(estimate({.wattage = -36.0, .currentCapacity = 0, .amperage = -3.0}), std::nullopt);
}

TEST(BatteryServiceTimeTests, AnEstimateOfMoreThanSevenDaysIsNoneAndNotClamped) {
  // 20000 mAh at 60 mA last 20000 min, which is more than 10080.
  EXPECT_EQ(estimate({.currentCapacity = 20000, .amperage = -0.06}), std::nullopt);
  EXPECT_EQ(BatteryService::estimatedMinutesToFull(0, 20000, 0.06), std::nullopt);
}

TEST(BatteryServiceTimeTests, OnBatteryAtRestTheTimeKeysStillCount) {
  EXPECT_EQ(estimate({.wattage = 0.0}, {{"AvgTimeToEmpty", 300}}), (TimeEstimate{300, untilEmpty}));
}

// Time to full

TEST(BatteryServiceTimeTests, TheTimeToFullTriesItsSourcesInOrder) {
  const LoadState charging{.isCharging = true, .acConnected = true, .wattage = 24.0};
  Dictionary withoutAverage = fullRegistry();
  withoutAverage["AvgTimeToFull"] = 65535;
  EXPECT_EQ(estimate(charging, fullRegistry(), fullPowerSource()), (TimeEstimate{60, untilFull}));
  EXPECT_EQ(estimate(charging, fullRegistry()), (TimeEstimate{61, untilFull}));
  EXPECT_EQ(estimate(charging, withoutAverage), (TimeEstimate{62, untilFull}));
}

TEST(BatteryServiceTimeTests, WithoutTimeKeysTheTimeToFullIsComputed) {
  // 1000 mAh are missing; 2000 mA bring them in half an hour.
  EXPECT_EQ(estimate({.isCharging = true,
                      .acConnected = true,
                      .wattage = 24.0,
                      .currentCapacity = 3000,
                      .maxCapacity = 4000,
                      .amperage = 2.0}),
            (TimeEstimate{30, untilFull}));
}

TEST(BatteryServiceTimeTests, ChargingAtExactlyFiftyMilliamperesGivesNoEstimate) {
  EXPECT_EQ(estimate({.isCharging = true,
                      .acConnected = true,
                      .wattage = 0.6,
                      .currentCapacity = 3990,
                      .maxCapacity = 4000,
                      .amperage = 0.05}),
            std::nullopt);
}

TEST(BatteryServiceTimeTests, ChargingWithNothingMissingGivesNoEstimate) {
  EXPECT_EQ(BatteryService::estimatedMinutesToFull(4000, 4000, 2.0), std::nullopt);
  EXPECT_EQ(BatteryService::estimatedMinutesToFull(4001, 4000, 2.0), std::nullopt);
  EXPECT_EQ(BatteryService::estimatedMinutesToFull(3999, 4000, 2.0), 0);
}

TEST(BatteryServiceTimeDeathTests, AMissingChargeThatOverflowsIsFatal) {
  EXPECT_DEATH(static_cast<void>(BatteryService::estimatedMinutesToFull(
                   -2, std::numeric_limits<std::int64_t>::max(), 2.0)),
               "Fatal error: integer overflow in a subtraction");
}

// Which estimate

TEST(BatteryServiceTimeTests, AFullBatteryHasNoEstimateEvenWhileItDischarges) {
  EXPECT_EQ(estimate({.isFullyCharged = true, .wattage = -18.0}, fullRegistry(), fullPowerSource()),
            std::nullopt);
  EXPECT_EQ(estimate({.isCharging = true, .isFullyCharged = true, .wattage = 18.0}, fullRegistry(),
                     fullPowerSource()),
            std::nullopt);
}

TEST(BatteryServiceTimeTests, ABatteryThatChargesAndYetDeliversPowerDischarges) {
  EXPECT_EQ(estimate({.isCharging = true, .acConnected = true, .wattage = -1.01}, fullRegistry(),
                     fullPowerSource()),
            (TimeEstimate{130, untilEmpty}));
}

TEST(BatteryServiceTimeTests, ExactlyMinusOneWattIsNoDischarge) {
  EXPECT_EQ(estimate({.isCharging = true, .acConnected = true, .wattage = -1.0}, fullRegistry(),
                     fullPowerSource()),
            (TimeEstimate{60, untilFull}));
  EXPECT_EQ(estimate({.acConnected = true, .wattage = -1.0}, fullRegistry(), fullPowerSource()),
            std::nullopt);
}

TEST(BatteryServiceTimeTests, OnTheAdapterWithoutChargingThereIsNoEstimate) {
  EXPECT_EQ(estimate({.acConnected = true,
                      .wattage = -0.5,
                      .currentCapacity = 3000,
                      .maxCapacity = 4000,
                      .amperage = -0.04},
                     fullRegistry(), fullPowerSource()),
            std::nullopt);
}

TEST(BatteryServiceTimeTests, MinutesAndKindAreSetTogether) {
  const Dictionary charges{{"IsCharging", true}, {"AvgTimeToFull", 45}};
  const BatteryInfo charging = BatteryService::parse(&charges, nullptr).value();
  EXPECT_EQ(charging.timeRemaining, 45);
  EXPECT_EQ(charging.timeRemainingKind, untilFull);
  const Dictionary isFull{{"FullyCharged", true}, {"TimeRemaining", 45}};
  const BatteryInfo full = BatteryService::parse(&isFull, nullptr).value();
  EXPECT_EQ(full.timeRemaining, std::nullopt);
  EXPECT_EQ(full.timeRemainingKind, std::nullopt);
}

}  // namespace
}  // namespace quorvex
