#include "state/AppAlertsStore.h"

namespace korvantis {

AppAlertsStore::AppAlertsStore(QObject* parent) : QObject(parent) {}

}  // namespace korvantis
