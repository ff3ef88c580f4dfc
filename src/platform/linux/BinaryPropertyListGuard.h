#pragma once

#include <string_view>

namespace korvantis {

/// Whether a property list in binary form can be unfolded in modest memory and on a modest
/// stack: at most 128 levels and about 64 MiB. In this form one object may stand in many places,
/// so that a file of a few hundred bytes can unfold to more than any memory holds, and the
/// library that unfolds it doesn't notice. False too for files with damaged references. Any
/// thread.
bool isModestBinaryPropertyList(std::string_view bytes);

}  // namespace korvantis
