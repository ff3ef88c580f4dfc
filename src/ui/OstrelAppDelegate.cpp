#include "ui/OstrelAppDelegate.h"

#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QScreen>
#include <QVariantMap>
#include <utility>

#include "ui/CaptureSequence.h"
#include "ui/PopoverPlacement.h"
#include "ui/RestingModels.h"
#include "ui/ScreenEngine.h"
#include "ui/StatusItemTitle.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

namespace {

constexpr const char* captureFolderVariable = "KORVANTIS_CAPTURE_ASSETS_DIR";

/// A click on the item takes the focus from the panel, which closes it before the click arrives.
/// Within this time the two are one and the same click.
constexpr double sameClickSeconds = 0.3;

void centre(QWindow& window) {
  if (const QScreen* const screen = window.screen()) {
    const QRect room = screen->availableGeometry();
    window.setPosition(room.center() - QPoint(window.width() / 2, window.height() / 2));
  }
}

void bringToFront(QQuickWindow& window) {
  window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
  window.raise();
  window.show();
  window.requestActivate();
}

/// Beside the item, on the screen that was clicked.
void placePopover(QQuickWindow& popover, std::optional<StatusItemPoint> click) {
  std::optional<QPoint> point;
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (click) {
    point = QPoint(click->x, click->y);
    if (const QScreen* const clicked = QGuiApplication::screenAt(*point)) screen = clicked;
  }
  if (screen == nullptr) return;
  popover.setPosition(popoverPosition(point, screen->availableGeometry(), popover.size()));
}

}  // namespace

OstrelAppDelegate::OstrelAppDelegate() : OstrelAppDelegate(systemShellCalls()) {}

OstrelAppDelegate::OstrelAppDelegate(const ShellCalls& calls) : calls_(calls), store_(calls.store) {
  prepareScreens(engine_);
  QGuiApplication::setQuitOnLastWindowClosed(false);
#ifdef Q_OS_MACOS
  // A click in the Dock makes the program active; its windows may all have been closed.
  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
          [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive) applicationShouldHandleReopen(hasVisibleWindows());
          });
#endif
  connect(&engine_, &QQmlEngine::quit, this, calls_.terminate, Qt::QueuedConnection);
  // Each of these makes a part of a screen anew, with models that are awake.
  connect(store_.look(), &LookStore::effectiveIsDarkChanged, this,
          &OstrelAppDelegate::restWhatIsHidden, Qt::QueuedConnection);
  for (const auto signal :
       {&MonitorStore::selectedPaneChanged, &MonitorStore::showSettingsModalChanged}) {
    connect(&store_, signal, this, &OstrelAppDelegate::restWhatIsHidden, Qt::QueuedConnection);
  }
}

OstrelAppDelegate::~OstrelAppDelegate() {
  // On their way out the windows hide, and nobody is to hear of it.
  for (const QPointer<QQuickWindow>& window : {mainWindow_, popover_, preferences_}) {
    if (window) window->disconnect(this);
  }
}

void OstrelAppDelegate::applicationDidFinishLaunching() {
  store_.look()->syncAppearance();
  setupMenuBarStatusItem();
  openOrFocusMainWindow();
  // Again, now that there is a window to push the look onto.
  store_.look()->syncAppearance();
  store_.setOnSnapshotUpdated(
      [self = QPointer<OstrelAppDelegate>(this)](const EngineSnapshot& snapshot) {
        if (self) self->updateStatusItemTitle(snapshot);
      });
  updateStatusItemTitle(store_.snapshot());
  const QString captureFolder = qEnvironmentVariable(captureFolderVariable);
  if (!captureFolder.isEmpty()) startCapture(captureFolder.toStdString());
}

void OstrelAppDelegate::setupMenuBarStatusItem() {
  StatusItemDescription description;
  description.accessibilityDescription = "Korvantis";
  description.images = statusItemImages();
  description.menu = {{"Open Korvantis", [this] { openOrFocusMainWindow(); }},
                      {"Sample Now", [this] { store_.refreshTick(); }},
                      {"Preferences…", [this] { openPreferences(); }},
                      {"", {}},
                      {"Quit Korvantis", calls_.terminate}};
  description.action = [this](std::optional<StatusItemPoint> click) {
    toggleMenuBarPopover(click);
  };
  calls_.statusItem.add(std::move(description));
}

