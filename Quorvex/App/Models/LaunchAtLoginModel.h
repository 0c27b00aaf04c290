#pragma once

#include <optional>
#include <string>

#include "LiveModel.h"
#include "LoginItem.h"

namespace quorvex {

/// The control that opens the app at login, over the machine's own entry. Its position is the true
/// status, also after a change that failed. Main thread.
class LaunchAtLoginModel : public LiveModel {
  Q_OBJECT

 public:
  /// `loginItem` outlives the model; `showsStatus` asks for the status below the switch.
  LaunchAtLoginModel(LoginItem& loginItem, bool showsStatus, QObject* parent = nullptr);

  Q_INVOKABLE void setEnabled(bool isEnabled);

 protected:
  QVariantMap makeContent() override;

 private:
  LoginItem* loginItem_;
  bool showsStatus_;
  std::optional<std::string> errorMessage_;
};

}  // namespace quorvex
