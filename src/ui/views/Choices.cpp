#include "ui/views/Choices.h"

#include <QString>

#include "core/EnumerationTable.h"
#include "state/AppThemeMode.h"
#include "state/ObservableField.h"
#include "state/ProcessSortField.h"
#include "state/ProcessesSubTab.h"
#include "ui/views/ModelText.h"

namespace korvantis::Choices {

namespace {

/// The cases of an enumeration whose raw values are their labels.
template <Tabled Enumeration>
QList<Choice> labelled() {
  QList<Choice> choices;
  for (const Enumeration value : allCases<Enumeration>()) {
    choices.append({caseText(value), textOf(rawValue(value))});
  }
  return choices;
}

}  // namespace

QList<Choice> themeModes() {
  QList<Choice> choices;
  for (const AppThemeMode mode : allCases<AppThemeMode>()) {
    choices.append(
        {caseText(mode), textOf(label(mode)), textOf(shortLabel(mode)), textOf(iconName(mode))});
  }
  return choices;
}

QList<Choice> processesSubTabs() {
  return labelled<ProcessesSubTab>();
}

QList<Choice> sortFields() {
  return labelled<ProcessSortField>();
}

QList<Choice> intervals() {
  QList<Choice> choices;
  for (const int seconds : {1, 2, 5}) {
    Choice choice;
    choice.label = QString::number(seconds) +
                   (seconds == 1 ? QStringLiteral(" second") : QStringLiteral(" seconds"));
    choice.value = seconds;
    choices.append(choice);
  }
  return choices;
}

}  // namespace korvantis::Choices
