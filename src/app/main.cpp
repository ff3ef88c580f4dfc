#include <QGuiApplication>
#include <clocale>
#include <csignal>

#include "ui/OstrelAppDelegate.h"
#include "ui/RendererChoice.h"

int main(int argumentCount, char** arguments) {
  // Writing into a socket whose reader has gone must not end the program.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  korvantis::chooseRenderer();
  QGuiApplication application(argumentCount, arguments);
  // The application object takes over the user's locale; figures always carry a decimal point.
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  QGuiApplication::setApplicationName(QStringLiteral("korvantis"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Korvantis"));
  korvantis::OstrelAppDelegate delegate;
  delegate.applicationDidFinishLaunching();
  return QGuiApplication::exec();
}
