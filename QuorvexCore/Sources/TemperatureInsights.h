#pragma once

#include <optional>
#include <span>
#include <vector>

#include "BatteryInfo.h"
#include "TemperatureSensor.h"

/// Reduces the dozens of raw temperature sensors of a machine, together with the battery record, to
/// a few labelled readings that a person can use. Sensors are told apart by their names, without
/// regard to case, and by the shape of their SMC keys; no temperature is judged. Where the hottest
/// of several sensors is meant and several are equally hot, it is the first of them. Pure
/// functions; any thread.
namespace quorvex::TemperatureInsights {

/// The most readings that `menuHighlights` and `dashboardReadings` give.
inline constexpr std::size_t menuLimit = 3;
inline constexpr std::size_t dashboardLimit = 12;

/// The one temperature that stands for the machine: the mean of the CPU core sensors, else the mean
/// of the die sensors, else a single CPU sensor, else the battery, else the hottest sensor with a
/// readable name. Absent without any of them.
[[nodiscard]] std::optional<TemperatureDisplayReading> representativeReading(
    std::span<const TemperatureSensor> sensors, const std::optional<BatteryInfo>& battery);

/// At most three readings for the menu, each label once: the representative one, then storage,
/// battery, memory, ambient, wireless and the hottest core, then the hottest remaining sensors.
[[nodiscard]] std::vector<TemperatureDisplayReading> menuHighlights(
    std::span<const TemperatureSensor> sensors, const std::optional<BatteryInfo>& battery);

/// At most twelve readings for the fuller list, each label once: the representative one, then the
/// hottest core, battery, storage, memory, ambient and wireless, then the hottest remaining
/// sensors.
[[nodiscard]] std::vector<TemperatureDisplayReading> dashboardReadings(
    std::span<const TemperatureSensor> sensors, const std::optional<BatteryInfo>& battery);

}  // namespace quorvex::TemperatureInsights
