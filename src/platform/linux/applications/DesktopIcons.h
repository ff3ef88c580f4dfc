#pragma once

#include "platform/IconCalls.h"
#include "platform/linux/applications/IconFiles.h"

namespace korvantis {

/// The icons of the desktop applications whose bundles are presented, as found in `places`. The
/// system's own monitor, which has no bundle here, is shown by the theme's picture of one.
IconCalls desktopIconCalls(IconFiles::Places places);

}  // namespace korvantis
