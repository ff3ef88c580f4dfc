#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QString>
#include <functional>
#include <optional>

#include "platform/StatusItemCalls.h"
#include "platform/qt/TrayTypes.h"

namespace korvantis {

/// The status item as trays read it over the message bus: picture, title, tooltip and label.
/// Main thread.
class TrayItem : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category CONSTANT)
  Q_PROPERTY(QString Id READ id CONSTANT)
  Q_PROPERTY(QString Title READ title CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(int WindowId READ windowId CONSTANT)
  Q_PROPERTY(QString IconName READ iconName CONSTANT)
  Q_PROPERTY(QList<korvantis::TrayPixmap> IconPixmap READ iconPixmap CONSTANT)
  Q_PROPERTY(korvantis::TrayToolTip ToolTip READ toolTip)
  Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
  Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
  Q_PROPERTY(QString XAyatanaLabel READ label)
  Q_PROPERTY(QString XAyatanaLabelGuide READ label)

 public:
  /// The path under which the menu stands on the bus.
  static constexpr const char* menuPath = "/MenuBar";

  TrayItem(QObject* parent, StatusItemDescription description);

  static QString category() { return QStringLiteral("SystemServices"); }
  static QString id() { return QStringLiteral("korvantis"); }
  QString title() const;
  static QString status() { return QStringLiteral("Active"); }
  static int windowId() { return 0; }
  static QString iconName() { return {}; }
  QList<TrayPixmap> iconPixmap() const;
  TrayToolTip toolTip() const;
  static bool itemIsMenu() { return false; }
  static QDBusObjectPath menu() { return QDBusObjectPath(QString::fromLatin1(menuPath)); }
  const QString& label() const { return label_; }
  /// The text beside the picture; trays hear of it when it changes.
  void setLabel(const QString& label);

 public slots:
  Q_SCRIPTABLE void Activate(int x, int y);
  Q_SCRIPTABLE void SecondaryActivate(int x, int y);
  Q_SCRIPTABLE void ContextMenu(int x, int y);
  Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);

 signals:
  void NewTitle();
  void NewIcon();
  void NewToolTip();
  void NewStatus(const QString& status);
  void XAyatanaNewLabel(const QString& label, const QString& guide);

 private:
  StatusItemDescription description_;
  QString label_;
};

}  // namespace korvantis
