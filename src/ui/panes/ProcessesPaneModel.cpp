#include "ui/panes/ProcessesPaneModel.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "ui/panes/AppGroupFilter.h"
#include "ui/panes/AppGroupRows.h"
#include "ui/panes/ProcessesRows.h"
#include "ui/views/Choices.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

EmptyStateWords emptyStateOf(ProcessesSubTab tab) {
  switch (tab) {
    case ProcessesSubTab::apps: return {};
    case ProcessesSubTab::projects:
      return {QStringLiteral("folder.badge.gearshape"),
              QStringLiteral("No Active Dev Projects Detected"),
              QStringLiteral("Korvantis automatically groups running node, python, rust, go, "
                             "swift, and ruby processes by their Git or package manifest "
                             "directory.")};
    case ProcessesSubTab::containers:
      return {QStringLiteral("shippingbox.fill"), QStringLiteral("No Running Containers"),
              QStringLiteral("Docker, OrbStack, and Podman containers will appear here with live "
                             "CPU, RAM, and mapped ports.")};
    case ProcessesSubTab::ports:
      return {QStringLiteral("network"), QStringLiteral("No Open Listening TCP Ports Found"),
              QStringLiteral("Local web servers, databases, and dev tools listening on TCP ports "
                             "will be listed here.")};
    case ProcessesSubTab::idleServers:
      return {QStringLiteral("checkmark.circle.fill"), QStringLiteral("Zero Forgotten Dev Servers"),
              QStringLiteral("No idle local development servers are currently wasting RAM.")};
  }
  return {};
}

std::size_t countOf(const MonitorStore& store, ProcessesSubTab tab) {
  const EngineSnapshot& snapshot = store.snapshot();
  switch (tab) {
    case ProcessesSubTab::apps:
      return static_cast<std::size_t>(
          std::count_if(snapshot.appGroups.begin(), snapshot.appGroups.end(),
                        [shows = store.showSystemProcesses()](const AppGroup& group) {
                          return AppGroupFilter::isListed(group, shows);
                        }));
    case ProcessesSubTab::projects: return snapshot.projects.size();
    case ProcessesSubTab::containers: return snapshot.containers.size();
    case ProcessesSubTab::ports: return snapshot.listeningPorts.size();
    case ProcessesSubTab::idleServers: return snapshot.idleServers.size();
  }
  return 0;
}

}  // namespace

ProcessesPaneModel::ProcessesPaneModel(QObject* parent) : QObject(parent), rows_(this) {}

void ProcessesPaneModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &ProcessesPaneModel::followTick);
  for (const auto signal :
       {&MonitorStore::selectedProcessSubTabChanged, &MonitorStore::processSortFieldChanged,
        &MonitorStore::processSearchTextChanged, &MonitorStore::showSystemProcessesChanged,
        &MonitorStore::expandedAppGroupIDsChanged}) {
    connect(store_, signal, this, &ProcessesPaneModel::update);
  }
  update();
}

QList<Choice> ProcessesPaneModel::tabs() const {
  return Choices::processesSubTabs();
}

QList<Choice> ProcessesPaneModel::sortFields() const {
  return Choices::sortFields();
}

int ProcessesPaneModel::indexOfSortField(const QString& name) const {
  const QList<Choice> fields = sortFields();
  for (int index = 0; index < fields.size(); ++index) {
    if (fields[index].name == name) return index;
  }
  return -1;
}

int ProcessesPaneModel::indexOfGroup(const QString& groupID) const {
  for (int index = 0; index < rows_.rowCount(); ++index) {
    const ProcessesRow& row = *rows_.rowAt(index);
    if (row.kind == ProcessesRowKind::appGroup && row.groupID == groupID) return index;
  }
  return -1;
}

void ProcessesPaneModel::update() {
  updateBadges();
  updateRows();
}

void ProcessesPaneModel::followTick() {
  updateBadges();
  if (!isHeld_) updateRows();
}

void ProcessesPaneModel::updateBadges() {
  QStringList badges;
  for (const ProcessesSubTab tab : allCases<ProcessesSubTab>()) {
    const std::size_t count = countOf(*store_, tab);
    badges.append(count == 0 ? QString() : QString::number(count));
  }
  updateField(this, badges_, std::move(badges), &ProcessesPaneModel::badgesChanged);
}

void ProcessesPaneModel::updateRows() {
  emit rowsAboutToChange();
  rows_.setRows(selectedRows());
  updateField(this, emptyState_, emptyStateOf(store_->selectedProcessSubTab()),
              &ProcessesPaneModel::emptyStateChanged);
}

std::vector<ProcessesRow> ProcessesPaneModel::appRows() const {
  const AppGroupFilter::Groups groups = AppGroupFilter::filtered(
      store_->snapshot().appGroups, {.searchText = store_->processSearchText(),
                                     .sortField = store_->processSortField(),
                                     .showsSystem = store_->showSystemProcesses()});
  const std::set<std::string>& expanded = store_->expandedAppGroupIDs();
  std::vector<ProcessesRow> rows;
  rows.reserve(groups.size());
  for (const AppGroup* group : groups) {
    AppGroupRows::append(rows, *group, store_->quitSafety(*group), expanded.contains(group->id));
  }
  return rows;
}

std::vector<ProcessesRow> ProcessesPaneModel::selectedRows() const {
  switch (store_->selectedProcessSubTab()) {
    case ProcessesSubTab::apps: return appRows();
    case ProcessesSubTab::projects: return ProcessesRows::projects(store_->snapshot());
    case ProcessesSubTab::containers: return ProcessesRows::containers(store_->snapshot());
    case ProcessesSubTab::ports: return ProcessesRows::ports(store_->snapshot());
    case ProcessesSubTab::idleServers: return ProcessesRows::idleServers(store_->snapshot());
  }
  return {};
}

void ProcessesPaneModel::hold() {
  isHeld_ = true;
}

void ProcessesPaneModel::release() {
  if (!std::exchange(isHeld_, false)) return;
  // Later: the button is still at work for the row that it was pressed in.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (store_ && !isHeld_) updateRows();
      },
      Qt::QueuedConnection);
}

const AppGroup* ProcessesPaneModel::groupOf(const QString& groupID) const {
  const auto& groups = store_->snapshot().appGroups;
  const auto found = std::find_if(groups.begin(), groups.end(), [&](const AppGroup& group) {
    return textOf(group.id) == groupID;
  });
  return found == groups.end() ? nullptr : &*found;
}

void ProcessesPaneModel::toggleExpanded(const QString& groupID) {
  if (!store_) return;
  std::set<std::string> ids = store_->expandedAppGroupIDs();
  const AppGroup* const group = groupOf(groupID);
  // One that is gone can still be closed.
  const std::string id = group ? group->id : groupID.toStdString();
  if (ids.erase(id) == 0) ids.insert(id);
  store_->setExpandedAppGroupIDs(std::move(ids));
}

bool ProcessesPaneModel::quitGroup(const QString& groupID, bool force) {
  const AppGroup* const group = store_ ? groupOf(groupID) : nullptr;
  if (!group) return false;
  // A copy: what follows may bring a new tick.
  const AppGroup target = *group;
  return store_->quitApp(target, force);
}

bool ProcessesPaneModel::stopProcess(const ProcessesRow& row) {
  if (!store_ || row.pid == 0) return false;
  const bool isStillShown = ProcessesRows::startOf(store_->snapshot(), row.pid) == row.startedAt;
  return isStillShown && store_->stopProcess(row.pid, false);
}

}  // namespace korvantis
