#include "ui/views/QuitSafetyBadge.h"

#include <optional>

#include "ui/theme/OstrelTheme.h"
#include "ui/views/ModelText.h"

namespace korvantis {
namespace {

std::optional<QuitSafetyVerdictKind> verdictNamed(const QString& name) {
  for (const auto& row : EnumerationTable<QuitSafetyVerdictKind>::rows) {
    if (name == textOf(row.raw)) return row.value;
  }
  return std::nullopt;
}

QColor withOpacity(QColor color, float opacity) {
  color.setAlphaF(opacity);
  return color;
}

}  // namespace

QString QuitSafetyBadge::text(const QString& verdict) {
  const auto kind = verdictNamed(verdict);
  return kind ? textOf(badgeText(*kind)) : QString();
}

QColor QuitSafetyBadge::ground(const QString& verdict) {
  switch (verdictNamed(verdict).value_or(QuitSafetyVerdictKind::doNot)) {
    case QuitSafetyVerdictKind::safe: return withOpacity(OstrelTheme::safeGreen(), 0.16F);
    case QuitSafetyVerdictKind::askFirst: return withOpacity(OstrelTheme::amberWarning(), 0.16F);
    // Quiet on purpose: what is better left alone is no alarm.
    case QuitSafetyVerdictKind::doNot: return withOpacity(OstrelTheme::ink4(), 0.25F);
  }
  return {};
}

QColor QuitSafetyBadge::ink(const QString& verdict) {
  switch (verdictNamed(verdict).value_or(QuitSafetyVerdictKind::doNot)) {
    case QuitSafetyVerdictKind::safe: return OstrelTheme::safeGreen();
    case QuitSafetyVerdictKind::askFirst: return OstrelTheme::amberWarning();
    case QuitSafetyVerdictKind::doNot: return OstrelTheme::ink3();
  }
  return {};
}

}  // namespace korvantis
