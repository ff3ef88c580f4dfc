#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// One tab of the navigation bar, as QML shows it.
struct PaneTab {
  Q_GADGET
  QML_VALUE_TYPE(paneTab)
  Q_PROPERTY(QString pane MEMBER pane FINAL)
  Q_PROPERTY(QString title MEMBER title FINAL)
  Q_PROPERTY(QString iconName MEMBER iconName FINAL)
  Q_PROPERTY(QString shortcut MEMBER shortcut FINAL)

 public:
  /// The name of the pane's case, as the store takes it.
  QString pane;
  QString title{};
  QString iconName{};
  /// Such as "Ctrl+1"; on macOS that is the command key.
  QString shortcut{};

  bool operator==(const PaneTab&) const = default;
};

}  // namespace korvantis
