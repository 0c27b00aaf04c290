#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "AppCommands.h"
#include "FakeMachine.h"
#include "QuorvexApp.h"
#include "SampleBatteryDictionaries.h"
#include "SteppedContext.h"
#include "TemporaryFolder.h"

namespace quorvex::testing {

/// A home folder of its own for the length of a test.
class TemporaryHome {
 public:
  TemporaryHome() {
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
      setenv(variable, folder_.path().c_str(), 1);
    }
  }

  [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }

 private:
  TemporaryFolder folder_;
};

/// The app on a machine of fakes and a virtual clock: a laptop that draws 18 W from its battery
/// (12.0 V times 1.5 A) and has 81 %.
class AppTest : public ::testing::Test {
 protected:
  AppTest() {
    Dictionary registry = samples::fullRegistry();
    registry.insert_or_assign("ExternalConnected", false);
    machine.battery.registryAnswer = registry;
  }

  /// Starts the app, or starts it again over the same store and settings.
  void startApp() {
    app.reset();
    app = std::make_unique<QuorvexApp>(machine, stepped.context(), noWaiting);
    commands = std::make_unique<AppCommands>(*app);
  }

  /// Lets everything happen that happens now, the event loop included.
  void settle() {
    for (int i = 0; i < 4; ++i) {
      stepped.settle();
      QCoreApplication::processEvents();
    }
  }
  void advance(double seconds) {
    stepped.advance(seconds);
    settle();
  }

  /// Where a test keeps the store busy, it is busy until the test ends.
  static constexpr std::chrono::milliseconds noWaiting{0};

  TemporaryHome home;
  FakeMachine machine;
  SteppedContext stepped{machine.time};
  std::unique_ptr<QuorvexApp> app;
  std::unique_ptr<AppCommands> commands;
};

}  // namespace quorvex::testing
