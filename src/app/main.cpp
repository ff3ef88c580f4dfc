#include <QGuiApplication>
#include <QLoggingCategory>
#include <clocale>
#include <csignal>

#include "platform/FileManagerCalls.h"
#include "platform/qt/SessionBus.h"
#include "platform/qt/SingleInstance.h"
#include "ui/OstrelAppDelegate.h"
#include "ui/RendererChoice.h"

namespace {

/// Where this program's data lies; two programs with the same folder would be in each other's way.
QString dataFolder() {
  const auto folders = korvantis::systemFileManagerCalls().applicationSupportDirectories();
  return QString::fromStdString(folders.empty() ? std::string() : folders.front());
}

bool isCapturing() {
  return !qEnvironmentVariableIsEmpty("KORVANTIS_CAPTURE_ASSETS_DIR");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // Writing into a socket whose reader has gone must not end the program.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  korvantis::chooseRenderer();
  QGuiApplication application(argumentCount, arguments);
  // The application object takes over the user's locale; figures always carry a decimal point.
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  // The program has no log, and icons of applications need not be free of faults.
  QLoggingCategory::setFilterRules(QStringLiteral("qt.svg*=false\nqt.gui.imageio*=false"));
  QGuiApplication::setApplicationName(QStringLiteral("korvantis"));
  QGuiApplication::setDesktopFileName(QStringLiteral("korvantis"));
  // Before the store exists: its start replaces the socket of a program that already runs.
  korvantis::SingleInstance instance(korvantis::sessionBus(), dataFolder());
  if (!isCapturing() && !instance.claim()) return 0;
  korvantis::OstrelAppDelegate delegate;
  QObject::connect(&instance, &korvantis::SingleInstance::activationRequested, &delegate,
                   &korvantis::OstrelAppDelegate::openOrFocusMainWindow);
  delegate.applicationDidFinishLaunching();
  return QGuiApplication::exec();
}
