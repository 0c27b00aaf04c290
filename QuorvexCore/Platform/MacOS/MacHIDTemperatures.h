#pragma once

#include "DynamicLoader.h"
#include "HIDTemperatures.h"

namespace quorvex {

/// The private event-system functions, found in what the process has loaded. Any thread.
class MacHIDTemperatures final : public HIDTemperatures {
 public:
  /// The loader must outlive this object.
  explicit MacHIDTemperatures(DynamicLoader& loader) : loader_(&loader) {}

  /// After a success the symbols' library stays open to the end of the process.
  [[nodiscard]] std::unique_ptr<HIDTemperatureClient> open() override;

 private:
  DynamicLoader* loader_;
};

}  // namespace quorvex
