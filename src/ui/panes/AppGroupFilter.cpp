#include "ui/panes/AppGroupFilter.h"

#include <algorithm>
#include <string>

#include "core/LowerCase.h"

namespace korvantis::AppGroupFilter {

namespace {

bool contains(const std::string& text, const std::string& query) {
  return text.find(query) != std::string::npos;
}

bool isFoundByPidOrName(const ProcessSample& process, const std::string& query) {
  return contains(std::to_string(process.pid), query) || contains(lowerCased(process.name), query);
}

bool isFoundByPort(const ProcessSample& process, const std::string& query) {
  return std::any_of(process.listeningPorts.begin(), process.listeningPorts.end(),
                     [&query](std::uint16_t port) {
                       // The port alone is a part of this text too.
                       return contains(':' + std::to_string(port), query);
                     });
}

bool isFound(const AppGroup& group, const std::string& query) {
  if (query.empty() || contains(lowerCased(group.name), query)) return true;
  return std::any_of(group.processes.begin(), group.processes.end(),
                     [&query](const ProcessSample& process) {
                       return isFoundByPidOrName(process, query) || isFoundByPort(process, query);
                     });
}

double sortKey(const AppGroup& group, ProcessSortField field) {
  switch (field) {
    case ProcessSortField::memory: return static_cast<double>(group.memoryBytes);
    case ProcessSortField::cpu: return group.cpuPercent;
    case ProcessSortField::energy: return group.energyWatts;
    case ProcessSortField::network: return group.networkInBytesPerSec + group.networkOutBytesPerSec;
    case ProcessSortField::disk: return group.diskReadBytesPerSec + group.diskWriteBytesPerSec;
    case ProcessSortField::gpu: return group.gpuPercent;
  }
  return 0;
}

}  // namespace

bool isListed(const AppGroup& group, bool showsSystem) {
  return showsSystem || group.kind == AppGroupKind::app;
}

Groups filtered(const std::vector<AppGroup>& groups, const Wish& wish) {
  const std::string query = lowerCased(wish.searchText.trimmed().toStdString());
  Groups kept;
  kept.reserve(groups.size());
  for (const AppGroup& group : groups) {
    if (isListed(group, wish.showsSystem) && isFound(group, query)) kept.push_back(&group);
  }
  std::stable_sort(kept.begin(), kept.end(),
                   [field = wish.sortField](const AppGroup* one, const AppGroup* other) {
                     return sortKey(*one, field) > sortKey(*other, field);
                   });
  return kept;
}

}  // namespace korvantis::AppGroupFilter
