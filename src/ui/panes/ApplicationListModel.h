#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <vector>

#include "ui/panes/ApplicationRow.h"

namespace korvantis {

/// The rows of the list of applications, for a view. It follows new rows by identity and tells
/// the view only what changed: rows that left, moved or entered, and then one range of rows with
/// the roles whose values changed. Rows that stay the same are not mentioned at all. Main thread.
class ApplicationListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("ApplicationList owns it")

 public:
  enum Role {
    IsGroup = Qt::UserRole + 1,
    GroupID,
    Name,
    IconName,
    CountText,
    PidText,
    RoleText,
    PortsText,
    CpuText,
    MemoryText,
    DiskText,
    ReadText,
    WriteText,
    IsHot,
    IsExpanded,
    /// The whole row in one sentence, for those who can't see it.
    Description,
  };

  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Shows these rows from now on. Identities may repeat.
  void setRows(std::vector<ApplicationRow> rows);

  /// The row at `index`; a null pointer outside the list.
  const ApplicationRow* rowAt(int index) const;

 private:
  void follow(std::vector<std::unique_ptr<ApplicationRow>>& wanted);
  void replaceValues(std::vector<std::unique_ptr<ApplicationRow>>& wanted);

  /// Pointers, so that moving a row is cheap.
  std::vector<std::unique_ptr<ApplicationRow>> rows_;
};

}  // namespace korvantis
