#include "ui/panes/RunningAppListModel.h"

#include <utility>

#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

constexpr const char* noneLabel = "Select Running App...";

}  // namespace

QVariant RunningAppListModel::valueOf(const RunningAppRow& row, int role) const {
  switch (role) {
    case Name: return textOf(row.id);
    case Qt::DisplayRole:
    case Label: return textOf(row.name);
    case ModelData: return QVariant::fromValue(Choice{textOf(row.id), textOf(row.name)});
    default: return {};
  }
}

QHash<int, QByteArray> RunningAppListModel::roleNames() const {
  return {{Name, "name"}, {Label, "label"}, {ModelData, "modelData"}};
}

void RunningAppListModel::setGroups(const std::vector<AppGroup>& groups) {
  std::vector<RunningAppRow> wanted{{"", noneLabel}};
  for (const AppGroup& group : groups) {
    if (group.kind == AppGroupKind::app) wanted.push_back({group.id, group.name});
  }
  setRows(std::move(wanted));
}

int RunningAppListModel::rowOf(const std::string& groupID) const {
  const QModelIndexList found = match(index(0), Name, textOf(groupID), 1, Qt::MatchExactly);
  return found.isEmpty() ? 0 : found.first().row();
}

}  // namespace korvantis
