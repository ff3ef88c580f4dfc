#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <string>

#include "state/MonitorStore.h"

namespace korvantis {

/// The shell: owns the one `MonitorStore` and the main window, and renders the product pictures
/// when the environment asks for them. It holds no monitoring logic. Needs an application object.
/// Main thread.
class OstrelAppDelegate : public QObject {
  Q_OBJECT

 public:
  /// Makes the store over the real engine, so the first tick, the bridge and the timer run before
  /// there is a window.
  OstrelAppDelegate();

  /// Opens the main window. When the variable KORVANTIS_CAPTURE_ASSETS_DIR is set and not empty,
  /// goes on to write pictures into that folder and then ends the program.
  void applicationDidFinishLaunching();

  /// Brings the main window to the front, made on first use.
  void openOrFocusMainWindow();

  /// The model of every screen.
  MonitorStore& store() { return store_; }

 private:
  void makeMainWindow();
  void startCapture(const std::string& folder);
  void writePicture(const std::string& path) const;

  MonitorStore store_;
  /// After the store: the screens go first.
  QQmlEngine engine_;
  QPointer<QQuickWindow> mainWindow_;
};

}  // namespace korvantis
