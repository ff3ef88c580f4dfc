#include "ui/panes/CardRowListModel.h"

namespace korvantis {

QHash<int, QByteArray> CardRowListModel::roleNames() const {
  return {{Row, "row"}};
}

QVariant CardRowListModel::valueOf(const CardRow& row, int role) const {
  switch (role) {
    case Qt::DisplayRole: return row.name;
    case Row: return QVariant::fromValue(row);
    default: return {};
  }
}

}  // namespace korvantis
