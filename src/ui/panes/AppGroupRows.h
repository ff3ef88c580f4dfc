#pragma once

#include <vector>

#include "core/AppGroup.h"
#include "core/QuitSafetyResult.h"
#include "ui/panes/ProcessesRow.h"

/// The card of one application. Any thread.
namespace korvantis::AppGroupRows {

/// Adds the card of `group` to `rows`: one row, and for an expanded one its breakdown by role and
/// the first 15 of its processes below it.
void append(std::vector<ProcessesRow>& rows, const AppGroup& group, const QuitSafetyResult& safety,
            bool isExpanded);

}  // namespace korvantis::AppGroupRows
