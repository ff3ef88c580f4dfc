#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "core/AppGroup.h"
#include "core/AppLimitFigure.h"
#include "state/MonitorStore.h"
#include "ui/panes/RunningAppListModel.h"
#include "ui/views/Choice.h"

namespace korvantis {

/// A limit while the user puts it together. It begins as more than 150 % of the processor for five
/// minutes, and is as short-lived as the view that shows it. Main thread.
class AppLimitEditor : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("InsightsPaneModel owns it")
  Q_PROPERTY(QAbstractItemModel* apps READ apps CONSTANT FINAL)
  Q_PROPERTY(bool holdsApps READ holdsApps WRITE setHoldsApps NOTIFY holdsAppsChanged FINAL)
  Q_PROPERTY(QString selectedAppID READ selectedAppID WRITE setSelectedAppID NOTIFY
                 selectedAppIDChanged FINAL)
  Q_PROPERTY(int appIndex READ appIndex NOTIFY appIndexChanged FINAL)
  Q_PROPERTY(QList<korvantis::Choice> figures READ figures CONSTANT FINAL)
  Q_PROPERTY(int figureIndex READ figureIndex WRITE setFigureIndex NOTIFY figureIndexChanged FINAL)
  Q_PROPERTY(
      int limitMinutes READ limitMinutes WRITE setLimitMinutes NOTIFY limitMinutesChanged FINAL)
  Q_PROPERTY(QString minutesText READ minutesText NOTIFY limitMinutesChanged FINAL)

 public:
  explicit AppLimitEditor(QObject* parent = nullptr);

  /// The store whose applications are offered and whose limits grow; it must outlive the editor.
  /// Null for none.
  void setStore(MonitorStore* store);

  RunningAppListModel* apps() { return &apps_; }

  /// While it holds, the applications offered stay as they are, so that none moves away from under
  /// the pointer in an open menu. Then they are those of the last tick again.
  bool holdsApps() const { return holdsApps_; }
  void setHoldsApps(bool holds);

  /// The group that the limit is for, which may be gone meanwhile; empty for none.
  const QString& selectedAppID() const { return selectedAppID_; }
  void setSelectedAppID(const QString& id);
  /// Where it stands among `apps`; 0 when it is not there.
  int appIndex() const { return appIndex_; }

  /// The figures that a limit can watch, and the place of the chosen one.
  QList<Choice> figures() const;
  int figureIndex() const;
  /// A place outside the list changes nothing.
  void setFigureIndex(int index);

  /// The limit in the unit of the figure.
  double limitThreshold() const { return limitThreshold_; }
  /// The limit as its field shows it at rest, such as "150" or "150.7".
  Q_INVOKABLE QString limitText() const;
  /// Takes a limit as it is typed: digits with a point. What is no number yet leaves the last
  /// limit.
  Q_INVOKABLE void typeLimit(const QString& text);

  /// 1 to 60; anything beyond becomes the nearer end.
  int limitMinutes() const { return limitMinutes_; }
  void setLimitMinutes(int minutes);
  /// Such as "5 min".
  QString minutesText() const;

  /// Adds the limit to the store's, for the group selected, or else for the first application there
  /// is; without one nothing happens. The editor stays as it is.
  Q_INVOKABLE void addRule();

 signals:
  void holdsAppsChanged();
  void selectedAppIDChanged();
  void appIndexChanged();
  void figureIndexChanged();
  void limitMinutesChanged();

 private:
  void takeGroups();
  void updateAppIndex();
  const AppGroup* limitedGroup() const;

  MonitorStore* store_ = nullptr;
  RunningAppListModel apps_{this};
  bool holdsApps_ = false;
  QString selectedAppID_;
  int appIndex_ = 0;
  AppLimitFigure selectedFigure_ = AppLimitFigure::cpuPercent;
  double limitThreshold_ = 150;
  int limitMinutes_ = 5;
};

}  // namespace korvantis
