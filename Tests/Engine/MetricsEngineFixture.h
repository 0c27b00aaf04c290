#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FakeMachine.h"
#include "MetricsEngine.h"
#include "SteppedContext.h"

namespace quorvex::testing {

/// What a silicon reading blocks for, in seconds.
inline constexpr double siliconReadTime = 0.1;

/// An engine on a machine of fakes, stepped by hand.
class MetricsEngineTest : public ::testing::Test {
 protected:
  MetricsEngineTest() {
    setCPUWatts(4.0);
    setCounters(1000, 500);
    machine.interfaces.names[4] = "en0";
  }

  void makeEngine(double interval = 2.0, std::int64_t historyLimit = 60) {
    engine = MetricsEngine::make(machine, stepped.context(), interval, historyLimit);
  }

  void setCPUWatts(double watts) {
    const auto nanojoules = static_cast<std::int64_t>(watts * siliconReadTime * 1e9);
    machine.energy.setChannels({{.name = "CPU Energy", .value = nanojoules}});
  }
  void setCounters(std::uint64_t bytesIn, std::uint64_t bytesOut) {
    machine.interfaces.set({{.index = 4, .bytesIn = bytesIn, .bytesOut = bytesOut}});
  }
  void setHelperSensor(const std::string& key, double temperature) {
    constexpr const char* path = PrivilegedSMCHelperService::defaultHelperPath;
    machine.files.set(path, {});
    machine.children.answer(path, {"read-temperatures-json"},
                            {.output = R"([{"key":")" + key + R"(","name":"N","temperature":)" +
                                       std::to_string(temperature) + "}]"});
  }

  [[nodiscard]] const SystemPowerState& current() const { return engine->currentState().value(); }
  [[nodiscard]] const std::vector<SystemPowerState>& history() const {
    return engine->history().value();
  }
  /// How many polls have been published.
  [[nodiscard]] std::size_t pollCount() const { return history().size(); }
  [[nodiscard]] double cpuWatts() const { return current().power ? current().power->cpuPower : -1; }

  FakeMachine machine;
  SteppedContext stepped{machine.time};
  std::shared_ptr<MetricsEngine> engine;
};

}  // namespace quorvex::testing
