#include "ui/panes/AppLimitListModel.h"

#include <cmath>
#include <utility>

#include "core/FixedDecimals.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

/// The limit is cut to a whole number, as in the finding that it leads to; adding zero takes the
/// sign off a zero.
QString ruleTextOf(const AppLimit& limit) {
  return textOf(std::string(rawValue(limit.figure)) + " > " +
                fixedDecimals(std::trunc(limit.limit) + 0.0, 0) + " for " +
                std::to_string(limit.minutes) + " min");
}

}  // namespace

QVariant AppLimitListModel::valueOf(const AppLimitListRow& row, int role) const {
  const AppLimit& limit = row.limit;
  switch (role) {
    case LimitID: return QString::fromStdString(limit.id.text());
    case Qt::DisplayRole:
    case AppName: return textOf(limit.appName);
    case BundlePath: return textOf(limit.bundlePath.value_or(""));
    case RuleText: return ruleTextOf(limit);
    case Description:
      return QString(textOf(limit.appName) + QStringLiteral(", ") + ruleTextOf(limit));
    default: return {};
  }
}

QHash<int, QByteArray> AppLimitListModel::roleNames() const {
  return {{LimitID, "limitID"},
          {AppName, "appName"},
          {BundlePath, "bundlePath"},
          {RuleText, "ruleText"},
          {Description, "description"}};
}

void AppLimitListModel::setLimits(const std::vector<AppLimit>& limits) {
  std::vector<AppLimitListRow> wanted;
  wanted.reserve(limits.size());
  for (const AppLimit& limit : limits) wanted.push_back({limit});
  setRows(std::move(wanted));
}

}  // namespace korvantis
