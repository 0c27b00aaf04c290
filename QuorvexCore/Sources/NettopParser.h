#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "NetworkSnapshot.h"

namespace quorvex {

/// A process as nettop names it in the first field of a line: "{name}.{pid}".
struct NettopIdentity {
  std::string name;
  std::int32_t pid = 0;
  bool operator==(const NettopIdentity&) const = default;
};

/// Splits one field at its last "."; none when either half is missing or the pid is no number.
[[nodiscard]] std::optional<NettopIdentity> parseNettopIdentity(std::string_view field);

/// The processes of nettop's output ("{identity},{bytes in},{bytes out},…" a line), in its order
/// with rates of 0. Lines of any other form, the header among them, are passed over.
[[nodiscard]] std::vector<NetworkProcessInfo> parseNettopProcessCounters(std::string_view text);

}  // namespace quorvex
