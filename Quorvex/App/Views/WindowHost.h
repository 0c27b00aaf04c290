#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRect>

#include <array>
#include <functional>
#include <memory>

namespace quorvex {

/// The windows that the app can open, one of each kind at most.
enum class Scene { dropdown, dashboard, settings };

/// Opens windows and takes them down. Nothing of a window exists before it is opened, the views'
/// language engine included, and nothing is left when the last one is closed. Main thread.
class WindowHost : public QObject {
  Q_OBJECT

 public:
  /// Makes what a window shows. Its meta-object properties are what the view binds to; a slot
  /// `setShown(bool)` hears whether anyone can see the window.
  using ModelMaker = std::function<std::unique_ptr<QObject>(Scene)>;

  explicit WindowHost(ModelMaker makeModel, QObject* parent = nullptr);
  ~WindowHost() override;

  /// Opens the window, or brings it to the front.
  void open(Scene scene);
  /// Opens the dropdown without a frame, beside `anchor` on the screen (beside the pointer when that
  /// is empty); it closes when the user turns to something else.
  void openPopover(const QRect& anchor);
  void close(Scene scene);

  [[nodiscard]] bool isOpen(Scene scene) const;
  /// The open window; null without one.
  [[nodiscard]] QQuickWindow* window(Scene scene) const;
  [[nodiscard]] bool hasWindows() const;
  /// Whether the views' language engine is loaded.
  [[nodiscard]] bool hasEngine() const { return engine_ != nullptr; }

 signals:
  void windowClosed(quorvex::Scene scene);
  void lastWindowClosed();

 private:
  /// A window and what it shows.
  struct OpenWindow {
    std::unique_ptr<QObject> model;
    std::unique_ptr<QQuickWindow> window;
  };
  static constexpr std::size_t sceneCount = 3;

  QQuickWindow* make(Scene scene, bool isPopover);
  void followVisibility(Scene scene, bool isPopover);
  void takeDown(Scene scene);

  ModelMaker makeModel_;
  std::unique_ptr<QQmlEngine> engine_;
  std::array<OpenWindow, sceneCount> windows_;
};

}  // namespace quorvex
