#pragma once

#include <QAbstractListModel>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "ui/panes/RowSteps.h"

namespace korvantis {

/// The rows of a list for a view, as the other half of a list model that says what their roles are
/// worth. A row has an `identity()` and `==`. New rows are followed by identity, and the view hears
/// only of what changed, so that a pressed button or a slider in a row that stays is left in peace.
/// Main thread.
template <typename Row>
class RowListModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (index.row() < 0 || index.row() >= rowCount()) return {};
    return valueOf(rows_[static_cast<std::size_t>(index.row())], role);
  }

  /// Shows these rows from now on. Identities may repeat.
  void setRows(std::vector<Row> wanted) {
    stepTo(identities(rows_), identities(wanted), steps(wanted));
    for (std::size_t place = 0; place < wanted.size(); ++place) replace(place, wanted[place]);
  }

 protected:
  const std::vector<Row>& rows() const { return rows_; }

  /// What `row` has for one of the roles.
  virtual QVariant valueOf(const Row& row, int role) const = 0;

 private:
  static std::vector<std::string> identities(const std::vector<Row>& rows) {
    std::vector<std::string> identities;
    identities.reserve(rows.size());
    for (const Row& row : rows) identities.push_back(row.identity());
    return identities;
  }

  RowSteps steps(const std::vector<Row>& wanted) {
    RowSteps steps;
    steps.remove = [this](int first, int count) {
      beginRemoveRows({}, first, first + count - 1);
      rows_.erase(rows_.begin() + first, rows_.begin() + first + count);
      endRemoveRows();
    };
    steps.move = [this](int from, int to) {
      // Qt counts the target as it is before the row has left.
      beginMoveRows({}, from, from, {}, from < to ? to + 1 : to);
      Row row = std::move(rows_[static_cast<std::size_t>(from)]);
      rows_.erase(rows_.begin() + from);
      rows_.insert(rows_.begin() + to, std::move(row));
      endMoveRows();
    };
    steps.insert = [this, &wanted](int first, int count) {
      beginInsertRows({}, first, first + count - 1);
      rows_.insert(rows_.begin() + first, wanted.begin() + first, wanted.begin() + first + count);
      endInsertRows();
    };
    return steps;
  }

  void replace(std::size_t place, Row& wanted) {
    Row& shown = rows_[place];
    if (shown == wanted) return;
    QList<int> changedRoles;
    const QList<int> roles = roleNames().keys();
    for (const int role : roles) {
      if (valueOf(shown, role) != valueOf(wanted, role)) changedRoles.append(role);
    }
    shown = std::move(wanted);
    const QModelIndex row = index(static_cast<int>(place));
    if (!changedRoles.isEmpty()) emit dataChanged(row, row, changedRoles);
  }

  std::vector<Row> rows_;
};

}  // namespace korvantis
