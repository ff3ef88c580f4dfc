#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <string>

#include "state/MonitorStore.h"
#include "ui/panes/ApplicationListModel.h"

namespace korvantis {

/// The applications of the last tick as rows, and what can be done to them. Every action looks its
/// target up in the present snapshot, so that a row which is a moment old can't hit anything
/// else. Main thread.
class ApplicationList : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(bool followsPicker READ followsPicker WRITE setFollowsPicker NOTIFY
                 followsPickerChanged FINAL)
  Q_PROPERTY(korvantis::ApplicationListModel* rows READ rows CONSTANT FINAL)
  Q_PROPERTY(int groupCount READ groupCount NOTIFY groupCountChanged FINAL)

 public:
  explicit ApplicationList(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the list.
  void setStore(MonitorStore* store);

  /// Whether the store's filter text and sort field apply; otherwise all applications stand in
  /// the order of the engine.
  bool followsPicker() const { return followsPicker_; }
  void setFollowsPicker(bool follows);

  ApplicationListModel* rows() { return &rows_; }

  /// How many applications are listed.
  int groupCount() const { return groupCount_; }

  /// Opens or closes the application.
  Q_INVOKABLE void toggleExpanded(const QString& groupID);

  /// Stops the application, by force or politely; false when it is gone or nothing took it.
  Q_INVOKABLE bool quitGroup(const QString& groupID, bool force);

  /// Stops, politely, the process of the row at `index`; false when that row is none, or when its
  /// pid now belongs to another process.
  Q_INVOKABLE bool stopProcess(int index);

 signals:
  void storeChanged();
  void followsPickerChanged();
  void groupCountChanged();

 private:
  void update();
  const AppGroup* group(const std::string& id) const;
  bool isStillRunning(const ApplicationRow& row) const;

  MonitorStore* store_ = nullptr;
  bool followsPicker_ = false;
  int groupCount_ = 0;
  ApplicationListModel rows_;
};

}  // namespace korvantis
