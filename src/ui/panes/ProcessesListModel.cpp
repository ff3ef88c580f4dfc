#include "ui/panes/ProcessesListModel.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "ui/panes/RowSteps.h"

namespace korvantis {

namespace {

using Rows = std::vector<std::unique_ptr<ProcessesRow>>;

/// The identities of the rows, with none for those that are not in `kept`.
std::vector<std::string> identities(const Rows& rows, const std::unordered_set<std::string>& kept) {
  std::vector<std::string> identities(rows.size());
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const std::string& identity = rows[index]->identity;
    if (kept.contains(identity)) identities[index] = identity;
  }
  return identities;
}

}  // namespace

int ProcessesListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

const ProcessesRow* ProcessesListModel::rowAt(int index) const {
  if (index < 0 || index >= rowCount()) return nullptr;
  return rows_[static_cast<std::size_t>(index)].get();
}

QVariant ProcessesListModel::data(const QModelIndex& index, int role) const {
  const ProcessesRow* const row = rowAt(index.row());
  if (!row) return {};
  if (role == Row) return QVariant::fromValue(*row);
  return role == Qt::DisplayRole ? QVariant(row->title) : QVariant();
}

QHash<int, QByteArray> ProcessesListModel::roleNames() const {
  return {{Row, "row"}};
}

void ProcessesListModel::setShown(int first, int last, int current) {
  shown_ = Shown{first, last, current};
}

bool ProcessesListModel::isShown(int place) const {
  return !shown_ || (place >= shown_->first && place <= shown_->last) || place == shown_->current;
}

void ProcessesListModel::setRows(std::vector<ProcessesRow> rows) {
  Rows wanted;
  wanted.reserve(rows.size());
  for (ProcessesRow& row : rows) wanted.push_back(std::make_unique<ProcessesRow>(std::move(row)));
  follow(wanted);
  replaceValues(wanted);
}

/// Brings the rows into the wanted order. New ones are taken over whole, which leaves gaps in
/// `wanted`; the others keep their old values for now.
void ProcessesListModel::follow(Rows& wanted) {
  const auto at = [](Rows& rows, int index) { return rows.begin() + index; };
  RowSteps steps;
  steps.remove = [&](int first, int count) {
    beginRemoveRows({}, first, first + count - 1);
    rows_.erase(at(rows_, first), at(rows_, first + count));
    endRemoveRows();
  };
  steps.move = [&](int from, int to) {
    // Qt counts the target as it is before the row has left.
    beginMoveRows({}, from, from, {}, from < to ? to + 1 : to);
    auto row = std::move(*at(rows_, from));
    rows_.erase(at(rows_, from));
    rows_.insert(at(rows_, to), std::move(row));
    endMoveRows();
  };
  steps.insert = [&](int first, int count) {
    beginInsertRows({}, first, first + count - 1);
    rows_.insert(at(rows_, first), std::make_move_iterator(at(wanted, first)),
                 std::make_move_iterator(at(wanted, first + count)));
    endInsertRows();
  };
  std::unordered_set<std::string> kept;
  for (int place = 0; place < rowCount(); ++place) {
    if (isShown(place)) kept.insert(rowAt(place)->identity);
  }
  stepTo(identities(rows_, kept), identities(wanted, kept), steps);
}

/// Takes over the values of the rows that stayed, and names each run of changed rows.
void ProcessesListModel::replaceValues(Rows& wanted) {
  int firstChanged = -1;
  for (int place = 0; place <= rowCount(); ++place) {
    const auto index = static_cast<std::size_t>(place);
    const bool isChanged =
        place < rowCount() && wanted[index] && !(*wanted[index] == *rows_[index]);
    if (isChanged) {
      rows_[index] = std::move(wanted[index]);
      if (firstChanged < 0) firstChanged = place;
    } else if (firstChanged >= 0) {
      emit dataChanged(this->index(firstChanged), this->index(place - 1), {Row, Qt::DisplayRole});
      firstChanged = -1;
    }
  }
}

}  // namespace korvantis
