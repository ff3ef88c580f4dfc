#pragma once

#include <QString>
#include <vector>

#include "core/AppGroup.h"
#include "state/ProcessSortField.h"

/// Which applications are listed, and in which order. Any thread.
namespace korvantis::AppGroupFilter {

/// Pointers into the groups of a snapshot, in the order to be shown.
using Groups = std::vector<const AppGroup*>;

/// What the user has set.
struct Wish {
  /// The filter as typed. Blanks around it and the case of letters don't count.
  QString searchText{};
  ProcessSortField sortField = ProcessSortField::memory;
  bool showsSystem = false;
};

/// Whether a group is listed at all. Without `showsSystem` only applications are: tools of the
/// user are hidden along with the system.
bool isListed(const AppGroup& group, bool showsSystem);

/// The listed groups that the filter keeps, highest first by the sort field; equals keep the
/// order of the engine. The filter keeps a group by its name, by the pid or name of a process, or
/// by any listening port with or without its colon; an empty one keeps every listed group.
Groups filtered(const std::vector<AppGroup>& groups, const Wish& wish);

}  // namespace korvantis::AppGroupFilter
