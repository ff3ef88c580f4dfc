#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QThread>
#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/qt/QtDesktopTheme.h"
#include "state/LookStore.h"
#include "state/ScriptedRunLoop.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";

/// Runs the event loop until `isDone`, or until something must be wrong.
template <typename Condition>
bool runUntil(Condition isDone) {
  QDeadlineTimer patience(20000);
  while (!isDone()) {
    if (patience.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

/// A portal that answers as the test says, on a thread of its own.
class MockPortal : public QDBusVirtualObject {
 public:
  enum class Answer { scheme, wrappedScheme, text, notFound, silence };

  MockPortal(const test::PrivateBus& bus, Answer answer, unsigned scheme)
      : answer_(answer),
        scheme_(scheme),
        connection_(QDBusConnection::connectToBus(QString::fromStdString(bus.address()),
                                                  QStringLiteral("mock-portal"))) {
    moveToThread(&thread_);
    thread_.start();
    connection_.registerVirtualObject(portalPath, this);
    connection_.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
  }
  MockPortal(const MockPortal&) = delete;
  MockPortal& operator=(const MockPortal&) = delete;
  ~MockPortal() override {
    connection_.unregisterObject(portalPath);
    QDBusConnection::disconnectFromBus(QStringLiteral("mock-portal"));
    thread_.quit();
    thread_.wait();
  }

  QString introspect(const QString&) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.interface() != portalInterface || message.member() != "Read") return false;
    ++questions;
    const bool isOurs = message.arguments().value(0) == "org.freedesktop.appearance" &&
                        message.arguments().value(1) == "color-scheme";
    if (answer_ == Answer::silence) return true;
    if (answer_ == Answer::notFound || !isOurs) {
      connection.send(message.createErrorReply(
          QStringLiteral("org.freedesktop.portal.Error.NotFound"), QStringLiteral("none")));
    } else {
      connection.send(message.createReply(value()));
    }
    return true;
  }

  /// Announces a setting.
  void announce(const QString& group, const QString& key, unsigned scheme) {
    QDBusMessage signal =
        QDBusMessage::createSignal(portalPath, portalInterface, QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(scheme));
    connection_.send(signal);
  }

  std::atomic<int> questions = 0;

 private:
  QVariant value() const {
    if (answer_ == Answer::text) return QVariant::fromValue(QDBusVariant(QStringLiteral("dark")));
    const QDBusVariant plain(scheme_);
    if (answer_ == Answer::scheme) return QVariant::fromValue(plain);
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(plain)));
  }

  const Answer answer_;
  const unsigned scheme_;
  QThread thread_;
  QDBusConnection connection_;
};

DesktopThemeSources sourcesOf(const test::PrivateBus& bus,
                              const std::string& settingsProgram = "none") {
  DesktopThemeSources sources;
  sources.busAddress = QString::fromStdString(bus.address());
  sources.settingsProgram = QString::fromStdString(settingsProgram);
  sources.patienceMilliseconds = 5000;
  return sources;
}

DesktopThemeSources sourcesWithoutBus(const std::string& settingsProgram) {
  DesktopThemeSources sources;
  sources.settingsProgram = QString::fromStdString(settingsProgram);
  sources.patienceMilliseconds = 5000;
  return sources;
}

std::string settingsProgram(const test::TemporaryFolder& folder, const std::string& script) {
  const std::string program = folder.write("gsettings", "#!/bin/sh\n" + script + "\n");
  std::filesystem::permissions(program, std::filesystem::perms(0755));
  return program;
}

TEST(QtDesktopTheme, ThePortalsAnswerCounts) {
  const test::PrivateBus bus;
  for (const auto form : {MockPortal::Answer::scheme, MockPortal::Answer::wrappedScheme}) {
    for (const unsigned scheme : {0U, 1U, 2U}) {
      const MockPortal portal(bus, form, scheme);
      EXPECT_EQ(QtDesktopTheme(sourcesOf(bus)).isDark(), scheme == 1) << scheme;
      EXPECT_EQ(portal.questions, 1);
    }
  }
}

TEST(QtDesktopTheme, ThePortalsSignalIsFollowed) {
  const test::PrivateBus bus;
  MockPortal portal(bus, MockPortal::Answer::wrappedScheme, 0);
  QtDesktopTheme theme(sourcesOf(bus));
  int told = 0;
  theme.observe([&] { ++told; });
  portal.announce("org.freedesktop.appearance", "color-scheme", 1);
  ASSERT_TRUE(runUntil([&] { return told == 1; }));
  EXPECT_TRUE(theme.isDark());

  portal.announce("org.freedesktop.appearance", "accent-color", 0);
  portal.announce("org.example", "color-scheme", 0);
  portal.announce("org.freedesktop.appearance", "color-scheme", 1);
  portal.announce("org.freedesktop.appearance", "color-scheme", 2);
  ASSERT_TRUE(runUntil([&] { return told == 2; }));
  EXPECT_FALSE(theme.isDark()) << "what is not ours or not new told nobody";
}

