#include "ui/panes/InsightListModel.h"

#include <utility>

#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

QString descriptionOf(const Insight& insight, bool isPinned) {
  return textOf(insight.title + ", " + insight.metricText + ". " + insight.detail) +
         (isPinned ? QStringLiteral(" Pinned.") : QString());
}

}  // namespace

QVariant InsightListModel::valueOf(const InsightRow& row, int role) const {
  const Insight& insight = row.insight;
  switch (role) {
    case InsightID: return QString::fromStdString(insight.id.text());
    case IconName: return textOf(iconName(insight.kind));
    case Qt::DisplayRole:
    case Title: return textOf(insight.title);
    case MetricText: return textOf(insight.metricText);
    case Detail: return textOf(insight.detail);
    case IsPinned: return row.isPinned;
    case PinIconName:
      return row.isPinned ? QStringLiteral("pin.slash.fill") : QStringLiteral("pin.fill");
    case PinHint:
      return row.isPinned ? QStringLiteral("Unpin Insight") : QStringLiteral("Pin Insight");
    case CanSnooze: return insight.targetAppID.has_value() && insight.targetAppName.has_value();
    case Description: return descriptionOf(insight, row.isPinned);
    default: return {};
  }
}

QHash<int, QByteArray> InsightListModel::roleNames() const {
  return {{InsightID, "insightID"},     {IconName, "iconName"}, {Title, "title"},
          {MetricText, "metricText"},   {Detail, "detail"},     {IsPinned, "isPinned"},
          {PinIconName, "pinIconName"}, {PinHint, "pinHint"},   {CanSnooze, "canSnooze"},
          {Description, "description"}};
}

void InsightListModel::setInsights(const std::vector<Insight>& insights,
                                   const std::set<Uuid>& pinnedIDs) {
  std::vector<InsightRow> wanted;
  wanted.reserve(insights.size());
  for (const Insight& insight : insights)
    wanted.push_back({insight, pinnedIDs.contains(insight.id)});
  setRows(std::move(wanted));
}

}  // namespace korvantis
