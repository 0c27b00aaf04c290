#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "SMCDecoding.h"
#include "SMCPort.h"
#include "TemperatureSensor.h"

namespace quorvex::smc {

// Reads over an open connection, without state of their own: shared by `SMCService` and the
// privileged helper tool. Two blocking kernel calls a key.

/// A key's value; none when the key does not answer or claims a size outside 1 to 32 bytes.
[[nodiscard]] std::optional<SMCValue> readSMCKeyTyped(SMCPort& port, SMCPort::Connection connection,
                                                      std::string_view key);

/// The known sensors that answer with a valid temperature, ascending by name.
[[nodiscard]] std::vector<TemperatureSensor> collectTemperatures(SMCPort& port,
                                                                 SMCPort::Connection connection);

}  // namespace quorvex::smc
