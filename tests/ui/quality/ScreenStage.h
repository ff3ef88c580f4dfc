#pragma once

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "state/MonitorStore.h"
#include "state/ScriptedMonitor.h"
#include "ui/quality/CrowdedMachine.h"

namespace korvantis::test {

/// One screen of the program: a pane with the list chosen in it, or a tab of the settings.
struct Screen {
  const char* name;
  const char* pane;
  /// A list of the processes pane; empty elsewhere.
  const char* subTab = "";
  /// A tab of the settings sheet over the pane; empty without the sheet.
  const char* settingsTab = "";

  friend std::ostream& operator<<(std::ostream& out, const Screen& screen) {
    return out << screen.name;
  }
};

/// Its name as a part of a test's name.
std::string testNameOf(const Screen& screen);

/// All screens.
const std::vector<Screen>& allScreens();

/// A window with the real screens over a simulated machine.
class ScreenStage {
 public:
  struct Look {
    bool isDark = true;
    /// As in the panel, which is 820 wide and tighter.
    bool isPanel = false;
  };

  ScreenStage(CrowdedMachine machine, Look look);

  MonitorStore& store() { return *store_; }
  QQuickWindow& window() { return *window_; }
  /// Everything of the window.
  QQuickItem* content() { return content_; }
  /// What the screen that is shown consists of: the sheet of the settings while it is open, else
  /// `content`.
  QQuickItem* shown();

  void show(const Screen& screen);
  void resize(int width, int height);
  /// Lets the machine go on by one turn, and shows it.
  void tick();
  /// The two halves of it, for those who measure the second one.
  void prepareTurn();
  void showTurn() { store_->refreshTick(); }
  /// Waits until everything is laid out and drawn.
  void settle();
  QImage picture();
  /// Gives what the screens have thrown away back to the system.
  void collectGarbage() { engine_->collectGarbage(); }

  /// What went wrong in the screens' own code so far: a binding that fails is only a warning.
  const QStringList& complaints() const { return complaints_; }

 private:
  void script();
  void build(const Look& look);

  CrowdedMachine machine_;
  int turn_ = 0;
  std::optional<EngineSnapshot> prepared_;
  ScriptedMonitor monitor_;
  std::unique_ptr<MonitorStore> store_;
  QStringList complaints_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<QQuickWindow> window_;
  QQuickItem* content_ = nullptr;
};

}  // namespace korvantis::test
