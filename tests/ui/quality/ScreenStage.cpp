#include "ui/quality/ScreenStage.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlError>
#include <stdexcept>
#include <utility>

#include "ui/ScreenEngine.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis::test {

const std::vector<Screen>& allScreens() {
  static const std::vector<Screen> screens{
      {"overview", "overview"},
      {"applications", "processes", "apps"},
      {"projects", "processes", "projects"},
      {"containers", "processes", "containers"},
      {"ports", "processes", "ports"},
      {"idle servers", "processes", "idleServers"},
      {"insights", "insights"},
      {"history", "history"},
      {"agents", "agents"},
      {"sound", "sound"},
      {"settings, menu bar", "overview", "", "Menu Bar"},
      {"settings, appearance", "overview", "", "Appearance"},
      {"settings, remote alerts", "overview", "", "Remote Alerts"},
      {"settings, integrations", "overview", "", "Integrations & MCP"}};
  return screens;
}

std::string testNameOf(const Screen& screen) {
  QString name = QString::fromUtf8(screen.name);
  name.remove(u' ').remove(u',');
  return name.toStdString();
}

ScreenStage::ScreenStage(CrowdedMachine machine, Look look) : machine_(machine) {
  script();
  build(look);
}

void ScreenStage::script() {
  monitor_.hardware = machine_.hardware();
  monitor_.now = CrowdedMachine::startTime;
  MonitorStoreCalls calls = monitor_.calls();
  // Without the log of what was asked, which would grow.
  calls.engine.sampleTick = [this](const auto&, const auto&, double) {
    std::optional<EngineSnapshot> prepared = std::exchange(prepared_, std::nullopt);
    return prepared ? std::move(*prepared) : machine_.snapshot(turn_);
  };
  calls.engine.checkQuitSafety = [](const AppGroup& group) {
    QuitSafetyResult result;
    result.verdict = group.processes.size() % 3 == 0   ? QuitSafetyVerdictKind::doNot
                     : group.processes.size() % 3 == 1 ? QuitSafetyVerdictKind::safe
                                                       : QuitSafetyVerdictKind::askFirst;
    result.reason = "Frees memory; " + group.name + " will ask about unsaved documents";
    result.freedMemoryBytes = group.memoryBytes;
    result.freedPorts = {3000};
    return result;
  };
  calls.engine.loadReadings = [this](Instant) { return machine_.readings(); };
  calls.engine.loadAppSummaries = [this](Instant) { return machine_.appSummaries(); };
  calls.audio = machine_.audio();
  calls.applicationAppearance.setThemeIsDark = &OstrelTheme::setIsDark;
  store_ = std::make_unique<MonitorStore>(std::move(calls));
}

void ScreenStage::build(const Look& look) {
  store_->look()->setThemeMode(look.isDark ? AppThemeMode::dark : AppThemeMode::light);
  engine_ = std::make_unique<QQmlEngine>();
  prepareScreens(*engine_);
  QObject::connect(engine_.get(), &QQmlEngine::warnings, [this](const QList<QQmlError>& warnings) {
    for (const QQmlError& warning : warnings) complaints_ += warning.toString();
  });
  window_ = std::make_unique<QQuickWindow>();
  QQmlComponent component(engine_.get());
  component.setData("import Korvantis.Screens\nThemedContent {}",
                    QUrl(QStringLiteral("qrc:/qt/qml/Korvantis/Screens/Stage.qml")));
  QObject* const made = component.createWithInitialProperties(
      {{QStringLiteral("store"), QVariant::fromValue(store_.get())},
       {QStringLiteral("isCompactPopover"), look.isPanel},
       {QStringLiteral("offersFullWindow"), look.isPanel}});
  content_ = qobject_cast<QQuickItem*>(made);
  if (!content_) throw std::runtime_error(component.errorString().toStdString());
  content_->setParent(window_.get());
  content_->setParentItem(window_->contentItem());
  content_->setFocus(true);
  resize(look.isPanel ? 820 : 1220, look.isPanel ? 560 : 790);
  window_->show();
  window_->requestActivate();
  settle();
}

QQuickItem* ScreenStage::shown() {
  if (!store_->showSettingsModal()) return content_;
  auto* const sheet = content_->findChild<QObject*>(QStringLiteral("settingsSheet"));
  auto* const item = sheet ? sheet->property("contentItem").value<QQuickItem*>() : nullptr;
  return item ? item : content_;
}

void ScreenStage::show(const Screen& screen) {
  store_->setSelectedPaneName(QString::fromUtf8(screen.pane));
  const QString subTab = QString::fromUtf8(screen.subTab);
  if (!subTab.isEmpty()) {
    store_->setSelectedProcessSubTabName(subTab);
    store_->setShowSystemProcesses(true);
    // The one with twenty processes, and two more.
    store_->setExpandedAppGroupIDs(
        {"/Applications/0.app", "/Applications/1.app", "/Applications/2.app"});
  }
  const QString tab = QString::fromUtf8(screen.settingsTab);
  if (!tab.isEmpty()) store_->setSelectedSettingsTab(tab);
  store_->setShowSettingsModal(!tab.isEmpty());
  settle();
}

void ScreenStage::resize(int width, int height) {
  window_->resize(width, height);
  content_->setSize(QSizeF(width, height));
  if (window_->isVisible()) settle();
}

void ScreenStage::tick() {
  prepareTurn();
  showTurn();
}

void ScreenStage::prepareTurn() {
  ++turn_;
  // What was asked of the machine is written down, and would grow through a long run.
  monitor_.log.clear();
  monitor_.loadedSince.clear();
  monitor_.now = CrowdedMachine::startTime + 2.0 * turn_;
  prepared_ = machine_.snapshot(turn_);
}

void ScreenStage::settle() {
  // A layout inside a layout needs a round of its own.
  for (int round = 0; round < 3; ++round) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    static_cast<void>(window_->grabWindow());
  }
}

QImage ScreenStage::picture() {
  return window_->grabWindow();
}

}  // namespace korvantis::test
