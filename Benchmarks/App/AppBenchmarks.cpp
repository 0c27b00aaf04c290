#include <dlfcn.h>
#include <fmt/format.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>
#include <QVariant>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "AppRuntime.h"
#include "GeneratedSession.h"
#include "PowerSessionStore.h"
#include "QuorvexApp.h"
#include "RecordedMachine.h"
#include "ResidentMemory.h"
#include "Shell.h"
#include "TemporaryFolder.h"
#include "WholeProcess.h"

// What the app's windows cost, drawn by the processor, off screen where there is no display: the
// time from the click to the first frame, the memory of a long run, and the pauses of the event
// loop while a day's report is opened. In the role "open-and-close" it runs for app_processes.py.
// Nothing of the windows' toolkit is linked: as in the app, it comes with the first window.

namespace quorvex {
namespace {

using benchmarks::median;
using benchmarks::residentKilobytes;

constexpr std::size_t daySamples = 43'200;  // a day at 2 s

std::unique_ptr<RecordedMachine> machineNamed(const char* name, RecordedMachine::Pace pace) {
  auto loaded = RecordedMachine::load(fmt::format(QUORVEX_MACHINES_FOLDER "/{}.json", name), pace);
  if (auto* machine = std::get_if<std::unique_ptr<RecordedMachine>>(&loaded)) {
    return std::move(*machine);
  }
  fmt::print(stderr, "{} cannot be loaded\n", name);
  std::exit(EXIT_FAILURE);
}

/// A home folder of its own for the process.
class TemporaryHome {
 public:
  TemporaryHome() {
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
      qputenv(variable, folder_.path().c_str());
    }
    qputenv("XDG_RUNTIME_DIR", folder_.path().c_str());
  }

 private:
  testing::TemporaryFolder folder_;
};

// --- From the click to the first frame -----------------------------------------------------------

/// Calls `open`, which gives the window, and prints the milliseconds until its first frame.
int printTimeToFirstFrame(const std::function<QObject*()>& open) {
  int status = EXIT_FAILURE;
  QElapsedTimer sinceClick;
  // What a signal named by its text calls must be a slot that exists: the timer's.
  QTimer painted;
  painted.setSingleShot(true);
  QObject::connect(&painted, &QTimer::timeout, qApp, [&] {
    fmt::print("{}\n", static_cast<double>(sinceClick.nsecsElapsed()) / 1e6);
    status = EXIT_SUCCESS;
    QCoreApplication::quit();
  });
  QTimer::singleShot(200, qApp, [&] {
    sinceClick.start();
    QObject* window = open();
    if (window == nullptr ||
        !QObject::connect(window, SIGNAL(frameSwapped()), &painted, SLOT(start()))) {
      QCoreApplication::quit();
    }
  });
  QApplication::exec();
  return status;
}

int showDropdown() {
  const auto machine = machineNamed("laptop-unplugged", RecordedMachine::Pace::real);
  AppRuntime runtime(machine->clock());
  QuorvexApp app(*machine, runtime.context());
  Shell shell(app);
  return printTimeToFirstFrame([&shell]() -> QObject* {
    WindowHost* windows = shell.windows();
    windows->openPopover(QRect{400, 0, 22, 22});
    // The window's own class is not known here.
    return reinterpret_cast<QObject*>(windows->window(Scene::dropdown));
  });
}

int showEmptyWindow() {
  return printTimeToFirstFrame([]() -> QObject* {
    void* module = dlopen(QUORVEX_EMPTY_WINDOW, RTLD_NOW | RTLD_LOCAL);
    void* symbol = module != nullptr ? dlsym(module, "openEmptyWindow") : nullptr;
    return symbol != nullptr ? reinterpret_cast<QObject* (*)()>(symbol)() : nullptr;
  });
}

/// What this program prints in another role, in a process of its own.
double figureOfRole(const QString& role) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), {role});
  process.waitForFinished();
  bool isNumber = false;
  const double figure = process.readAllStandardOutput().trimmed().toDouble(&isNumber);
  if (!isNumber) {
    fmt::print(stderr, "{} gave no figure\n", role.toStdString());
    std::exit(EXIT_FAILURE);
  }
  return figure;
}

