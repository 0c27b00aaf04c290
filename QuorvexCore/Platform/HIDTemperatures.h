#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvex {

/// What one HID temperature service answers.
struct HIDTemperatureService {
  std::optional<std::string> product;  ///< its "Product" text; none when missing or no text
  std::optional<double> value;         ///< degrees Celsius; none when it has no event
};

/// An event-system client whose matching is set to temperature sensors. Destroying it releases it.
class HIDTemperatureClient {
 public:
  HIDTemperatureClient() = default;
  HIDTemperatureClient(const HIDTemperatureClient&) = delete;
  HIDTemperatureClient& operator=(const HIDTemperatureClient&) = delete;
  virtual ~HIDTemperatureClient() = default;

  /// The matching services with one event each, in the system's order; none when the list cannot be
  /// copied. Several threads may call at a time.
  [[nodiscard]] virtual std::optional<std::vector<HIDTemperatureService>> copyServices() = 0;
};

/// The private HID event-system functions, found at run time.
class HIDTemperatures {
 public:
  HIDTemperatures() = default;
  HIDTemperatures(const HIDTemperatures&) = delete;
  HIDTemperatures& operator=(const HIDTemperatures&) = delete;
  virtual ~HIDTemperatures() = default;

  /// Finds the entry points, creates a client and sets its matching; null when any of it fails.
  [[nodiscard]] virtual std::unique_ptr<HIDTemperatureClient> open() = 0;
};

}  // namespace quorvex
