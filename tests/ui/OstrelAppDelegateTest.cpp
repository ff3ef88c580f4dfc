#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

#include "support/TemporaryFolder.h"
#include "ui/ApplicationAppearance.h"
#include "ui/OstrelAppDelegate.h"
#include "ui/ScriptedStore.h"
#include "ui/theme/OstrelTheme.h"
#include "ui/views/RootContentModel.h"

namespace korvantis {
namespace {

constexpr const char* captureVariable = "KORVANTIS_CAPTURE_ASSETS_DIR";

/// The shell over a scripted machine and a scripted tray.
class OstrelAppDelegateTest : public testing::Test {
 protected:
  OstrelAppDelegateTest() { qunsetenv(captureVariable); }
  ~OstrelAppDelegateTest() override { qunsetenv(captureVariable); }

  ScriptedStore scripted;
  StatusItemDescription item;
  int itemsAdded = 0;
  std::vector<std::string> titles;
  double uptime = 100;
  bool isTerminated = false;
  /// Whether the windows are given their look as on a real desktop.
  bool pushesAppearance = false;
  /// Tasks that wait for a pause of capture mode to end.
  std::vector<std::function<void()>> waiting;
  std::unique_ptr<OstrelAppDelegate> delegate;

  void launch() {
    ShellCalls calls;
    calls.store = scripted.storeCalls();
    calls.store.mainRunLoop.asyncAfter = [this](double, std::function<void()> task) {
      waiting.push_back(std::move(task));
    };
    if (pushesAppearance) calls.store.applicationAppearance = applicationAppearanceCalls();
    calls.statusItem.add = [this](StatusItemDescription description) {
      item = std::move(description);
      ++itemsAdded;
    };
    calls.statusItem.setTitle = [this](const std::string& title) { titles.push_back(title); };
    calls.statusItem.isShown = [] { return true; };
    calls.uptime = [this] { return uptime; };
    calls.terminate = [this] { isTerminated = true; };
    delegate = std::make_unique<OstrelAppDelegate>(calls);
    delegate->applicationDidFinishLaunching();
    settle();
  }
  static void settle() {
    for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
  }
  void click(std::optional<StatusItemPoint> point = StatusItemPoint{400, 10}) {
    item.action(point);
    settle();
  }
  static void press(QQuickWindow& pressed, Qt::Key key,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    pressed.requestActivate();
    settle();
    QTest::keyClick(&pressed, key, modifiers);
    settle();
  }
  void choose(const std::string& title) {
    for (const StatusItemMenuEntry& entry : item.menu) {
      if (entry.title == title) return entry.action();
    }
    FAIL() << title << " is not in the menu";
  }
  QQuickWindow& window() { return *delegate->mainWindow(); }
  QQuickWindow& popover() { return *delegate->popover(); }
  MonitorStore& store() { return delegate->store(); }
  static QString figures(const QQuickWindow& window) {
    const auto* const model = window.findChild<RootContentModel*>();
    return model == nullptr ? QStringLiteral("no model") : model->figuresText();
  }
};

TEST_F(OstrelAppDelegateTest, ALaunchPutsUpTheItemAndOpensTheWindow) {
  launch();
  EXPECT_EQ(itemsAdded, 1);
  EXPECT_EQ(item.accessibilityDescription, "Korvantis");
  ASSERT_FALSE(item.images.empty());
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().title(), QStringLiteral("Korvantis — macOS System, Process & AI Monitor"));
  EXPECT_EQ(window().size(), QSize(1220, 790));
  EXPECT_EQ(window().minimumSize(), QSize(1040, 680));
  EXPECT_EQ(delegate->popover(), nullptr) << "the panel is made when it is first opened";
}

TEST_F(OstrelAppDelegateTest, TheTitleIsRightBeforeTheFirstTickAndFollowsEachTick) {
  scripted.next.system.cpuPercent = 12;
  launch();
  ASSERT_EQ(titles.size(), 1U);
  EXPECT_THAT(titles.back(), testing::StartsWith(" CPU 12%"));
  scripted.next.system.cpuPercent = 34;
  store().refreshTick();
  ASSERT_EQ(titles.size(), 2U);
  EXPECT_THAT(titles.back(), testing::StartsWith(" CPU 34%"));
}

TEST_F(OstrelAppDelegateTest, ClosingTheWindowAndReopeningShowsTheSameWindowWithItsState) {
  launch();
  store().setSelectedPane(OstrelPane::insights);
  window().resize(1300, 700);
  settle();
  const QQuickWindow* const first = delegate->mainWindow();
  QObject* const pane = first->findChild<QObject*>(QStringLiteral("pane"));
  ASSERT_NE(pane, nullptr);
  const auto* const shown = pane->property("item").value<QQuickItem*>();
  window().close();
  settle();
  EXPECT_FALSE(window().isVisible());
  EXPECT_FALSE(isTerminated);
  EXPECT_TRUE(delegate->applicationShouldHandleReopen(delegate->hasVisibleWindows()));
  settle();
  EXPECT_EQ(delegate->mainWindow(), first);
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().size(), QSize(1300, 700));
  EXPECT_EQ(store().selectedPane(), OstrelPane::insights);
  EXPECT_EQ(pane->property("item").value<QQuickItem*>(), shown) << "the pane was built anew";
}

