#pragma once

#include <QList>

#include "ui/views/Choice.h"

/// What the screens offer to choose from, in the order shown.
namespace korvantis::Choices {

/// The looks.
QList<Choice> themeModes();
/// The lists of the processes pane.
QList<Choice> processesSubTabs();
/// What the list of applications can be sorted by.
QList<Choice> sortFields();
/// The seconds between ticks.
QList<Choice> intervals();

}  // namespace korvantis::Choices
