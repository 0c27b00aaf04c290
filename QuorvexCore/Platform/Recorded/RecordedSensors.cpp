#include "RecordedSensors.h"

namespace quorvex {

namespace {

using Services = std::vector<HIDTemperatureService>;

class RecordedHIDTemperatureClient final : public HIDTemperatureClient {
 public:
  RecordedHIDTemperatureClient(const Track<Services>& services, RecordedClock& clock)
      : services_(&services), clock_(&clock) {}

  std::optional<Services> copyServices() override {
    const Services* services = services_->value(clock_->positionInPass());
    return services != nullptr ? std::optional{*services} : std::nullopt;
  }

 private:
  const Track<Services>* services_;
  RecordedClock* clock_;
};

}  // namespace

std::unique_ptr<HIDTemperatureClient> RecordedHIDTemperatures::open() {
  if (services_->value(clock_->positionInPass()) == nullptr) {
    return nullptr;
  }
  return std::make_unique<RecordedHIDTemperatureClient>(*services_, *clock_);
}

RecordedThermal RecordedThermalReadings::current() {
  const RecordedThermal* thermal = thermal_->value(clock_->positionInPass());
  return thermal != nullptr ? *thermal : RecordedThermal{.state = 0, .pressure = 0};
}

}  // namespace quorvex
