#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "analysis/StableMergeSort.h"

namespace korvantis {
namespace {

using Numbers = std::vector<int>;

Numbers sorted(Numbers numbers) {
  stableMergeSort(numbers, [](int first, int second) { return first < second; });
  return numbers;
}

TEST(StableMergeSort, SortsNoneOneAndTwo) {
  EXPECT_EQ(sorted({}), Numbers{});
  EXPECT_EQ(sorted({4}), Numbers{4});
  EXPECT_EQ(sorted({4, 2}), (Numbers{2, 4}));
  EXPECT_EQ(sorted({2, 4}), (Numbers{2, 4}));
}

TEST(StableMergeSort, AgreesWithTheStableSortOfTheLibraryWhereThatIsDefined) {
  std::mt19937 random(5);
  for (int round = 0; round < 500; ++round) {
    std::vector<std::pair<int, int>> items(random() % 40);
    for (std::size_t index = 0; index < items.size(); ++index) {
      items[index] = {static_cast<int>(random() % 8), static_cast<int>(index)};
    }
    const auto before = [](const auto& first, const auto& second) {
      return first.first < second.first;
    };
    auto expected = items;
    std::stable_sort(expected.begin(), expected.end(), before);
    stableMergeSort(items, before);
    ASSERT_EQ(items, expected);
  }
}

TEST(StableMergeSort, ItemsThatTieAllStayWhereTheyStood) {
  Numbers numbers{3, 1, 2, 5, 4};
  stableMergeSort(numbers, [](int, int) { return false; });
  EXPECT_EQ(numbers, (Numbers{3, 1, 2, 5, 4}));
}

TEST(StableMergeSort, RelationWithoutAnySenseLosesNothing) {
  std::mt19937 random(6);
  for (int round = 0; round < 200; ++round) {
    Numbers numbers(random() % 60);
    for (std::size_t index = 0; index < numbers.size(); ++index) {
      numbers[index] = static_cast<int>(index);
    }
    const Numbers all = numbers;
    stableMergeSort(numbers, [&random](int, int) { return random() % 2 == 0; });
    std::sort(numbers.begin(), numbers.end());
    ASSERT_EQ(numbers, all);
  }
}

TEST(StableMergeSort, TakesAboutNLogNComparisons) {
  Numbers numbers(1024);
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    numbers[index] = static_cast<int>(index * 7919 % 1024);
  }
  std::size_t comparisons = 0;
  stableMergeSort(numbers, [&comparisons](int first, int second) {
    ++comparisons;
    return first < second;
  });
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  EXPECT_LE(comparisons, 1024U * 10U);
}

TEST(StableMergeSort, MovesItemsThatCanNotBeCopied) {
  std::vector<std::unique_ptr<int>> items;
  for (const int number : {3, 1, 2}) items.push_back(std::make_unique<int>(number));
  stableMergeSort(items, [](const auto& first, const auto& second) { return *first < *second; });
  EXPECT_EQ(*items[0], 1);
  EXPECT_EQ(*items[1], 2);
  EXPECT_EQ(*items[2], 3);
}

}  // namespace
}  // namespace korvantis
