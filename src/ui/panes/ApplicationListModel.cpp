#include "ui/panes/ApplicationListModel.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>

#include "ui/panes/RowSteps.h"

namespace korvantis {

namespace {

using Rows = std::vector<std::unique_ptr<ApplicationRow>>;

constexpr std::array changingRoles{
    ApplicationListModel::Name,       ApplicationListModel::IconName,
    ApplicationListModel::CountText,  ApplicationListModel::PidText,
    ApplicationListModel::RoleText,   ApplicationListModel::PortsText,
    ApplicationListModel::CpuText,    ApplicationListModel::MemoryText,
    ApplicationListModel::DiskText,   ApplicationListModel::ReadText,
    ApplicationListModel::WriteText,  ApplicationListModel::IsHot,
    ApplicationListModel::IsExpanded, ApplicationListModel::Description};

QString description(const ApplicationRow& row) {
  QStringList words{row.name};
  for (const QString& word : {row.countText, row.pidText, row.roleText, row.portsText}) {
    if (!word.isEmpty()) words.append(word);
  }
  words.append(QStringLiteral("CPU ") + row.cpuText);
  words.append(QStringLiteral("memory ") + row.memoryText);
  words.append(QStringLiteral("disk ") + row.diskText);
  return words.join(QStringLiteral(", "));
}

QVariant valueOf(const ApplicationRow& row, int role) {
  switch (role) {
    case ApplicationListModel::IsGroup: return row.isGroup;
    case ApplicationListModel::GroupID: return QString::fromStdString(row.groupID);
    case Qt::DisplayRole:
    case ApplicationListModel::Name: return row.name;
    case ApplicationListModel::IconName: return row.iconName;
    case ApplicationListModel::CountText: return row.countText;
    case ApplicationListModel::PidText: return row.pidText;
    case ApplicationListModel::RoleText: return row.roleText;
    case ApplicationListModel::PortsText: return row.portsText;
    case ApplicationListModel::CpuText: return row.cpuText;
    case ApplicationListModel::MemoryText: return row.memoryText;
    case ApplicationListModel::DiskText: return row.diskText;
    case ApplicationListModel::ReadText: return row.readText;
    case ApplicationListModel::WriteText: return row.writeText;
    case ApplicationListModel::IsHot: return row.isHot;
    case ApplicationListModel::IsExpanded: return row.isExpanded;
    case ApplicationListModel::Description: return description(row);
    default: return {};
  }
}

std::vector<std::string> identities(const Rows& rows) {
  std::vector<std::string> identities;
  identities.reserve(rows.size());
  for (const auto& row : rows) identities.push_back(row->identity());
  return identities;
}

}  // namespace

int ApplicationListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

const ApplicationRow* ApplicationListModel::rowAt(int index) const {
  if (index < 0 || index >= rowCount()) return nullptr;
  return rows_[static_cast<std::size_t>(index)].get();
}

QVariant ApplicationListModel::data(const QModelIndex& index, int role) const {
  const ApplicationRow* const row = rowAt(index.row());
  return row ? valueOf(*row, role) : QVariant();
}

QHash<int, QByteArray> ApplicationListModel::roleNames() const {
  return {{IsGroup, "isGroup"},        {GroupID, "groupID"},     {Name, "name"},
          {IconName, "iconName"},      {CountText, "countText"}, {PidText, "pidText"},
          {RoleText, "roleText"},      {PortsText, "portsText"}, {CpuText, "cpuText"},
          {MemoryText, "memoryText"},  {DiskText, "diskText"},   {ReadText, "readText"},
          {WriteText, "writeText"},    {IsHot, "isHot"},         {IsExpanded, "isExpanded"},
          {Description, "description"}};
}

void ApplicationListModel::setRows(std::vector<ApplicationRow> rows) {
  Rows wanted;
  wanted.reserve(rows.size());
  for (ApplicationRow& row : rows) {
    wanted.push_back(std::make_unique<ApplicationRow>(std::move(row)));
  }
  follow(wanted);
  replaceValues(wanted);
}

/// Brings the rows into the wanted order. New ones are taken over whole, which leaves gaps in
/// `wanted`; the others keep their old values for now.
void ApplicationListModel::follow(Rows& wanted) {
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
  stepTo(identities(rows_), identities(wanted), steps);
}

/// Takes over the values of the rows that stayed.
void ApplicationListModel::replaceValues(Rows& wanted) {
  int firstChanged = -1;
  int lastChanged = -1;
  QList<int> changedRoles;
  for (std::size_t index = 0; index < wanted.size(); ++index) {
    if (!wanted[index] || *wanted[index] == *rows_[index]) continue;
    if (firstChanged < 0) firstChanged = static_cast<int>(index);
    lastChanged = static_cast<int>(index);
    for (const int role : changingRoles) {
      if (changedRoles.contains(role)) continue;
      if (valueOf(*wanted[index], role) != valueOf(*rows_[index], role)) changedRoles.append(role);
    }
    rows_[index] = std::move(wanted[index]);
  }
  if (changedRoles.isEmpty()) return;
  emit dataChanged(index(firstChanged), index(lastChanged), changedRoles);
}

}  // namespace korvantis