TEST(QtDesktopTheme, AStoreFollowsThePortalWhileRunning) {
  const test::PrivateBus bus;
  MockPortal portal(bus, MockPortal::Answer::wrappedScheme, 0);
  QtDesktopTheme theme(sourcesOf(bus));
  test::ScriptedRunLoop runLoop;
  LookStoreCalls calls;
  calls.userDefaults.stringForKey = [](const std::string&) { return std::nullopt; };
  calls.userDefaults.setString = [](const std::string&, const std::string&) {};
  calls.appearance.detectSystemDarkMode = [&theme] { return theme.isDark(); };
  calls.application.observeSystemTheme = [&theme](std::function<void()> changed) {
    theme.observe(std::move(changed));
  };
  calls.mainRunLoop = runLoop.calls();
  const LookStore look(calls);
  EXPECT_FALSE(look.effectiveIsDark());
  portal.announce("org.freedesktop.appearance", "color-scheme", 1);

  ASSERT_TRUE(runUntil([&] {
    runLoop.runTasks();
    return look.effectiveIsDark();
  }));
  EXPECT_TRUE(look.systemIsDark());
}

TEST(QtDesktopTheme, AnAnswerThatMakesNoSenseLeavesTheSettingsToSay) {
  const test::PrivateBus bus;
  const test::TemporaryFolder folder;
  const std::string program =
      settingsProgram(folder, "[ \"$1\" = get ] && echo \"'prefer-dark'\" || exec sleep 60");
  for (const auto form : {MockPortal::Answer::text, MockPortal::Answer::notFound}) {
    const MockPortal portal(bus, form, 0);
    EXPECT_TRUE(QtDesktopTheme(sourcesOf(bus, program)).isDark());
  }
}

TEST(QtDesktopTheme, WithoutAPortalTheSettingsCount) {
  const test::PrivateBus bus;
  const test::TemporaryFolder folder;
  const std::string program =
      settingsProgram(folder,
                      "[ \"$*\" = 'get org.gnome.desktop.interface color-scheme' ] && "
                      "echo \"'prefer-dark'\" || exec sleep 60");
  EXPECT_TRUE(QtDesktopTheme(sourcesOf(bus, program)).isDark());
  EXPECT_TRUE(QtDesktopTheme(sourcesWithoutBus(program)).isDark());
}

TEST(QtDesktopTheme, TheSettingsAreFollowed) {
  const test::TemporaryFolder folder;
  const std::string go = folder.path("go");
  const std::string program =
      settingsProgram(folder,
                      "if [ \"$1\" = get ]; then echo \"'default'\"; exit; fi\n"
                      "[ \"$*\" = 'monitor org.gnome.desktop.interface color-scheme' ] || exit 1\n"
                      "while [ ! -e '" +
                          go +
                          "' ]; do sleep 0.05; done\n"
                          "echo \"color-scheme: 'prefer-dark'\"; exec sleep 60");
  QtDesktopTheme theme(sourcesWithoutBus(program));
  EXPECT_FALSE(theme.isDark());
  int told = 0;
  theme.observe([&] { ++told; });
  folder.write("go", "");
  ASSERT_TRUE(runUntil([&] { return told == 1; }));
  EXPECT_TRUE(theme.isDark());
}

TEST(QtDesktopTheme, WhereNobodySaysAnythingTheLookIsLight) {
  const test::PrivateBus bus;
  const test::TemporaryFolder folder;
  EXPECT_FALSE(QtDesktopTheme(sourcesOf(bus)).isDark());
  EXPECT_FALSE(QtDesktopTheme(sourcesWithoutBus("none")).isDark());
  EXPECT_FALSE(QtDesktopTheme(
                   sourcesWithoutBus(settingsProgram(folder, "echo 'No such schema' >&2; exit 1")))
                   .isDark());
  DesktopThemeSources nowhere = sourcesWithoutBus("none");
  nowhere.busAddress = "unix:path=/nonexistent/bus";
  EXPECT_FALSE(QtDesktopTheme(nowhere).isDark());
}

TEST(QtDesktopTheme, APortalThatIsSilentHoldsNobodyUp) {
  const test::PrivateBus bus;
  const MockPortal portal(bus, MockPortal::Answer::silence, 1);
  DesktopThemeSources sources = sourcesOf(bus);
  sources.patienceMilliseconds = 100;
  QElapsedTimer clock;
  clock.start();
  const QtDesktopTheme theme(sources);
  EXPECT_LT(clock.elapsed(), 5000);
  EXPECT_FALSE(theme.isDark());
}

}  // namespace
}  // namespace korvantis
