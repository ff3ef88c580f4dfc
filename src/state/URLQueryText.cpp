#include "state/URLQueryText.h"

namespace korvantis {

namespace {

bool isAllowed(char character) {
  const bool isLetter =
      (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  const bool isDigit = character >= '0' && character <= '9';
  return isLetter || isDigit ||
         std::string_view("!$&'()*+,;=:@/?-._~").find(character) != std::string_view::npos;
}

}  // namespace

std::string urlQueryEncoded(std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  for (const char character : text) {
    if (isAllowed(character)) {
      encoded += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    encoded += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
  }
  return encoded;
}

}  // namespace korvantis
