#include "analysis/CaseInsensitiveText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/utypes.h>

#include "core/Utf8.h"

namespace korvantis {

namespace {

constexpr std::size_t longestCharacter = 4;
/// A character folds to three others at most.
constexpr std::size_t longestFolding = 3 * longestCharacter;

constexpr bool isASCII(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// A text with its case folded away, byte by byte. It is folded character by character, which
/// folding allows, since it looks at no neighbours: so it needs no memory of its own.
class FoldedText {
 public:
  explicit FoldedText(std::string_view text) : rest(text) {}

  /// The next byte; absent at the end.
  std::optional<char> next() {
    while (given == length) {
      if (rest.empty()) return std::nullopt;
      given = 0;
      foldCharacter();
    }
    return folded[given++];
  }

 private:
  void foldCharacter() {
    const std::size_t taken = firstCharacterLength();
    const std::string_view character = rest.substr(0, taken);
    rest.remove_prefix(taken);
    if (taken == 1) {
      const char byte = character.front();
      const bool isUpper = byte >= 'A' && byte <= 'Z';
      folded[0] = isUpper ? static_cast<char>(byte - 'A' + 'a') : byte;
      length = 1;
      return;
    }
    icu::CheckedArrayByteSink sink(folded.data(), static_cast<std::int32_t>(folded.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8Fold(
        U_FOLD_CASE_DEFAULT,
        icu::StringPiece(character.data(), static_cast<std::int32_t>(character.size())), sink,
        nullptr, status);
    length = static_cast<std::size_t>(sink.NumberOfBytesWritten());
  }

  /// How many bytes the first character has; 1 where there is none.
  std::size_t firstCharacterLength() const {
    if (isASCII(rest.front())) return 1;
    std::size_t end = 1;
    while (end < rest.size() && end < longestCharacter && isContinuation(rest[end])) ++end;
    return isValidUtf8(rest.substr(0, end)) ? end : 1;
  }

  std::string_view rest;
  std::array<char, longestFolding> folded{};
  std::size_t length = 0;
  std::size_t given = 0;
};

}  // namespace

bool equalIgnoringCase(std::string_view first, std::string_view second) {
  FoldedText left(first);
  FoldedText right(second);
  while (true) {
    const std::optional<char> byte = left.next();
    if (byte != right.next()) return false;
    if (!byte) return true;
  }
}

}  // namespace korvantis
