#include "ui/panes/ApplicationList.h"

#include <algorithm>
#include <utility>

#include "ui/panes/ApplicationRows.h"
#include "ui/views/ModelText.h"

namespace korvantis {

ApplicationList::ApplicationList(QObject* parent) : QObject(parent), rows_(this) {}

void ApplicationList::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  for (const auto signal :
       {&MonitorStore::snapshotChanged, &MonitorStore::expandedAppGroupIDsChanged,
        &MonitorStore::processSearchTextChanged, &MonitorStore::processSortFieldChanged}) {
    connect(store_, signal, this, &ApplicationList::update);
  }
  update();
}

void ApplicationList::setFollowsPicker(bool follows) {
  if (followsPicker_ == follows) return;
  followsPicker_ = follows;
  emit followsPickerChanged();
  update();
}

void ApplicationList::update() {
  if (!store_) return;
  const auto& all = store_->snapshot().appGroups;
  const ApplicationRows::Groups groups =
      followsPicker_
          ? ApplicationRows::sorted(ApplicationRows::filtered(all, store_->processSearchText()),
                                    store_->processSortField())
          : ApplicationRows::all(all);
  rows_.setRows(ApplicationRows::rows(groups, store_->expandedAppGroupIDs()));
  updateField(this, groupCount_, static_cast<int>(groups.size()),
              &ApplicationList::groupCountChanged);
}

void ApplicationList::toggleExpanded(const QString& groupID) {
  std::set<std::string> ids = store_->expandedAppGroupIDs();
  const std::string id = groupID.toStdString();
  if (ids.erase(id) == 0) ids.insert(id);
  store_->setExpandedAppGroupIDs(std::move(ids));
}

const AppGroup* ApplicationList::group(const std::string& id) const {
  const auto& groups = store_->snapshot().appGroups;
  const auto found = std::find_if(groups.begin(), groups.end(),
                                  [&id](const AppGroup& candidate) { return candidate.id == id; });
  return found == groups.end() ? nullptr : &*found;
}

bool ApplicationList::quitGroup(const QString& groupID, bool force) {
  const AppGroup* const target = group(groupID.toStdString());
  return target && store_->quitApp(*target, force);
}

bool ApplicationList::isStillRunning(const ApplicationRow& row) const {
  const auto& groups = store_->snapshot().appGroups;
  return std::any_of(groups.begin(), groups.end(), [&row](const AppGroup& candidate) {
    return std::any_of(candidate.processes.begin(), candidate.processes.end(),
                       [&row](const ProcessSample& process) {
                         return process.pid == row.pid && process.startedAt == row.startedAt;
                       });
  });
}

bool ApplicationList::stopProcess(int index) {
  const ApplicationRow* const row = rows_.rowAt(index);
  if (!row || row->isGroup || !isStillRunning(*row)) return false;
  return store_->stopProcess(row->pid, false);
}

}  // namespace korvantis
