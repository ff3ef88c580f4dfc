#include "ui/panes/AppLimitEditor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>
#include <vector>

#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

constexpr auto figureCases = allCases<AppLimitFigure>();
constexpr int leastMinutes = 1;
constexpr int mostMinutes = 60;
/// Where a limit cut to a whole number would no longer fit 64 bits.
constexpr double firstTooLarge = 9223372036854775808.0;

}  // namespace

AppLimitEditor::AppLimitEditor(QObject* parent) : QObject(parent) {
  apps_.setGroups({});
}

void AppLimitEditor::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &AppLimitEditor::takeGroups);
  takeGroups();
}

void AppLimitEditor::setHoldsApps(bool holds) {
  if (holdsApps_ == holds) return;
  holdsApps_ = holds;
  emit holdsAppsChanged();
  takeGroups();
}

void AppLimitEditor::takeGroups() {
  if (!store_ || holdsApps_) return;
  apps_.setGroups(store_->snapshot().appGroups);
  updateAppIndex();
}

void AppLimitEditor::setSelectedAppID(const QString& id) {
  updateField(this, selectedAppID_, id, &AppLimitEditor::selectedAppIDChanged);
  updateAppIndex();
}

void AppLimitEditor::updateAppIndex() {
  updateField(this, appIndex_, apps_.rowOf(selectedAppID_.toStdString()),
              &AppLimitEditor::appIndexChanged);
}

QList<Choice> AppLimitEditor::figures() const {
  QList<Choice> choices;
  for (const AppLimitFigure figure : figureCases) {
    choices.append({textOf(rawValue(figure)), textOf(rawValue(figure))});
  }
  return choices;
}

int AppLimitEditor::figureIndex() const {
  return static_cast<int>(std::find(figureCases.begin(), figureCases.end(), selectedFigure_) -
                          figureCases.begin());
}

void AppLimitEditor::setFigureIndex(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= figureCases.size()) return;
  updateField(this, selectedFigure_, figureCases.at(static_cast<std::size_t>(index)),
              &AppLimitEditor::figureIndexChanged);
}

QString AppLimitEditor::limitText() const {
  // The shortest digits that mean this number, never in powers of ten.
  std::array<char, std::numeric_limits<double>::max_exponent10 + 32> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(),
                                          limitThreshold_, std::chars_format::fixed);
  return QString::fromLatin1(digits.data(), end - digits.data());
}

void AppLimitEditor::typeLimit(const QString& text) {
  const std::string typed = text.trimmed().toStdString();
  const char* const end = typed.data() + typed.size();
  double limit = 0;
  const auto [rest, error] = std::from_chars(typed.data(), end, limit, std::chars_format::fixed);
  if (error != std::errc() || rest != end) return;
  if (!std::isfinite(limit) || !(std::abs(limit) < firstTooLarge)) return;
  limitThreshold_ = limit;
}

void AppLimitEditor::setLimitMinutes(int minutes) {
  updateField(this, limitMinutes_, std::clamp(minutes, leastMinutes, mostMinutes),
              &AppLimitEditor::limitMinutesChanged);
}

QString AppLimitEditor::minutesText() const {
  return QString::number(limitMinutes_) + QStringLiteral(" min");
}

const AppGroup* AppLimitEditor::limitedGroup() const {
  if (!store_) return nullptr;
  const std::vector<AppGroup>& groups = store_->snapshot().appGroups;
  const std::string id = selectedAppID_.toStdString();
  const auto selected = std::find_if(groups.begin(), groups.end(),
                                     [&id](const AppGroup& group) { return group.id == id; });
  if (selected != groups.end()) return &*selected;
  const auto first = std::find_if(groups.begin(), groups.end(), [](const AppGroup& group) {
    return group.kind == AppGroupKind::app;
  });
  return first == groups.end() ? nullptr : &*first;
}

void AppLimitEditor::addRule() {
  const AppGroup* const group = limitedGroup();
  if (!group) return;
  store_->alerts()->addLimit(group->id, group->name, group->bundlePath, selectedFigure_,
                             limitThreshold_, limitMinutes_);
}

}  // namespace korvantis
