#pragma once

#include <QStringList>

namespace korvantis {

/// Every text that the models of the screens, the status item and the phone's brief have for a
/// busy machine with large figures, each behind the name of what says it:
/// "RootContentModel.tickText: Live 2s tick".
QStringList screenTexts();

}  // namespace korvantis
