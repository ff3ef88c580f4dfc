#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// What the ledger of the history pane says of one application.
struct HistoryLedgerRow {
  Q_GADGET
  QML_VALUE_TYPE(historyLedgerRow)
  Q_PROPERTY(QString id MEMBER id FINAL)
  Q_PROPERTY(QString name MEMBER name FINAL)
  Q_PROPERTY(QString bundlePath MEMBER bundlePath FINAL)
  Q_PROPERTY(QString cpuTime MEMBER cpuTime FINAL)
  Q_PROPERTY(QString averageMemory MEMBER averageMemory FINAL)
  Q_PROPERTY(QString peakMemory MEMBER peakMemory FINAL)
  Q_PROPERTY(QString energy MEMBER energy FINAL)
  Q_PROPERTY(QString network MEMBER network FINAL)
  Q_PROPERTY(QString disk MEMBER disk FINAL)
  Q_PROPERTY(QString description MEMBER description FINAL)

 public:
  QString id{};
  QString name{};
  /// Empty where there is none.
  QString bundlePath{};
  QString cpuTime{};
  QString averageMemory{};
  QString peakMemory{};
  QString energy{};
  /// Received and sent together.
  QString network{};
  /// Read and written together.
  QString disk{};
  /// The whole line, for those who can't see it.
  QString description{};

  bool operator==(const HistoryLedgerRow&) const = default;
};

}  // namespace korvantis
