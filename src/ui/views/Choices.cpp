#include "ui/views/Choices.h"

#include <QString>

#include "core/EnumerationTable.h"
#include "state/AppThemeMode.h"
#include "state/ObservableField.h"
#include "state/ProcessSortField.h"
#include "state/ProcessesSubTab.h"
#include "ui/views/ModelText.h"

namespace korvantis::Choices {

QList<Choice> themeModes() {
  QList<Choice> choices;
  for (const AppThemeMode mode : allCases<AppThemeMode>()) {
    choices.append(
        {caseText(mode), textOf(label(mode)), textOf(shortLabel(mode)), textOf(iconName(mode))});
  }
  return choices;
}

QList<Choice> processesSubTabs() {
  return casesOf<ProcessesSubTab>();
}

QList<Choice> sortFields() {
  return casesOf<ProcessSortField>();
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
