#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// Whether a group is an application, part of the system, or a tool of the user.
enum class AppGroupKind { app, system, other };

template <>
struct EnumerationTable<AppGroupKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<AppGroupKind, Raw>;
  static constexpr std::array rows{Row{AppGroupKind::app, "app"},
                                   Row{AppGroupKind::system, "system"},
                                   Row{AppGroupKind::other, "other"}};
};

}  // namespace korvantis
