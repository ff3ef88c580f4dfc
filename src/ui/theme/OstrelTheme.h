#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// The colours of every screen, all opaque. Surfaces and texts depend on `isDark`, read at each
/// access; accents do not. Main thread.
///
/// The properties are constant for QML on purpose: a change of theme rebuilds the tree of items
/// (see ThemedContent.qml), so hundreds of bindings need not each watch for one.
class OstrelTheme : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QColor canvas READ canvas CONSTANT FINAL)
  Q_PROPERTY(QColor cardBackground READ cardBackground CONSTANT FINAL)
  Q_PROPERTY(QColor elevatedCard READ elevatedCard CONSTANT FINAL)
  Q_PROPERTY(QColor rowHover READ rowHover CONSTANT FINAL)
  Q_PROPERTY(QColor hairline READ hairline CONSTANT FINAL)
  Q_PROPERTY(QColor subtleBorder READ subtleBorder CONSTANT FINAL)
  Q_PROPERTY(QColor ink1 READ ink1 CONSTANT FINAL)
  Q_PROPERTY(QColor ink2 READ ink2 CONSTANT FINAL)
  Q_PROPERTY(QColor ink3 READ ink3 CONSTANT FINAL)
  Q_PROPERTY(QColor ink4 READ ink4 CONSTANT FINAL)
  Q_PROPERTY(QColor cpu READ cpu CONSTANT FINAL)
  Q_PROPERTY(QColor memory READ memory CONSTANT FINAL)
  Q_PROPERTY(QColor gpu READ gpu CONSTANT FINAL)
  Q_PROPERTY(QColor neural READ neural CONSTANT FINAL)
  Q_PROPERTY(QColor disk READ disk CONSTANT FINAL)
  Q_PROPERTY(QColor network READ network CONSTANT FINAL)
  Q_PROPERTY(QColor battery READ battery CONSTANT FINAL)
  Q_PROPERTY(QColor heat READ heat CONSTANT FINAL)
  Q_PROPERTY(QColor strainRed READ strainRed CONSTANT FINAL)
  Q_PROPERTY(QColor amberWarning READ amberWarning CONSTANT FINAL)
  Q_PROPERTY(QColor safeGreen READ safeGreen CONSTANT FINAL)

 public:
  using QObject::QObject;

  /// Whether the screens are dark. Starts true.
  static bool isDark();
  /// Only the look store writes it, by way of the shell.
  static void setIsDark(bool isDark);

  /// Window background.
  static QColor canvas();
  /// Card at rest.
  static QColor cardBackground();
  /// Card under the pointer, raised fields.
  static QColor elevatedCard();
  /// Table row under the pointer.
  static QColor rowHover();
  /// Thin lines and the border of a card at rest.
  static QColor hairline();
  /// Stronger borders.
  static QColor subtleBorder();
  /// Text, from the strongest to the faintest.
  static QColor ink1();
  static QColor ink2();
  static QColor ink3();
  static QColor ink4();

  // Accents.
  static QColor cpu();
  static QColor memory();
  static QColor gpu();
  static QColor neural();
  static QColor disk();
  static QColor network();
  static QColor battery();
  static QColor heat();
  /// Strain and danger.
  static QColor strainRed();
  /// A warning: the colour of `disk`, on purpose.
  static QColor amberWarning();
  /// All clear: the colour of `battery`, on purpose.
  static QColor safeGreen();
};

}  // namespace korvantis
