#include "ui/panes/ProcessesPaneModel.h"

#include "ui/views/Choices.h"

namespace korvantis {

QList<Choice> ProcessesPaneModel::sortFields() const {
  return Choices::sortFields();
}

int ProcessesPaneModel::indexOfSortField(const QString& name) const {
  const QList<Choice> fields = sortFields();
  for (int index = 0; index < fields.size(); ++index) {
    if (fields[index].name == name) return index;
  }
  return -1;
}

}  // namespace korvantis
