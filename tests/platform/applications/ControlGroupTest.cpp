#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/applications/ControlGroup.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ids = std::vector<std::string>;

const std::string manager = "/user.slice/user-1000.slice/user@1000.service/";

ControlGroup::Unit innermost(const std::string& part) {
  const ControlGroup group = parseControlGroup("0::" + manager + part + "\n");
  ControlGroup::Unit unit = group.units.empty() ? ControlGroup::Unit{} : group.units.front();
  unit.path.clear();
  return unit;
}

TEST(ControlGroup, NamesOfDesktopsGiveIdsWithAndWithoutTheLauncher) {
  EXPECT_EQ(innermost("app.slice/app-gnome-org.gnome.gedit-4711.scope"),
            (ControlGroup::Unit{Ids{"gnome-org.gnome.gedit", "org.gnome.gedit"}, 4711, true}));
  EXPECT_EQ(innermost("app.slice/app-gnome-firefox\\x2desr-4711.scope"),
            (ControlGroup::Unit{Ids{"gnome-firefox-esr", "firefox-esr"}, 4711, true}));
  EXPECT_EQ(
      innermost("app.slice/app-flatpak-org.mozilla.firefox-99.scope"),
      (ControlGroup::Unit{Ids{"flatpak-org.mozilla.firefox", "org.mozilla.firefox"}, 99, true}));
  EXPECT_EQ(innermost("app.slice/app-org.kde.kate-7a3bb2a91c3e4a6a8a4d4c6d5e7f8091.scope"),
            (ControlGroup::Unit{Ids{"org.kde.kate"}, std::nullopt, true}));
  EXPECT_EQ(innermost("app.slice/app-org.kde.kate-0c8b7d1e-93c5-4c1c-9a39-51a9d6a0f2e4.scope"),
            (ControlGroup::Unit{Ids{"org.kde.kate"}, std::nullopt, true}));
  EXPECT_EQ(innermost("app.slice/app-org.kde.kate@7a3bb2.service"),
            (ControlGroup::Unit{Ids{"org.kde.kate"}, std::nullopt, true}));
}

TEST(ControlGroup, ASliceIsNotOfOneStart) {
  EXPECT_EQ(innermost("app.slice/app-org.gnome.Terminal.slice/vte-spawn-1.scope"),
            (ControlGroup::Unit{Ids{"org.gnome.Terminal"}, std::nullopt, false}));
}

TEST(ControlGroup, BusServicesAndSnapsAreNamedDifferently) {
  EXPECT_EQ(innermost("app.slice/dbus-:1.2-org.gnome.Weather@0.service"),
            (ControlGroup::Unit{Ids{"org.gnome.Weather"}, std::nullopt, true}));
  EXPECT_EQ(innermost("snap.firefox.firefox-f6a1ed53-d2c9-4d0a-a0e4-2b6e2d3a3c57.scope"),
            (ControlGroup::Unit{Ids{"firefox_firefox"}, std::nullopt, true}));
  EXPECT_EQ(innermost("snap.code.code.1234-f6a1ed53-d2c9-4d0a-a0e4-2b6e2d3a3c57.scope").ids,
            Ids{"code_code"});
}

TEST(ControlGroup, TheInnermostPartComesFirst) {
  const ControlGroup group =
      parseControlGroup("0::" + manager + "app-outer-1.scope/x/app-inner-2.scope\n");
  ASSERT_EQ(group.units.size(), 2U);
  EXPECT_EQ(group.units[0].ids, Ids{"inner"});
  EXPECT_EQ(group.units[0].path, manager + "app-outer-1.scope/x/app-inner-2.scope");
  EXPECT_EQ(group.units[1].ids, Ids{"outer"});
  EXPECT_EQ(group.units[1].path, manager + "app-outer-1.scope");
}

TEST(ControlGroup, TheSessionsOwnPartsAreKnown) {
  for (const char* part : {"session.slice/a.service", "background.slice/a.service", "init.scope",
                           "app.slice/dbus-:1.2-org.example.Any@0.service"}) {
    EXPECT_TRUE(parseControlGroup("0::" + manager + part + "\n").isSession) << part;
  }
  for (const char* part : {"app.slice/app-a-1.scope", "app.slice/any.service", ""}) {
    EXPECT_FALSE(parseControlGroup("0::" + manager + part + "\n").isSession) << part;
  }
}

TEST(ControlGroup, PlainScopesAndDamagedNamesSayNothing) {
  for (const char* path :
       {"/", "/user.slice/user-1000.slice/session-2.scope", "/app-.scope", "/app-@1.service",
        "/snap.a.b.scope", "/dbus-x.service", "/app-.slice", "/docker/abc", "///"}) {
    EXPECT_THAT(parseControlGroup(std::string("0::") + path + "\n").units, IsEmpty()) << path;
  }
  EXPECT_EQ(parseControlGroup(""), ControlGroup{});
  EXPECT_EQ(parseControlGroup("1:name=systemd:/app-a-1.scope\n"), ControlGroup{});
  EXPECT_EQ(innermost("app-a\\x2-\\xzz-1.scope").ids.front(), "a\\x2-\\xzz") << "broken escapes";
  EXPECT_EQ(innermost("app-a-99999999999.scope").leader, std::nullopt);
}

}  // namespace
}  // namespace korvantis
