#pragma once

#include <QDBusConnection>

namespace korvantis {

/// The session's message bus; a connection that is not connected where there is none. Never starts
/// a bus of its own. Main thread.
QDBusConnection sessionBus();

}  // namespace korvantis
