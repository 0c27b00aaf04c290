#include "LiveModel.h"

#include <QMetaObject>
#include <utility>

namespace quorvex {

void LiveModel::setShown(bool isShown) {
  if (isShown == isShown_) {
    return;
  }
  isShown_ = isShown;
  if (isShown_ && isStale_) {
    refresh();
  }
  emit shownChanged(isShown_);
}

void LiveModel::schedule() {
  isStale_ = true;
  if (!isShown_ || std::exchange(isScheduled_, true)) {
    return;
  }
  QMetaObject::invokeMethod(
      this,
      [this] {
        isScheduled_ = false;
        if (isShown_ && isStale_) {
          refresh();
        }
      },
      Qt::QueuedConnection);
}

void LiveModel::refresh() {
  isStale_ = false;
  QVariantMap content = makeContent();
  if (content == content_) {
    return;
  }
  content_ = std::move(content);
  emit contentChanged();
}

}  // namespace quorvex
