#pragma once

#include <QRect>
#include <functional>
#include <memory>

class QObject;
class QQuickWindow;

namespace quorvex {

/// The windows that the app can open, one of each kind at most.
enum class Scene { dropdown, dashboard, settings };

/// Opens windows and takes them down. Nothing of a window exists before it is opened, the views'
/// language engine included, and nothing is left when the last one is closed. Main thread.
class WindowHost {
 public:
  /// Makes what a window shows. Its meta-object properties are what the view binds to; an invokable
  /// `setShown(bool)` hears whether anyone can see the window.
  using ModelMaker = std::function<std::unique_ptr<QObject>(Scene)>;

  WindowHost() = default;
  WindowHost(const WindowHost&) = delete;
  WindowHost& operator=(const WindowHost&) = delete;
  virtual ~WindowHost() = default;

  /// Opens the window, or brings it to the front.
  virtual void open(Scene scene) = 0;
  /// Opens the dropdown without a frame, beside `anchor` on the screen (beside the pointer when
  /// that is empty), or closes it; it also closes when the user turns to something else.
  virtual void openPopover(const QRect& anchor) = 0;
  virtual void close(Scene scene) = 0;

  /// The open window; null without one.
  [[nodiscard]] virtual QQuickWindow* window(Scene scene) const = 0;
  [[nodiscard]] bool isOpen(Scene scene) const { return window(scene) != nullptr; }
  /// Whether the views' language engine is loaded.
  [[nodiscard]] virtual bool hasEngine() const = 0;

  /// `callback` is called whenever the last window has gone.
  virtual void whenLastWindowCloses(std::function<void()> callback) = 0;
};

/// The one function that the module of the windows offers, by C linkage under this name. The caller
/// owns the result and moves the maker into it: `extern "C" WindowHost*
/// quorvex_make_windows(WindowHost::ModelMaker* makeModel)`.
inline constexpr const char* windowsEntryPoint = "quorvex_make_windows";

}  // namespace quorvex