TEST_F(OstrelAppDelegateTest, ReopeningWhileTheWindowIsVisibleChangesNothing) {
  launch();
  const QQuickWindow* const first = delegate->mainWindow();
  const QPoint place = window().position();
  QSignalSpy changes(&window(), &QWindow::visibilityChanged);
  EXPECT_TRUE(delegate->applicationShouldHandleReopen(delegate->hasVisibleWindows()));
  settle();
  EXPECT_EQ(delegate->mainWindow(), first);
  EXPECT_EQ(window().position(), place);
  EXPECT_EQ(changes.size(), 0);
}

TEST_F(OstrelAppDelegateTest, ClosingTheLastWindowDoesNotEndTheProgram) {
  launch();
  EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
  window().close();
  settle();
  EXPECT_FALSE(isTerminated);
  store().refreshTick();
  EXPECT_EQ(titles.size(), 2U) << "ticks go on";
}

TEST_F(OstrelAppDelegateTest, AClickOnTheItemOpensThePanelAndASecondOneClosesIt) {
  launch();
  click();
  EXPECT_TRUE(popover().isVisible());
  EXPECT_EQ(popover().size(), QSize(820, 560));
  uptime += 5;
  click();
  EXPECT_FALSE(popover().isVisible());
  uptime += 5;
  click();
  EXPECT_TRUE(popover().isVisible());
}

TEST_F(OstrelAppDelegateTest, TheContentOfThePanelIsBuiltOnce) {
  launch();
  click();
  const QQuickWindow* const first = delegate->popover();
  const auto* const model = first->findChild<RootContentModel*>();
  uptime += 5;
  click();
  uptime += 5;
  click();
  EXPECT_EQ(delegate->popover(), first);
  EXPECT_EQ(first->findChild<RootContentModel*>(), model);
}

TEST_F(OstrelAppDelegateTest, AClickElsewhereClosesThePanel) {
  launch();
  click();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&popover()));
  window().requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  settle();
  EXPECT_FALSE(popover().isVisible());
}

TEST_F(OstrelAppDelegateTest, TheClickThatJustClosedThePanelDoesNotOpenItAgain) {
  launch();
  click();
  // The click takes the focus away first, and is told of only then.
  popover().hide();
  settle();
  uptime += 0.29;
  click();
  EXPECT_FALSE(popover().isVisible());
  uptime += 0.02;
  click();
  EXPECT_TRUE(popover().isVisible());
}

