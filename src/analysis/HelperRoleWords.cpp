#include "analysis/HelperRoleWords.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace korvantis {

namespace {

/// A role goes to a helper that has `word`, and `also` beside it where that is not empty.
struct Row {
  std::string_view word;
  HelperRole role;
  std::string_view also = {};
};

// The first row that fits decides. Some rows are covered by a wider one below them; they say which
// helpers are meant. "network" alone says nothing: too many tools carry it in a path.
constexpr std::array rows{
    Row{"--type=renderer", HelperRole::renderer},
    Row{"helper (renderer)", HelperRole::renderer},
    Row{"webcontent", HelperRole::renderer},
    Row{"renderer", HelperRole::renderer},
    Row{"extension", HelperRole::extensionHost},
    Row{"--type=extension", HelperRole::extensionHost},
    Row{"plugin", HelperRole::extensionHost},
    Row{"appex", HelperRole::extensionHost},
    Row{"--type=gpu-process", HelperRole::gpu},
    Row{"helper (gpu)", HelperRole::gpu},
    Row{"gpu", HelperRole::gpu},
    Row{"graphics", HelperRole::gpu},
    Row{"metal", HelperRole::gpu},
    Row{"--type=utility", HelperRole::network, "network"},
    Row{"networking", HelperRole::network},
    Row{"network.service", HelperRole::network},
    Row{"helper (network)", HelperRole::network},
};

/// Rows as bits: the first row is the lowest bit.
using RowSet = std::uint32_t;
static_assert(rows.size() <= 32);

/// The rows whose word has a given byte at `position`, by byte.
constexpr std::array<RowSet, 256> rowsWithByteAt(std::size_t position) {
  std::array<RowSet, 256> table{};
  for (std::size_t index = 0; index < rows.size(); ++index) {
    table[static_cast<unsigned char>(rows[index].word[position])] |= RowSet{1} << index;
  }
  return table;
}

// No word is shorter than the three bytes that these tables look at.
constexpr std::array<RowSet, 256> withFirstByte = rowsWithByteAt(0);
constexpr std::array<RowSet, 256> withSecondByte = rowsWithByteAt(1);
constexpr std::array<RowSet, 256> withThirdByte = rowsWithByteAt(2);

/// The rows whose word stands in `haystack`. One pass over the text instead of one for each word:
/// a busy machine has hundreds of helpers with command lines of a thousand bytes, at every tick.
RowSet rowsFoundIn(std::string_view haystack) {
  const auto byteAt = [haystack](std::size_t index) {
    return static_cast<unsigned char>(haystack[index]);
  };
  RowSet found = 0;
  for (std::size_t start = 0; start + 2 < haystack.size(); ++start) {
    RowSet possible = withFirstByte[byteAt(start)] & withSecondByte[byteAt(start + 1)];
    if (possible == 0) continue;
    possible &= withThirdByte[byteAt(start + 2)] & ~found;
    for (; possible != 0; possible &= possible - 1) {
      const auto index = static_cast<std::size_t>(std::countr_zero(possible));
      if (haystack.substr(start).starts_with(rows[index].word)) found |= RowSet{1} << index;
    }
  }
  return found;
}

}  // namespace

std::optional<HelperRole> helperRoleOfWords(std::string_view haystack) {
  for (RowSet found = rowsFoundIn(haystack); found != 0; found &= found - 1) {
    const Row& row = rows[static_cast<std::size_t>(std::countr_zero(found))];
    if (haystack.find(row.also) != std::string_view::npos) return row.role;
  }
  return std::nullopt;
}

}  // namespace korvantis
