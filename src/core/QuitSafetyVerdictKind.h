#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// Whether something may be stopped.
enum class QuitSafetyVerdictKind { safe, askFirst, doNot };

template <>
struct EnumerationTable<QuitSafetyVerdictKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<QuitSafetyVerdictKind, Raw>;
  static constexpr std::array rows{Row{QuitSafetyVerdictKind::safe, "safe"},
                                   Row{QuitSafetyVerdictKind::askFirst, "ask_first"},
                                   Row{QuitSafetyVerdictKind::doNot, "do_not"}};
};

/// The words on the badge of a verdict.
constexpr std::string_view badgeText(QuitSafetyVerdictKind kind) {
  switch (kind) {
    case QuitSafetyVerdictKind::safe: return "Safe to quit";
    case QuitSafetyVerdictKind::askFirst: return "Ask first";
    case QuitSafetyVerdictKind::doNot: return "Don't quit";
  }
  return "";
}

}  // namespace korvantis
