#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "TemperatureSensor.h"

namespace quorvex {

/// The sensors of the helper tool's temperature reply: a JSON array of objects with the keys `key`,
/// `name` and `temperature`, all three required, unknown keys ignored. None when the text is
/// anything else.
[[nodiscard]] std::optional<std::vector<TemperatureSensor>> decodeTemperatureReply(
    std::string_view json);

}  // namespace quorvex
