#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "state/MonitorStore.h"
#include "ui/panes/EmptyStateWords.h"
#include "ui/panes/ProcessesListModel.h"
#include "ui/views/Choice.h"

namespace korvantis {

/// The words and the list of the processes pane, and what can be done in it. Every action looks
/// its target up in the present snapshot, so that a row which is a moment old can't hit anything
/// else. Main thread.
class ProcessesPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QList<korvantis::Choice> tabs READ tabs CONSTANT FINAL)
  Q_PROPERTY(QStringList badges READ badges NOTIFY badgesChanged FINAL)
  Q_PROPERTY(QList<korvantis::Choice> sortFields READ sortFields CONSTANT FINAL)
  Q_PROPERTY(korvantis::ProcessesListModel* rows READ rows CONSTANT FINAL)
  Q_PROPERTY(korvantis::EmptyStateWords emptyState READ emptyState NOTIFY emptyStateChanged FINAL)

 public:
  explicit ProcessesPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the pane.
  void setStore(MonitorStore* store);

  /// The lists to choose from.
  QList<Choice> tabs() const;
  /// How much each of `tabs` holds, whatever is searched for; empty for nothing.
  const QStringList& badges() const { return badges_; }
  /// What the list of applications can be sorted by.
  QList<Choice> sortFields() const;
  /// The place of the field of that name in `sortFields`; -1 when there is none.
  Q_INVOKABLE int indexOfSortField(const QString& name) const;

  /// The rows of the selected list.
  ProcessesListModel* rows() { return &rows_; }
  /// What the selected list shows when it has no rows.
  const EmptyStateWords& emptyState() const { return emptyState_; }
  /// The place of an application's own row; -1 when it is not listed.
  Q_INVOKABLE int indexOfGroup(const QString& groupID) const;

  /// From here to `release`, ticks leave the rows as they are: while a button is pressed, its row
  /// must not move from under the pointer. What the user sets takes effect all the same.
  Q_INVOKABLE void hold();
  /// Lets the rows catch up, once what the release of the button does is done.
  Q_INVOKABLE void release();

  /// Opens or closes an application.
  Q_INVOKABLE void toggleExpanded(const QString& groupID);
  /// Stops an application, by force or politely; false when it is gone or nothing took it.
  Q_INVOKABLE bool quitGroup(const QString& groupID, bool force);
  /// Stops, politely, the process that `row` shows; false when there is none, or when its pid now
  /// belongs to another one.
  Q_INVOKABLE bool stopProcess(const korvantis::ProcessesRow& row);

 signals:
  void storeChanged();
  void badgesChanged();
  void emptyStateChanged();
  /// The view is to tell the rows now which of them it shows.
  void rowsAboutToChange();

 private:
  void update();
  void followTick();
  void updateBadges();
  void updateRows();
  const AppGroup* groupOf(const QString& groupID) const;
  std::vector<ProcessesRow> appRows() const;
  std::vector<ProcessesRow> selectedRows() const;

  MonitorStore* store_ = nullptr;
  QStringList badges_;
  EmptyStateWords emptyState_;
  ProcessesListModel rows_;
  bool isHeld_ = false;
};

}  // namespace korvantis
