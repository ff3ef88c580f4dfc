#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// The lists of the processes pane, in the order of their pills. The raw value is the label.
enum class ProcessesSubTab { apps, projects, containers, ports, idleServers };

template <>
struct EnumerationTable<ProcessesSubTab> {
  using Raw = std::string_view;
  using Row = EnumerationRow<ProcessesSubTab, Raw>;
  static constexpr std::array rows{
      Row{ProcessesSubTab::apps, "Apps"}, Row{ProcessesSubTab::projects, "Projects"},
      Row{ProcessesSubTab::containers, "Containers"}, Row{ProcessesSubTab::ports, "Ports"},
      Row{ProcessesSubTab::idleServers, "Idle Servers"}};
};

template <>
struct CaseNames<ProcessesSubTab> {
  static constexpr std::array<std::string_view, 5> names{"apps", "projects", "containers", "ports",
                                                         "idleServers"};
};

}  // namespace korvantis
