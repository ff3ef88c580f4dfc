#include <gtest/gtest.h>
#include <map>

#include "platform/linux/ResponsibleProcess.h"

namespace korvantis {
namespace {

using Table = std::map<std::int32_t, ProcessAncestry>;

const std::string mainProgram = "/apps/Term.app/Contents/MacOS/term";
const std::string helper = "/apps/Term.app/Contents/Frameworks/Helper/term";

ProcessIdentity found(const Table& table, std::int32_t pid, ProcessIdentity before = {}) {
  const ResponsibleProcess search([&table](std::int32_t number) {
    const auto entry = table.find(number);
    return entry == table.end() ? std::nullopt : std::optional(entry->second);
  });
  return search.find(pid, before);
}

TEST(ResponsibleProcess, IsTheNearestAncestorThatBelongsToAnApplication) {
  const Table table{{1, {0, 0, 1, "/sbin/init"}},
                    {10, {5, 1, 10, mainProgram}},
                    {11, {6, 10, 11, "/bin/bash"}},
                    {12, {7, 11, 11, "/usr/bin/make"}}};
  EXPECT_EQ(found(table, 12), (ProcessIdentity{10, 5}));
  EXPECT_EQ(found(table, 11), (ProcessIdentity{10, 5}));
}

TEST(ResponsibleProcess, OfAnApplicationsMainProgramIsItself) {
  const Table table{{9, {4, 1, 9, "/apps/Other.app/Contents/MacOS/other"}},
                    {10, {5, 9, 9, mainProgram}}};
  EXPECT_EQ(found(table, 10), (ProcessIdentity{10, 5}));
}

TEST(ResponsibleProcess, OfAHelperIsTheMainProgramAboveIt) {
  const Table table{{10, {5, 1, 10, mainProgram}}, {11, {6, 10, 10, helper}}};
  EXPECT_EQ(found(table, 11), (ProcessIdentity{10, 5}));
}

TEST(ResponsibleProcess, IsFoundThroughTheSessionLeaderWhenTheParentsHaveGone) {
  const Table table{{1, {0, 0, 1, "/sbin/init"}},
                    {10, {5, 1, 10, mainProgram}},
                    {11, {6, 10, 11, "/bin/bash"}},
                    {15, {9, 1, 11, "/usr/bin/server"}}};
  EXPECT_EQ(found(table, 15), (ProcessIdentity{10, 5}));
}

TEST(ResponsibleProcess, IsTheSessionLeaderWhenThatBelongsToAnApplication) {
  const Table table{{10, {5, 1, 10, mainProgram}}, {15, {9, 1, 10, "/usr/bin/server"}}};
  EXPECT_EQ(found(table, 15), (ProcessIdentity{10, 5}));
}

TEST(ResponsibleProcess, IsTheRememberedOneWhenNothingElseTellsAndItStillLives) {
  const Table table{{10, {5, 1, 10, mainProgram}}, {15, {9, 1, 15, "/usr/bin/server"}}};
  EXPECT_EQ(found(table, 15, {10, 5}), (ProcessIdentity{10, 5}));
  EXPECT_EQ(found(table, 15, {10, 4}).pid, 0) << "another process has its number";
  EXPECT_EQ(found(table, 15, {99, 5}).pid, 0) << "it has gone";
}

TEST(ResponsibleProcess, IsNoneWithoutAnApplication) {
  const Table table{{1, {0, 0, 1, "/sbin/init"}}, {15, {9, 1, 15, "/usr/bin/server"}}};
  EXPECT_EQ(found(table, 15).pid, 0);
  EXPECT_EQ(found(table, 99).pid, 0);
  EXPECT_EQ(found({{5, {1, 4, 4, ""}}}, 5).pid, 0) << "its parent has gone";
}

TEST(ResponsibleProcess, AProcessThatBeganLaterIsNoAncestor) {
  const Table table{{10, {20, 1, 10, mainProgram}}, {15, {9, 10, 10, "/usr/bin/server"}}};
  EXPECT_EQ(found(table, 15).pid, 0);
}

TEST(ResponsibleProcess, ACircleOfParentsEnds) {
  const Table table{{5, {1, 6, 6, "/a"}}, {6, {1, 5, 6, "/b"}}, {7, {1, 7, 7, "/c"}}};
  EXPECT_EQ(found(table, 5).pid, 0);
  EXPECT_EQ(found(table, 7).pid, 0);
}

TEST(ResponsibleProcess, AnApplicationBehindSixAncestorsIsFound) {
  Table table{{100, {1, 1, 100, mainProgram}}};
  for (std::int32_t pid = 101; pid <= 120; ++pid) table[pid] = {2, pid - 1, pid, "/bin/bash"};
  EXPECT_EQ(found(table, 120), (ProcessIdentity{100, 1}));
}

TEST(ResponsibleProcess, IsTheApplicationThatTheControlGroupIsNamedAfter) {
  const Table table{{10, {5, 1, 10, mainProgram, "/app-term", {}}},
                    {15, {9, 1, 15, "/usr/bin/server", "/app-term", {10, 5}}},
                    {16, {9, 1, 16, "/usr/bin/server", "/app-term", {10, 4}}}};
  EXPECT_EQ(found(table, 15), (ProcessIdentity{10, 5}));
  EXPECT_EQ(found(table, 16).pid, 0) << "that one has gone, another has its number";
}

TEST(ResponsibleProcess, IsTheNearestAncestorWhenThatIsInTheSameControlGroup) {
  const std::string other = "/apps/Other.app/Contents/MacOS/other";
  Table table{{10, {5, 1, 10, mainProgram, "/app-term", {}}},
              {11, {6, 10, 11, other, "/app-term", {10, 5}}},
              {12, {7, 11, 12, "/usr/bin/tool", "/app-term", {10, 5}}}};
  EXPECT_EQ(found(table, 12), (ProcessIdentity{11, 6}));
  table[11].controlGroup = "/app-other";
  EXPECT_EQ(found(table, 12), (ProcessIdentity{10, 5})) << "it was sorted out of its parent's";
}

}  // namespace
}  // namespace korvantis
