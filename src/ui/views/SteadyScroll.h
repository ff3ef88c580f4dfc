#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace korvantis {

/// Keeps what the user looks at where it is while the blocks of a scrolled column come, go and
/// change places. Main thread.
class SteadyScroll : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QQuickItem* column READ column WRITE setColumn NOTIFY columnChanged FINAL)

 public:
  using QObject::QObject;

  /// The column whose visible children are the blocks.
  QQuickItem* column() const { return column_; }
  void setColumn(QQuickItem* column);

  /// How far to scroll further now that the column has been laid out anew, so that the blocks that
  /// lay between `top` and `bottom` of the column stay in view where they were. Of several that
  /// moved apart most decide, so that one that rises to the head drags nothing along; but
  /// `heldBlock`, if there is one and it was among them, decides alone.
  Q_INVOKABLE double shiftAfterLayout(double top, double bottom, QQuickItem* heldBlock);

 signals:
  void columnChanged();

 private:
  struct Block {
    QPointer<QQuickItem> item;
    double y = 0;
    double height = 0;
  };

  double shiftOf(const Block& block) const;
  void remember();

  QPointer<QQuickItem> column_;
  /// As they lay after the last layout.
  std::vector<Block> blocks_;
};

}  // namespace korvantis
