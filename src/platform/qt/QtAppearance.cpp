#include "platform/qt/QtAppearance.h"

#include <QColor>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace korvantis {

namespace {

bool detectSystemDarkMode() {
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

}  // namespace

AppearanceCalls qtAppearanceCalls() {
  return {detectSystemDarkMode};
}

void observeQtSystemTheme(std::function<void()> changed) {
  auto* const application = QCoreApplication::instance();
  if (application == nullptr) return;
  // The application object deletes it with its other children.
  new ThemeListener(application, std::move(changed));
}

}  // namespace korvantis
