#include "platform/qt/TrayTypes.h"

#include <QDBusMetaType>
#include <QDBusVariant>

namespace korvantis {

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap) {
  argument.beginStructure();
  argument << pixmap.width << pixmap.height << pixmap.data;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap) {
  argument.beginStructure();
  argument >> pixmap.width >> pixmap.height >> pixmap.data;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip) {
  argument.beginStructure();
  argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.description;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip) {
  argument.beginStructure();
  argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.description;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuNode& node) {
  argument.beginStructure();
  argument << node.id << node.properties;
  argument.beginArray(QMetaType::fromType<QDBusVariant>());
  for (const TrayMenuNode& child : node.children) {
    argument << QDBusVariant(QVariant::fromValue(child));
  }
  argument.endArray();
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuNode& node) {
  argument.beginStructure();
  argument >> node.id >> node.properties;
  argument.beginArray();
  while (!argument.atEnd()) {
    QDBusVariant child;
    argument >> child;
    node.children.append(qdbus_cast<TrayMenuNode>(child.variant()));
  }
  argument.endArray();
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& properties) {
  argument.beginStructure();
  argument << properties.id << properties.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& properties) {
  argument.beginStructure();
  argument >> properties.id >> properties.properties;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& event) {
  argument.beginStructure();
  argument << event.id << event.eventId << event.data << event.timestamp;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& event) {
  argument.beginStructure();
  argument >> event.id >> event.eventId >> event.data >> event.timestamp;
  argument.endStructure();
  return argument;
}

void registerTrayTypes() {
  qDBusRegisterMetaType<TrayPixmap>();
  qDBusRegisterMetaType<QList<TrayPixmap>>();
  qDBusRegisterMetaType<TrayToolTip>();
  qDBusRegisterMetaType<TrayMenuNode>();
  qDBusRegisterMetaType<TrayMenuProperties>();
  qDBusRegisterMetaType<QList<TrayMenuProperties>>();
  qDBusRegisterMetaType<TrayMenuEvent>();
  qDBusRegisterMetaType<QList<TrayMenuEvent>>();
}

}  // namespace korvantis
