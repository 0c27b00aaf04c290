#include "HIDSensorService.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace quorvex {

std::vector<TemperatureSensor> HIDSensorService::readTemperatures() {
  const auto client = acquireContext();
  return client != nullptr ? collectSensors(*client) : std::vector<TemperatureSensor>{};
}

std::shared_ptr<HIDTemperatureClient> HIDSensorService::acquireContext() {
  const std::scoped_lock lock{mutex_};
  if (cachedContext_ == nullptr) {
    cachedContext_ = port_->open();
  }
  return cachedContext_;
}

std::vector<TemperatureSensor> HIDSensorService::collectSensors(HIDTemperatureClient& client) {
  const auto services = client.copyServices();
  return services ? sensors(*services) : std::vector<TemperatureSensor>{};
}

std::vector<TemperatureSensor> HIDSensorService::sensors(
    std::span<const HIDTemperatureService> services) {
  std::vector<TemperatureSensor> result;
  result.reserve(services.size());
  std::unordered_map<std::string, std::int64_t> timesUsed;
  for (const HIDTemperatureService& service : services) {
    // A sensor without a valid value must not use up a key, or keys would come and go with it.
    if (!service.value || !(*service.value > 0.0 && *service.value < 150.0)) {
      continue;
    }
    TemperatureSensor& sensor = result.emplace_back();
    sensor.name = service.product.value_or("Unknown");
    sensor.temperature = *service.value;
    sensor.key = sensor.name;
    std::ranges::replace(sensor.key, ' ', '_');
    const std::int64_t earlier = timesUsed[sensor.key]++;
    if (earlier > 0) {
      sensor.key += fmt::format("_{}", earlier);
    }
  }
  std::ranges::stable_sort(result, {}, &TemperatureSensor::name);
  return result;
}

}  // namespace quorvex
