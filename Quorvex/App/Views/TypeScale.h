#pragma once

#include <QFont>
#include <QObject>

namespace quorvex {

/// The fonts of every text in the windows. Main thread.
class TypeScale : public QObject {
  Q_OBJECT
  Q_PROPERTY(QFont caption MEMBER caption CONSTANT)
  Q_PROPERTY(QFont captionStrong MEMBER captionStrong CONSTANT)
  Q_PROPERTY(QFont body MEMBER body CONSTANT)
  Q_PROPERTY(QFont bodyStrong MEMBER bodyStrong CONSTANT)
  Q_PROPERTY(QFont title MEMBER title CONSTANT)
  Q_PROPERTY(QFont headline MEMBER headline CONSTANT)
  Q_PROPERTY(QFont hero MEMBER hero CONSTANT)

 public:
  explicit TypeScale(QObject* parent = nullptr);

  /// Reads the fonts that every window has, so that its texts need not wait for them.
  void read() const;

  QFont caption;
  QFont captionStrong;
  QFont body;
  QFont bodyStrong;
  QFont title;
  QFont headline;
  QFont hero;
};

}  // namespace quorvex
