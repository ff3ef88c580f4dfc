#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace korvantis {

namespace stable_merge_sort {

/// Merges the sorted halves [first, middle) and [middle, last) of `items` through `spare`.
template <typename Item, typename Before>
void merge(std::vector<Item>& items, std::vector<Item>& spare, std::size_t first,
           std::size_t middle, std::size_t last, const Before& before) {
  spare.clear();
  std::size_t left = first;
  std::size_t right = middle;
  while (left < middle && right < last) {
    // The left one stays in front unless the right one must go before it: that is the stability.
    std::size_t& next = before(items[right], items[left]) ? right : left;
    spare.push_back(std::move(items[next]));
    ++next;
  }
  // What is left of the right half already stands at its place.
  while (left < middle) spare.push_back(std::move(items[left++]));
  for (std::size_t index = 0; index < spare.size(); ++index) {
    items[first + index] = std::move(spare[index]);
  }
}

/// Sorts [first, last) of `items`.
template <typename Item, typename Before>
void sort(std::vector<Item>& items, std::vector<Item>& spare, std::size_t first, std::size_t last,
          const Before& before) {
  if (last - first < 2) return;
  const std::size_t middle = first + (last - first) / 2;
  sort(items, spare, first, middle, before);
  sort(items, spare, middle, last, before);
  merge(items, spare, first, middle, last, before);
}

}  // namespace stable_merge_sort

/// Sorts `items` so that `before(a, b)` puts `a` in front of `b`; those that go before neither way
/// keep their order. The sorts of the standard library are undefined for an order that is not
/// transitive; this one is a plain top-down merge of halves, so that any relation at all, also one
/// that runs in a circle, gives the same arrangement of the same items every time. Takes
/// n log n comparisons and one spare list. Any thread.
template <typename Item, typename Before>
void stableMergeSort(std::vector<Item>& items, const Before& before) {
  std::vector<Item> spare;
  spare.reserve(items.size());
  stable_merge_sort::sort(items, spare, 0, items.size(), before);
}

}  // namespace korvantis
