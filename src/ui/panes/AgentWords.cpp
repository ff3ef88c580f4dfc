#include "ui/panes/AgentWords.h"

#include <QLocale>
#include <algorithm>
#include <cstddef>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "ui/theme/ColorHelpers.h"
#include "ui/theme/OstrelTheme.h"
#include "ui/views/ModelText.h"

namespace korvantis::AgentWords {

namespace {

constexpr std::size_t shownChildren = 3;

QString usedText(double percent, const std::string& resetText) {
  return textOf(fixedDecimals(percent, 0) + "% · " + resetText);
}

/// Written so that what is no number leaves the bar empty.
double heldPercent(double percent) {
  return percent > 0 ? std::min(percent, 100.0) : 0.0;
}

QColor colorOf(AgentState state) {
  switch (state) {
    case AgentState::working: return OstrelTheme::cpu();
    case AgentState::waitingForApproval: return OstrelTheme::amberWarning();
    case AgentState::idle: return OstrelTheme::safeGreen();
  }
  return {};
}

QString tokensText(const QString& name, qint64 count) {
  return name + QStringLiteral(": ") + groupedCount(count) + QStringLiteral(" tok");
}

}  // namespace

PlanCard planCard(const PlanLimitStatus& limit) {
  PlanCard card;
  card.tool = textOf(limit.tool);
  card.planName = textOf(limit.planName);
  card.paceText = textOf(limit.paceText);
  card.paceColor = containsIgnoringCase(card.paceText, QStringLiteral("fast"))
                       ? OstrelTheme::amberWarning()
                       : OstrelTheme::safeGreen();
  card.accentColor = Color::fromHexString(textOf(limit.colorHex));
  card.fiveHourText = usedText(limit.fiveHourUsedPercent, limit.fiveHourResetText);
  card.fiveHourPercent = heldPercent(limit.fiveHourUsedPercent);
  card.weeklyText = usedText(limit.weeklyUsedPercent, limit.weeklyResetText);
  card.weeklyPercent = heldPercent(limit.weeklyUsedPercent);
  card.todayText = tokensText(QStringLiteral("Today"), limit.tokensToday);
  card.weekText = tokensText(QStringLiteral("7d"), limit.tokensWeek);
  return card;
}

AgentSessionRow sessionRow(const AgentSession& session) {
  AgentSessionRow row;
  row.pid = session.pid;
  row.toolName = textOf(session.toolName);
  row.stateLabel = textOf(rawValue(session.state));
  row.stateColor = colorOf(session.state);
  row.pidText = QStringLiteral("PID ") + QString::number(session.pid);
  row.projectText = textOf(session.projectName + " — " + session.projectPath);
  for (const std::string& child : session.childProcesses) {
    if (static_cast<std::size_t>(row.childNames.size()) == shownChildren) break;
    row.childNames.append(textOf(child));
  }
  row.cpuText = textOf(fixedDecimals(session.cpuPercent, 1) + "% CPU");
  row.memoryText = textOf(OstrelFormat::bytes(session.memoryBytes));
  return row;
}

bool containsIgnoringCase(const QString& text, const QString& part) {
  const QLocale language;
  // The language's own rules first; folding then takes the letters that have no lower case of
  // their own, such as the long s.
  return language.toLower(text).contains(language.toLower(part), Qt::CaseInsensitive);
}

QString groupedCount(qint64 count) {
  QLocale language;
  // The C locale alone leaves the groups out by itself.
  language.setNumberOptions(language.numberOptions() & ~QLocale::OmitGroupSeparator);
  return language.toString(count);
}

}  // namespace korvantis::AgentWords
