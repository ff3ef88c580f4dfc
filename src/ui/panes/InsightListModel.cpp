#include "ui/panes/InsightListModel.h"

#include <cstddef>
#include <string>
#include <utility>

#include "ui/panes/RowSteps.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

QVariant valueOf(const Insight& insight, int role) {
  switch (role) {
    case InsightListModel::IconName: return textOf(iconName(insight.kind));
    case Qt::DisplayRole:
    case InsightListModel::Title: return textOf(insight.title);
    case InsightListModel::MetricText: return textOf(insight.metricText);
    case InsightListModel::Detail: return textOf(insight.detail);
    case InsightListModel::Description:
      return textOf(insight.title + ", " + insight.metricText + ". " + insight.detail);
    default: return {};
  }
}

std::vector<std::string> identities(const std::vector<Insight>& insights) {
  std::vector<std::string> identities;
  identities.reserve(insights.size());
  for (const Insight& insight : insights) identities.push_back(insight.id.text());
  return identities;
}

}  // namespace

int InsightListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(insights_.size());
}

QVariant InsightListModel::data(const QModelIndex& index, int role) const {
  if (index.row() < 0 || index.row() >= rowCount()) return {};
  return valueOf(insights_[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> InsightListModel::roleNames() const {
  return {{IconName, "iconName"},
          {Title, "title"},
          {MetricText, "metricText"},
          {Detail, "detail"},
          {Description, "description"}};
}

void InsightListModel::setInsights(std::vector<Insight> insights) {
  RowSteps steps;
  steps.remove = [this](int first, int count) {
    beginRemoveRows({}, first, first + count - 1);
    insights_.erase(insights_.begin() + first, insights_.begin() + first + count);
    endRemoveRows();
  };
  steps.move = [this](int from, int to) {
    // Qt counts the target as it is before the row has left.
    beginMoveRows({}, from, from, {}, from < to ? to + 1 : to);
    Insight insight = std::move(insights_[static_cast<std::size_t>(from)]);
    insights_.erase(insights_.begin() + from);
    insights_.insert(insights_.begin() + to, std::move(insight));
    endMoveRows();
  };
  steps.insert = [this, &insights](int first, int count) {
    beginInsertRows({}, first, first + count - 1);
    insights_.insert(insights_.begin() + first, insights.begin() + first,
                     insights.begin() + first + count);
    endInsertRows();
  };
  stepTo(identities(insights_), identities(insights), steps);
  for (int row = 0; row < rowCount(); ++row) {
    Insight& shown = insights_[static_cast<std::size_t>(row)];
    if (shown == insights[static_cast<std::size_t>(row)]) continue;
    shown = std::move(insights[static_cast<std::size_t>(row)]);
    emit dataChanged(index(row), index(row));
  }
}

}  // namespace korvantis
