#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <optional>
#include <vector>

#include "ui/panes/ProcessesRow.h"

namespace korvantis {

/// The rows of the list shown in the processes pane, for a view. It follows new rows by identity
/// and tells the view only what changed: rows that left, moved or entered, and then the rows whose
/// words changed. Rows that stay the same are not mentioned at all. Main thread.
class ProcessesListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("ProcessesPaneModel owns it")

 public:
  enum Role {
    /// The whole row as a value.
    Row = Qt::UserRole + 1
  };

  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Tells which rows the view shows, `first` to `last`, and which one is its current one (-1 for
  /// none). The next `setRows` moves only these; all others are just rewritten where they stand,
  /// which nobody sees and which spares the view hundreds of moves. Until told, all rows move.
  Q_INVOKABLE void setShown(int first, int last, int current);

  /// Shows these rows from now on. Identities may repeat.
  void setRows(std::vector<ProcessesRow> rows);

  /// The row at `index`; a null pointer outside the list.
  const ProcessesRow* rowAt(int index) const;

 private:
  struct Shown {
    int first;
    int last;
    int current;
  };

  bool isShown(int place) const;
  void follow(std::vector<std::unique_ptr<ProcessesRow>>& wanted);
  void replaceValues(std::vector<std::unique_ptr<ProcessesRow>>& wanted);

  /// Pointers, so that moving a row is cheap.
  std::vector<std::unique_ptr<ProcessesRow>> rows_;
  std::optional<Shown> shown_;
};

}  // namespace korvantis
