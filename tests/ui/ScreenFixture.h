#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <memory>
#include <vector>

#include "state/MonitorStore.h"
#include "ui/ScriptedStore.h"

namespace korvantis {

/// What the tests of the screens reach for: a store over a scripted engine, and the machine that
/// the engine reports.
class ScreenFixture : public QObject {
  Q_OBJECT
  Q_PROPERTY(korvantis::MonitorStore* store READ store NOTIFY storeChanged FINAL)
  Q_PROPERTY(int ticks READ ticks FINAL)
  Q_PROPERTY(QString stopped READ stopped FINAL)
  Q_PROPERTY(QString fanWishes READ fanWishes FINAL)

 public:
  using QObject::QObject;

  MonitorStore* store() { return &scripted_->store(); }
  int ticks() const { return scripted_->ticks; }
  /// Everything that was asked to stop, one word each, such as "quit:daemon:app" or "kill:7".
  QString stopped() const;

  /// The speeds that were wished for fans, such as "0:1300" or "0:auto".
  QString fanWishes() const;

  /// A fresh store, as at launch.
  Q_INVOKABLE void reset();
  /// From the next tick on the machine has these applications, of one process each.
  Q_INVOKABLE void setGroups(int count, const QString& namePrefix = QStringLiteral("application"));
  /// The same, as applications with a window.
  Q_INVOKABLE void setApplications(int count,
                                   const QString& namePrefix = QStringLiteral("application"));
  /// The machine has something in every list of the processes pane.
  Q_INVOKABLE void setSampleMachine();
  /// The machine has 300 applications of 1,000 processes, with other figures in each `round`.
  Q_INVOKABLE void setLargeMachine(int round);
  /// All processes have ended, and others have got their pids.
  Q_INVOKABLE void recyclePids();
  /// The load of the first application.
  Q_INVOKABLE void setCPU(double percent);
  Q_INVOKABLE void setStrain(bool strained);
  Q_INVOKABLE void setInsights(int count);
  Q_INVOKABLE void tick();

 signals:
  void storeChanged();

 private:
  std::vector<std::unique_ptr<ScriptedStore>> old_;
  std::unique_ptr<ScriptedStore> scripted_ = std::make_unique<ScriptedStore>();
};

/// Prepares the engine of a test file.
class ScreenTestSetup : public QObject {
  Q_OBJECT

 public:
  /// How often the screens' own code went wrong: a binding that fails is only a warning, but one
  /// warning is too many.
  int complaints() const { return complaints_; }

 public slots:
  void applicationAvailable();
  void qmlEngineAvailable(QQmlEngine* engine);

 private:
  int complaints_ = 0;
};

}  // namespace korvantis
