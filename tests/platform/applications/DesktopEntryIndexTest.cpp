#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "platform/applications/DesktopFixture.h"
#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/KeptEntryIndex.h"

namespace korvantis {
namespace {

using test::DesktopFixture;

/// Looks at a fixture's entries without any process.
class DesktopEntryIndexing : public testing::Test {
 protected:
  DesktopEntryIndex index() { return {sources(), files()}; }

  EntryFiles files() { return listEntryFiles(sources().root, sources().entryFolders); }

  ApplicationSources sources() {
    ApplicationSources sources;
    sources.root = desktop.machine.files.path();
    sources.entryFolders = {"/home/user/.local/share/applications", "/usr/share/applications"};
    sources.programFolders = {"/usr/local/bin", "/usr/bin"};
    sources.languages = {"de"};
    sources.steadySeconds = [this] { return seconds; };
    return sources;
  }

  bool knowsProgram(const std::string& path) { return !index().withProgram(path).empty(); }
  bool isPrivate(const std::string& folder) { return !index().aroundFile(folder + "/any").empty(); }

  DesktopFixture desktop;
  double seconds = 0;
};

TEST_F(DesktopEntryIndexing, ANameIsLookedForInTheProgramFoldersAndFollowedThroughLinks) {
  desktop.native("/usr/lib/editor/editor");
  desktop.machine.files.link("usr/bin/editor", "../lib/editor/editor");
  desktop.entry("org.example.Editor", "Name=Editor\nExec=editor %U");
  const auto made = index();
  ASSERT_EQ(made.withProgram("/usr/lib/editor/editor").size(), 1U);
  EXPECT_EQ(made.withProgram("/usr/lib/editor/editor").front()->id, "org.example.Editor");
  EXPECT_EQ(made.withId("org.example.Editor")->bundlePath,
            "/usr/share/applications/org.example.Editor.app");
  EXPECT_TRUE(isPrivate("/usr/lib/editor"));
  EXPECT_TRUE(isPrivate("/usr/lib/editor/deep/er"));
}

TEST_F(DesktopEntryIndexing, SharedFoldersBelongToNobody) {
  desktop.native("/usr/bin/editor");
  desktop.native("/usr/lib/x86_64-linux-gnu/viewer");
  desktop.native("/home/user/Downloads/tool");
  desktop.entry("a", "Exec=/usr/bin/editor");
  desktop.entry("b", "Exec=/usr/lib/x86_64-linux-gnu/viewer");
  desktop.entry("c", "Exec=/home/user/Downloads/tool");
  for (const char* folder : {"/usr/bin", "/usr", "/usr/lib", "/usr/lib/x86_64-linux-gnu",
                             "/home/user/Downloads", "/home/user", "/home"}) {
    EXPECT_FALSE(isPrivate(folder)) << folder;
  }
  EXPECT_TRUE(knowsProgram("/home/user/Downloads/tool"));
}

TEST_F(DesktopEntryIndexing, AWrapperScriptLeadsToTheFolderItNames) {
  desktop.script("/usr/bin/browser", "#!/bin/sh\nexec /opt/vendor/browser/browser-core \"$@\"\n");
  desktop.native("/opt/vendor/browser/browser-core");
  desktop.entry("browser", "Exec=browser");
  EXPECT_TRUE(isPrivate("/opt/vendor/browser"));
}

TEST_F(DesktopEntryIndexing, AWrapperScriptLendsNoFolderOfOthers) {
  desktop.script("/usr/bin/planner",
                 "#!/bin/sh\nexec /usr/lib/jvm/java-17/bin/java -jar /usr/share/java/all.jar\n"
                 ". /opt/vendor/setup.sh; /opt/database/server &\n");
  desktop.native("/usr/lib/jvm/java-17/bin/java");
  desktop.native("/opt/database/server");
  desktop.script("/opt/vendor/setup.sh", "#!/bin/sh\n");
  desktop.entry("planner", "Exec=planner");
  for (const char* folder : {"/usr/lib/jvm/java-17/bin", "/usr/lib/jvm", "/usr/share/java",
                             "/opt/vendor", "/opt/database"}) {
    EXPECT_FALSE(isPrivate(folder)) << folder;
  }
}

TEST_F(DesktopEntryIndexing, AFolderNamedLikeTheProgramCountsOnlyWithThatProgramInIt) {
  desktop.script("/usr/bin/alpha", "#!/bin/sh\n");
  desktop.script("/usr/bin/beta", "#!/bin/sh\n");
  desktop.native("/usr/lib/alpha/alpha");
  desktop.machine.files.write("usr/lib/beta/readme", "text");
  desktop.entry("alpha", "Exec=alpha");
  desktop.entry("beta", "Exec=beta");
  EXPECT_TRUE(isPrivate("/usr/lib/alpha"));
  EXPECT_FALSE(isPrivate("/usr/lib/beta"));
}

TEST_F(DesktopEntryIndexing, APrivateBinFolderBringsTheOneAboveIt) {
  desktop.native("/opt/studio-2024/bin/studio");
  desktop.entry("studio", "Exec=/opt/studio-2024/bin/studio");
  EXPECT_TRUE(isPrivate("/opt/studio-2024/tools"));
}

TEST_F(DesktopEntryIndexing, WhatMenusDoNotShowAndWhatRunsInATerminalIsLeftOut) {
  desktop.native("/usr/bin/tool");
  for (const char* line : {"Hidden=true", "NoDisplay=true", "Terminal=true"}) {
    desktop.entry("tool", std::string("Exec=tool\n") + line);
    EXPECT_EQ(index().size(), 0U) << line;
  }
}

TEST_F(DesktopEntryIndexing, TheUsersOwnEntryTakesTheOthersPlace) {
  desktop.native("/usr/bin/tool");
  desktop.entry("tool", "Name=One\nExec=tool");
  desktop.machine.files.write("home/user/.local/share/applications/tool.desktop",
                              "[Desktop Entry]\nType=Application\nNoDisplay=true\nExec=tool\n");
  EXPECT_EQ(index().size(), 0U);
}

TEST_F(DesktopEntryIndexing, FoldersInFoldersArePartOfTheId) {
  desktop.native("/usr/bin/tool");
  desktop.machine.files.write("usr/share/applications/kde/tool.desktop",
                              "[Desktop Entry]\nType=Application\nExec=tool\n");
  EXPECT_TRUE(index().withId("kde-tool"));
}

TEST_F(DesktopEntryIndexing, AnExecThatNamesAShellInterpreterOrLauncherClaimsNoProgram) {
  const std::vector<std::string> generic{"bash", "sh",   "python3", "java", "xdg-open",
                                         "env",  "sudo", "flatpak", "node", "gtk-launch"};
  for (const std::string& name : generic) {
    desktop.native("/usr/bin/" + name);
    desktop.entry("any-" + name, "Exec=" + name + " something");
  }
  desktop.machine.files.link("usr/bin/disguised", "bash");
  desktop.entry("disguised", "Exec=disguised");
  for (const std::string& name : generic) EXPECT_FALSE(knowsProgram("/usr/bin/" + name)) << name;
}

TEST_F(DesktopEntryIndexing, EntriesOfShellsManagersAndLaunchersAreNotIndexed) {
  for (const char* name : {"gnome-shell", "plasmashell", "xfce4-panel", "i3", "sway", "tmux",
                           "systemd", "rofi", "xfce4-appfinder"}) {
    desktop.native(std::string("/usr/bin/") + name);
    desktop.entry(std::string("org.example.") + name, std::string("Exec=") + name);
  }
  EXPECT_EQ(index().size(), 0U);
}

TEST_F(DesktopEntryIndexing, BadEntriesDoNoHarm) {
  desktop.entry("no-exec", "Name=None");
  desktop.entry("missing", "Exec=/usr/bin/missing");
  desktop.entry("open-quote", "Exec=\"editor");
  desktop.machine.files.write("usr/share/applications/empty.desktop", "");
  desktop.machine.files.write("usr/share/applications/binary.desktop", std::string(5000, '\0'));
  desktop.machine.files.link("usr/share/applications/dangling.desktop", "/nowhere");
  desktop.machine.files.link("usr/share/applications/circle.desktop", "circle.desktop");
  desktop.machine.files.link("usr/share/applications/deeper", ".");
  desktop.machine.files.link("usr/bin/circle", "circle");
  desktop.entry("program-circle", "Exec=circle");
  const auto made = index();
  EXPECT_FALSE(made.withId("no-exec"));
  EXPECT_FALSE(made.withId("open-quote"));
  EXPECT_TRUE(made.withId("missing")) << "known by its id, but claims no program";
  EXPECT_TRUE(made.withId("program-circle"));
}

TEST_F(DesktopEntryIndexing, AnEntryWithoutExecCountsWhenTheBusStartsIt) {
  desktop.entry("org.example.OverBus", "Name=Over Bus\nDBusActivatable=true");
  EXPECT_TRUE(index().withId("org.example.OverBus"));
}

TEST_F(DesktopEntryIndexing, AThousandEntriesAreAllIndexed) {
  for (int number = 0; number < 1000; ++number) {
    const std::string name = "tool" + std::to_string(number);
    desktop.native("/usr/bin/" + name);
    desktop.entry(name, "Name=" + name + "\nExec=" + name);
  }
  EXPECT_EQ(index().size(), 1000U);
  EXPECT_TRUE(knowsProgram("/usr/bin/tool777"));
}

TEST_F(DesktopEntryIndexing, ItIsMadeAgainOnlyWhenAnEntryChangesAndAtItsPace) {
  desktop.native("/usr/bin/tool");
  desktop.entry("tool", "Exec=tool");
  const ApplicationSources given = sources();
  KeptEntryIndex kept(given);
  const auto first = kept.current();
  EXPECT_EQ(first->size(), 1U);
  seconds += KeptEntryIndex::pace;
  EXPECT_EQ(kept.current(), first) << "nothing changed";
  desktop.entry("other", "Exec=tool");
  EXPECT_EQ(kept.current(), first) << "not due yet";
  seconds += KeptEntryIndex::pace;
  EXPECT_EQ(kept.current()->size(), 2U);
  const auto second = kept.current();
  desktop.machine.files.write("usr/share/applications/tool.desktop",
                              "[Desktop Entry]\nType=Application\nTerminal=true\nExec=tool\n");
  seconds += KeptEntryIndex::pace;
  EXPECT_EQ(kept.current()->size(), 1U) << "changed in place";
  desktop.machine.files.write("home/user/.local/share/applications/new.desktop",
                              "[Desktop Entry]\nType=Application\nExec=tool\n");
  seconds += KeptEntryIndex::pace;
  EXPECT_EQ(kept.current()->size(), 2U) << "in a folder that was not there before";
}

TEST_F(DesktopEntryIndexing, ConcurrentQuestionsGetAWholeIndexFromTheBackground) {
  desktop.native("/usr/bin/tool");
  desktop.entry("tool", "Exec=tool");
  ApplicationSources given = sources();
  given.worksInBackground = true;
  given.steadySeconds = [] { return 0.0; };
  KeptEntryIndex kept(given);
  const auto sizeInTheEnd = [&kept] {
    std::size_t size = kept.current()->size();
    // A machine that is busy beyond measure may give up its one wait.
    for (int tries = 0; size == 0 && tries < 10'000; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      size = kept.current()->size();
    }
    return size;
  };
  std::size_t seen = 0;
  std::thread other([&] { seen = sizeInTheEnd(); });
  const std::size_t own = sizeInTheEnd();
  other.join();
  EXPECT_EQ(own, 1U);
  EXPECT_EQ(seen, 1U);
}

}  // namespace
}  // namespace korvantis
