#include "ui/OstrelAppDelegate.h"

#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QScreen>
#include <QVariantMap>
#include <memory>

#include "engine/OstrelEngine.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtMainRunLoop.h"
#include "platform/qt/QtUserDefaults.h"
#include "state/MonitorEngineCalls.h"
#include "ui/CaptureSequence.h"
#include "ui/ScreenEngine.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

namespace {

constexpr const char* captureFolderVariable = "KORVANTIS_CAPTURE_ASSETS_DIR";

/// Popovers and panels are windows of other types, or without a frame.
bool isTitledWindow(const QWindow& window) {
  return window.type() == Qt::Window && !window.flags().testFlag(Qt::FramelessWindowHint);
}

ApplicationWindow applicationWindow(QWindow* window) {
  return {isTitledWindow(*window), [window](const WindowAppearance& appearance) {
            // The frame follows the desktop: this Qt has no way to ask for another one.
            if (auto* const quickWindow = qobject_cast<QQuickWindow*>(window)) {
              quickWindow->setColor(QColor(appearance.red, appearance.green, appearance.blue));
            }
          }};
}

std::vector<ApplicationWindow> applicationWindows() {
  std::vector<ApplicationWindow> windows;
  for (QWindow* const window : QGuiApplication::topLevelWindows()) {
    windows.push_back(applicationWindow(window));
  }
  return windows;
}

ApplicationAppearanceCalls applicationAppearanceCalls() {
  ApplicationAppearanceCalls calls;
  calls.setThemeIsDark = &OstrelTheme::setIsDark;
  calls.windows = applicationWindows;
  calls.observeSystemTheme = observeQtSystemTheme;
  return calls;
}

MonitorStoreCalls monitorStoreCalls() {
  MonitorStoreCalls calls;
  calls.engine = monitorEngineCalls(OstrelEngine::shared());
  calls.mainRunLoop = qtMainRunLoopCalls();
  calls.clock = systemClock();
  calls.userDefaults = qtUserDefaultsCalls();
  calls.appearance = qtAppearanceCalls();
  calls.applicationAppearance = applicationAppearanceCalls();
  return calls;
}

void centre(QWindow& window) {
  if (const QScreen* const screen = window.screen()) {
    const QRect room = screen->availableGeometry();
    window.setPosition(room.center() - QPoint(window.width() / 2, window.height() / 2));
  }
}

}  // namespace

OstrelAppDelegate::OstrelAppDelegate() : store_(monitorStoreCalls()) {
  prepareScreens(engine_);
  connect(&engine_, &QQmlEngine::quit, qGuiApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

void OstrelAppDelegate::applicationDidFinishLaunching() {
  store_.look()->syncAppearance();
  openOrFocusMainWindow();
  // Again, now that there is a window to push the look onto.
  store_.look()->syncAppearance();
  const QString captureFolder = qEnvironmentVariable(captureFolderVariable);
  if (!captureFolder.isEmpty()) startCapture(captureFolder.toStdString());
}

void OstrelAppDelegate::openOrFocusMainWindow() {
  if (mainWindow_) {
    mainWindow_->raise();
  } else {
    makeMainWindow();
  }
  mainWindow_->show();
  mainWindow_->requestActivate();
}

void OstrelAppDelegate::makeMainWindow() {
  QQmlComponent component(
      &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Korvantis/Screens/OstrelMainWindow.qml")));
  // The screens are built in: what can't be made here is a fault in the program.
  if (!component.isReady()) qFatal("%s", qPrintable(component.errorString()));
  QObject* const made = component.createWithInitialProperties(
      {{QStringLiteral("store"), QVariant::fromValue(&store_)}});
  made->setParent(&engine_);
  mainWindow_ = qobject_cast<QQuickWindow*>(made);
  if (mainWindow_) centre(*mainWindow_);
}

void OstrelAppDelegate::startCapture(const std::string& folder) {
  CaptureCalls calls;
  calls.asyncAfter = qtMainRunLoopCalls().asyncAfter;
  calls.writePicture = [this](const std::string& path) { writePicture(path); };
  calls.showSettingsComposition = [this](bool shows) {
    if (mainWindow_) mainWindow_->setProperty("showsSettingsComposition", shows);
  };
  calls.terminate = [] { QCoreApplication::quit(); };
  captureRealProductScreenshots(store_, std::move(calls), folder);
}

void OstrelAppDelegate::writePicture(const std::string& path) const {
  if (!mainWindow_) return;
  const QImage picture = mainWindow_->grabWindow();
  // A picture that can't be written is left out.
  static_cast<void>(picture.save(QString::fromStdString(path), "PNG"));
}

}  // namespace korvantis
