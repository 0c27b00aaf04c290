#pragma once

#include <optional>
#include <vector>

#include "BatteryInfo.h"
#include "Date.h"
#include "FanInfo.h"
#include "NetworkSnapshot.h"
#include "PowerMetrics.h"
#include "PowerReading.h"
#include "TemperatureSensor.h"
#include "ThermalInfo.h"

namespace quorvex {

/// The snapshot of one poll: what every source said, and the named watt readings that follow from
/// it. A plain value, copied freely between threads.
struct SystemPowerState {
  std::optional<BatteryInfo> battery;  ///< absent without a battery or when nothing was readable
  std::optional<PowerMetrics> power;   ///< absent when no energy channel was readable in this poll
  ThermalInfo thermal;
  std::vector<FanInfo> fans;               ///< empty on fanless machines or when the SMC failed
  std::vector<TemperatureSensor> sensors;  ///< of whichever temperature source answered first
  std::optional<NetworkSnapshot> network;  ///< absent when the poll did not read the network
  Date timestamp{};                        ///< the moment assigned to this reading

  /// Net battery power in watts with its sign, whenever a battery is present.
  [[nodiscard]] std::optional<double> batteryTerminalWatts() const;
  /// Magnitude in watts of the draw while unplugged; absent on AC or at or above 0 W.
  [[nodiscard]] std::optional<double> batteryDischargeWatts() const;
  /// Watts into a charging battery; absent unless charging with a positive wattage.
  [[nodiscard]] std::optional<double> batteryChargeInputWatts() const;
  /// Magnitude in watts that leaves the battery on AC; any negative wattage counts.
  [[nodiscard]] std::optional<double> batterySupplementWatts() const;
  /// The silicon total in watts; absent without a silicon reading.
  [[nodiscard]] std::optional<double> siliconWatts() const;
  /// True also without a silicon reading: absence is not reported as incompleteness.
  [[nodiscard]] bool siliconChannelsComplete() const;
  /// Watts of the whole-system draw that the silicon model does not explain (display, storage,
  /// radios), never negative; absent unless unplugged, discharging and with a silicon reading.
  [[nodiscard]] std::optional<double> unattributedPower() const;

  /// The number that the program calls total power. Battery terminal values go before the silicon
  /// model whenever the battery moves energy at all. Absent when neither is there.
  [[nodiscard]] std::optional<PowerReading> primaryPowerReading() const;

  bool operator==(const SystemPowerState&) const = default;
};

}  // namespace quorvex
