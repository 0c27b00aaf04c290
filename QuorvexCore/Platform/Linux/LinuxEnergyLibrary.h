#pragma once

#include "EnergyLibrary.h"

namespace quorvex {

/// Linux has no library with the silicon's energy channels. Any thread.
class LinuxEnergyLibrary final : public EnergyLibrary {
 public:
  /// Always null.
  [[nodiscard]] std::unique_ptr<EnergyEntryPoints> open() override { return nullptr; }
};

}  // namespace quorvex
