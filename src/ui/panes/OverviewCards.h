#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <string>

namespace korvantis {

/// The words and figures of the card of the processor.
struct CPUCard {
  Q_GADGET
  QML_VALUE_TYPE(cpuCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QList<double> coreShares MEMBER coreShares FINAL)
  Q_PROPERTY(int performanceCores MEMBER performanceCores FINAL)
  Q_PROPERTY(QString loadText MEMBER loadText FINAL)
  Q_PROPERTY(QString coresText MEMBER coresText FINAL)
  Q_PROPERTY(QString topName MEMBER topName FINAL)
  Q_PROPERTY(QString topPercent MEMBER topPercent FINAL)

 public:
  QString headline{};
  QString subheadline{};
  /// How full the bar of each core is, 0.05 to 1.
  QList<double> coreShares{};
  /// So many of them are performance cores.
  int performanceCores = 0;
  QString loadText{};
  QString coresText{};
  /// The hungriest application; empty when there is none.
  QString topName{};
  QString topPercent{};

  bool operator==(const CPUCard&) const = default;
};

/// The words and figures of the card of the memory. Shares are of all memory, 0 to 1.
struct MemoryCard {
  Q_GADGET
  QML_VALUE_TYPE(memoryCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QColor pressureColor MEMBER pressureColor FINAL)
  Q_PROPERTY(double appShare MEMBER appShare FINAL)
  Q_PROPERTY(double wiredShare MEMBER wiredShare FINAL)
  Q_PROPERTY(double compressedShare MEMBER compressedShare FINAL)
  Q_PROPERTY(QString appText MEMBER appText FINAL)
  Q_PROPERTY(QString wiredText MEMBER wiredText FINAL)
  Q_PROPERTY(QString swapText MEMBER swapText FINAL)

 public:
  QString headline{};
  QString subheadline{};
  QColor pressureColor{};
  double appShare = 0;
  double wiredShare = 0;
  double compressedShare = 0;
  QString appText{};
  QString wiredText{};
  QString swapText{};

  bool operator==(const MemoryCard&) const = default;
};

/// The words of the card of the GPU and the Neural Engine.
struct GPUCard {
  Q_GADGET
  QML_VALUE_TYPE(gpuCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QString memoryText MEMBER memoryText FINAL)
  Q_PROPERTY(QString neuralText MEMBER neuralText FINAL)
  Q_PROPERTY(bool isNeuralBusy MEMBER isNeuralBusy FINAL)
  Q_PROPERTY(QString neuralWatts MEMBER neuralWatts FINAL)
  Q_PROPERTY(bool hasHolder MEMBER hasHolder FINAL)
  Q_PROPERTY(QString holderText MEMBER holderText FINAL)

 public:
  QString headline{};
  QString subheadline{};
  QString memoryText{};
  QString neuralText{};
  bool isNeuralBusy = false;
  QString neuralWatts{};
  /// Whether the text below ends in the name of an application.
  bool hasHolder = false;
  QString holderText{};

  bool operator==(const GPUCard&) const = default;
};

/// The words of the card of temperatures and power, and the fan that its button controls.
struct ThermalCard {
  Q_GADGET
  QML_VALUE_TYPE(thermalCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QString hottestName MEMBER hottestName FINAL)
  Q_PROPERTY(QString hottestText MEMBER hottestText FINAL)
  Q_PROPERTY(bool isHot MEMBER isHot FINAL)
  Q_PROPERTY(QString fanText MEMBER fanText FINAL)
  Q_PROPERTY(QString fanButton MEMBER fanButton FINAL)
  Q_PROPERTY(double minRPM MEMBER minRPM FINAL)
  Q_PROPERTY(double maxRPM MEMBER maxRPM FINAL)

 public:
  QString headline{};
  QString subheadline{};
  QString hottestName{};
  QString hottestText{};
  /// At or above the user's threshold.
  bool isHot = false;
  QString fanText{};
  QString fanButton{};
  /// What the speed of the fan can be set to.
  double minRPM = 1200;
  double maxRPM = 5800;
  std::int64_t fanID = 0;

  bool operator==(const ThermalCard&) const = default;
};

/// The words of the card of the network.
struct NetworkCard {
  Q_GADGET
  QML_VALUE_TYPE(networkCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString sessionIn MEMBER sessionIn FINAL)
  Q_PROPERTY(QString sessionOut MEMBER sessionOut FINAL)
  Q_PROPERTY(QString portsText MEMBER portsText FINAL)

 public:
  QString headline{};
  QString sessionIn{};
  QString sessionOut{};
  QString portsText{};

  bool operator==(const NetworkCard&) const = default;
};

/// One line of a card: a symbol, a name and a figure or word at its end.
struct CardRow {
  Q_GADGET
  QML_VALUE_TYPE(cardRow)
  Q_PROPERTY(QString icon MEMBER icon FINAL)
  Q_PROPERTY(QString name MEMBER name FINAL)
  Q_PROPERTY(QString figure MEMBER figure FINAL)
  Q_PROPERTY(QString id MEMBER id FINAL)

 public:
  QString icon{};
  QString name{};
  QString figure{};
  /// What the line stands for, where a button acts on it.
  QString id{};

  bool operator==(const CardRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return id.toStdString(); }
};

/// The words of the card of disk and volumes.
struct DiskCard {
  Q_GADGET
  QML_VALUE_TYPE(diskCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QString readText MEMBER readText FINAL)
  Q_PROPERTY(QString writeText MEMBER writeText FINAL)
  Q_PROPERTY(QList<korvantis::CardRow> volumes MEMBER volumes FINAL)

 public:
  QString headline{};
  QString subheadline{};
  QString readText{};
  QString writeText{};
  QList<CardRow> volumes{};

  bool operator==(const DiskCard&) const = default;
};

/// The words of the card of the battery and of what keeps the machine awake.
struct BatteryCard {
  Q_GADGET
  QML_VALUE_TYPE(batteryCard)
  Q_PROPERTY(QString icon MEMBER icon FINAL)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)
  Q_PROPERTY(QString cyclesText MEMBER cyclesText FINAL)
  Q_PROPERTY(QString temperatureText MEMBER temperatureText FINAL)
  Q_PROPERTY(QString awakeText MEMBER awakeText FINAL)
  Q_PROPERTY(QList<korvantis::CardRow> blockers MEMBER blockers FINAL)
  Q_PROPERTY(QList<korvantis::CardRow> devices MEMBER devices FINAL)

 public:
  QString icon{};
  QString headline{};
  QString subheadline{};
  QString cyclesText{};
  QString temperatureText{};
  /// Empty when nothing keeps the machine awake.
  QString awakeText{};
  QList<CardRow> blockers{};
  QList<CardRow> devices{};

  bool operator==(const BatteryCard&) const = default;
};

/// The words of the card of the largest applications.
struct TopAppsCard {
  Q_GADGET
  QML_VALUE_TYPE(topAppsCard)
  Q_PROPERTY(QString headline MEMBER headline FINAL)
  Q_PROPERTY(QString subheadline MEMBER subheadline FINAL)

 public:
  QString headline{};
  QString subheadline{};

  bool operator==(const TopAppsCard&) const = default;
};

}  // namespace korvantis
