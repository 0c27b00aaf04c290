#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "AppFixture.h"
#include "AppRuntime.h"
#include "MachineSelection.h"
#include "Shell.h"

namespace quorvex::testing {

/// What the views' language complained about since the fixture was made.
inline std::vector<std::string> complaints;  // NOLINT(cert-err58-cpp)

inline void collectComplaints(QtMsgType type, const QMessageLogContext&, const QString& message) {
  // The off-screen platform has no window manager to talk to.
  if (type != QtDebugMsg && type != QtInfoMsg &&
      !message.startsWith(QStringLiteral("This plugin does not support"))) {
    complaints.push_back(message.toStdString());
  }
}

/// Runs the event loop until `isDone`; a test that waits in vain fails by its own expectations.
inline bool waitFor(const std::function<bool()>& isDone) {
  constexpr int longestWait = 30'000;
  QElapsedTimer timer;
  timer.start();
  while (!isDone() && timer.elapsed() < longestWait) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
  }
  return isDone();
}

/// Lets what a window shows follow what it was told.
inline void settle(QQuickWindow& window) {
  for (int i = 0; i < 5; ++i) {
    QCoreApplication::processEvents();
    static_cast<void>(window.grabWindow());
  }
}

/// The app with its windows on a recorded machine: the test's parameter, or `machineName()`.
class WindowTest : public ::testing::TestWithParam<const char*> {
 protected:
  WindowTest() {
    complaints.clear();
    previous_ = qInstallMessageHandler(collectComplaints);
    qputenv("QUORVEX_MACHINE",
            QByteArray(QUORVEX_MACHINES_FOLDER "/") + QByteArray(machineName()) + ".json");
    auto selected = selectMachine(PacePolicy::realOnly);
    machine_ = std::move(std::get<std::unique_ptr<Machine>>(selected));
    runtime_ = std::make_unique<AppRuntime>(machine_->clock());
    app = std::make_unique<QuorvexApp>(*machine_, runtime_->context());
    shell = std::make_unique<Shell>(*app);
  }
  ~WindowTest() override {
    shell.reset();
    app.reset();
    runtime_.reset();
    qInstallMessageHandler(previous_);
    qunsetenv("QUORVEX_MACHINE");
  }

  [[nodiscard]] virtual const char* machineName() const {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    return info->value_param() != nullptr ? GetParam() : "laptop-unplugged";
  }

  QQuickWindow* open(Scene scene) {
    shell->windows()->open(scene);
    return shell->windows()->window(scene);
  }
  [[nodiscard]] bool waitForReading() const {
    return waitFor([this] { return !app->engine().history().value().empty(); });
  }
  void expectNoComplaints() const {
    QCoreApplication::processEvents();
    for (const std::string& complaint : complaints) {
      ADD_FAILURE() << complaint;
    }
  }

  TemporaryHome home;
  std::unique_ptr<QuorvexApp> app;
  std::unique_ptr<Shell> shell;

 private:
  QtMessageHandler previous_ = nullptr;
  std::unique_ptr<Machine> machine_;
  std::unique_ptr<AppRuntime> runtime_;
};

}  // namespace quorvex::testing
