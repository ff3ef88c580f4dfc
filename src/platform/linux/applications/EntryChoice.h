#pragma once

#include <vector>

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Picks among applications that share a program or a folder: the one whose arguments the process
/// was given, else the one that its parent is part of, else the one that needs no arguments. Null
/// when that leaves a doubt. Any thread.
EntryPointer chooseEntry(const std::vector<EntryPointer>& candidates, ProcessEvidence& process,
                         const ProcessSurroundings& around);

}  // namespace korvantis
