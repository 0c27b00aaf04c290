#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "FakeClock.h"
#include "PowerSessionStore.h"
#include "SampleRecords.h"
#include "StoreFolder.h"

namespace quorvex::testing {

/// 2023-11-14T22:13:20Z, the start of the tests' sessions.
inline constexpr Date sessionStart{std::chrono::seconds{1'700'000'000}};

inline Date secondsIn(double seconds) {
  return dateByAdding(sessionStart, seconds);
}

/// A laptop that draws 8 W from its battery, with a fan and two sensors.
inline SystemPowerState laptopState(double seconds = 0.0) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-8.0);
  state.power = samples::silicon(3.0);
  state.thermal.pressure = 1;
  state.fans = {{.id = 0, .name = "Left", .currentRPM = 2000, .minRPM = 1200, .maxRPM = 6000},
                {.id = 1, .name = "Right", .currentRPM = 2100, .minRPM = 1200, .maxRPM = 6000}};
  state.sensors = {{"TC0P", "CPU", 61.5}, {"TG0P", "GPU", 58.25}};
  state.timestamp = secondsIn(seconds);
  return state;
}

/// A test with a store on disk that several connections may open.
class StoreTest : public ::testing::Test {
 protected:
  static constexpr const char* appVersion = "0.14.0";

  [[nodiscard]] StoreResult<std::unique_ptr<PowerSessionStore>> tryOpen() {
    // No waiting: where a test keeps the store busy, it is busy until the test ends.
    return PowerSessionStore::open({.appVersion = appVersion,
                                    .storeURL = folder.store(),
                                    .busyTimeout = std::chrono::milliseconds{0}},
                                   clock);
  }
  [[nodiscard]] std::unique_ptr<PowerSessionStore> openStore() {
    auto store = tryOpen();
    EXPECT_TRUE(store) << store.error().description;
    return store ? *std::move(store) : nullptr;
  }
  static std::shared_ptr<PowerSession> start(PowerSessionStore& store, double seconds = 0.0) {
    auto session = store.startSession("Test", PowerSessionSource::cli, 2.0, secondsIn(seconds));
    EXPECT_TRUE(session) << session.error().description;
    return session ? *session : nullptr;
  }

  StoreFolder folder;
  FakeClock clock{secondsIn(1000.0)};
};

}  // namespace quorvex::testing
