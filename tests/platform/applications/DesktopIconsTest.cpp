#include <gtest/gtest.h>

#include "platform/linux/applications/DesktopIcons.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

/// A machine with "hicolor" and two applications.
class DesktopIcons : public testing::Test {
 protected:
  DesktopIcons() {
    machine.write("usr/share/icons/hicolor/index.theme",
                  "[Icon Theme]\nDirectories=48x48/apps\n[48x48/apps]\nSize=48\n");
    application("editor", "Icon=editor");
    application("player", "Icon=player");
    machine.write("usr/share/icons/hicolor/48x48/apps/editor.png", "\x89PNG one");
    machine.write("usr/share/pixmaps/player.svg", "<svg/>");
  }

  void application(const std::string& name, const std::string& line) {
    machine.write("usr/share/applications/" + name + ".desktop",
                  "[Desktop Entry]\nType=Application\n" + line + "\n");
  }
  static std::string bundle(const std::string& name) {
    return "/usr/share/applications/" + name + ".app";
  }

  test::TemporaryFolder machine;
  IconCalls icons =
      desktopIconCalls({machine.path(), "", {"/usr/share/icons"}, {"/usr/share/pixmaps"}});
};

TEST_F(DesktopIcons, ABundleThatIsPresentedForAnEntryIsThere) {
  EXPECT_TRUE(icons.fileExistsAtPath(bundle("editor")));
  EXPECT_FALSE(icons.fileExistsAtPath(bundle("none")));
  EXPECT_FALSE(icons.fileExistsAtPath("/usr/share/applications/editor"));
  EXPECT_FALSE(icons.fileExistsAtPath(std::string("/usr\0.app", 9)));
}

TEST_F(DesktopIcons, WhatIsOnDiskIsThere) {
  machine.folderAt("opt/real.app");
  EXPECT_TRUE(icons.fileExistsAtPath("/opt/real.app"));
  EXPECT_TRUE(icons.fileExistsAtPath("/usr/share"));
}

TEST_F(DesktopIcons, GivesTheBytesOfPngAndSvgFiles) {
  EXPECT_EQ(icons.iconForFile(bundle("editor")), "\x89PNG one");
  EXPECT_EQ(icons.iconForFile(bundle("player")), "<svg/>");
}

TEST_F(DesktopIcons, WithoutAnIconThereIsNone) {
  application("plain", "Name=Plain");
  application("missing", "Icon=missing");
  application("empty", "Icon=empty");
  machine.write("usr/share/pixmaps/empty.png", "");
  application("huge", "Icon=huge");
  machine.write("usr/share/pixmaps/huge.png", std::string((4 << 20) + 1, 'x'));
  for (const char* name : {"plain", "missing", "empty", "huge", "none"}) {
    EXPECT_EQ(icons.iconForFile(bundle(name)), std::nullopt) << name;
  }
}

TEST_F(DesktopIcons, TheSystemsOwnMonitorHasTheThemesPictureOfOne) {
  const std::string monitor = "/System/Applications/Utilities/Activity Monitor.app";
  EXPECT_EQ(desktopIconCalls({machine.path(), "", {}, {}}).iconForFile(monitor), std::nullopt);
  machine.write("usr/share/icons/hicolor/48x48/apps/utilities-system-monitor.png", "\x89PNG two");
  EXPECT_EQ(icons.iconForFile(monitor), "\x89PNG two");
}

}  // namespace
}  // namespace korvantis
