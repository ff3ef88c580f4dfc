#pragma once

#include <string>
#include <vector>

#include "core/AppGroup.h"

namespace korvantis::pictures {

/// Applications of a machine that is made up, with their helpers, as the engine would group them.
/// `folder` holds their bundles; `phase` is how far the machine has gone on, in ticks.
std::vector<AppGroup> sampleApplications(const std::string& folder, double phase);

/// Writes the desktop entries and the icons of those applications into `folder`.
void writeSampleBundles(const std::string& folder);

}  // namespace korvantis::pictures
