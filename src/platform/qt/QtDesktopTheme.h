#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QProcess>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace korvantis {

/// Where a desktop's look is asked for.
struct DesktopThemeSources {
  /// The address of the session's message bus; empty when there is none.
  QString busAddress;
  /// The program that reads the desktop's settings where no portal answers.
  QString settingsProgram = QStringLiteral("gsettings");
  /// The first question holds its caller no longer than this; a later answer is announced.
  int patienceMilliseconds = 200;

  /// This session's own.
  static DesktopThemeSources ofSession();
};

/// Whether a desktop of freedesktop's kind is set to a dark look: what its portal says, else its
/// settings, else light. Follows both while the object lives. Main thread.
class QtDesktopTheme : public QObject {
  Q_OBJECT

 public:
  explicit QtDesktopTheme(DesktopThemeSources sources, QObject* parent = nullptr);
  ~QtDesktopTheme() override;

  /// The look as far as it is known.
  bool isDark() const { return isDark_; }

  /// Has `changed` called after each change, as long as the object lives.
  void observe(std::function<void()> changed);

 private slots:
  void portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void askPortal();
  void takePortalAnswer(const QDBusMessage& reply);
  void askPortalAgain(const QDBusMessage& question);
  void askSettings();
  void takeSettingsAnswer();
  void followSettings();
  void setIsDark(bool isDark);

  DesktopThemeSources sources_;
  QDBusConnection bus_;
  QProcess query_;
  QProcess monitor_;
  bool isDark_ = false;
  std::vector<std::function<void()>> observers_;
};

}  // namespace korvantis
