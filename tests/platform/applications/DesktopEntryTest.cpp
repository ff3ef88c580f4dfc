#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/ExecLine.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DesktopEntry parsed(const std::string& lines, const std::vector<std::string>& languages = {}) {
  return parseDesktopEntry("[Desktop Entry]\nType=Application\n" + lines, languages)
      .value_or(DesktopEntry{});
}

TEST(DesktopEntry, TellsNameCommandLineAndIcon) {
  const DesktopEntry entry = parsed("Name = Any Editor\nExec=editor %U\nIcon=editor\n");
  EXPECT_EQ(entry.name, "Any Editor");
  EXPECT_EQ(entry.exec, "editor %U");
  EXPECT_EQ(entry.icon, "editor");
  EXPECT_TRUE(entry.isShown);
  EXPECT_FALSE(entry.runsInTerminal);
}

TEST(DesktopEntry, TakesTheBestLanguageWhateverTheOrder) {
  const std::string names = "Name=Files\nName[de]=Dateien\nName[de_AT]=Akten\nName[fr]=Fichiers\n";
  EXPECT_EQ(parsed(names, {"de_AT", "de"}).localizedName, "Akten");
  EXPECT_EQ(parsed(names, {"de"}).localizedName, "Dateien");
  EXPECT_EQ(parsed("Name[de_AT]=Akten\nName[de]=Dateien\n", {"de_AT", "de"}).localizedName,
            "Akten");
  EXPECT_EQ(parsed(names, {"it"}).localizedName, "");
}

TEST(DesktopEntry, NamesInOtherScriptsStandAsTheyAre) {
  EXPECT_EQ(parsed("Name=文本编辑器\n").name, "文本编辑器");
  EXPECT_EQ(parsed("Name=محرر\n").name, "محرر");
}

TEST(DesktopEntry, ATextThatIsNoUtf8CountsAsMissing) {
  EXPECT_EQ(parsed("Name=\xff\xfe\n").name, "");
}

TEST(DesktopEntry, UndoesEscapesAndLeavesBrokenOnes) {
  EXPECT_EQ(parsed("Name=a\\sb\\\\c\n").name, "a b\\c");
  EXPECT_EQ(parsed("Name=a\\qb\\\n").name, "a\\qb\\");
}

TEST(DesktopEntry, FurtherGroupsAreOtherActions) {
  const DesktopEntry entry =
      parsed("Exec=one\n[Desktop Action New]\nExec=two\nName=New\nNoDisplay=true\n");
  EXPECT_EQ(entry.exec, "one");
  EXPECT_TRUE(entry.isShown);
}

TEST(DesktopEntry, HiddenAndUndisplayedOnesAreNotShown) {
  EXPECT_FALSE(parsed("Hidden=true\n").isShown);
  EXPECT_FALSE(parsed("NoDisplay=true\n").isShown);
  EXPECT_TRUE(parsed("Terminal=true\n").runsInTerminal);
}

TEST(DesktopEntry, WhatIsNoApplicationIsAbsent) {
  EXPECT_FALSE(parseDesktopEntry("", {}));
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=a\n", {}));
  EXPECT_FALSE(parseDesktopEntry("Type=Application\n", {})) << "no group";
  EXPECT_FALSE(parseDesktopEntry(std::string(100'000, '['), {}));
}

TEST(EntryLanguages, GoFromTheFullFormToTheLanguageAlone) {
  EXPECT_THAT(entryLanguages("", "de_AT.UTF-8@euro"),
              ElementsAre("de_AT@euro", "de_AT", "de@euro", "de"));
  EXPECT_THAT(entryLanguages("fr:de", "de_AT.UTF-8"), ElementsAre("fr", "de", "de_AT"));
  EXPECT_THAT(entryLanguages("fr", "C.UTF-8"), IsEmpty());
  EXPECT_THAT(entryLanguages("", ""), IsEmpty());
}

TEST(ExecLine, SplitsWordsAndTakesFieldCodesOut) {
  EXPECT_THAT(execWords("editor --new %U"), ElementsAre("editor", "--new"));
  EXPECT_THAT(execWords("\"/opt/My Editor/run\" --at=100%%"),
              ElementsAre("/opt/My Editor/run", "--at=100%"));
  EXPECT_THAT(execWords(R"(sh -c "echo \"\$HOME\"")"), ElementsAre("sh", "-c", "echo \"$HOME\""));
}

TEST(ExecLine, LeavesOffTheSettingsOfEnv) {
  EXPECT_THAT(execWords("env A=b C=/d /snap/bin/firefox %u"), ElementsAre("/snap/bin/firefox"));
  EXPECT_THAT(execWords("/usr/bin/env A=b"), IsEmpty());
}

TEST(ExecLine, ADamagedLineHasNoWords) {
  EXPECT_THAT(execWords(""), IsEmpty());
  EXPECT_THAT(execWords("%U"), IsEmpty());
  EXPECT_THAT(execWords("editor \"never ends"), IsEmpty());
  EXPECT_THAT(execWords("editor %"), ElementsAre("editor", "%"));
}

}  // namespace
}  // namespace korvantis
