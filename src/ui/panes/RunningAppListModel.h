#pragma once

#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "ui/panes/RowListModel.h"
#include "ui/views/Choice.h"

namespace korvantis {

/// An application to choose, by the id of its group.
struct RunningAppRow {
  std::string id;
  std::string name;

  bool operator==(const RunningAppRow&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return id; }
};

/// The applications that a limit can be set on, for a picker: first an entry for none, with an
/// empty name, then the running ones in the order of their groups, each by the id of its group.
/// Main thread.
class RunningAppListModel : public RowListModel<RunningAppRow> {
 public:
  enum Role { Name = Qt::UserRole + 1, Label, ModelData };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

  /// Offers none and the applications among these groups from now on.
  void setGroups(const std::vector<AppGroup>& groups);

  /// Where the group of that id stands; 0, the entry for none, when it is not offered.
  int rowOf(const std::string& groupID) const;

 protected:
  QVariant valueOf(const RunningAppRow& row, int role) const override;
};

}  // namespace korvantis
