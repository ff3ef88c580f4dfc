#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>
#include <limits>
#include <optional>

namespace korvantis {

/// A small line of recent figures with a fading ground below it. Draws anew only when a figure or
/// its room changes. Main thread; painted on the render thread while the main thread waits.
class SparklineView : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  /// Oldest first.
  Q_PROPERTY(QList<double> values READ values WRITE setValues NOTIFY valuesChanged FINAL)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
  /// The fixed top of the scale; NaN, the default, takes the largest of the values.
  Q_PROPERTY(double maxValue READ maxValue WRITE setMaxValue NOTIFY maxValueChanged FINAL)

 public:
  /// The height of a sparkline that is told nothing else.
  static constexpr double defaultHeight = 38;

  explicit SparklineView(QQuickItem* parent = nullptr);

  const QList<double>& values() const { return values_; }
  void setValues(const QList<double>& values);
  const QColor& color() const { return color_; }
  void setColor(const QColor& color);
  double maxValue() const { return maxValue_; }
  void setMaxValue(double maxValue);

  void paint(QPainter* painter) override;

 signals:
  void valuesChanged();
  void colorChanged();
  void maxValueChanged();

 private:
  std::optional<double> fixedScale() const;

  QList<double> values_;
  QColor color_;
  double maxValue_ = std::numeric_limits<double>::quiet_NaN();
};

}  // namespace korvantis
