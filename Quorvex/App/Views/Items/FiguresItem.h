#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include "PixelItem.h"

namespace quorvex {

/// A line of text whose digits are all as wide as the widest, so that a changing figure neither
/// moves nor shakes what stands beside it. Where there is no room for all of it, it ends in an
/// ellipsis. Main thread.
class FiguresItem : public PixelItem {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
  /// Whether the text stands at the right end of a wider item.
  Q_PROPERTY(bool alignRight READ alignRight WRITE setAlignRight NOTIFY alignRightChanged)

 public:
  explicit FiguresItem(QQuickItem* parent = nullptr);

  [[nodiscard]] const QString& text() const { return text_; }
  [[nodiscard]] const QFont& font() const { return font_; }
  [[nodiscard]] const QColor& color() const { return color_; }
  [[nodiscard]] bool alignRight() const { return alignRight_; }
  void setText(const QString& text);
  void setFont(const QFont& font);
  void setColor(const QColor& color);
  void setAlignRight(bool alignRight);

 signals:
  void textChanged();
  void fontChanged();
  void colorChanged();
  void alignRightChanged();

 protected:
  void paint(QPainter& painter) override;
  void componentComplete() override;

 private:
  void measure();
  [[nodiscard]] double widthOf(const QString& text) const;
  /// The text, cut short where the item is too narrow for it.
  [[nodiscard]] QString shownText() const;

  QString text_;
  QFont font_;
  QColor color_ = Qt::black;
  bool alignRight_ = false;
  double digitWidth_ = 0.0;
  double textWidth_ = 0.0;
};

}  // namespace quorvex
