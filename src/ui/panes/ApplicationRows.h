#pragma once

#include <QString>
#include <set>
#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "state/ProcessSortField.h"
#include "ui/panes/ApplicationRow.h"

/// Which applications are listed, in which order, and in which words. Any thread.
namespace korvantis::ApplicationRows {

/// Pointers into the groups of a snapshot, in the order to be shown.
using Groups = std::vector<const AppGroup*>;

/// All groups in the order of the engine.
Groups all(const std::vector<AppGroup>& groups);

/// Whether a filter as typed keeps the group: by its name, by the pid or name of a process, or by
/// a port with or without its colon. Blanks around the filter and the case of letters don't
/// count; an empty filter keeps everything.
bool matches(const AppGroup& group, const QString& filter);

/// The groups that the filter keeps, in the order of the engine.
Groups filtered(const std::vector<AppGroup>& groups, const QString& filter);

/// The same groups, highest first by `field`; equals keep their order.
Groups sorted(Groups groups, ProcessSortField field);

/// The rows of the groups, those in `expandedIDs` followed by a row for each of their processes.
std::vector<ApplicationRow> rows(const Groups& groups, const std::set<std::string>& expandedIDs);

}  // namespace korvantis::ApplicationRows
