#include "TemperatureInsights.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "Text.h"

namespace quorvex::TemperatureInsights {

namespace {

constexpr std::string_view cpuAverageLabel = "CPU Avg";
constexpr std::string_view cpuPeakLabel = "CPU Peak";
constexpr std::string_view siliconAverageLabel = "Silicon Avg";
constexpr std::string_view siliconPeakLabel = "Silicon Peak";
constexpr std::string_view batteryLabel = "Battery";
constexpr std::string_view storageLabel = "Storage";
constexpr std::string_view memoryLabel = "Memory";
constexpr std::string_view wirelessLabel = "Wireless";
constexpr std::string_view ambientLabel = "Ambient";

/// A sensor with the lower-case form of its name, which is what every test of a name looks at.
struct NamedSensor {
  const TemperatureSensor* sensor;
  std::string name;

  [[nodiscard]] double temperature() const { return sensor->temperature; }
  [[nodiscard]] const std::string& key() const { return sensor->key; }
};

using NamedSensors = std::vector<NamedSensor>;
using Reading = TemperatureDisplayReading;

NamedSensors named(std::span<const TemperatureSensor> sensors) {
  NamedSensors result;
  result.reserve(sensors.size());
  for (const TemperatureSensor& sensor : sensors) {
    result.push_back({&sensor, text::lowercased(sensor.name)});
  }
  return result;
}

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// Keys of single cores: "Tp0" and one more character, or "TC", one character and "C".
bool isCoreKey(std::string_view key) {
  if (key.starts_with("Tp0")) {
    return text::characterCount(key) == 4;
  }
  return key.starts_with("TC") && key.ends_with('C') && key != "TC0C" &&
         text::characterCount(key) == 4;
}

bool isCPUAverageSensor(const NamedSensor& sensor) {
  return contains(sensor.name, "cpu performance core") ||
         contains(sensor.name, "cpu efficiency core") || contains(sensor.name, "cpu core ") ||
         isCoreKey(sensor.key());
}

bool isSiliconDieSensor(const NamedSensor& sensor) {
  return contains(sensor.name, "tdie") ||
         (contains(sensor.name, "cpu") &&
          (contains(sensor.name, "core") || contains(sensor.name, "performance") ||
           contains(sensor.name, "efficiency"))) ||
         isCoreKey(sensor.key());
}

bool isPreferredCPUSensor(const NamedSensor& sensor) {
  return sensor.key() == "TC0P" || sensor.key() == "TC0D" || contains(sensor.name, "cpu die") ||
         contains(sensor.name, "cpu proximity");
}

bool isStorageSensor(const NamedSensor& sensor) {
  return contains(sensor.name, "nand") || contains(sensor.name, "ssd") ||
         contains(sensor.name, "storage");
}

bool isBatterySensor(const NamedSensor& sensor) {
  return contains(sensor.name, "battery") || contains(sensor.name, "gas gauge");
}

bool isMemorySensor(const NamedSensor& sensor) {
  return contains(sensor.name, "memory");
}

bool isAmbientSensor(const NamedSensor& sensor) {
  return contains(sensor.name, "ambient") || contains(sensor.name, "palm rest");
}

bool isWirelessSensor(const NamedSensor& sensor) {
  return contains(sensor.name, "wireless") || contains(sensor.name, "wifi");
}

/// Whether the name means something to a person.
bool isHumanReadable(const NamedSensor& sensor) {
  return !sensor.name.starts_with("pmu ") && sensor.name != "unknown";
}

std::string displayLabel(const NamedSensor& sensor) {
  if (isStorageSensor(sensor)) {
    return std::string{storageLabel};
  }
  if (isBatterySensor(sensor)) {
    return std::string{batteryLabel};
  }
  if (isWirelessSensor(sensor)) {
    return std::string{wirelessLabel};
  }
  if (isMemorySensor(sensor)) {
    return std::string{memoryLabel};
  }
  if (contains(sensor.name, "ambient")) {
    return std::string{ambientLabel};
  }
  return sensor.sensor->name;
}

Reading readingOf(const NamedSensor& sensor) {
  return {sensor.key(), displayLabel(sensor), sensor.temperature()};
}

using Test = bool (*)(const NamedSensor&);

/// The hottest of the sensors that pass the test, the first one of equals.
const NamedSensor* hottest(const NamedSensors& sensors, Test test) {
  const NamedSensor* result = nullptr;
  for (const NamedSensor& sensor : sensors) {
    if (test(sensor) && (result == nullptr || sensor.temperature() > result->temperature())) {
      result = &sensor;
    }
  }
  return result;
}

std::optional<Reading> hottestReading(const NamedSensors& sensors, Test test, std::string_view id,
                                      std::string_view label) {
  if (const NamedSensor* sensor = hottest(sensors, test)) {
    return Reading{std::string{id}, std::string{label}, sensor->temperature()};
  }
  return std::nullopt;
}

std::optional<Reading> meanReading(const NamedSensors& sensors, Test test, std::string_view id,
                                   std::string_view label) {
  double sum = 0.0;
  std::size_t count = 0;
  for (const NamedSensor& sensor : sensors) {
    if (test(sensor)) {
      sum += sensor.temperature();
      ++count;
    }
  }
  if (count == 0) {
    return std::nullopt;
  }
  return Reading{std::string{id}, std::string{label}, sum / static_cast<double>(count)};
}

/// The first sensor in the list that measures the whole CPU.
const NamedSensor* preferredCPUSensor(const NamedSensors& sensors) {
  const auto found = std::ranges::find_if(sensors, isPreferredCPUSensor);
  return found == sensors.end() ? nullptr : &*found;
}

std::optional<Reading> batteryReading(const NamedSensors& sensors,
                                      const std::optional<BatteryInfo>& battery) {
  if (battery && battery->temperature > 0.0) {
    return Reading{"battery", std::string{batteryLabel}, battery->temperature};
  }
  return hottestReading(sensors, isBatterySensor, "battery_sensor", batteryLabel);
}

std::optional<Reading> siliconPeakReading(const NamedSensors& sensors) {
  if (auto peak = hottestReading(sensors, isCPUAverageSensor, "cpu_peak", cpuPeakLabel)) {
    return peak;
  }
  return hottestReading(sensors, isSiliconDieSensor, "silicon_peak", siliconPeakLabel);
}

std::optional<Reading> storageReading(const NamedSensors& sensors) {
  return hottestReading(sensors, isStorageSensor, "storage", storageLabel);
}

std::optional<Reading> memoryReading(const NamedSensors& sensors) {
  return hottestReading(sensors, isMemorySensor, "memory", memoryLabel);
}

/// A palm-rest sensor keeps its own name, so that a warm palm rest does not pass for the room.
std::optional<Reading> ambientReading(const NamedSensors& sensors) {
  if (const NamedSensor* sensor = hottest(sensors, isAmbientSensor)) {
    return Reading{"ambient", displayLabel(*sensor), sensor->temperature()};
  }
  return std::nullopt;
}

std::optional<Reading> wirelessReading(const NamedSensors& sensors) {
  return hottestReading(sensors, isWirelessSensor, "wireless", wirelessLabel);
}

std::optional<Reading> representative(const NamedSensors& sensors,
                                      const std::optional<BatteryInfo>& battery) {
  if (auto mean = meanReading(sensors, isCPUAverageSensor, "cpu_avg", cpuAverageLabel)) {
    return mean;
  }
  if (auto mean = meanReading(sensors, isSiliconDieSensor, "silicon_avg", siliconAverageLabel)) {
    return mean;
  }
  if (const NamedSensor* sensor = preferredCPUSensor(sensors)) {
    // It takes the mean's place and carries its label.
    return Reading{sensor->key(), std::string{cpuAverageLabel}, sensor->temperature()};
  }
  if (auto reading = batteryReading(sensors, battery)) {
    return reading;
  }
  if (const NamedSensor* sensor = hottest(sensors, isHumanReadable)) {
    return readingOf(*sensor);
  }
  return std::nullopt;
}

/// Readings of which the first one of each label stays, labels compared without regard to case.
class UniqueReadings {
 public:
  void appendUnique(const std::optional<Reading>& reading) {
    if (!reading) {
      return;
    }
    std::string label = text::lowercased(reading->label);
    if (std::ranges::find(labels_, label) == labels_.end()) {
      labels_.push_back(std::move(label));
      readings_.push_back(*reading);
    }
  }

