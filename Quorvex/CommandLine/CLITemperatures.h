#pragma once

#include <vector>

#include "Machine.h"
#include "SMCService.h"
#include "TemperatureSensor.h"

namespace quorvex {

/// The sensors of the first source that answers: the SMC, then the privileged helper tool, then
/// HID. Blocks for the reads. One thread at a time.
[[nodiscard]] std::vector<TemperatureSensor> readTemperaturesWithFallbacks(SMCService& smcService,
                                                                           Machine& machine);

}  // namespace quorvex
