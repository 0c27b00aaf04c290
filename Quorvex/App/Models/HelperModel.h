#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <string_view>

#include "HelperControls.h"
#include "LiveModel.h"
#include "LocalizedDate.h"
#include "QuorvexApp.h"
#include "TaskHandle.h"

namespace quorvex {

/// The dashboard's controls of the privileged helper tool, and its loop of privileged samples while
/// it exists and the setting is on. The tool runs on the workers only. Main thread.
class HelperModel : public LiveModel {
  Q_OBJECT

 public:
  /// The app outlives the model. Asks for the tool's status. The tool that can be installed is
  /// looked for in the bundle of the program in `programFolder`, or beside it.
  explicit HelperModel(QuorvexApp& app,
                       QString programFolder = QCoreApplication::applicationDirPath(),
                       QObject* parent = nullptr);
  ~HelperModel() override;

  /// Installs the tool from among the app's resources.
  Q_INVOKABLE void install();
  /// Reads the status anew, and takes a sample when the setting is on.
  Q_INVOKABLE void refreshStatus();

  /// Tells why an export failed: this is the place for it.
  void tellExportFailure(std::string_view error);

 protected:
  QVariantMap makeContent() override;

 private:
  /// Makes `next` the state, and what it says of the setting the setting.
  void apply(HelperControlsState next);
  /// The state with the setting as it is now.
  [[nodiscard]] HelperControlsState current() const;
  void readStatus();
  void restartLoop();

  static asio::awaitable<void> readStatusNow(QuorvexApp& app, QPointer<HelperModel> self);
  static asio::awaitable<void> installNow(QuorvexApp& app, QPointer<HelperModel> self,
                                          std::string source);
  static asio::awaitable<void> sampleNow(QuorvexApp& app, QPointer<HelperModel> self);
  static asio::awaitable<void> loop(QuorvexApp& app, QPointer<HelperModel> self,
                                    std::shared_ptr<TaskHandle> task);

  QuorvexApp* app_;
  QString programFolder_;
  ShortTimeFormat times_;
  HelperControlsState state_;
  Subscription lastMessage_;
  std::shared_ptr<TaskHandle> loopTask_;
};

}  // namespace quorvex
