#pragma once

#include "ProcessTable.h"

namespace quorvex {

/// The kernel's process list and its resource-usage records. Any thread.
class MacProcessTable final : public ProcessTable {
 public:
  [[nodiscard]] std::int64_t listProcessIDs(std::span<std::int32_t> buffer) override;
  [[nodiscard]] std::optional<ProcessResources> resources(std::int32_t pid) override;
  [[nodiscard]] std::int64_t processName(std::int32_t pid, std::span<char> buffer) override;
};

}  // namespace quorvex
