#pragma once

#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "state/MonitorStore.h"
#include "support/TemporaryFolder.h"
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
  Q_PROPERTY(QList<double> timerPeriods READ timerPeriods FINAL)
  Q_PROPERTY(QStringList sent READ sent FINAL)
  Q_PROPERTY(QStringList enabledReadouts READ enabledReadouts FINAL)
  Q_PROPERTY(int historyLoads READ historyLoads FINAL)
  Q_PROPERTY(int exports READ exports FINAL)
  Q_PROPERTY(QString limits READ limits FINAL)
  Q_PROPERTY(QString mutes READ mutes FINAL)

 public:
  using QObject::QObject;

  MonitorStore* store() { return &scripted_->store(); }
  int ticks() const { return scripted_->ticks; }
  /// Everything that was asked to stop, one word each, such as "quit:daemon:app" or "kill:7".
  QString stopped() const;

  /// How often the history was loaded, the start of the store included.
  int historyLoads() const { return static_cast<int>(scripted_->readingLoads.size()); }
  /// How often it was exported.
  int exports() const { return scripted_->exports; }

  /// The speeds that were wished for fans, such as "0:1300" or "0:auto".
  QString fanWishes() const;

  /// The seconds of the timers that were started.
  QList<double> timerPeriods() const;
  /// What briefs made the outside do: "program", "request" or "open".
  QStringList sent() const;
  /// The names of the status item's readouts.
  QStringList enabledReadouts() const;
  /// The user's limits, such as "Xcode/CPU %/250/5", joined by a blank.
  QString limits() const;
  /// The applications that are muted and until when, such as "app-1/87400".
  QString mutes() const;

  /// Asks for a frame of the window of `item`: without anything new to draw, waiting for one takes
  /// seconds and is in vain.
  Q_INVOKABLE static void redraw(QQuickItem* item);

  /// A fresh store, as at launch.
  Q_INVOKABLE void reset();
  /// The same over a settings file, which is empty.
  Q_INVOKABLE void resetWithSettings();
  /// The next launch over the same settings file.
  Q_INVOKABLE void restart();
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
  /// The bundle of the first application.
  Q_INVOKABLE void setBundlePath(const QString& path);
  Q_INVOKABLE void setStrain(bool strained);
  Q_INVOKABLE void setInsights(int count);
  /// Installs an application with a wholly red icon; the path of its bundle.
  Q_INVOKABLE QString installApplication();
  /// From the next tick on so many agents run, in all states, each with so many children, and the
  /// plans have their limits.
  Q_INVOKABLE void setAgents(int count, int children = 0);
  /// The load of the first agent.
  Q_INVOKABLE void setAgentCPU(double percent);
  /// From the next tick on the agents stand the other way round.
  Q_INVOKABLE void reverseAgents();
  /// From the next tick on the applications stand the other way round.
  Q_INVOKABLE void reverseGroups();
  /// The pace of the first plan.
  Q_INVOKABLE void setPace(const QString& pace);
  Q_INVOKABLE void clearPlans();
  /// Several sound devices, which the mixer has seen; see ScriptedStore.
  Q_INVOKABLE void plugInAudio();
  /// One more device for output, before all others, from the next look on.
  Q_INVOKABLE void plugInMonitor();
  /// The name of the default output from the next look on.
  Q_INVOKABLE void renameInterface(const QString& name);
  Q_INVOKABLE void setRefusesAudio(bool refuses);
  /// The language of the user from now on, such as "de_DE"; the environment's for an empty one.
  Q_INVOKABLE void setLanguage(const QString& name);
  /// From the next tick on.
  Q_INVOKABLE void setSystemCPU(double percent);
  /// Delivers the briefs that are on their way.
  Q_INVOKABLE void runBackground();
  /// With the next load the history has so many rows, the newest at `lastStart`, and so many
  /// applications.
  Q_INVOKABLE void setHistory(int rows, double lastStart, int applications);
  /// The name of the application at that place of the ledger, with the next load.
  Q_INVOKABLE void setLedgerName(int index, const QString& name);
  /// With the next load the ledger is one application with a figure in every column.
  Q_INVOKABLE void setFullLedger();
  /// Whether an export succeeds.
  Q_INVOKABLE void setExportSucceeds(bool succeeds);
  /// From the next tick on there is also a finding that is about no application.
  Q_INVOKABLE void addInsightWithoutTarget();
  Q_INVOKABLE void setIdleServers(int count);
  Q_INVOKABLE void tick();

 signals:
  void storeChanged();

 private:
  test::TemporaryFolder applications_;
  void take(std::unique_ptr<ScriptedStore> next);

  std::vector<std::unique_ptr<ScriptedStore>> old_;
  std::unique_ptr<QTemporaryDir> settings_;
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
