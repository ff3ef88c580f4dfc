#pragma once

#include "ui/panes/OverviewCards.h"
#include "ui/panes/RowListModel.h"

namespace korvantis {

/// Lines of a card that stand for something with an id, for a view. Main thread.
class CardRowListModel : public RowListModel<CardRow> {
 public:
  enum Role {
    /// The whole line as a value.
    Row = Qt::UserRole + 1
  };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

 protected:
  QVariant valueOf(const CardRow& row, int role) const override;
};

}  // namespace korvantis