TEST_F(OstrelAppDelegateTest, OpenFullWindowClosesThePanelFirst) {
  launch();
  window().close();
  click();
  ASSERT_TRUE(popover().isVisible());
  bool wasClosedFirst = false;
  QObject::connect(&window(), &QWindow::visibleChanged, &window(), [&](bool isVisible) {
    if (isVisible) wasClosedFirst = !popover().isVisible();
  });
  ASSERT_TRUE(QMetaObject::invokeMethod(&popover(), "openFullWindow"));
  settle();
  EXPECT_TRUE(wasClosedFirst);
  EXPECT_TRUE(window().isVisible());
  EXPECT_FALSE(popover().isVisible());
}

TEST_F(OstrelAppDelegateTest, ThePanelTakesTheLookOfTheMomentItOpensIn) {
  launch();
  store().look()->setThemeMode(AppThemeMode::light);
  store().look()->syncAppearance();
  click();
  EXPECT_EQ(popover().color(), QColor(0xF3, 0xF4, 0xF8));
  uptime += 5;
  click();
  store().look()->setThemeMode(AppThemeMode::dark);
  store().look()->syncAppearance();
  uptime += 5;
  click();
  EXPECT_EQ(popover().color(), QColor(0x13, 0x13, 0x15));
}

TEST_F(OstrelAppDelegateTest, WindowAndPanelShareTheSelectedPane) {
  launch();
  click();
  store().setSelectedPane(OstrelPane::processes);
  settle();
  for (const QQuickWindow* const shown : {&window(), &popover()}) {
    const QObject* const pane = shown->findChild<QObject*>(QStringLiteral("pane"));
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->property("fileName").toString(), QStringLiteral("ProcessesPaneView.qml"));
  }
}

TEST_F(OstrelAppDelegateTest, ThePanelOpensAtTheTopRightWhereTheClickIsNotTold) {
  launch();
  click(std::nullopt);
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_EQ(popover().position(),
            QPoint(std::max(room.x() + 6, room.right() + 1 - 820 - 6), room.y() + 6));
}

TEST_F(OstrelAppDelegateTest, TheUnitChangesTheTemperatureOfTheItemAtTheNextTickNotAtOnce) {
  scripted.next.system.thermal.cpuCelsius = 50;
  scripted.next.system.thermal.hottestCelsius = 50;
  launch();
  EXPECT_THAT(titles.back(), testing::HasSubstr("50°C"));
  const auto before = titles.size();
  store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  settle();
  EXPECT_EQ(titles.size(), before);
  store().refreshTick();
  EXPECT_THAT(titles.back(), testing::HasSubstr("122°F"));
}

TEST_F(OstrelAppDelegateTest, OnlyTheBatteryOnADesktopMachineGivesTheProgramsName) {
  scripted.next.system.battery = std::nullopt;
  launch();
  store().menuBarSettings()->setEnabledReadouts({MenuBarReadout::battery});
  store().refreshTick();
  EXPECT_EQ(titles.back(), " Korvantis");
}

TEST_F(OstrelAppDelegateTest, StyleColourAndDotTakeNoPartInTheTitle) {
  launch();
  const std::string plain = titles.back();
  store().menuBarSettings()->setDisplayStyle(MenuBarDisplayStyle::graph);
  store().menuBarSettings()->setColorMode(MenuBarColorMode::colour);
  store().menuBarSettings()->setShowStrainDot(false);
  scripted.next.activeStrains = {StrainKind::cpu};
  store().refreshTick();
  EXPECT_EQ(titles.back(), plain);
}

