#include "core/LowerCase.h"

#include <cstdint>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/stringpiece.h>
#include <unicode/utypes.h>
#include <utility>

namespace korvantis {

namespace {

/// Lowers the letters A to Z in place and tells whether there was nothing but ASCII. Kept free of
/// branches, so that the compiler can take many bytes at once: nearly all texts end here.
bool lowerASCII(std::string& text) {
  unsigned seen = 0;
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    seen |= byte;
    const bool isUpper = static_cast<unsigned char>(byte - 'A') < 26;
    character = static_cast<char>(byte | (isUpper ? 0x20U : 0U));
  }
  return seen < 0x80;
}

}  // namespace

std::string lowerCased(std::string text) {
  // Lowering A to Z first changes nothing for the rest: no rule looks at the case of a neighbour.
  if (lowerASCII(text)) return text;
  std::string lowered;
  lowered.reserve(text.size());
  icu::StringByteSink<std::string> sink(&lowered);
  UErrorCode status = U_ZERO_ERROR;
  // The empty locale is the root one: no language's special rules.
  icu::CaseMap::utf8ToLower("", 0,
                            icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())),
                            sink, nullptr, status);
  return U_SUCCESS(status) != 0 ? lowered : text;
}

}  // namespace korvantis
