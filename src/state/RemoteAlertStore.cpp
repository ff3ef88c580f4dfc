#include "state/RemoteAlertStore.h"

namespace korvantis {

RemoteAlertStore::RemoteAlertStore(QObject* parent) : QObject(parent) {}

void RemoteAlertStore::evaluateTick(const EngineSnapshot& /*snapshot*/,
                                    const std::string& /*chipName*/) {}

}  // namespace korvantis
