#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QSvgRenderer>

namespace quorvex {

/// A symbol of the program's own set in one colour, drawn from its outline at whatever scale the
/// screen has. An unknown name draws nothing. Main thread.
class SymbolItem : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

 public:
  explicit SymbolItem(QQuickItem* parent = nullptr);

  [[nodiscard]] const QString& name() const { return name_; }
  [[nodiscard]] const QColor& color() const { return color_; }
  void setName(const QString& name);
  void setColor(const QColor& color);

  void paint(QPainter* painter) override;

 signals:
  void nameChanged();
  void colorChanged();

 private:
  QString name_;
  QColor color_ = Qt::black;
  QSvgRenderer renderer_;
};

}  // namespace quorvex
