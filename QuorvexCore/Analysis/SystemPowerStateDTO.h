#pragma once

#include <optional>
#include <string>
#include <vector>

#include "BatteryInfoDTO.h"
#include "Date.h"
#include "FanInfoDTO.h"
#include "NetworkSnapshotDTO.h"
#include "PowerMetricsDTO.h"
#include "RecordFields.h"
#include "SystemPowerState.h"
#include "TemperatureSensor.h"
#include "ThermalInfoDTO.h"

namespace quorvex {

/// The stored form of one poll: flat and self-describing, every enum as text, every derived power
/// figure (watts) computed once, at recording time, by the rules of that moment. Readers of stored
/// sessions work from it and never compute a figure anew from raw battery values.
struct SystemPowerStateDTO {
  SystemPowerStateDTO() = default;
  explicit SystemPowerStateDTO(const SystemPowerState& state);

  std::optional<BatteryInfoDTO> battery;
  std::optional<PowerMetricsDTO> power;
  ThermalInfoDTO thermal;
  std::vector<FanInfoDTO> fans;
  std::vector<TemperatureSensor> sensors;
  Date timestamp{};  ///< whole seconds once written; the sample's column keeps the rest
  std::optional<double> unattributedPower;
  std::optional<double> displayAndOtherPower;  ///< `unattributedPower` under its report name
  std::optional<double> batteryTerminalWatts;  ///< with its sign
  std::optional<double> batteryDischargeWatts;
  std::optional<double> batteryChargeInputWatts;
  std::optional<double> batterySupplementWatts;
  std::optional<double> siliconWatts;
  std::optional<std::string> powerSourceKind;  ///< text of the primary reading's kind
  std::optional<std::string> powerSourceLabel;
  std::optional<std::string> powerSourceSummary;
  std::optional<double> totalWatts;  ///< of the primary reading
  std::string totalWattsConfidence;  ///< "unavailable" without a primary reading
  std::optional<NetworkSnapshotDTO> network;

  bool operator==(const SystemPowerStateDTO&) const = default;
};

template <>
struct RecordFields<SystemPowerStateDTO> {
  static constexpr std::tuple values{
      RecordField{"battery", &SystemPowerStateDTO::battery},
      RecordField{"batteryChargeInputWatts", &SystemPowerStateDTO::batteryChargeInputWatts},
      RecordField{"batteryDischargeWatts", &SystemPowerStateDTO::batteryDischargeWatts},
      RecordField{"batterySupplementWatts", &SystemPowerStateDTO::batterySupplementWatts},
      RecordField{"batteryTerminalWatts", &SystemPowerStateDTO::batteryTerminalWatts},
      RecordField{"displayAndOtherPower", &SystemPowerStateDTO::displayAndOtherPower},
      RecordField{"fans", &SystemPowerStateDTO::fans},
      RecordField{"network", &SystemPowerStateDTO::network},
      RecordField{"power", &SystemPowerStateDTO::power},
      RecordField{"powerSourceKind", &SystemPowerStateDTO::powerSourceKind},
      RecordField{"powerSourceLabel", &SystemPowerStateDTO::powerSourceLabel},
      RecordField{"powerSourceSummary", &SystemPowerStateDTO::powerSourceSummary},
      RecordField{"sensors", &SystemPowerStateDTO::sensors},
      RecordField{"siliconWatts", &SystemPowerStateDTO::siliconWatts},
      RecordField{"thermal", &SystemPowerStateDTO::thermal},
      RecordField{"timestamp", &SystemPowerStateDTO::timestamp},
      RecordField{"totalWatts", &SystemPowerStateDTO::totalWatts},
      RecordField{"totalWattsConfidence", &SystemPowerStateDTO::totalWattsConfidence},
      RecordField{"unattributedPower", &SystemPowerStateDTO::unattributedPower},
  };
};

}  // namespace quorvex
