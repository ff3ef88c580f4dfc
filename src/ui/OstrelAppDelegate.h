#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <optional>
#include <string>

#include "platform/StatusItemCalls.h"
#include "state/MonitorStore.h"
#include "ui/ShellCalls.h"

namespace korvantis {

/// The shell: owns the one `MonitorStore`, the status item with its panel, the main window and the
/// settings window, and renders the product pictures when the environment asks for them. It holds
/// no monitoring logic. Closing a window hides it; the program goes on until somebody quits it.
/// Needs an application object. Main thread.
class OstrelAppDelegate : public QObject {
  Q_OBJECT

 public:
  /// Makes the store over the real engine, so the first tick, the bridge and the timer run before
  /// there is a window.
  OstrelAppDelegate();

  /// The same over other answers than the desktop's own.
  explicit OstrelAppDelegate(const ShellCalls& calls);
  OstrelAppDelegate(const OstrelAppDelegate&) = delete;
  OstrelAppDelegate& operator=(const OstrelAppDelegate&) = delete;
  ~OstrelAppDelegate() override;

  /// Puts up the status item and opens the main window. When the variable
  /// KORVANTIS_CAPTURE_ASSETS_DIR is set and not empty, goes on to write pictures into that folder
  /// and then ends the program.
  void applicationDidFinishLaunching();

  /// Brings the main window to the front, made on first use. A window that was closed comes back
  /// as it was left.
  void openOrFocusMainWindow();

  /// Opens the panel beside the status item, or closes it. `click` is where the item is, if the
  /// desktop tells.
  void toggleMenuBarPopover(std::optional<StatusItemPoint> click);

  /// Called when the program is asked for once more; always true.
  bool applicationShouldHandleReopen(bool hasVisibleWindows);

  /// True while a window or the panel is on screen.
  bool hasVisibleWindows() const;

  /// The main window, the panel and the settings window; null until they are first used.
  QQuickWindow* mainWindow() const { return mainWindow_; }
  QQuickWindow* popover() const { return popover_; }
  QQuickWindow* preferences() const { return preferences_; }

  /// The model of every screen.
  MonitorStore& store() { return store_; }

 public slots:
  /// Opens the settings in a window of their own.
  void openPreferences();
  /// Closes the panel, then opens the main window.
  void openFullWindowFromPopover();

 private:
  QQuickWindow* makeWindow(const QString& file);
  void setupMenuBarStatusItem();
  void updateStatusItemTitle(const EngineSnapshot& snapshot);
  void makePopover();
  void startCapture(const std::string& folder);
  void writePicture(const std::string& path) const;
  void restWhatIsHidden();

  const ShellCalls calls_;
  MonitorStore store_;
  /// After the store: the screens go first.
  QQmlEngine engine_;
  QPointer<QQuickWindow> popover_;
  QPointer<QQuickWindow> mainWindow_;
  QPointer<QQuickWindow> preferences_;
  /// When the panel last closed, in seconds of the uptime.
  std::optional<double> popoverClosed_;
};

}  // namespace korvantis
