#pragma once

#include "DynamicLoader.h"
#include "EnergyLibrary.h"

namespace quorvex {

/// The private IOReport library, looked for under its known paths. Any thread.
class MacEnergyLibrary final : public EnergyLibrary {
 public:
  /// The loader must outlive this object and all that it opens.
  explicit MacEnergyLibrary(DynamicLoader& loader) : loader_(&loader) {}

  [[nodiscard]] std::unique_ptr<EnergyEntryPoints> open() override;

 private:
  DynamicLoader* loader_;
};

}  // namespace quorvex
