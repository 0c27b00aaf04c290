#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "Dictionary.h"
#include "HIDTemperatures.h"
#include "RecordedRecords.h"
#include "StrictJSON.h"

/// Readers of the values that frames carry. Each reads one value that is not null and throws
/// StrictJSONError on anything that the format does not know.
namespace quorvex::record_readers {

/// A number of seconds, not negative, as whole nanoseconds.
[[nodiscard]] std::chrono::nanoseconds readSeconds(StrictJSON& json);

[[nodiscard]] Dictionary readDictionary(StrictJSON& json);
[[nodiscard]] std::vector<std::optional<Dictionary>> readPowerSources(StrictJSON& json);
[[nodiscard]] std::vector<RecordedEnergyChannel> readEnergyChannels(StrictJSON& json);
[[nodiscard]] RecordedSMCKeys readSMCKeys(StrictJSON& json);
[[nodiscard]] std::vector<HIDTemperatureService> readHIDServices(StrictJSON& json);
[[nodiscard]] RecordedThermal readThermal(StrictJSON& json);
[[nodiscard]] std::vector<RecordedInterface> readInterfaces(StrictJSON& json);
[[nodiscard]] RecordedRun readNettop(StrictJSON& json);
[[nodiscard]] RecordedProcessList readProcesses(StrictJSON& json);
[[nodiscard]] RecordedHelper readHelper(StrictJSON& json);
[[nodiscard]] RecordedScript readScript(StrictJSON& json);

}  // namespace quorvex::record_readers
