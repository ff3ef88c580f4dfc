#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/HistoryRangeOption.h"
#include "state/MonitorStore.h"
#include "ui/panes/HistoryLedgerRow.h"
#include "ui/panes/HistoryMetricChoice.h"
#include "ui/panes/HistorySeries.h"
#include "ui/views/Choice.h"

namespace korvantis {

/// What the history pane shows. The points and the figures on them follow the loaded rows and the
/// chosen metric, never the ticks. Another range loads the history anew. Main thread.
class HistoryPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QList<korvantis::HistoryMetricChoice> metrics READ metrics CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> ranges READ ranges CONSTANT FINAL)
  Q_PROPERTY(korvantis::HistorySeries series READ series NOTIFY seriesChanged FINAL)
  Q_PROPERTY(QColor color READ color NOTIFY colorChanged FINAL)
  Q_PROPERTY(QString unit READ unit NOTIFY unitChanged FINAL)
  Q_PROPERTY(double restingTop READ restingTop NOTIFY restingTopChanged FINAL)
  Q_PROPERTY(QString chartTitle READ chartTitle NOTIFY chartTitleChanged FINAL)
  Q_PROPERTY(QString averageText READ averageText NOTIFY averageTextChanged FINAL)
  Q_PROPERTY(QString peakText READ peakText NOTIFY peakTextChanged FINAL)
  Q_PROPERTY(QString ledgerTitle READ ledgerTitle NOTIFY ledgerTitleChanged FINAL)
  Q_PROPERTY(QList<korvantis::HistoryLedgerRow> ledger READ ledger NOTIFY ledgerChanged FINAL)

 public:
  /// So many applications are shown, though the store has more.
  static constexpr std::size_t mostLedgerRows = 20;

  using QObject::QObject;

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model. Loads nothing by itself.
  void setStore(MonitorStore* store);

  /// What can be charted, and how far back, in the order shown.
  QList<HistoryMetricChoice> metrics() const;
  QList<Choice> ranges() const;

  /// The points of the chart, one for each row.
  const HistorySeries& series() const { return series_; }
  /// The colour and the unit of the metric.
  const QColor& color() const { return color_; }
  const QString& unit() const { return unit_; }
  /// Where the scale of the metric ends while all is at rest.
  double restingTop() const { return restingTop_; }
  /// Such as "CPU HISTORY (24H)".
  const QString& chartTitle() const { return chartTitle_; }
  /// Such as "Average: 12.3 %".
  const QString& averageText() const { return averageText_; }
  /// Such as "Peak: 45.6 %".
  const QString& peakText() const { return peakText_; }
  /// Such as "HISTORICAL APP RESOURCE LEDGER (24H)".
  const QString& ledgerTitle() const { return ledgerTitle_; }
  /// The thirstiest applications.
  const QList<HistoryLedgerRow>& ledger() const { return ledger_; }

 signals:
  void storeChanged();
  void seriesChanged();
  void colorChanged();
  void unitChanged();
  void restingTopChanged();
  void chartTitleChanged();
  void averageTextChanged();
  void peakTextChanged();
  void ledgerTitleChanged();
  void ledgerChanged();

 private:
  void takeReadings();
  void takeSummaries();
  void takeMetric();
  void takeRange();
  void updateSeries();
  void updateTitles();

  MonitorStore* store_ = nullptr;
  /// The range that the store's rows were loaded for.
  HistoryRangeOption loadedRange_ = HistoryRangeOption::hour24;
  HistorySeries series_;
  QColor color_;
  QString unit_;
  double restingTop_ = 1;
  QString chartTitle_;
  QString averageText_;
  QString peakText_;
  QString ledgerTitle_;
  QList<HistoryLedgerRow> ledger_;
};

}  // namespace korvantis
