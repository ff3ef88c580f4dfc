#pragma once

#include <set>
#include <string>
#include <vector>

#include "core/Insight.h"
#include "core/Uuid.h"
#include "ui/panes/RowListModel.h"

namespace korvantis {

/// A finding, and whether the user has pinned it.
struct InsightRow {
  Insight insight;
  bool isPinned = false;

  bool operator==(const InsightRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return insight.id.text(); }
};

/// The findings, for a view. Main thread.
class InsightListModel : public RowListModel<InsightRow> {
 public:
  enum Role {
    /// What the pane model's operations on a finding take.
    InsightID = Qt::UserRole + 1,
    IconName,
    Title,
    MetricText,
    Detail,
    IsPinned,
    /// The symbol and the words of the button that pins or unpins.
    PinIconName,
    PinHint,
    /// Only a finding about one application can be snoozed.
    CanSnooze,
    /// The whole finding in words, for those who can't see it.
    Description
  };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

  /// Shows these findings from now on, those of `pinnedIDs` as pinned; what a finding says of
  /// itself plays no part.
  void setInsights(const std::vector<Insight>& insights, const std::set<Uuid>& pinnedIDs);

 protected:
  QVariant valueOf(const InsightRow& row, int role) const override;
};

}  // namespace korvantis
