#include <gtest/gtest.h>

#include "platform/applications/DesktopFixture.h"

namespace korvantis {
namespace {

using test::DesktopFixture;
using Process = DesktopFixture::Process;

/// A desktop of a few applications; each test adds the processes that it looks at.
class RuleOf : public testing::Test {
 protected:
  RuleOf() {
    desktop.native("/usr/bin/editor");
    desktop.entry("org.example.Editor", "Name=Editor\nExec=editor %U");
    desktop.native("/opt/browser/browser");
    desktop.entry("browser", "Name=Browser\nExec=/opt/browser/browser %U");
    desktop.script("/usr/bin/notes", "#!/usr/bin/python3\n");
    desktop.entry("notes", "Name=Notes\nExec=notes");
  }

  /// The rule that catches this process; absent when none does.
  std::optional<ApplicationRule> rule(const Process& process) {
    desktop.put(process);
    desktop.tick();
    desktop.path(process.pid);
    return desktop.applications().ruleOf({process.pid, process.start});
  }

  static Process process(const std::string& executable, std::vector<std::string> words = {}) {
    Process process;
    process.pid = 500;
    process.executable = executable;
    process.words = words.empty() ? std::vector<std::string>{executable} : std::move(words);
    return process;
  }

  DesktopFixture desktop;
};

TEST_F(RuleOf, TheExecutableThatAnEntryNames) {
  EXPECT_EQ(rule(process("/usr/bin/editor")), ApplicationRule::entryExecutable);
}

TEST_F(RuleOf, AnotherProgramInTheApplicationsFolder) {
  EXPECT_EQ(rule(process("/opt/browser/crash_handler")), ApplicationRule::executableLocation);
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/browser.app/Contents/Frameworks/Helper/crash_handler");
}

TEST_F(RuleOf, AnInterpreterInTheApplicationsFolderRunsAnything) {
  EXPECT_EQ(rule(process("/opt/browser/bin/python3", {"python3", "/home/user/mine.py"})),
            std::nullopt);
}

TEST_F(RuleOf, AnInterpreterWithAnEntrysScript) {
  EXPECT_EQ(rule(process("/usr/bin/python3.11", {"/usr/bin/python3", "-I", "/usr/bin/notes"})),
            ApplicationRule::interpreterScript);
  EXPECT_EQ(desktop.path(500), "/usr/share/applications/notes.app/Contents/MacOS/python3.11");
}

TEST_F(RuleOf, AnInterpreterWithALinkToAnEntrysScript) {
  desktop.script("/usr/share/org.example.Sky/org.example.Sky", "#!/usr/bin/gjs\n");
  desktop.machine.files.link("usr/bin/example-sky", "../share/org.example.Sky/org.example.Sky");
  desktop.entry("org.example.Sky", "Exec=example-sky");
  EXPECT_EQ(rule(process("/usr/bin/gjs-console", {"gjs", "/usr/bin/example-sky"})),
            ApplicationRule::interpreterScript);
}

TEST_F(RuleOf, AScriptIsLookedForInTheFirstThreeArgumentsOnly) {
  EXPECT_EQ(rule(process("/usr/bin/python3", {"python3", "a.py", "-b", "-c", "/usr/bin/notes"})),
            std::nullopt);
}

TEST_F(RuleOf, AProgramThatOnlyOpensAScriptIsNoInterpreter) {
  EXPECT_EQ(rule(process("/usr/bin/less", {"less", "/usr/bin/notes"})), std::nullopt);
}

TEST_F(RuleOf, AShellThatReadAScriptIsAHelper) {
  desktop.script("/usr/bin/wrapped", "#!/bin/sh\n/opt/elsewhere/any\n");
  desktop.entry("wrapped", "Exec=wrapped");
  EXPECT_EQ(rule(process("/usr/bin/dash", {"/bin/sh", "/usr/bin/wrapped"})),
            ApplicationRule::interpreterScript);
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/wrapped.app/Contents/Frameworks/Helper/dash");
}

TEST_F(RuleOf, TheProcessThatTheDesktopStarted) {
  Process started = process("/srv/any/thing");
  started.environment = {"GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/notes.desktop",
                         "GIO_LAUNCHED_DESKTOP_FILE_PID=500"};
  EXPECT_EQ(rule(started), ApplicationRule::launchEnvironment);
}

TEST_F(RuleOf, AChildOnlyInheritsTheDesktopsWords) {
  Process child = process("/srv/any/thing");
  child.environment = {"GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/notes.desktop",
                       "GIO_LAUNCHED_DESKTOP_FILE_PID=499"};
  EXPECT_EQ(rule(child), std::nullopt);
}

TEST_F(RuleOf, AnEntryThatIsNotIndexedWasStartedForNobody) {
  Process started = process("/usr/bin/top");
  started.environment = {"GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/top.desktop",
                         "GIO_LAUNCHED_DESKTOP_FILE_PID=500"};
  desktop.entry("top", "Exec=top\nTerminal=true");
  EXPECT_EQ(rule(started), std::nullopt);
}

TEST_F(RuleOf, TheHolderOfTheBusName) {
  desktop.busName("org.example.Editor", 500);
  EXPECT_EQ(rule(process("/usr/libexec/editor-server")), ApplicationRule::busName);
}

TEST_F(RuleOf, AProcessThatBeganAfterTheBusWasAskedHoldsNothing) {
  desktop.busName("org.example.Editor", 500);
  Process late = process("/usr/libexec/editor-server");
  late.start = 100'001 * 100;
  EXPECT_EQ(rule(late), std::nullopt);
}

TEST_F(RuleOf, TheOneThatAControlGroupIsNumberedAfter) {
  Process leader = process("/srv/any/thing");
  leader.group = "/app.slice/app-gnome-notes-500.scope";
  EXPECT_EQ(rule(leader), ApplicationRule::controlGroup);
  leader.pid = 501;
  leader.executable = "/usr/bin/another";
  EXPECT_EQ(rule(leader), std::nullopt) << "a later member";
}

TEST_F(RuleOf, AnIdWithoutAnEntryBlocksNoOtherRule) {
  Process editor = process("/usr/bin/editor");
  editor.group = "/app.slice/app-gnome-no.such.Entry-500.scope";
  EXPECT_EQ(rule(editor), ApplicationRule::entryExecutable);
}

TEST_F(RuleOf, WhatAProcessIsGoesBeforeWhatOthersSayOfIt) {
  Process editor = process("/usr/bin/editor");
  editor.environment = {"GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/notes.desktop",
                        "GIO_LAUNCHED_DESKTOP_FILE_PID=500"};
  editor.group = "/app.slice/app-gnome-browser-500.scope";
  desktop.busName("notes", 500);
  EXPECT_EQ(rule(editor), ApplicationRule::entryExecutable);
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/org.example.Editor.app/Contents/MacOS/editor");
}

TEST_F(RuleOf, AnApplicationOfTheIndexWinsOverItsPlaceInTheSession) {
  Process editor = process("/usr/bin/editor");
  editor.group = "/user@1000.service/session.slice/editor.service";
  EXPECT_EQ(rule(editor), ApplicationRule::entryExecutable);
  editor.executable = "/usr/bin/indexer";
  EXPECT_EQ(rule(editor), std::nullopt);
  EXPECT_EQ(desktop.path(500), "/System/usr/bin/indexer");
}

TEST_F(RuleOf, TwoEntriesOfOneProgramAreToldApartByTheirArguments) {
  desktop.native("/usr/lib/office/program/office");
  for (const char* part : {"calc", "writer"}) {
    desktop.entry(part, std::string("Exec=/usr/lib/office/program/office --") + part + " %U");
  }
  const std::string office = "/usr/lib/office/program/office.bin";
  EXPECT_EQ(rule(process(office, {office, "--writer"})), ApplicationRule::executableLocation);
  EXPECT_EQ(desktop.path(500), "/usr/share/applications/writer.app/Contents/MacOS/office.bin");
  EXPECT_EQ(rule(process("/usr/lib/office/program/other")), std::nullopt)
      << "either might be meant";
  desktop.entry("start", "Exec=/usr/lib/office/program/office %U");
  desktop.machine.seconds += 10;
  EXPECT_EQ(rule(process("/usr/lib/office/program/third")), ApplicationRule::executableLocation);
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/start.app/Contents/Frameworks/Helper/third");
}

TEST_F(RuleOf, AHelperOfOneOfTwoEntriesIsItsParents) {
  desktop.native("/usr/lib/office/program/office");
  for (const char* part : {"calc", "writer"}) {
    desktop.entry(part, std::string("Exec=/usr/lib/office/program/office --") + part + " %U");
  }
  Process parent = process("/usr/lib/office/program/office", {"office", "--calc"});
  parent.pid = 400;
  desktop.put(parent);
  Process child = process("/usr/lib/office/program/helper");
  child.parent = 400;
  child.start = 1001;
  EXPECT_EQ(rule(child), ApplicationRule::executableLocation);
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/calc.app/Contents/Frameworks/Helper/helper");
}

TEST_F(RuleOf, AnEntryThatRunsAProgramInsideAnotherIsNotThatOther) {
  desktop.native("/usr/bin/terminal");
  desktop.entry("monitor", "Exec=terminal -e htop");
  EXPECT_EQ(rule(process("/usr/bin/terminal")), std::nullopt);
  Process monitor = process("/usr/bin/terminal", {"terminal", "-e", "htop"});
  monitor.pid = 501;
  EXPECT_EQ(rule(monitor), ApplicationRule::entryExecutable);
}

TEST_F(RuleOf, AProcessThatTurnsIntoAnotherProgramIsLookedAtAgain) {
  EXPECT_EQ(rule(process("/usr/bin/dash", {"sh", "/home/user/start"})), std::nullopt);
  EXPECT_EQ(desktop.path(500), "/usr/bin/dash");
  desktop.put(process("/usr/bin/editor"));
  desktop.tick();
  EXPECT_EQ(desktop.path(500),
            "/usr/share/applications/org.example.Editor.app/Contents/MacOS/editor");
}

TEST_F(RuleOf, AYoungProcessIsLookedAtAgain) {
  Process young = process("/srv/any/thing");
  young.start = 99'999 * 100;
  EXPECT_EQ(rule(young), std::nullopt);
  young.group = "/app.slice/app-gnome-notes-500.scope";
  desktop.put(young);
  desktop.tick();
  EXPECT_NE(desktop.path(500).find("notes.app"), std::string::npos)
      << "its desktop has sorted it in since";
}

TEST_F(RuleOf, AKnownProcessIsNotLookedAtAgain) {
  EXPECT_EQ(rule(process("/srv/any/thing")), std::nullopt);
  Process same = process("/srv/any/thing");
  same.group = "/app.slice/app-gnome-notes-500.scope";
  EXPECT_EQ(rule(same), std::nullopt);
}

TEST_F(RuleOf, ANumberThatIsGivenAwayIsAnotherProcess) {
  EXPECT_EQ(rule(process("/usr/bin/editor")), ApplicationRule::entryExecutable);
  Process heir = process("/usr/bin/other");
  heir.start = 2000;
  EXPECT_EQ(rule(heir), std::nullopt);
}

TEST_F(RuleOf, ProcessesThatHaveGoneAreForgotten) {
  rule(process("/usr/bin/editor"));
  EXPECT_EQ(desktop.applications().knownCount(), 1U);
  desktop.machine.remove(500);
  desktop.tick();
  EXPECT_EQ(desktop.applications().knownCount(), 0U);
}

TEST_F(RuleOf, ANewEntryCatchesWhatRunsAlready) {
  EXPECT_EQ(rule(process("/usr/bin/late")), std::nullopt);
  desktop.native("/usr/bin/late");
  desktop.entry("late", "Exec=late");
  desktop.machine.seconds += 10;
  EXPECT_EQ(desktop.path(500), "/usr/share/applications/late.app/Contents/MacOS/late");
}

TEST_F(RuleOf, AProcessThatHidesEverythingIsNothing) {
  Process hidden;
  hidden.pid = 500;
  EXPECT_EQ(rule(hidden), std::nullopt);
  EXPECT_EQ(desktop.path(500), "");
}

/// What starts others must never stand for an application, whatever speaks for it.
class NeverSwallows : public testing::TestWithParam<const char*> {};

TEST_P(NeverSwallows, WhatItStarts) {
  const std::string name = GetParam();
  DesktopFixture desktop;
  desktop.native("/usr/bin/" + name);
  desktop.entry("org.example.Starter", "Name=Starter\nExec=" + name);
  desktop.entry(name, "Name=Starter\nExec=" + name);
  // An entry that does not betray which program it starts.
  desktop.script("/usr/bin/start-it", "#!/bin/sh\nexec /usr/bin/" + name + "\n");
  desktop.entry("org.example.Disguised", "Exec=start-it");
  desktop.native("/usr/bin/editor");
  desktop.entry("editor", "Exec=editor");
  desktop.busName("org.example.Disguised", 500);
  Process starter;
  starter.pid = 500;
  starter.name = name.substr(0, 15);
  starter.executable = "/usr/bin/" + name;
  starter.words = {name};
  starter.environment = {
      "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/org.example.Disguised.desktop",
      "GIO_LAUNCHED_DESKTOP_FILE_PID=500"};
  starter.group = "/app.slice/app-gnome-org.example.Disguised-500.scope";
  Process tool;
  tool.pid = 600;
  tool.parent = 500;
  tool.session = 500;
  tool.start = 1001;
  tool.executable = "/usr/bin/tool";
  tool.words = {"tool"};
  tool.group = starter.group;
  Process editor = tool;
  editor.pid = 700;
  editor.executable = "/usr/bin/editor";
  editor.words = {"editor"};
  desktop.put(starter);
  desktop.put(tool);
  desktop.put(editor);
  EXPECT_EQ(desktop.path(500).find(".app/"), std::string::npos) << desktop.path(500);
  EXPECT_EQ(desktop.path(600), "/usr/bin/tool");
  EXPECT_EQ(desktop.responsible(600), 0);
  EXPECT_EQ(desktop.path(700), "/usr/share/applications/editor.app/Contents/MacOS/editor");
  EXPECT_EQ(desktop.responsible(700), 700);
}

INSTANTIATE_TEST_SUITE_P(Starters, NeverSwallows,
                         testing::Values("gnome-shell", "plasmashell", "xfce4-panel", "i3", "sway",
                                         "systemd", "tmux"));

TEST(SessionComponents, AreShownBelowSystemAlsoWithoutSystemd) {
  DesktopFixture desktop;
  std::int32_t pid = 500;
  for (const char* name : {"gnome-shell", "plasmashell", "pulseaudio", "pipewire", "wireplumber",
                           "xfce4-session", "gnome-session-binary", "xfwm4", "dbus-daemon"}) {
    Process process;
    process.pid = ++pid;
    process.executable = std::string("/usr/bin/") + name;
    desktop.put(process);
  }
  for (std::int32_t number = 501; number <= pid; ++number) {
    EXPECT_TRUE(desktop.path(number).starts_with("/System/usr/bin/")) << desktop.path(number);
  }
}

TEST(PresentedBundles, HaveAPropertyListInTheUsersLanguage) {
  DesktopFixture desktop;
  desktop.native("/usr/bin/editor");
  desktop.entry("org.example.Editor",
                "Name=Editor\nName[de]=Bearbeiter\nIcon=editor-icon\nExec=editor");
  desktop.questions();
  const std::string bundle = "/usr/share/applications/org.example.Editor.app";
  const auto list = desktop.applications().propertyList(bundle + "/Contents/Info.plist");
  ASSERT_TRUE(list);
  EXPECT_EQ(textProperty(*list, "CFBundleDisplayName"), "Bearbeiter");
  EXPECT_EQ(textProperty(*list, "CFBundleName"), "Editor");
  EXPECT_EQ(textProperty(*list, "CFBundleIdentifier"), "org.example.Editor");
  EXPECT_EQ(desktop.applications().iconName(bundle), "editor-icon");
  EXPECT_FALSE(desktop.applications().propertyList(bundle + "/Contents/Other.plist"));
  EXPECT_FALSE(
      desktop.applications().propertyList("/usr/share/applications/no.app/Contents/Info.plist"));
}

TEST(PresentedBundles, ExistWithTheirOwnPartsOnly) {
  DesktopFixture desktop;
  desktop.native("/usr/bin/editor");
  desktop.entry("editor", "Exec=editor");
  desktop.questions();
  const LinuxApplications& applications = desktop.applications();
  const std::string bundle = "/usr/share/applications/editor.app";
  EXPECT_TRUE(applications.presents(bundle));
  EXPECT_TRUE(applications.presents(bundle + "/Contents/Info.plist"));
  EXPECT_FALSE(applications.presents(bundle + "/package.json"));
  EXPECT_FALSE(applications.presents("/usr/share/applications/other.app"));
  EXPECT_FALSE(applications.presents("/usr/share/applications/editor"));
}

TEST(PresentedBundles, OutliveTheirEntryWhileTheProgramRuns) {
  DesktopFixture desktop;
  desktop.native("/usr/bin/editor");
  desktop.entry("editor", "Name=Editor\nExec=editor");
  Process editor;
  editor.pid = 500;
  editor.executable = "/usr/bin/editor";
  desktop.put(editor);
  desktop.tick();
  desktop.machine.files.remove("usr/share/applications/editor.desktop");
  desktop.machine.seconds += 10;
  desktop.tick();
  EXPECT_TRUE(desktop.applications().propertyList(
      "/usr/share/applications/editor.app/Contents/Info.plist"));
}

/// Puts the mount of an AppImage there whose entry has this name.
void mountAppImage(DesktopFixture& desktop, const std::string& mount, const std::string& name) {
  desktop.native(mount + "/usr/bin/drawing");
  desktop.machine.files.write(
      mount.substr(1) + "/drawing.desktop",
      "[Desktop Entry]\nType=Application\nExec=drawing\nName=" + name + "\n");
}

TEST_F(RuleOf, AnAppImagesMountIsForgottenAfterItsEnd) {
  const std::string first = "/tmp/.mount_DrawinAAAAAA";
  const std::string second = "/tmp/.mount_DrawinBBBBBB";
  const auto nameOf = [this](const std::string& mount) {
    const auto list =
        desktop.applications().propertyList(mount + "/drawing.app/Contents/Info.plist");
    return list ? textProperty(*list, "CFBundleName").value_or("") : "";
  };
  mountAppImage(desktop, first, "First");
  EXPECT_EQ(rule(process(first + "/usr/bin/drawing")), ApplicationRule::appImage);
  EXPECT_EQ(nameOf(first), "First");
  desktop.machine.remove(500);
  desktop.machine.files.remove(first.substr(1));
  mountAppImage(desktop, second, "Second");
  Process next = process(second + "/usr/bin/drawing");
  next.pid = 501;
  EXPECT_EQ(rule(next), ApplicationRule::appImage);
  EXPECT_EQ(nameOf(first), "First") << "the name outlives the run";
  mountAppImage(desktop, first, "Third");
  Process last = process(first + "/usr/bin/drawing");
  last.pid = 502;
  EXPECT_EQ(rule(last), ApplicationRule::appImage);
  EXPECT_EQ(nameOf(first), "Third");
}

TEST_F(RuleOf, ABundleIsForgottenAnHourAfterItsLastProcess) {
  const std::string mount = "/tmp/.mount_DrawinAAAAAA";
  const std::string bundle = mount + "/drawing.app";
  mountAppImage(desktop, mount, "Drawing");
  rule(process(mount + "/usr/bin/drawing"));
  for (int round = 0; round < 20; ++round) {
    desktop.machine.seconds += 601;
    desktop.tick();
  }
  EXPECT_TRUE(desktop.applications().presents(bundle)) << "for as long as it runs";
  desktop.machine.remove(500);
  desktop.machine.files.remove(mount.substr(1));
  desktop.machine.seconds += 3000;
  desktop.tick();
  EXPECT_TRUE(desktop.applications().presents(bundle));
  desktop.machine.seconds += 601;
  desktop.tick();
  EXPECT_FALSE(desktop.applications().presents(bundle));
}

}  // namespace
}  // namespace korvantis
