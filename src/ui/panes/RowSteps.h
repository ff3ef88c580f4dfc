#pragma once

#include <functional>
#include <string>
#include <vector>

namespace korvantis {

/// What a list of rows is to do to itself. Each step sees the list as the one before left it.
struct RowSteps {
  /// Drops `count` rows from `first` on.
  std::function<void(int first, int count)> remove;
  /// Takes the row at `from` out and puts it back so that it stands at `to`.
  std::function<void(int from, int to)> move;
  /// Takes in the wanted rows `first` to `first + count - 1`, at the same places.
  std::function<void(int first, int count)> insert;
};

/// Calls the steps that turn the rows of the identities `shown` into those of `wanted`: rows that
/// are gone leave, rows whose order changed move (each once, and as few as possible), new rows
/// enter, all others stay untouched. An identity that stands several times is told apart by its
/// order of appearance. Any thread.
void stepTo(const std::vector<std::string>& shown, const std::vector<std::string>& wanted,
            const RowSteps& steps);

}  // namespace korvantis
