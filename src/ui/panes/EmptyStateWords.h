#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// What stands in the place of a list that has nothing to show.
struct EmptyStateWords {
  Q_GADGET
  QML_VALUE_TYPE(emptyStateWords)
  Q_PROPERTY(QString icon MEMBER icon FINAL)
  Q_PROPERTY(QString title MEMBER title FINAL)
  Q_PROPERTY(QString subtitle MEMBER subtitle FINAL)

 public:
  QString icon{};
  /// Empty where the list just stays empty.
  QString title{};
  QString subtitle{};

  bool operator==(const EmptyStateWords&) const = default;
};

}  // namespace korvantis
