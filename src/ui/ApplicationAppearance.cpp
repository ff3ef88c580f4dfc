#include "ui/ApplicationAppearance.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include "platform/qt/QtAppearance.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

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

}  // namespace

ApplicationAppearanceCalls applicationAppearanceCalls() {
  ApplicationAppearanceCalls calls;
  calls.setThemeIsDark = &OstrelTheme::setIsDark;
  calls.windows = applicationWindows;
  calls.observeSystemTheme = observeQtSystemTheme;
  return calls;
}

}  // namespace korvantis
