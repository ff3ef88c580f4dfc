#include "ui/panes/AgentListModel.h"

namespace korvantis {

namespace {

QString description(const AgentSessionRow& row) {
  QStringList words{row.toolName, row.stateLabel, row.pidText, row.projectText};
  words += row.childNames;
  words += {row.cpuText, row.memoryText};
  return words.join(QStringLiteral(", "));
}

}  // namespace

QHash<int, QByteArray> AgentListModel::roleNames() const {
  return {{ToolName, "toolName"}, {StateLabel, "stateLabel"},   {StateColor, "stateColor"},
          {PidText, "pidText"},   {ProjectText, "projectText"}, {ChildNames, "childNames"},
          {CpuText, "cpuText"},   {MemoryText, "memoryText"},   {Description, "description"}};
}

QVariant AgentListModel::valueOf(const AgentSessionRow& row, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case ToolName: return row.toolName;
    case StateLabel: return row.stateLabel;
    case StateColor: return row.stateColor;
    case PidText: return row.pidText;
    case ProjectText: return row.projectText;
    case ChildNames: return row.childNames;
    case CpuText: return row.cpuText;
    case MemoryText: return row.memoryText;
    case Description: return description(row);
    default: return {};
  }
}

}  // namespace korvantis
