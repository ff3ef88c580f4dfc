#pragma once

#include "ui/panes/AgentRows.h"
#include "ui/panes/RowListModel.h"

namespace korvantis {

/// The running agents, for a view. Main thread.
class AgentListModel : public RowListModel<AgentSessionRow> {
 public:
  enum Role {
    ToolName = Qt::UserRole + 1,
    StateLabel,
    StateColor,
    PidText,
    ProjectText,
    ChildNames,
    CpuText,
    MemoryText,
    /// The whole row in one sentence, for those who can't see it.
    Description,
  };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

 protected:
  QVariant valueOf(const AgentSessionRow& row, int role) const override;
};

}  // namespace korvantis
