#include "QtExecutor.h"

namespace quorvex {

QEvent::Type QtExecutionContext::Task::eventType() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

bool QtExecutionContext::Receiver::event(QEvent* event) {
  if (event->type() != Task::eventType()) {
    return QObject::event(event);
  }
  static_cast<Task*>(event)->run();
  return true;
}

QtExecutionContext::~QtExecutionContext() {
  // A function that is destroyed unrun may hand in another, such as the end of what it awaited.
  while (waiting_ != 0) {
    QCoreApplication::removePostedEvents(&receiver_);
  }
  shutdown();
}

}  // namespace quorvex
