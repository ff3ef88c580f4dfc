#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// The three faces of the screens. Sizes are in pixels of a plain screen and may be fractional:
/// QML's `font.pixelSize` is a whole number, so they become point sizes here and nowhere else.
/// `weight` is one of QFont's weights, `tracking` extra pixels between letters. Main thread, once
/// there is an application object.
class OstrelFont : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// The face of all plain text.
  Q_INVOKABLE static QFont system(double size, int weight = QFont::Normal, double tracking = 0);
  /// The face of headlines and small captions.
  Q_INVOKABLE static QFont rounded(double size, int weight = QFont::Normal, double tracking = 0);
  /// The face of figures that change: its digits are all equally wide, so they don't dance.
  Q_INVOKABLE static QFont monospaced(double size, int weight = QFont::Normal, double tracking = 0);

  /// The point size that comes out `size` pixels high on a screen of `logicalDotsPerInch`.
  static double pointSize(double size, double logicalDotsPerInch);
};

}  // namespace korvantis
