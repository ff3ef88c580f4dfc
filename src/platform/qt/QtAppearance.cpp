#include "platform/qt/QtAppearance.h"

#include <QColor>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <utility>

#include "platform/qt/QtDesktopTheme.h"

namespace korvantis {

namespace {

bool hasDarkPalette() {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return false;
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// Listens in on the events of the application object, which owns it.
class ThemeListener : public QObject {
 public:
  ThemeListener(QObject* application, std::function<void()> changed)
      : QObject(application), changed_(std::move(changed)) {
    application->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == parent() && event->type() == QEvent::ApplicationPaletteChange) changed_();
    return false;
  }

 private:
  std::function<void()> changed_;
};

#ifdef Q_OS_LINUX
/// The one that the application object owns; null while there is none.
QtDesktopTheme* desktopTheme() {
  static QPointer<QtDesktopTheme> theme;
  auto* const application = QCoreApplication::instance();
  if (!theme && application != nullptr)
    theme = new QtDesktopTheme(DesktopThemeSources::ofSession(), application);
  return theme;
}
#endif

}  // namespace

AppearanceCalls qtPaletteAppearanceCalls() {
  return {hasDarkPalette};
}

void observeQtPalette(std::function<void()> changed) {
  auto* const application = QCoreApplication::instance();
  if (application == nullptr) return;
  // The application object deletes it with its other children.
  new ThemeListener(application, std::move(changed));
}

#ifdef Q_OS_LINUX

AppearanceCalls qtAppearanceCalls() {
  return {[] {
    const QtDesktopTheme* const theme = desktopTheme();
    return theme != nullptr && theme->isDark();
  }};
}

void observeQtSystemTheme(std::function<void()> changed) {
  if (QtDesktopTheme* const theme = desktopTheme()) theme->observe(std::move(changed));
}

#else

AppearanceCalls qtAppearanceCalls() {
  return qtPaletteAppearanceCalls();
}

void observeQtSystemTheme(std::function<void()> changed) {
  observeQtPalette(std::move(changed));
}

#endif

}  // namespace korvantis