  [[nodiscard]] bool hasLabel(std::string_view label) const {
    return std::ranges::find(readings_, label, &Reading::label) != readings_.end();
  }
  [[nodiscard]] std::size_t size() const { return readings_.size(); }
  [[nodiscard]] std::vector<Reading> take() { return std::move(readings_); }

 private:
  std::vector<std::string> labels_;
  std::vector<Reading> readings_;
};

/// The sensors that no curated reading has covered, by their own names, hottest first.
std::vector<Reading> leftovers(const NamedSensors& sensors, const UniqueReadings& shown) {
  const bool coresCovered = shown.hasLabel(cpuAverageLabel) || shown.hasLabel(cpuPeakLabel);
  const bool diesCovered = shown.hasLabel(siliconAverageLabel) || shown.hasLabel(siliconPeakLabel);
  std::vector<Reading> result;
  for (const NamedSensor& sensor : sensors) {
    if (isHumanReadable(sensor) && !(coresCovered && isCPUAverageSensor(sensor)) &&
        !(diesCovered && isSiliconDieSensor(sensor))) {
      result.push_back(readingOf(sensor));
    }
  }
  std::ranges::stable_sort(result, std::ranges::greater{}, &Reading::temperature);
  return result;
}

std::vector<Reading> curatedReadings(const NamedSensors& sensors,
                                     const std::optional<BatteryInfo>& battery, bool includePeak,
                                     std::size_t limit) {
  UniqueReadings result;
  result.appendUnique(representative(sensors, battery));

  const std::array<std::optional<Reading>, 6> candidates =
      includePeak ? std::array{siliconPeakReading(sensors), batteryReading(sensors, battery),
                               storageReading(sensors),     memoryReading(sensors),
                               ambientReading(sensors),     wirelessReading(sensors)}
                  : std::array{storageReading(sensors),  batteryReading(sensors, battery),
                               memoryReading(sensors),   ambientReading(sensors),
                               wirelessReading(sensors), siliconPeakReading(sensors)};
  for (const std::optional<Reading>& candidate : candidates) {
    result.appendUnique(candidate);
    if (result.size() >= limit) {
      return result.take();
    }
  }

  for (const Reading& reading : leftovers(sensors, result)) {
    result.appendUnique(reading);
    if (result.size() >= limit) {
      break;
    }
  }
  return result.take();
}

}  // namespace

std::optional<TemperatureDisplayReading> representativeReading(
    std::span<const TemperatureSensor> sensors, const std::optional<BatteryInfo>& battery) {
  return representative(named(sensors), battery);
}

std::vector<TemperatureDisplayReading> menuHighlights(std::span<const TemperatureSensor> sensors,
                                                      const std::optional<BatteryInfo>& battery) {
  return curatedReadings(named(sensors), battery, false, menuLimit);
}

std::vector<TemperatureDisplayReading> dashboardReadings(
    std::span<const TemperatureSensor> sensors, const std::optional<BatteryInfo>& battery) {
  return curatedReadings(named(sensors), battery, true, dashboardLimit);
}

}  // namespace quorvex::TemperatureInsights
