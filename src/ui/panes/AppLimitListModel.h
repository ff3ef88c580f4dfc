#pragma once

#include <string>
#include <vector>

#include "core/AppLimit.h"
#include "ui/panes/RowListModel.h"

namespace korvantis {

/// One of the user's limits.
struct AppLimitListRow {
  AppLimit limit;

  bool operator==(const AppLimitListRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return limit.id.text(); }
};

/// The user's limits on applications, for a view. Main thread.
class AppLimitListModel : public RowListModel<AppLimitListRow> {
 public:
  enum Role {
    /// What `InsightsPaneModel::removeLimit` takes.
    LimitID = Qt::UserRole + 1,
    AppName,
    /// Empty when the application has no bundle.
    BundlePath,
    /// Such as "CPU % > 150 for 5 min".
    RuleText,
    /// The whole rule in words, for those who can't see it.
    Description
  };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

  /// Shows these limits from now on.
  void setLimits(const std::vector<AppLimit>& limits);

 protected:
  QVariant valueOf(const AppLimitListRow& row, int role) const override;
};

}  // namespace korvantis