void measureFirstFrame() {
  constexpr int rounds = 21;
  std::vector<double> dropdown;
  std::vector<double> empty;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    empty.push_back(figureOfRole(QStringLiteral("empty-window")));
    dropdown.push_back(figureOfRole(QStringLiteral("dropdown")));
    ratios.push_back(dropdown.back() / empty.back());
  }
  fmt::print(
      "click to first frame: dropdown {:.0f} ms, empty window {:.0f} ms, {:.2f} times "
      "(medians of {} pairs)\n",
      median(dropdown), median(empty), median(ratios), rounds);
}

// --- Memory after every window was open ----------------------------------------------------------

constexpr int openFor = 3000;  ///< milliseconds that each window stays

/// The app with its menu-bar item: opens every kind of window, closes them, says when all have gone
/// and stays.
int openAndCloseEveryWindow() {
  const auto machine = machineNamed("laptop-unplugged", RecordedMachine::Pace::real);
  AppRuntime runtime(machine->clock());
  QuorvexApp app(*machine, runtime.context());
  Shell shell(app);
  shell.show();
  const auto scenes = {Scene::dropdown, Scene::dashboard, Scene::settings};
  QTimer::singleShot(200, qApp, [&] {
    for (const Scene scene : scenes) {
      shell.windows()->open(scene);
    }
  });
  QTimer::singleShot(openFor, qApp, [&] {
    for (const Scene scene : scenes) {
      shell.windows()->close(scene);
    }
  });
  QTimer::singleShot(2 * openFor, qApp, [&] {
    fmt::print("{}\n", shell.windows()->hasEngine() ? "windows are left" : "closed");
    static_cast<void>(std::fflush(stdout));
  });
  return QApplication::exec();
}

// --- The memory of a long run --------------------------------------------------------------------

/// Wakes every sleeper at the event loop's next turn, and lets the recorded machine's clock run by
/// what it wanted to sleep.
class HurriedSleeper final : public AsyncSleeper {
 public:
  explicit HurriedSleeper(Clock& clock) : clock_(&clock) {}

  std::unique_ptr<PendingSleep> sleep(double seconds, std::function<void()> wake) override {
    return std::make_unique<Sleep>(*clock_, seconds, std::move(wake));
  }

 private:
  class Sleep final : public PendingSleep {
   public:
    Sleep(Clock& clock, double seconds, std::function<void()> wake) {
      timer_.setSingleShot(true);
      QObject::connect(&timer_, &QTimer::timeout, &timer_,
                       [&clock, seconds, wake = std::move(wake)] {
                         clock.sleep(std::max(0.0, seconds));
                         // The wake-up may destroy this sleep and what it captured.
                         const auto now = wake;
                         now();
                       });
      timer_.start(0);
    }

   private:
    QTimer timer_;
  };

  Clock* clock_;
};

enum class Shown { nothing, dropdown };

/// Resident memory early in a run of the engine, and at its end.
void measureLongRun(std::string_view name, Shown shown, bool isRecording) {
  constexpr int early = 1'000;
  constexpr int end = 10'000;
  const TemporaryHome home;
  const auto machine = machineNamed("laptop-unplugged", RecordedMachine::Pace::instant);
  HurriedSleeper sleeper(machine->clock());
  AppRuntime runtime(machine->clock());
  AsyncContext context = runtime.context();
  context.sleeper = &sleeper;
  QuorvexApp app(*machine, context);
  Shell shell(app);
  if (shown == Shown::dropdown) {
    shell.windows()->open(Scene::dropdown);
  }
  if (isRecording) {
    shell.commands().startSession(QStringLiteral("Long run"));
  }
  app.engine().start();
  int polls = 0;
  double earlyKilobytes = 0.0;
  const auto counting =
      app.engine().currentState().subscribe([&](const SystemPowerState& /*state*/) {
        ++polls;
        if (polls == early) {
          earlyKilobytes = residentKilobytes();
        } else if (polls == end) {
          QCoreApplication::quit();
        }
      });
  QApplication::exec();
  fmt::print("{}: {:.0f} kB after {} polls, {:+.0f} kB after {}\n", name, earlyKilobytes, early,
             residentKilobytes() - earlyKilobytes, end);
  app.engine().stop();
}

// --- Opening the report of a day -----------------------------------------------------------------

