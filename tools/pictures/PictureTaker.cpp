#include "pictures/PictureTaker.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <cstdio>
#include <utility>

namespace korvantis::pictures {
namespace {

/// Enough to fill the rings of recent figures.
constexpr int ticksBefore = 60;

ShellCalls shellCalls(SampleMachine& machine) {
  ShellCalls calls;
  calls.store = machine.storeCalls();
  calls.statusItem.add = [](const StatusItemDescription&) {};
  calls.statusItem.setTitle = [](const std::string&) {};
  calls.statusItem.isShown = [] { return false; };
  calls.uptime = [] { return 0.0; };
  calls.terminate = [] {};
  return calls;
}

/// Lets loaders, layouts and what they set off come to rest.
void settle() {
  for (int round = 0; round < 20; ++round) QCoreApplication::processEvents();
}

}  // namespace

PictureTaker::PictureTaker(PictureOptions wanted, const std::string& bundleFolder)
    : options(std::move(wanted)), machine(bundleFolder), delegate(shellCalls(machine)) {
  for (int tick = 0; tick < ticksBefore; ++tick) delegate.store().refreshTick();
  delegate.applicationDidFinishLaunching();
  delegate.store().reloadHistory();
}

bool PictureTaker::takeAll() {
  if (!QDir().mkpath(options.folder)) return false;
  const bool isDefault =
      options.panes.isEmpty() && options.themes.isEmpty() && options.settingsTab.isEmpty();
  if (isDefault && !options.showsPopover) return takeDefaults();
  if (options.panes.isEmpty()) options.panes = {QStringLiteral("overview")};
  if (options.themes.isEmpty()) options.themes = {QStringLiteral("dark")};
  bool isWhole = true;
  for (const QString& theme : options.themes) {
    for (const QString& pane : options.panes) isWhole = take(pane, theme) && isWhole;
  }
  return isWhole;
}

bool PictureTaker::takeDefaults() {
  const QString dark = QStringLiteral("dark");
  const QString light = QStringLiteral("light");
  bool isWhole = true;
  for (const char* pane : {"overview", "processes", "insights", "history", "agents", "sound"}) {
    isWhole = take(QString::fromLatin1(pane), dark) && isWhole;
  }
  isWhole = take(QStringLiteral("overview"), light) && isWhole;
  isWhole = take(QStringLiteral("processes"), light) && isWhole;
  options.showsPopover = true;
  isWhole = take(QStringLiteral("overview"), dark) && isWhole;
  return take(QStringLiteral("overview"), light) && isWhole;
}

bool PictureTaker::take(const QString& pane, const QString& theme) {
  MonitorStore& store = delegate.store();
  const bool isDark = theme == QStringLiteral("dark");
  store.look()->setThemeMode(isDark ? AppThemeMode::dark : AppThemeMode::light);
  store.look()->syncAppearance();
  store.setSelectedPaneName(pane);
  if (!options.settingsTab.isEmpty()) {
    store.setSelectedSettingsTab(options.settingsTab);
    store.setShowSettingsModal(true);
  }
  QQuickWindow& window = shownWindow();
  settle();
  store.refreshTick();
  settle();
  QString name = options.showsPopover ? QStringLiteral("panel-") : QString();
  name += pane + u'-' + theme;
  if (!options.settingsTab.isEmpty()) {
    name = QStringLiteral("settings-") + options.settingsTab.toLower().replace(u' ', u'-') + u'-' +
           theme;
  }
  return save(window, name);
}

QQuickWindow& PictureTaker::shownWindow() {
  if (options.showsPopover) {
    if (delegate.popover() == nullptr || !delegate.popover()->isVisible()) {
      delegate.toggleMenuBarPopover(std::nullopt);
    }
    return *delegate.popover();
  }
  QQuickWindow& window = *delegate.mainWindow();
  if (options.size) {
    window.setMinimumSize(QSize(0, 0));
    window.resize(*options.size);
  }
  return window;
}

bool PictureTaker::save(QQuickWindow& window, const QString& name) const {
  QString file = options.folder + u'/' + name;
  if (options.size) {
    file += QStringLiteral("-%1x%2").arg(options.size->width()).arg(options.size->height());
  }
  if (options.scale != 1) file += QStringLiteral("@%1x").arg(options.scale);
  file += QStringLiteral(".png");
  if (!window.grabWindow().save(file, "PNG")) {
    std::fprintf(stderr, "%s can't be written\n", qPrintable(file));
    return false;
  }
  std::printf("%s\n", qPrintable(file));
  return true;
}

}  // namespace korvantis::pictures
