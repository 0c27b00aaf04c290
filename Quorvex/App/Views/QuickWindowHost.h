#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <array>
#include <functional>
#include <memory>

#include "WindowHost.h"

namespace quorvex {

/// The windows as Qt Quick draws them. Main thread.
class QuickWindowHost final : public QObject, public WindowHost {
  Q_OBJECT

 public:
  explicit QuickWindowHost(ModelMaker makeModel) : makeModel_(std::move(makeModel)) {}
  ~QuickWindowHost() override;

  void open(Scene scene) override;
  void openPopover(const QRect& anchor) override;
  void close(Scene scene) override;
  [[nodiscard]] QQuickWindow* window(Scene scene) const override;
  [[nodiscard]] bool hasEngine() const override { return engine_ != nullptr; }
  void whenLastWindowCloses(std::function<void()> callback) override {
    lastWindowClosed_ = std::move(callback);
  }

 private:
  /// A window and what it shows.
  struct OpenWindow {
    std::unique_ptr<QObject> model;
    std::unique_ptr<QQuickWindow> window;
  };
  static constexpr std::size_t sceneCount = 3;

  [[nodiscard]] bool hasWindows() const;
  QQuickWindow* make(Scene scene, bool isPopover);
  void followVisibility(Scene scene, bool isPopover);
  void takeDown(Scene scene);

  ModelMaker makeModel_;
  std::function<void()> lastWindowClosed_;
  QElapsedTimer sincePopoverLeft_;
  std::unique_ptr<QQmlEngine> engine_;
  std::array<OpenWindow, sceneCount> windows_;
};

}  // namespace quorvex
