#pragma once

#include <QString>

namespace korvantis {

/// Whether the machine has a graphics processor that draws: a render device whose driver is not
/// one of those that only pretend. `devices` is the folder of the system's graphics devices.
bool hasRealGPU(const QString& devices);

/// Has the screens drawn in software where there is no real graphics processor: emulated graphics
/// take 100 MB more and many times the time. An explicit choice in the environment stands. To be
/// called before the first window is made.
void chooseRenderer();

}  // namespace korvantis
