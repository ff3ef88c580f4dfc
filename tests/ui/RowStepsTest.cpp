#include <algorithm>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "ui/panes/RowSteps.h"

namespace korvantis {
namespace {

using Names = std::vector<std::string>;

/// A list that carries out the steps and counts them.
struct SteppedList {
  Names rows;
  Names wanted;
  int removed = 0;
  int moved = 0;
  int inserted = 0;
  int calls = 0;

  void follow() {
    RowSteps steps;
    steps.remove = [this](int first, int count) {
      ++calls;
      removed += count;
      rows.erase(rows.begin() + first, rows.begin() + first + count);
    };
    steps.move = [this](int from, int to) {
      ++calls;
      ++moved;
      const std::string row = rows[static_cast<std::size_t>(from)];
      rows.erase(rows.begin() + from);
      rows.insert(rows.begin() + to, row);
    };
    steps.insert = [this](int first, int count) {
      ++calls;
      inserted += count;
      rows.insert(rows.begin() + first, wanted.begin() + first, wanted.begin() + first + count);
    };
    stepTo(rows, wanted, steps);
  }
};

SteppedList followed(Names shown, Names wanted) {
  SteppedList list{std::move(shown), std::move(wanted)};
  list.follow();
  return list;
}

TEST(RowSteps, EqualListsNeedNoStep) {
  EXPECT_EQ(followed({"a", "b"}, {"a", "b"}).calls, 0);
}

TEST(RowSteps, AllEnterAtOnceAndLeaveAtOnce) {
  EXPECT_EQ(followed({}, {"a", "b", "c"}).calls, 1);
  EXPECT_EQ(followed({"a", "b", "c"}, {}).calls, 1);
}

TEST(RowSteps, NeighboursLeaveTogether) {
  const SteppedList list = followed({"a", "b", "c", "d"}, {"a", "d"});
  EXPECT_EQ(list.calls, 1);
  EXPECT_EQ(list.removed, 2);
  EXPECT_EQ(list.rows, list.wanted);
}

TEST(RowSteps, OneRowThatFallsToTheEndMovesOnce) {
  const SteppedList list = followed({"a", "b", "c", "d"}, {"b", "c", "d", "a"});
  EXPECT_EQ(list.moved, 1);
  EXPECT_EQ(list.calls, 1);
  EXPECT_EQ(list.rows, list.wanted);
}

TEST(RowSteps, OneRowThatRisesToTheTopMovesOnce) {
  const SteppedList list = followed({"a", "b", "c", "d"}, {"d", "a", "b", "c"});
  EXPECT_EQ(list.moved, 1);
  EXPECT_EQ(list.rows, list.wanted);
}

TEST(RowSteps, LeavingMovingAndEnteringTogether) {
  const SteppedList list = followed({"a", "b", "c", "d", "e"}, {"e", "x", "b", "a", "y"});
  EXPECT_EQ(list.removed, 2);
  EXPECT_EQ(list.inserted, 2);
  EXPECT_EQ(list.moved, 2);
  EXPECT_EQ(list.rows, list.wanted);
}

TEST(RowSteps, RepeatedIdentitiesAreToldApartByTheirOrder) {
  const SteppedList list = followed({"a", "a", "b"}, {"a", "b", "a", "a"});
  EXPECT_EQ(list.rows, list.wanted);
  EXPECT_EQ(list.removed, 0);
  EXPECT_EQ(list.inserted, 1);
}

TEST(RowSteps, AnyListBecomesAnyOtherWithNoRowMovedTwice) {
  std::mt19937 chance(7);
  for (int round = 0; round < 500; ++round) {
    const auto draw = [&chance] {
      Names names;
      const auto count = chance() % 12;
      for (std::size_t index = 0; index < count; ++index) {
        names.push_back(std::string(1, static_cast<char>('a' + chance() % 9)));
      }
      return names;
    };
    const SteppedList list = followed(draw(), draw());
    EXPECT_EQ(list.rows, list.wanted);
    EXPECT_LT(list.moved, std::max<int>(1, static_cast<int>(list.wanted.size())));
  }
}

}  // namespace
}  // namespace korvantis
