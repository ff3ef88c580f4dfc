#include "ui/panes/RowSteps.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_map>

namespace korvantis {

namespace {

/// Rows as numbers: a row's number is its place among the wanted rows, `gone` when it has none.
using Places = std::vector<int>;
constexpr int gone = -1;

/// The numbers of the shown rows. The n-th row of an identity shown is the n-th one wanted.
Places placesOf(const std::vector<std::string>& shown, const std::vector<std::string>& wanted) {
  std::unordered_map<std::string, std::vector<int>> wantedPlaces;
  // From the end on, so that the first one lies on top.
  for (auto place = static_cast<int>(wanted.size()) - 1; place >= 0; --place) {
    wantedPlaces[wanted[static_cast<std::size_t>(place)]].push_back(place);
  }
  Places places;
  places.reserve(shown.size());
  for (const std::string& identity : shown) {
    const auto found = wantedPlaces.find(identity);
    if (found == wantedPlaces.end() || found->second.empty()) {
      places.push_back(gone);
      continue;
    }
    places.push_back(found->second.back());
    found->second.pop_back();
  }
  return places;
}

void removeGone(Places& places, const RowSteps& steps) {
  auto end = places.size();
  while (end > 0) {
    if (places[end - 1] != gone) {
      --end;
      continue;
    }
    auto first = end - 1;
    while (first > 0 && places[first - 1] == gone) --first;
    steps.remove(static_cast<int>(first), static_cast<int>(end - first));
    places.erase(places.begin() + static_cast<std::ptrdiff_t>(first),
                 places.begin() + static_cast<std::ptrdiff_t>(end));
    end = first;
  }
}

/// For each wanted place whether its row can stay where it is: the rows of a longest ascending
/// run through `places` do, and the fewest others have to move.
std::vector<bool> resting(const Places& places, std::size_t wantedCount) {
  std::vector<std::size_t> tails;
  std::vector<std::size_t> before(places.size(), places.size());
  for (std::size_t index = 0; index < places.size(); ++index) {
    const auto tail = std::lower_bound(
        tails.begin(), tails.end(), places[index],
        [&places](std::size_t position, int place) { return places[position] < place; });
    if (tail != tails.begin()) before[index] = *std::prev(tail);
    if (tail == tails.end()) {
      tails.push_back(index);
    } else {
      *tail = index;
    }
  }
  std::vector<bool> rests(wantedCount, false);
  std::size_t index = tails.empty() ? places.size() : tails.back();
  for (; index < places.size(); index = before[index]) {
    rests[static_cast<std::size_t>(places[index])] = true;
  }
  return rests;
}

/// Puts `place` behind the row that it follows in the wanted order, which is in its right place
/// already; at the head when it follows none.
void moveBehind(Places& places, int place, int predecessor, const RowSteps& steps) {
  const auto from = std::find(places.begin(), places.end(), place) - places.begin();
  auto to = predecessor == gone
                ? 0
                : std::find(places.begin(), places.end(), predecessor) - places.begin() + 1;
  // Without the row itself, what stands behind it is one place further up.
  if (from < to) --to;
  if (from == to) return;
  steps.move(static_cast<int>(from), static_cast<int>(to));
  places.erase(places.begin() + from);
  places.insert(places.begin() + to, place);
}

void moveIntoOrder(Places& places, std::size_t wantedCount, const RowSteps& steps) {
  const std::vector<bool> rests = resting(places, wantedCount);
  Places inOrder = places;
  std::sort(inOrder.begin(), inOrder.end());
  int predecessor = gone;
  for (const int place : inOrder) {
    if (!rests[static_cast<std::size_t>(place)]) moveBehind(places, place, predecessor, steps);
    predecessor = place;
  }
}

void insertNew(const Places& places, int wantedCount, const RowSteps& steps) {
  std::size_t next = 0;
  int place = 0;
  while (place < wantedCount) {
    const int nextKept = next < places.size() ? places[next] : wantedCount;
    if (place < nextKept) steps.insert(place, nextKept - place);
    place = nextKept + 1;
    ++next;
  }
}

}  // namespace

void stepTo(const std::vector<std::string>& shown, const std::vector<std::string>& wanted,
            const RowSteps& steps) {
  if (shown == wanted) return;
  Places places = placesOf(shown, wanted);
  removeGone(places, steps);
  moveIntoOrder(places, wanted.size(), steps);
  insertNew(places, static_cast<int>(wanted.size()), steps);
}

}  // namespace korvantis
