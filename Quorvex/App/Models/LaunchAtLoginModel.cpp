#include "LaunchAtLoginModel.h"

#include "ShownControls.h"

namespace quorvex {

LaunchAtLoginModel::LaunchAtLoginModel(LoginItem& loginItem, bool showsStatus, QObject* parent)
    : LiveModel(parent), loginItem_(&loginItem), showsStatus_(showsStatus) {
  refresh();
  // The system's own settings may have changed it since it was last seen.
  schedule();
}

void LaunchAtLoginModel::setEnabled(bool isEnabled) {
  errorMessage_ = isEnabled ? loginItem_->registerItem() : loginItem_->unregisterItem();
  refresh();
}

QVariantMap LaunchAtLoginModel::makeContent() {
  return shownMap(
      launchAtLoginToggle(loginItem_->status(), launchAtLoginTitle, showsStatus_, errorMessage_));
}

}  // namespace quorvex
