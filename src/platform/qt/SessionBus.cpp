#include "platform/qt/SessionBus.h"

#include <QFileInfo>

namespace korvantis {

QDBusConnection sessionBus() {
  // Without an address the bus library would start a bus that nobody else uses.
  const QString usualSocket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") && !QFileInfo::exists(usualSocket)) {
    return QDBusConnection(QStringLiteral("no session bus"));
  }
  return QDBusConnection::sessionBus();
}

}  // namespace korvantis
