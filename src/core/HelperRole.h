#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// What a helper process of an application is for. The raw value is also its identity and the
/// label shown; the order is the order of the rows of a breakdown.
enum class HelperRole { main, renderer, extensionHost, gpu, network, other };

template <>
struct EnumerationTable<HelperRole> {
  using Raw = std::string_view;
  using Row = EnumerationRow<HelperRole, Raw>;
  static constexpr std::array rows{Row{HelperRole::main, "Main app"},
                                   Row{HelperRole::renderer, "Tabs & windows"},
                                   Row{HelperRole::extensionHost, "Extensions"},
                                   Row{HelperRole::gpu, "Graphics"},
                                   Row{HelperRole::network, "Network"},
                                   Row{HelperRole::other, "Other helpers"}};
};

}  // namespace korvantis