TEST_F(OstrelAppDelegateTest, TheMenuOpensSamplesPrefersAndQuits) {
  launch();
  window().close();
  settle();
  choose("Open Korvantis");
  EXPECT_TRUE(window().isVisible());
  const int before = scripted.ticks;
  choose("Sample Now");
  EXPECT_EQ(scripted.ticks, before + 1);
  EXPECT_EQ(delegate->preferences(), nullptr);
  choose("Preferences…");
  ASSERT_NE(delegate->preferences(), nullptr);
  EXPECT_TRUE(delegate->preferences()->isVisible());
  EXPECT_FALSE(isTerminated);
  choose("Quit Korvantis");
  EXPECT_TRUE(isTerminated);
}

TEST_F(OstrelAppDelegateTest, TheLookIsPushedOntoWindowsWithATitleAndNotOntoThePanel) {
  pushesAppearance = true;
  launch();
  click();
  EXPECT_EQ(window().color(), QColor(0x13, 0x13, 0x15));
  const QColor ofPanel = popover().color();
  store().look()->setThemeMode(AppThemeMode::light);
  EXPECT_EQ(window().color(), QColor(0xF3, 0xF4, 0xF8));
  EXPECT_EQ(popover().color(), ofPanel) << "it takes its look when it opens";
  delegate->openPreferences();
  store().look()->setThemeMode(AppThemeMode::dark);
  EXPECT_EQ(delegate->preferences()->color(), QColor(0x13, 0x13, 0x15));
}

