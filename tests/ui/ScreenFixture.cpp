#include "ui/ScreenFixture.h"

#include <QLocale>
#include <QQmlError>
#include <QQuickWindow>
#include <algorithm>
#include <array>
#include <clocale>

#include "state/ObservableField.h"
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

void ScreenFixture::take(std::unique_ptr<ScriptedStore> next) {
  // Screens on their way out still read the old one.
  old_.push_back(std::exchange(scripted_, std::move(next)));
  emit storeChanged();
}

void ScreenFixture::reset() {
  take(std::make_unique<ScriptedStore>());
}

void ScreenFixture::resetWithSettings() {
  settings_ = std::make_unique<QTemporaryDir>();
  restart();
}

void ScreenFixture::redraw(QQuickItem* item) {
  if (item && item->window()) item->window()->update();
}

void ScreenFixture::restart() {
  auto next = std::make_unique<ScriptedStore>();
  next->settingsPath = settings_->filePath(QStringLiteral("Korvantis.conf")).toStdString();
  take(std::move(next));
}

QList<double> ScreenFixture::timerPeriods() const {
  return {scripted_->timerPeriods.begin(), scripted_->timerPeriods.end()};
}

QStringList ScreenFixture::sent() const {
  QStringList words;
  for (const std::string& word : scripted_->sent) words.append(QString::fromStdString(word));
  return words;
}

QStringList ScreenFixture::enabledReadouts() const {
  QStringList names;
  for (const MenuBarReadout readout : scripted_->store().menuBarSettings()->enabledReadouts())
    names.append(caseText(readout));
  return names;
}

void ScreenFixture::setSystemCPU(double percent) {
  scripted_->next.system.cpuPercent = percent;
}

void ScreenFixture::runBackground() {
  scripted_->runBackground();
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

void ScreenFixture::setBundlePath(const QString& path) {
  scripted_->next.appGroups.at(0).bundlePath = path.toStdString();
}

void ScreenFixture::setStrain(bool strained) {
  scripted_->next.activeStrains.clear();
  if (strained) scripted_->next.activeStrains.push_back(StrainKind::cpu);
}

void ScreenFixture::setInsights(int count) {
  scripted_->next.newInsights = makeInsights(count);
}

QString ScreenFixture::installApplication() {
  const std::string icon =
      applications_.write("red.svg",
                          "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
                          "<rect width='8' height='8' fill='#ff0000'/></svg>");
  applications_.write("red.desktop", "[Desktop Entry]\nType=Application\nIcon=" + icon + "\n");
  return QString::fromStdString(applications_.path("red.app"));
}

void ScreenFixture::setAgents(int count, int children) {
  constexpr std::array states{AgentState::waitingForApproval, AgentState::idle,
                              AgentState::working};
  scripted_->next.planLimits = makePlanLimits();
  scripted_->next.agentSessions.clear();
  for (int number = 1; number <= count; ++number) {
    scripted_->next.agentSessions.push_back(makeAgent(number, children));
    scripted_->next.agentSessions.back().state = states.at(static_cast<std::size_t>(number) % 3);
  }
}

void ScreenFixture::setAgentCPU(double percent) {
  scripted_->next.agentSessions.at(0).cpuPercent = percent;
}

void ScreenFixture::reverseAgents() {
  std::reverse(scripted_->next.agentSessions.begin(), scripted_->next.agentSessions.end());
}

void ScreenFixture::reverseGroups() {
  std::reverse(scripted_->next.appGroups.begin(), scripted_->next.appGroups.end());
}

void ScreenFixture::setPace(const QString& pace) {
  scripted_->next.planLimits.at(0).paceText = pace.toStdString();
}

void ScreenFixture::clearPlans() {
  scripted_->next.planLimits.clear();
}

void ScreenFixture::plugInAudio() {
  scripted_->plugInAudio();
  store()->audioMixer()->refreshAudioDevices();
}

void ScreenFixture::plugInMonitor() {
  auto& devices = scripted_->audio.devices;
  devices.insert(devices.begin(), {60, "Monitor", {2}, {}});
}

void ScreenFixture::renameInterface(const QString& name) {
  scripted_->audio.devices.back().name = name.toStdString();
}

void ScreenFixture::setRefusesAudio(bool refuses) {
  scripted_->audio.refusesSetting = refuses;
}

void ScreenFixture::setLanguage(const QString& name) {
  QLocale::setDefault(name.isEmpty() ? QLocale::system() : QLocale(name));
}

void ScreenFixture::setHistory(int rows, double lastStart, int applications) {
  scripted_->readings = makeReadings(rows, static_cast<std::int64_t>(lastStart));
  scripted_->summaries = makeSummaries(applications);
}

void ScreenFixture::setLedgerName(int index, const QString& name) {
  scripted_->summaries.at(static_cast<std::size_t>(index)).name = name.toStdString();
}

void ScreenFixture::setFullLedger() {
  scripted_->summaries = {makeFullSummary()};
}

void ScreenFixture::setExportSucceeds(bool succeeds) {
  scripted_->exported.reset();
  if (succeeds) scripted_->exported = {"/downloads/readings.csv", "/downloads/usage.csv"};
}

void ScreenFixture::addInsightWithoutTarget() {
  Insight insight = makeInsights(200).back();
  insight.kind = InsightKind::networkBurst;
  insight.targetAppID.reset();
  insight.targetAppName.reset();
  insight.title = "Sustained high network transfer";
  scripted_->next.newInsights.push_back(insight);
}

void ScreenFixture::setIdleServers(int count) {
  scripted_->next.idleServers.assign(static_cast<std::size_t>(count), IdleServer{});
}

QString ScreenFixture::limits() const {
  QStringList words;
  for (const AppLimit& limit : scripted_->store().alerts()->appLimits()) {
    words.append(QString::fromStdString(limit.appName + "/" + std::string(rawValue(limit.figure))) +
                 u'/' + QString::number(limit.limit) + u'/' + QString::number(limit.minutes));
  }
  return words.join(u' ');
}

QString ScreenFixture::mutes() const {
  QStringList words;
  for (const MutedApp& app : scripted_->store().alerts()->mutedApps()) {
    words.append(QString::fromStdString(app.appID) + u'/' +
                 (app.until ? QString::number(app.until->secondsSince1970, 'f', 0) : QString()));
  }
  return words.join(u' ');
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
