#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"
#include "ui/views/Choice.h"
#include "ui/views/PaneTab.h"

namespace korvantis {

/// The words and figures of the navigation bar and the status bar. Each property notifies only
/// when it really changes. Main thread.
class RootContentModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QList<korvantis::PaneTab> tabs READ tabs CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> themeModes READ themeModes CONSTANT FINAL)
  Q_PROPERTY(QUrl appIconSource READ appIconSource CONSTANT FINAL)
  Q_PROPERTY(QString machineLine READ machineLine NOTIFY machineLineChanged FINAL)
  Q_PROPERTY(bool isUnderStrain READ isUnderStrain NOTIFY isUnderStrainChanged FINAL)
  Q_PROPERTY(QString insightBadge READ insightBadge NOTIFY insightBadgeChanged FINAL)
  Q_PROPERTY(QString tickText READ tickText NOTIFY tickTextChanged FINAL)
  Q_PROPERTY(QString countsText READ countsText NOTIFY countsTextChanged FINAL)
  Q_PROPERTY(QString figuresText READ figuresText NOTIFY figuresTextChanged FINAL)

 public:
  using QObject::QObject;

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// The panes, in the order of their tabs.
  QList<PaneTab> tabs() const;
  /// The looks to choose from.
  QList<Choice> themeModes() const;
  /// The application's icon in its bundle; empty when there is none.
  QUrl appIconSource() const;

  /// Such as "Apple M2 Pro · 10 cores (6P + 4E) · 32.0 GB".
  const QString& machineLine() const { return machineLine_; }
  bool isUnderStrain() const { return isUnderStrain_; }
  /// How many findings are listed; empty when there are none.
  const QString& insightBadge() const { return insightBadge_; }
  /// Such as "Live 2s tick".
  const QString& tickText() const { return tickText_; }
  /// Such as "12 groups · 3 listening ports · 1 dev projects".
  const QString& countsText() const { return countsText_; }
  /// Such as "CPU 4.5% · RAM 8.0 GB · 9.5W".
  const QString& figuresText() const { return figuresText_; }

 signals:
  void storeChanged();
  void machineLineChanged();
  void isUnderStrainChanged();
  void insightBadgeChanged();
  void tickTextChanged();
  void countsTextChanged();
  void figuresTextChanged();

 private:
  void takeSnapshot();
  void takeInsights();
  void takeInterval();

  MonitorStore* store_ = nullptr;
  QString machineLine_;
  bool isUnderStrain_ = false;
  QString insightBadge_;
  QString tickText_;
  QString countsText_;
  QString figuresText_;
};

}  // namespace korvantis
