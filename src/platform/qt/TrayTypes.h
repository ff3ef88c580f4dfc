#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace korvantis {

/// A picture as trays read it: big-endian ARGB, "(iiay)".
struct TrayPixmap {
  int width = 0;
  int height = 0;
  QByteArray data;
};

/// What a tray shows under the pointer, "(sa(iiay)ss)".
struct TrayToolTip {
  QString iconName;
  QList<TrayPixmap> pixmaps;
  QString title;
  QString description;
};

/// One node of a tray menu, "(ia{sv}av)".
struct TrayMenuNode {
  int id = 0;
  QVariantMap properties;
  QList<TrayMenuNode> children;
};

/// The properties of one menu entry, "(ia{sv})".
struct TrayMenuProperties {
  int id = 0;
  QVariantMap properties;
};

/// What happened to one menu entry, "(isvu)".
struct TrayMenuEvent {
  int id = 0;
  QString eventId;
  QDBusVariant data;
  uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuNode& node);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuNode& node);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& event);

/// Tells the message bus library of these types; once is enough, more do no harm.
void registerTrayTypes();

}  // namespace korvantis

Q_DECLARE_METATYPE(korvantis::TrayPixmap)
Q_DECLARE_METATYPE(korvantis::TrayToolTip)
Q_DECLARE_METATYPE(korvantis::TrayMenuNode)
Q_DECLARE_METATYPE(korvantis::TrayMenuProperties)
Q_DECLARE_METATYPE(korvantis::TrayMenuEvent)