template <typename Value>
Value valueOf(StoreResult<Value> answer) {
  if (!answer) {
    fmt::print(stderr, "{}\n", answer.error().description);
    std::exit(EXIT_FAILURE);
  }
  return *std::move(answer);
}

void storeDay(Clock& clock) {
  const auto store = valueOf(PowerSessionStore::open(
      {.appVersion = "0", .storeURL = PowerSessionStore::defaultStoreURL()}, clock));
  const Date start = benchmarks::generatedState(0, false).timestamp;
  const auto session = valueOf(store->startSession("A day", PowerSessionSource::app, 2.0, start));
  for (std::size_t second = 0; second < daySamples; ++second) {
    static_cast<void>(valueOf(store->appendSample(
        *session, benchmarks::generatedState(second, second % 5 == 0), {}, std::nullopt)));
  }
  const auto stopped =
      store->stopSession(*session, benchmarks::generatedState(daySamples, false).timestamp);
  if (!stopped) {
    fmt::print(stderr, "{}\n", stopped.error().description);
    std::exit(EXIT_FAILURE);
  }
}

/// How long the event loop stood still at the longest.
class LongestPause {
 public:
  LongestPause() {
    last_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(1);
  }

  void look() {
    longest_ = std::max(longest_, static_cast<double>(last_.nsecsElapsed()) / 1e6);
    last_.start();
  }
  [[nodiscard]] double milliseconds() const { return longest_; }

 private:
  QElapsedTimer last_;
  QTimer timer_;
  double longest_ = 0.0;
};

void measureOpeningTheReport() {
  const TemporaryHome home;
  const auto machine = machineNamed("laptop-unplugged", RecordedMachine::Pace::real);
  storeDay(machine->clock());
  AppRuntime runtime(machine->clock());
  QuorvexApp app(*machine, runtime.context());
  Shell shell(app);
  shell.windows()->open(Scene::dashboard);
  auto* window = reinterpret_cast<QObject*>(shell.windows()->window(Scene::dashboard));
  auto* model = window->property("model").value<QObject*>();
  auto* report = model->property("history").value<QObject*>()->property("report").value<QObject*>();
  QElapsedTimer sinceClick;
  double shownAfter = 0.0;
  std::unique_ptr<LongestPause> pause;
  QTimer::singleShot(2000, qApp, [&] {
    pause = std::make_unique<LongestPause>();
    sinceClick.start();
    model->setProperty("tab", 1);
  });
  QTimer looking;
  QObject::connect(&looking, &QTimer::timeout, qApp, [&] {
    if (pause != nullptr && shownAfter == 0.0 && report->property("hasReport").toBool()) {
      shownAfter = static_cast<double>(sinceClick.nsecsElapsed()) / 1e6;
      // What is drawn for it belongs to it.
      QTimer::singleShot(1000, qApp, [] { QCoreApplication::quit(); });
    }
  });
  looking.start(10);
  QTimer::singleShot(120'000, qApp, [] { QCoreApplication::exit(EXIT_FAILURE); });
  if (QApplication::exec() != EXIT_SUCCESS) {
    fmt::print(stderr, "the report never came\n");
    std::exit(EXIT_FAILURE);
  }
  fmt::print("report of {} samples: there after {:.0f} ms, longest pause of the window {:.0f} ms\n",
             daySamples, shownAfter, pause->milliseconds());
}

int run(int argumentCount, char** arguments) {
  const std::string_view role = argumentCount > 1 ? arguments[1] : "";
  const TemporaryHome home;
  qputenv("QT_QUICK_BACKEND", "software");
  if (qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  if (role == "dropdown") {
    return showDropdown();
  }
  if (role == "empty-window") {
    return showEmptyWindow();
  }
  if (role == "open-and-close") {
    return openAndCloseEveryWindow();
  }
  if (role.empty() || role == "first-frame") {
    measureFirstFrame();
  }
  if (role.empty() || role == "long-run") {
    measureLongRun("polling, nothing open", Shown::nothing, false);
    measureLongRun("polling, dropdown open", Shown::dropdown, false);
    measureLongRun("recording, nothing open", Shown::nothing, true);
  }
  if (role.empty() || role == "report") {
    measureOpeningTheReport();
  }
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quorvex

int main(int argumentCount, char** arguments) {
  return quorvex::run(argumentCount, arguments);
}
