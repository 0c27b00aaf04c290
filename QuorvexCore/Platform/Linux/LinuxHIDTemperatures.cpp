#include "LinuxHIDTemperatures.h"

#include <string_view>
#include <utility>

#include "SystemTree.h"

namespace quorvex {

namespace {

constexpr std::string_view inputSuffix = "_input";

bool isTemperatureInput(std::string_view file) {
  return file.starts_with("temp") && file.ends_with(inputSuffix);
}

std::optional<std::string> productName(const std::optional<std::string>& device,
                                       const std::optional<std::string>& label) {
  if (device && label) {
    return *device + " " + *label;
  }
  return device ? device : label;
}

/// Millidegrees as degrees.
std::optional<double> temperature(const std::string& input) {
  const bool isFaulty = system_tree::readInteger(input + "_fault").value_or(0) != 0;
  const std::optional<std::int64_t> millidegrees =
      isFaulty ? std::nullopt : system_tree::readInteger(input + "_input");
  return millidegrees ? std::optional{static_cast<double>(*millidegrees) / 1000.0} : std::nullopt;
}

class Client final : public HIDTemperatureClient {
 public:
  explicit Client(std::string folder) : folder_(std::move(folder)) {}

  std::optional<std::vector<HIDTemperatureService>> copyServices() override {
    const auto devices = system_tree::listFolder(folder_);
    if (!devices) {
      return std::nullopt;
    }
    std::vector<HIDTemperatureService> services;
    for (const std::string& device : *devices) {
      appendServices(folder_ + "/" + device, services);
    }
    return services;
  }

 private:
  static void appendServices(const std::string& device,
                             std::vector<HIDTemperatureService>& services) {
    const std::optional<std::string> name = system_tree::readWord(device + "/name");
    for (const std::string& file : system_tree::folderNames(device)) {
      if (!isTemperatureInput(file)) {
        continue;
      }
      const std::string input = device + "/" + file.substr(0, file.size() - inputSuffix.size());
      services.push_back(HIDTemperatureService{
          .product = productName(name, system_tree::readWord(input + "_label")),
          .value = temperature(input),
      });
    }
  }

  std::string folder_;
};

}  // namespace

LinuxHIDTemperatures::LinuxHIDTemperatures(const std::string& sysRoot)
    : folder_(sysRoot + "/class/hwmon") {}

std::unique_ptr<HIDTemperatureClient> LinuxHIDTemperatures::open() {
  if (!system_tree::listFolder(folder_)) {
    return nullptr;
  }
  return std::make_unique<Client>(folder_);
}

}  // namespace quorvex
