#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"
#include "ui/panes/InsightListModel.h"

namespace korvantis {

/// What the insights pane says. Main thread.
class InsightsPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QString headline READ headline NOTIFY headlineChanged FINAL)
  Q_PROPERTY(QString findingsTitle READ findingsTitle NOTIFY findingsTitleChanged FINAL)
  Q_PROPERTY(korvantis::InsightListModel* insights READ insights CONSTANT FINAL)

 public:
  explicit InsightsPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// One sentence on what is wrong right now, or that nothing is.
  const QString& headline() const { return headline_; }
  /// Such as "ACTIVE & RECENT INSIGHTS (3)".
  const QString& findingsTitle() const { return findingsTitle_; }
  InsightListModel* insights() { return &insights_; }

 signals:
  void storeChanged();
  void headlineChanged();
  void findingsTitleChanged();

 private:
  void updateHeadline();
  void updateInsights();

  MonitorStore* store_ = nullptr;
  QString headline_;
  QString findingsTitle_;
  InsightListModel insights_;
};

}  // namespace korvantis