void OstrelAppDelegate::updateStatusItemTitle(const EngineSnapshot& snapshot) {
  calls_.statusItem.setTitle(statusItemTitle(store_, snapshot));
}

void OstrelAppDelegate::openOrFocusMainWindow() {
  if (!mainWindow_) {
    mainWindow_ = makeWindow(QStringLiteral("OstrelMainWindow.qml"));
    connect(mainWindow_, SIGNAL(openPreferences()), this, SLOT(openPreferences()));
    centre(*mainWindow_);
  }
  bringToFront(*mainWindow_);
}

void OstrelAppDelegate::openPreferences() {
  if (!preferences_) {
    preferences_ = makeWindow(QStringLiteral("SettingsWindow.qml"));
    centre(*preferences_);
  }
  bringToFront(*preferences_);
}

void OstrelAppDelegate::makePopover() {
  popover_ = makeWindow(QStringLiteral("OstrelPopover.qml"));
  connect(popover_, SIGNAL(openPreferences()), this, SLOT(openPreferences()));
  connect(popover_, SIGNAL(openFullWindow()), this, SLOT(openFullWindowFromPopover()));
  connect(popover_, &QWindow::visibleChanged, this, [this](bool isVisible) {
    if (!isVisible) popoverClosed_ = calls_.uptime();
  });
}

void OstrelAppDelegate::openFullWindowFromPopover() {
  if (popover_) popover_->hide();
  openOrFocusMainWindow();
}

void OstrelAppDelegate::toggleMenuBarPopover(std::optional<StatusItemPoint> click) {
  if (!popover_) makePopover();
  if (popover_->isVisible()) {
    popover_->hide();
    return;
  }
  if (popoverClosed_ && calls_.uptime() - *popoverClosed_ < sameClickSeconds) return;
  placePopover(*popover_, click);
  popover_->setColor(OstrelTheme::canvas());
  popover_->show();
  popover_->raise();
  popover_->requestActivate();
}

bool OstrelAppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
  if (!hasVisibleWindows) openOrFocusMainWindow();
  return true;
}

bool OstrelAppDelegate::hasVisibleWindows() const {
  const auto isVisible = [](const QPointer<QQuickWindow>& window) {
    return window && window->isVisible();
  };
  return isVisible(mainWindow_) || isVisible(popover_) || isVisible(preferences_);
}

QQuickWindow* OstrelAppDelegate::makeWindow(const QString& file) {
  QQmlComponent component(&engine_, QUrl(QStringLiteral("qrc:/qt/qml/Korvantis/Screens/") + file));
  // The screens are built in: what can't be made here is a fault in the program.
  if (!component.isReady()) qFatal("%s", qPrintable(component.errorString()));
  QObject* const made = component.createWithInitialProperties(
      {{QStringLiteral("store"), QVariant::fromValue(&store_)}});
  auto* const window = qobject_cast<QQuickWindow*>(made);
  if (window == nullptr) qFatal("%s holds no window", qPrintable(file));
  window->QObject::setParent(&engine_);
  connect(window, &QWindow::visibilityChanged, this, &OstrelAppDelegate::restWhatIsHidden);
  return window;
}

void OstrelAppDelegate::restWhatIsHidden() {
  for (const QPointer<QQuickWindow>& window : {mainWindow_, popover_, preferences_}) {
    if (!window) continue;
    const QWindow::Visibility visibility = window->visibility();
    if (visibility == QWindow::Hidden || visibility == QWindow::Minimized) {
      RestingModels::rest(*window);
    } else {
      RestingModels::wake(*window, store_);
    }
  }
}

void OstrelAppDelegate::startCapture(const std::string& folder) {
  CaptureCalls calls;
  calls.asyncAfter = calls_.store.mainRunLoop.asyncAfter;
  calls.writePicture = [this](const std::string& path) { writePicture(path); };
  calls.showSettingsComposition = [this](bool shows) {
    if (mainWindow_) mainWindow_->setProperty("showsSettingsComposition", shows);
  };
  calls.terminate = calls_.terminate;
  captureRealProductScreenshots(store_, std::move(calls), folder);
}

void OstrelAppDelegate::writePicture(const std::string& path) const {
  if (!mainWindow_) return;
  const QImage picture = mainWindow_->grabWindow();
  // A picture that can't be written is left out.
  static_cast<void>(picture.save(QString::fromStdString(path), "PNG"));
}

}  // namespace korvantis
