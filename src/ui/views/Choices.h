#pragma once

#include <QList>

#include "core/EnumerationTable.h"
#include "state/ObservableField.h"
#include "ui/views/Choice.h"
#include "ui/views/ModelText.h"

/// What the screens offer to choose from, in the order shown.
namespace korvantis::Choices {

/// The cases of an enumeration whose raw values are the words for them.
template <Tabled Enumeration>
QList<Choice> casesOf() {
  QList<Choice> choices;
  for (const Enumeration value : allCases<Enumeration>()) {
    choices.append({caseText(value), textOf(rawValue(value))});
  }
  return choices;
}

/// The looks.
QList<Choice> themeModes();
/// The lists of the processes pane.
QList<Choice> processesSubTabs();
/// What the list of applications can be sorted by.
QList<Choice> sortFields();
/// The seconds between ticks.
QList<Choice> intervals();

}  // namespace korvantis::Choices