TEST_F(OstrelAppDelegateTest, TheKeysOpenTheSettingsAndQuitFromTheWindow) {
  launch();
  press(window(), Qt::Key_Comma, Qt::ControlModifier);
  ASSERT_NE(delegate->preferences(), nullptr);
  EXPECT_TRUE(delegate->preferences()->isVisible());
  EXPECT_FALSE(isTerminated);
  press(window(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(isTerminated);
}

TEST_F(OstrelAppDelegateTest, TheKeysOpenTheSettingsAndQuitFromThePanel) {
  launch();
  click();
  press(popover(), Qt::Key_Comma, Qt::ControlModifier);
  ASSERT_NE(delegate->preferences(), nullptr);
  EXPECT_TRUE(delegate->preferences()->isVisible());
  uptime += 5;
  click();
  ASSERT_TRUE(popover().isVisible());
  press(popover(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(isTerminated);
}

TEST_F(OstrelAppDelegateTest, EscapeClosesThePanelButFirstWhatIsOpenInIt) {
  launch();
  store().setSelectedPane(OstrelPane::sound);
  click();
  auto* const picker = popover().findChild<QQuickItem*>(QStringLiteral("outputPicker"));
  ASSERT_NE(picker, nullptr);
  picker->forceActiveFocus();
  press(popover(), Qt::Key_Space);
  const auto* const list = picker->property("popup").value<QObject*>();
  ASSERT_TRUE(list->property("visible").toBool());
  press(popover(), Qt::Key_Escape);
  EXPECT_FALSE(list->property("visible").toBool());
  EXPECT_TRUE(popover().isVisible());
  press(popover(), Qt::Key_Escape);
  EXPECT_FALSE(popover().isVisible());
}

TEST_F(OstrelAppDelegateTest, EscapeClosesTheSettingsWindowButFirstWhatIsOpenInIt) {
  launch();
  delegate->openPreferences();
  settle();
  QQuickWindow& settings = *delegate->preferences();
  auto* const picker = settings.findChild<QQuickItem*>(QStringLiteral("settings-colorMode"));
  ASSERT_NE(picker, nullptr);
  picker->forceActiveFocus();
  press(settings, Qt::Key_Space);
  const auto* const list = picker->property("popup").value<QObject*>();
  ASSERT_TRUE(list->property("visible").toBool());
  press(settings, Qt::Key_Escape);
  EXPECT_FALSE(list->property("visible").toBool());
  EXPECT_TRUE(settings.isVisible());
  press(settings, Qt::Key_Escape);
  EXPECT_FALSE(settings.isVisible());
}

TEST_F(OstrelAppDelegateTest, AnEmptyFolderDoesNotStartCaptureMode) {
  qputenv(captureVariable, "");
  launch();
  EXPECT_TRUE(waiting.empty());
  EXPECT_EQ(scripted.ticks, 1);
}

TEST_F(OstrelAppDelegateTest, WithoutAFolderThereIsNoCapture) {
  launch();
  EXPECT_TRUE(waiting.empty());
}

TEST_F(OstrelAppDelegateTest, CaptureModeWritesFivePicturesOfTheWindowAndEndsTheProgram) {
  const test::TemporaryFolder folder;
  qputenv(captureVariable, QByteArray::fromStdString(folder.path()));
  launch();
  for (int step = 0; step < 5; ++step) {
    ASSERT_EQ(waiting.size(), 1U) << step;
    EXPECT_FALSE(isTerminated);
    std::exchange(waiting, {}).front()();
    settle();
  }
  EXPECT_TRUE(waiting.empty());
  EXPECT_TRUE(isTerminated);
  for (const char* name :
       {"overview", "processes", "agents_audio", "remote_alerts", "imessage_whatsapp"}) {
    const std::string file = folder.path("showcase_" + std::string(name) + ".png");
    const QImage picture(QString::fromStdString(file));
    EXPECT_EQ(picture.size(), QSize(1220, 790)) << name;
  }
}

TEST_F(OstrelAppDelegateTest, CaptureModeGoesOnWhenNothingCanBeWritten) {
  qputenv(captureVariable, "/no/such/folder");
  launch();
  while (!waiting.empty()) {
    std::exchange(waiting, {}).front()();
    settle();
  }
  EXPECT_TRUE(isTerminated);
}

TEST_F(OstrelAppDelegateTest, AHiddenWindowWordsNothingAndIsRightWhenItIsShownAgain) {
  scripted.next.system.cpuPercent = 10;
  launch();
  EXPECT_THAT(figures(window()).toStdString(), testing::StartsWith("CPU 10.0%"));
  window().close();
  settle();
  scripted.next.system.cpuPercent = 20;
  store().refreshTick();
  EXPECT_THAT(figures(window()).toStdString(), testing::StartsWith("CPU 10.0%"));
  delegate->openOrFocusMainWindow();
  EXPECT_THAT(figures(window()).toStdString(), testing::StartsWith("CPU 20.0%"));
  scripted.next.system.cpuPercent = 30;
  store().refreshTick();
  EXPECT_THAT(figures(window()).toStdString(), testing::StartsWith("CPU 30.0%"));
}

TEST_F(OstrelAppDelegateTest, AClosedPanelWordsNothingAlsoAfterItsPaneOrItsLookChanged) {
  scripted.next.system.cpuPercent = 10;
  launch();
  click();
  uptime += 5;
  click();
  store().setSelectedPane(OstrelPane::processes);
  store().look()->setThemeMode(AppThemeMode::light);
  store().look()->syncAppearance();
  settle();
  scripted.next.system.cpuPercent = 20;
  store().refreshTick();
  EXPECT_THAT(figures(popover()).toStdString(), testing::StartsWith("CPU 10.0%"));
  EXPECT_THAT(figures(window()).toStdString(), testing::StartsWith("CPU 20.0%"));
  uptime += 5;
  click();
  EXPECT_THAT(figures(popover()).toStdString(), testing::StartsWith("CPU 20.0%"));
}

TEST_F(OstrelAppDelegateTest, AVisibleWindowRepaintsNothingBetweenTicks) {
  launch();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
  QTest::qWait(300);
  QSignalSpy frames(&window(), &QQuickWindow::frameSwapped);
  QTest::qWait(600);
  EXPECT_EQ(frames.size(), 0);
  scripted.next.system.cpuPercent += 10;
  store().refreshTick();
  QTest::qWait(300);
  EXPECT_GT(frames.size(), 0) << "a tick that changes a figure is drawn";
}

}  // namespace
}  // namespace korvantis
