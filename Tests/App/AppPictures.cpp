#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QPalette>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryFile>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <variant>

#include "AppRuntime.h"
#include "DashboardModel.h"
#include "MachineSelection.h"
#include "QuorvexApp.h"
#include "Shell.h"

// Photographs a window of the app on the machine that the environment selects. Ends with status 1
// when a view complains.

namespace quorvex {

namespace {

int complaints = 0;

void countComplaints(QtMsgType type, const QMessageLogContext&, const QString& message) {
  static_cast<void>(std::fprintf(stderr, "%s\n", qPrintable(message)));
  // The off-screen platform has no window manager to talk to.
  const bool isOfPlatform = message.startsWith(QStringLiteral("This plugin does not support"));
  if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform) {
    ++complaints;
  }
}

/// A screen without a display is small: windows that keep to its height would not be seen whole.
void useRoomyScreen(QTemporaryFile& file) {
  if (qgetenv("QT_QPA_PLATFORM") != "offscreen" || !file.open()) {
    return;
  }
  file.write(R"({"screens": [{"name": "roomy", "x": 0, "y": 0, "width": 4000, "height": 4000,)"
             R"( "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  file.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

QPalette darkPalette() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(28, 28, 30));
  palette.setColor(QPalette::WindowText, Qt::white);
  return palette;
}

/// The first item below `item` that scrolls.
QQuickItem* scrollingItem(QQuickItem* item) {
  if (item->inherits("QQuickFlickable") && !item->inherits("QQuickListView")) {
    return item;
  }
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* found = scrollingItem(child)) {
      return found;
    }
  }
  return nullptr;
}

/// Tells at its end how long the event loop stood still at the longest.
class LongestPause {
 public:
  LongestPause() {
    last_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_,
                     [this] { longest_ = std::max(longest_, last_.restart()); });
    timer_.start(1);
  }
  LongestPause(const LongestPause&) = delete;
  LongestPause& operator=(const LongestPause&) = delete;
  ~LongestPause() {
    static_cast<void>(std::fprintf(stderr, "longest pause of the event loop: %lld ms\n",
                                   static_cast<long long>(longest_)));
  }

 private:
  QElapsedTimer last_;
  QTimer timer_;
  qint64 longest_ = 0;
};

struct Order {
  Scene scene = Scene::dropdown;
  bool showsHistory = false;
  QString file;
  QSize size;
  int scroll = 0;
};

Order orderOf(const QCommandLineParser& options) {
  const QString name = options.value(QStringLiteral("scene"));
  const QStringList size = options.value(QStringLiteral("size")).split(u'x');
  return {.scene = name == QStringLiteral("dropdown")   ? Scene::dropdown
                   : name == QStringLiteral("settings") ? Scene::settings
                                                        : Scene::dashboard,
          .showsHistory = name == QStringLiteral("history"),
          .file = options.value(QStringLiteral("output")),
          .size = size.size() == 2 ? QSize{size.at(0).toInt(), size.at(1).toInt()} : QSize{},
          .scroll = options.value(QStringLiteral("scroll")).toInt()};
}

void arrange(QQuickWindow& window, const Order& order) {
  if (order.size.isValid()) {
    window.resize(order.size);
  }
  if (order.showsHistory) {
    window.property("model").value<QObject*>()->setProperty("tab", 1);
  }
}

int take(QQuickWindow& window, const Order& order) {
  if (order.scroll != 0) {
    if (QQuickItem* page = scrollingItem(window.contentItem())) {
      page->setProperty("contentY", order.scroll);
    }
  }
  const bool isSaved = window.grabWindow().save(order.file, "PNG", 0);
  return isSaved && complaints == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run(int argumentCount, char** arguments) {
  qInstallMessageHandler(countComplaints);
  QTemporaryFile screen;
  useRoomyScreen(screen);
  QApplication application(argumentCount, arguments);
  QCommandLineParser options;
  options.addOptions({{QStringLiteral("scene"), {}, QStringLiteral("name")},
                      {QStringLiteral("output"), {}, QStringLiteral("file")},
                      {QStringLiteral("size"), {}, QStringLiteral("WxH")},
                      {QStringLiteral("scroll"), {}, QStringLiteral("pixels")},
                      {QStringLiteral("wait"), {}, QStringLiteral("seconds"), QStringLiteral("5")},
                      {QStringLiteral("graph"), {}, QStringLiteral("mode")},
                      {QStringLiteral("record"), {}},
                      {QStringLiteral("advanced"), {}},
                      {QStringLiteral("dark"), {}}});
  options.process(application);
  if (options.isSet(QStringLiteral("dark"))) {
    QApplication::setPalette(darkPalette());
  }
  auto machine = selectMachine(PacePolicy::realOnly);
  if (const auto* error = std::get_if<MachineSelectionError>(&machine)) {
    static_cast<void>(std::fprintf(stderr, "Error: %s\n", error->message.c_str()));
    return EXIT_FAILURE;
  }
  AppRuntime runtime(std::get<std::unique_ptr<Machine>>(machine)->clock());
  QuorvexApp app(*std::get<std::unique_ptr<Machine>>(machine), runtime.context());
  app.defaults().setShowAdvancedMetrics(options.isSet(QStringLiteral("advanced")));
  app.defaults().setRefreshInterval(0.5);
  if (options.isSet(QStringLiteral("graph"))) {
    app.defaults().setMenuGraphMode(options.value(QStringLiteral("graph")));
  }
  Shell shell(app);
  const Order order = orderOf(options);
  QElapsedTimer sinceClick;
  sinceClick.start();
  shell.windows()->open(order.scene);
  QQuickWindow* window = shell.windows()->window(order.scene);
  QObject::connect(
      window, &QQuickWindow::frameSwapped, window,
      [&sinceClick] {
        static_cast<void>(std::fprintf(stderr, "first frame after %lld ms\n",
                                       static_cast<long long>(sinceClick.elapsed())));
      },
      Qt::SingleShotConnection);
  arrange(*window, order);
  if (options.isSet(QStringLiteral("record"))) {
    shell.commands().startSession(QStringLiteral("Video call"));
  }
  LongestPause pause;
  int status = EXIT_FAILURE;
  QTimer::singleShot(options.value(QStringLiteral("wait")).toInt() * 1000, &application, [&] {
    status = take(*window, order);
    QCoreApplication::exit();
  });
  QApplication::exec();
  return status;
}

}  // namespace

}  // namespace quorvex

int main(int argumentCount, char** arguments) {
  return quorvex::run(argumentCount, arguments);
}
