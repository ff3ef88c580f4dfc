#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/RegistryScript.h"
#include "samplers/SleepBlockerList.h"

namespace korvantis {
namespace {

using test::text;
using test::whole;
using testing::ElementsAre;
using testing::IsEmpty;

using Assertions = std::map<std::int32_t, std::vector<PropertyMap>>;

std::vector<SleepBlocker> read(const std::optional<Assertions>& assertions) {
  PowerCalls power;
  power.IOPMCopyAssertionsByProcess = [&] { return assertions; };
  return readSleepBlockers(power);
}

TEST(SleepBlockerList, WithoutAReplyThereAreNone) {
  EXPECT_THAT(read(std::nullopt), IsEmpty());
  EXPECT_THAT(read(Assertions()), IsEmpty());
}

TEST(SleepBlockerList, AnAssertionTellsTypeNameAndReason) {
  EXPECT_THAT(read(Assertions{{42,
                               {{{"AssertType", text("PreventUserIdleDisplaySleep")},
                                 {"Process Name", text("Player")},
                                 {"AssertName", text("Playing a film")}}}}}),
              ElementsAre(SleepBlocker{42, "Player", "PreventUserIdleDisplaySleep",
                                       "Playing a film", true}));
}

TEST(SleepBlockerList, AnAssertionWithoutTextsHasTheUsualOnes) {
  const SleepBlocker usual{42, "Process 42", "PreventUserIdleSystemSleep", "Active power assertion",
                           false};
  EXPECT_THAT(read(Assertions{{42, {PropertyMap()}}}), ElementsAre(usual));
  EXPECT_THAT(
      read(Assertions{
          {42,
           {{{"AssertType", whole(1)}, {"Process Name", whole(2)}, {"AssertName", whole(3)}}}}}),
      ElementsAre(usual));
}

TEST(SleepBlockerList, OnlyATypeThatNamesTheDisplayKeepsItOn) {
  const auto preventsDisplaySleep = [](const char* type) {
    return read(Assertions{{1, {{{"AssertType", text(type)}}}}}).at(0).preventsDisplaySleep;
  };
  EXPECT_TRUE(preventsDisplaySleep("PreventUserIdleDisplaySleep"));
  EXPECT_TRUE(preventsDisplaySleep("NoDISPLAYsleepassertion"));
  EXPECT_FALSE(preventsDisplaySleep("PreventSystemSleep"));
  EXPECT_FALSE(preventsDisplaySleep("PreventUserIdleSystemSleep"));
}

TEST(SleepBlockerList, IsOrderedByNameWithoutRegardToCaseAndStable) {
  const auto named = [](const char* name, const char* reason) {
    return PropertyMap{{"Process Name", text(name)}, {"AssertName", text(reason)}};
  };
  const auto blockers = read(Assertions{{1, {named("zeta", "a"), named("Alpha", "b")}},
                                        {2, {named("beta", "c"), named("ALPHA", "d")}},
                                        {3, {named("alpha", "e")}}});
  std::vector<std::string> order;
  for (const SleepBlocker& blocker : blockers) order.push_back(blocker.reason);
  EXPECT_THAT(order, ElementsAre("b", "d", "e", "c", "a"));
}

TEST(SleepBlockerList, SeveralAssertionsOfOneProcessStaySeveral) {
  EXPECT_EQ(read(Assertions{{1, {PropertyMap(), PropertyMap()}}}).size(), 2U);
}

}  // namespace
}  // namespace korvantis
