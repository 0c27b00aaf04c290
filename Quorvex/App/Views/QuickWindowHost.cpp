#include "QuickWindowHost.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMetaObject>
#include <QQmlComponent>
#include <QScreen>
#include <QTimer>
#include <QVariantMap>
#include <algorithm>

#include "FatalError.h"
#include "TypeScale.h"
#include "ViewTypes.h"

namespace quorvex {

namespace {

constexpr qint64 sameClick = 250;  ///< milliseconds between the two effects of one click
constexpr int popoverGap = 6;  ///< between the menu-bar item and the window, and at screen edges

QUrl sourceOf(Scene scene) {
  constexpr std::array files{"MenuBarDropdown", "DashboardWindow", "SettingsWindow"};
  return QUrl(QStringLiteral("qrc:/qml/Quorvex/%1.qml")
                  .arg(QLatin1String(files.at(static_cast<std::size_t>(scene)))));
}

/// The corner from which a window of this size hangs below the anchor, or stands above one at the
/// bottom of the screen.
QPoint placeBeside(const QRect& anchor, QSize size, const QRect& screen) {
  const bool isAtTop = anchor.center().y() < screen.center().y();
  const int y = isAtTop ? anchor.bottom() + popoverGap : anchor.top() - popoverGap - size.height();
  const int x = anchor.center().x() - size.width() / 2;
  return {
      std::clamp(x, screen.left() + popoverGap,
                 std::max(screen.left() + popoverGap, screen.right() - popoverGap - size.width())),
      std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() - size.height()))};
}

}  // namespace

QuickWindowHost::~QuickWindowHost() {
  for (auto& open : windows_) {
    open.window.reset();
    open.model.reset();
  }
}

QQuickWindow* QuickWindowHost::window(Scene scene) const {
  return windows_.at(static_cast<std::size_t>(scene)).window.get();
}

bool QuickWindowHost::hasWindows() const {
  return std::ranges::any_of(windows_, [](const auto& open) { return open.window != nullptr; });
}

QQuickWindow* QuickWindowHost::make(Scene scene, bool isPopover) {
  if (engine_ == nullptr) {
    engine_ = std::make_unique<QQmlEngine>();
    registerViewTypes(*engine_);
  }
  // The toolkit reads the window's document on a thread of its own. What is done here meanwhile the
  // window does not wait for.
  const QQmlComponent ahead(engine_.get(), sourceOf(scene), QQmlComponent::Asynchronous);
  auto& open = windows_.at(static_cast<std::size_t>(scene));
  open.model = makeModel_(scene);
  TypeScale{}.read();
  QQmlComponent component(engine_.get(), sourceOf(scene));
  QVariantMap properties{{QStringLiteral("model"), QVariant::fromValue(open.model.get())}};
  if (scene == Scene::dropdown) {
    properties.insert(QStringLiteral("isPopover"), isPopover);
  }
  // A view that does not even compile must not be made.
  std::unique_ptr<QObject> root(
      component.isReady() ? component.createWithInitialProperties(properties) : nullptr);
  auto* window = qobject_cast<QQuickWindow*>(root.get());
  if (window == nullptr) {
    fatalError("A window of the app cannot be made: " + component.errorString().toStdString());
  }
  root.release();  // NOLINT(bugprone-unused-return-value): the window is the root
  open.window.reset(window);
  return window;
}

void QuickWindowHost::open(Scene scene) {
  if (auto* present = window(scene)) {
    present->show();
    present->raise();
    present->requestActivate();
    return;
  }
  auto* made = make(scene, false);
  made->show();
  followVisibility(scene, false);
}

void QuickWindowHost::openPopover(const QRect& anchor) {
  if (isOpen(Scene::dropdown)) {
    close(Scene::dropdown);
    return;
  }
  // The click that was to close an open popover has already closed it by turning elsewhere.
  if (sincePopoverLeft_.isValid() && sincePopoverLeft_.elapsed() < sameClick) {
    return;
  }
  auto* made = make(Scene::dropdown, true);
  const QRect beside = anchor.isEmpty() ? QRect{QCursor::pos(), QSize{1, 1}} : anchor;
  const QScreen* screen = QGuiApplication::screenAt(beside.center());
  if (screen == nullptr) {
    screen = QGuiApplication::primaryScreen();
  }
  made->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  made->setScreen(const_cast<QScreen*>(screen));
  made->setPosition(placeBeside(beside, made->size(), screen->availableGeometry()));
  made->show();
  made->requestActivate();
  followVisibility(Scene::dropdown, true);
}

void QuickWindowHost::close(Scene scene) {
  if (auto* present = window(scene)) {
    present->close();
  }
}

void QuickWindowHost::followVisibility(Scene scene, bool isPopover) {
  const auto& open = windows_.at(static_cast<std::size_t>(scene));
  auto* window = open.window.get();
  auto* model = open.model.get();
  QMetaObject::invokeMethod(model, "setShown", Q_ARG(bool, true));
  connect(window, &QWindow::visibilityChanged, this, [=, this](QWindow::Visibility visibility) {
    const bool isShown = visibility != QWindow::Hidden && visibility != QWindow::Minimized;
    QMetaObject::invokeMethod(model, "setShown", Q_ARG(bool, isShown));
    if (visibility == QWindow::Hidden) {
      // The window itself is still at work on being hidden.
      QTimer::singleShot(0, window, [this, scene] { takeDown(scene); });
    }
  });
  if (isPopover) {
    connect(window, &QWindow::activeChanged, window, [this, window] {
      if (!window->isActive()) {
        sincePopoverLeft_.start();
        window->close();
      }
    });
  }
}

void QuickWindowHost::takeDown(Scene scene) {
  auto& open = windows_.at(static_cast<std::size_t>(scene));
  if (open.window == nullptr || open.window->isVisible()) {
    return;
  }
  // The view goes before the model that it is bound to.
  open.window.release()->deleteLater();
  open.model.release()->deleteLater();
  if (hasWindows()) {
    return;
  }
  QQmlEngine* engine = engine_.release();
  connect(engine, &QObject::destroyed, this, [this] {
    if (engine_ == nullptr && lastWindowClosed_) {
      lastWindowClosed_();
    }
  });
  engine->deleteLater();
}

}  // namespace quorvex
