#include "ui/ScreenFixture.h"

#include <QQmlError>
#include <clocale>

#include "ui/SampleMachine.h"
#include "ui/ScreenEngine.h"

namespace korvantis {

QString ScreenFixture::stopped() const {
  QString words;
  for (const auto& [id, force] : scripted_->quitGroups) {
    words += QString::fromUtf8(force ? "force:" : "quit:") + QString::fromStdString(id) + u' ';
  }
  for (const auto& [pid, force] : scripted_->stoppedProcesses) {
    words += QString::fromUtf8(force ? "kill:" : "stop:") + QString::number(pid) + u' ';
  }
  return words.trimmed();
}

void ScreenFixture::reset() {
  // Screens on their way out still read the old one.
  old_.push_back(std::exchange(scripted_, std::make_unique<ScriptedStore>()));
  emit storeChanged();
}

void ScreenFixture::setGroups(int count, const QString& namePrefix) {
  std::vector<AppGroup> groups;
  for (int number = 1; number <= count; ++number) {
    const std::string name = (namePrefix + QString::number(number)).toStdString();
    ProcessSample process = makeProcess(1000 + number, name);
    process.cpuPercent = number;
    process.memoryBytes = static_cast<std::uint64_t>(number) << 20;
    groups.push_back(makeGroup(name, {process}));
  }
  scripted_->next.appGroups = std::move(groups);
}

void ScreenFixture::setApplications(int count, const QString& namePrefix) {
  setGroups(count, namePrefix);
  for (AppGroup& group : scripted_->next.appGroups) group.kind = AppGroupKind::app;
}

void ScreenFixture::setSampleMachine() {
  scripted_->next = makeSampleMachine();
}

void ScreenFixture::setLargeMachine(int round) {
  scripted_->next = makeLargeMachine(round);
}

void ScreenFixture::recyclePids() {
  for (AppGroup& group : scripted_->next.appGroups) {
    for (ProcessSample& process : group.processes) process.startedAt.secondsSince1970 += 1000;
  }
}

QString ScreenFixture::fanWishes() const {
  QString words;
  for (const auto& [fan, rpm] : scripted_->fanWishes) {
    words += QString::number(fan) + u':';
    words += rpm ? QString::number(*rpm) : QStringLiteral("auto");
    words += u' ';
  }
  return words.trimmed();
}

void ScreenFixture::setCPU(double percent) {
  scripted_->next.appGroups.at(0).cpuPercent = percent;
}

void ScreenFixture::setStrain(bool strained) {
  scripted_->next.activeStrains.clear();
  if (strained) scripted_->next.activeStrains.push_back(StrainKind::cpu);
}

void ScreenFixture::setInsights(int count) {
  scripted_->next.newInsights = makeInsights(count);
}

void ScreenFixture::tick() {
  scripted_->tick();
}

void ScreenTestSetup::applicationAvailable() {
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
}

void ScreenTestSetup::qmlEngineAvailable(QQmlEngine* engine) {
  prepareScreens(*engine);
  connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError>& warnings) {
    for (const QQmlError& warning : warnings) {
      if (warning.url().scheme() == QStringLiteral("qrc")) ++complaints_;
    }
  });
  qmlRegisterSingletonType<ScreenFixture>("ScreenTests", 1, 0, "Fixture",
                                          [](QQmlEngine*, QJSEngine*) -> QObject* {
                                            return std::make_unique<ScreenFixture>().release();
                                          });
}

}  // namespace korvantis
