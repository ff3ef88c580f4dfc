#pragma once

#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// One thin bar for each core of the processor, filled from below. One item for all of them, since
/// a machine can have hundreds. Main thread; painted while the main thread waits.
class CoreBars : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  /// How full each bar is, 0 to 1.
  Q_PROPERTY(QList<double> shares READ shares WRITE setShares NOTIFY sharesChanged FINAL)
  /// The first so many are performance cores, which have a colour of their own.
  Q_PROPERTY(int performanceCores READ performanceCores WRITE setPerformanceCores NOTIFY
                 performanceCoresChanged FINAL)

 public:
  explicit CoreBars(QQuickItem* parent = nullptr);

  const QList<double>& shares() const { return shares_; }
  void setShares(const QList<double>& shares);
  int performanceCores() const { return performanceCores_; }
  void setPerformanceCores(int count);

  void paint(QPainter* painter) override;

 signals:
  void sharesChanged();
  void performanceCoresChanged();

 private:
  QList<double> shares_;
  int performanceCores_ = 0;
};

}  // namespace korvantis
