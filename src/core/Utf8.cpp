#include "core/Utf8.h"

#include <cstddef>

namespace korvantis {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// What a lead byte promises: how many bytes follow, and the range of the first of them. That
/// range is what shuts out overlong forms, surrogates and values above U+10FFFF.
struct Lead {
  std::size_t followers = 0;
  unsigned char lowest = 0x80;
  unsigned char highest = 0xBF;
  bool valid = true;
};

Lead leadOf(unsigned char byte) {
  if (byte < 0x80) return {};
  if (byte >= 0xC2 && byte <= 0xDF) return {.followers = 1};
  if (byte == 0xE0) return {.followers = 2, .lowest = 0xA0};
  if (byte == 0xED) return {.followers = 2, .highest = 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {.followers = 2};
  if (byte == 0xF0) return {.followers = 3, .lowest = 0x90};
  if (byte >= 0xF1 && byte <= 0xF3) return {.followers = 3};
  if (byte == 0xF4) return {.followers = 3, .highest = 0x8F};
  return {.valid = false};
}

/// One character, or one maximal ill-formed piece, at the front of a text.
struct Piece {
  std::size_t length = 1;
  bool valid = false;
};

Piece firstPiece(std::string_view bytes) {
  Lead lead = leadOf(static_cast<unsigned char>(bytes[0]));
  if (!lead.valid) return {};
  for (std::size_t follower = 1; follower <= lead.followers; ++follower) {
    if (follower == bytes.size()) return {.length = follower};
    const auto byte = static_cast<unsigned char>(bytes[follower]);
    if (byte < lead.lowest || byte > lead.highest) return {.length = follower};
    lead.lowest = 0x80;
    lead.highest = 0xBF;
  }
  return {.length = 1 + lead.followers, .valid = true};
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Piece piece = firstPiece(bytes);
    if (!piece.valid) return false;
    bytes.remove_prefix(piece.length);
  }
  return true;
}

std::string repairedUtf8(std::string_view bytes) {
  std::string repaired;
  repaired.reserve(bytes.size());
  while (!bytes.empty()) {
    const Piece piece = firstPiece(bytes);
    repaired += piece.valid ? bytes.substr(0, piece.length) : replacementCharacter;
    bytes.remove_prefix(piece.length);
  }
  return repaired;
}

}  // namespace korvantis
