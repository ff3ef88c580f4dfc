#include <gtest/gtest.h>

#include "platform/linux/applications/IconFiles.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

const std::string hicolor = "usr/share/icons/hicolor/";

/// A machine with the theme "Own", built on "Base", and "hicolor".
class IconFinding : public testing::Test {
 protected:
  IconFinding() {
    themeFile("Own", "Base,Own", {"16x16/apps", "48x48/apps", "scalable/apps"});
    themeFile("Base", "Own,hicolor", {"48x48/apps"});
    themeFile("hicolor", "",
              {"16x16/apps", "32x32/apps", "48x48/apps", "256x256/apps", "scalable/apps"});
  }

  void themeFile(const std::string& name, const std::string& parents,
                 const std::vector<std::string>& folders) {
    std::string list;
    std::string groups;
    for (const std::string& folder : folders) {
      list += folder + ",";
      const std::string size = folder.substr(0, folder.find('x'));
      groups += "[" + folder + "]\nSize=" + (folder.starts_with("scalable") ? "128" : size) + "\n";
    }
    machine.write("usr/share/icons/" + name + "/index.theme",
                  "[Icon Theme]\nInherits=" + parents + "\nDirectories=" + list + "\n" + groups);
  }

  IconFiles files(const std::string& theme = "Own") {
    return IconFiles(
        {machine.path(), theme, {"/home/user/.icons", "/usr/share/icons"}, {"/usr/share/pixmaps"}});
  }

  std::optional<std::string> find(const std::string& name) {
    IconFiles icons({machine.path(), "Own", {"/usr/share/icons"}, {"/usr/share/pixmaps"}});
    return icons.find(name, 0);
  }

  test::TemporaryFolder machine;
};

TEST_F(IconFinding, A48PixelPngGoesBeforeAnSvgAndThatBeforeOtherSizes) {
  machine.write(hicolor + "256x256/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/" + hicolor + "256x256/apps/a.png");
  machine.write(hicolor + "scalable/apps/a.svg", "s");
  EXPECT_EQ(find("a"), "/" + hicolor + "scalable/apps/a.svg");
  machine.write(hicolor + "48x48/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/" + hicolor + "48x48/apps/a.png");
}

TEST_F(IconFinding, ALargerPictureGoesBeforeASmallerOne) {
  machine.write(hicolor + "32x32/apps/a.png", "p");
  machine.write(hicolor + "16x16/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/" + hicolor + "32x32/apps/a.png");
  machine.write(hicolor + "256x256/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/" + hicolor + "256x256/apps/a.png");
}

TEST_F(IconFinding, TheUsersThemeGoesFirstThenItsParentsThenHicolorThenPixmaps) {
  machine.write("usr/share/pixmaps/a.png", "p");
  EXPECT_EQ(find("a"), "/usr/share/pixmaps/a.png");
  machine.write(hicolor + "48x48/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/" + hicolor + "48x48/apps/a.png");
  machine.write("usr/share/icons/Base/48x48/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/usr/share/icons/Base/48x48/apps/a.png");
  machine.write("usr/share/icons/Own/16x16/apps/a.png", "p");
  EXPECT_EQ(find("a"), "/usr/share/icons/Own/16x16/apps/a.png");
}

TEST_F(IconFinding, AnEntryMayNameAFile) {
  machine.write("opt/any/logo.svg", "s");
  machine.write("opt/any/logo.xpm", "x");
  machine.write("usr/share/pixmaps/b.png", "p");
  EXPECT_EQ(find("/opt/any/logo.svg"), "/opt/any/logo.svg");
  EXPECT_EQ(find("/opt/any/logo.xpm"), std::nullopt) << "nothing here draws it";
  EXPECT_EQ(find("/opt/any"), std::nullopt);
  EXPECT_EQ(find("b.png"), "/usr/share/pixmaps/b.png");
}

TEST_F(IconFinding, NamesThatLeadElsewhereFindNothing) {
  machine.write("secret.png", "p");
  machine.link(hicolor + "48x48/apps/circle.png", "circle.png");
  for (const char* name :
       {"", "..", "../secret", "../../../../../../secret", "circle", "missing"}) {
    EXPECT_EQ(find(name), std::nullopt) << name;
  }
}

TEST_F(IconFinding, AMissingThemeLeavesHicolor) {
  machine.write(hicolor + "48x48/apps/a.png", "p");
  for (const char* theme : {"", "NoSuch", "../hicolor"}) {
    EXPECT_EQ(files(theme).find("a", 0), "/" + hicolor + "48x48/apps/a.png") << theme;
  }
}

TEST_F(IconFinding, WhatWasFoundIsRememberedAndWhatWasNotForAMinute) {
  IconFiles icons = files();
  EXPECT_EQ(icons.find("a", 0), std::nullopt);
  const std::string file = machine.write(hicolor + "48x48/apps/a.png", "p");
  EXPECT_EQ(icons.find("a", 59.9), std::nullopt);
  EXPECT_EQ(icons.find("a", 60), "/" + hicolor + "48x48/apps/a.png");
  machine.remove(hicolor + "48x48/apps/a.png");
  EXPECT_EQ(icons.find("a", 1000), "/" + hicolor + "48x48/apps/a.png");
}

TEST_F(IconFinding, ABundleHasTheIconOfItsEntry) {
  machine.write(hicolor + "48x48/apps/editor.png", "p");
  machine.write("usr/share/applications/org.example.Editor.desktop",
                "[Desktop Entry]\nType=Application\nIcon=editor\n");
  machine.write("tmp/.mount_Any/any.desktop", "[Desktop Entry]\nType=Application\nIcon=any\n");
  machine.write("tmp/.mount_Any/any.svg", "s");
  IconFiles icons = files();
  EXPECT_EQ(icons.ofBundle("/usr/share/applications/org.example.Editor.app", 0),
            "/" + hicolor + "48x48/apps/editor.png");
  EXPECT_EQ(icons.ofBundle("/tmp/.mount_Any/any.app", 0), "/tmp/.mount_Any/any.svg");
  EXPECT_EQ(icons.ofBundle("/usr/share/applications/none.app", 0), std::nullopt);
  EXPECT_EQ(icons.ofBundle("/usr/share/applications", 0), std::nullopt);
}

TEST(IconTheme, DamagedIndexesGiveNoFolders) {
  EXPECT_EQ(parseIconTheme(""), IconTheme{});
  EXPECT_EQ(parseIconTheme("Directories=a\n[a]\nSize=48\n"), IconTheme{});
  const IconTheme theme = parseIconTheme(
      "[Icon Theme]\nDirectories=a,b,c,../d,e,\n[a]\nSize=48\n[b]\nSize=many\n"
      "[c]\nSize=48\nScale=2\n[../d]\nSize=48\n");
  EXPECT_EQ(theme.folders, (std::vector<IconTheme::Folder>{{"a", 48}}));
}

}  // namespace
}  // namespace korvantis
