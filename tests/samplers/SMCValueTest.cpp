#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "samplers/SMCValue.h"

namespace korvantis {
namespace {

std::optional<double> valueOf(const std::string& type, std::uint32_t size,
                              const std::vector<std::uint8_t>& bytes) {
  std::array<std::uint8_t, 32> payload{};
  std::copy(bytes.begin(), bytes.end(), payload.begin());
  return smcValue(smcFourCharacterCode(type), size, payload);
}

TEST(SMCValue, PacksTheFirstFourBytesFirstOneHighest) {
  EXPECT_EQ(smcFourCharacterCode("TC0P"), 0x54433050U);
  EXPECT_EQ(smcFourCharacterCode("flt "), 0x666C7420U);
  EXPECT_EQ(smcFourCharacterCode("TC0P and more"), 0x54433050U);
}

TEST(SMCValue, FloatIsALittleEndianSingle) {
  EXPECT_EQ(valueOf("flt ", 4, {0x00, 0x00, 0x28, 0x42}), 42.0);
  EXPECT_EQ(valueOf("flt ", 4, {0x00, 0x00, 0x00, 0xC0}), -2.0);
}

TEST(SMCValue, FloatWithAllExponentBitsIsNoValue) {
  EXPECT_EQ(valueOf("flt ", 4, {0x00, 0x00, 0x80, 0x7F}), std::nullopt);
  EXPECT_EQ(valueOf("flt ", 4, {0x00, 0x00, 0x80, 0xFF}), std::nullopt);
  EXPECT_EQ(valueOf("flt ", 4, {0x01, 0x00, 0xC0, 0x7F}), std::nullopt);
}

TEST(SMCValue, FixedPointNumbersAreBigEndian) {
  EXPECT_EQ(valueOf("sp78", 2, {0x2A, 0x80}), 42.5);
  EXPECT_EQ(valueOf("sp78", 2, {0xFF, 0x00}), -1.0);
  EXPECT_EQ(valueOf("fpe2", 2, {0x12, 0xC2}), 1200.5);
  EXPECT_EQ(valueOf("fpe2", 2, {0xFF, 0xFF}), 16383.75);
}

TEST(SMCValue, WholeNumbersAreUnsigned) {
  EXPECT_EQ(valueOf("ui8 ", 1, {0xFE}), 254.0);
  EXPECT_EQ(valueOf("ui16", 2, {0x01, 0x02}), 258.0);
}

TEST(SMCValue, AnyOtherPairingOfTypeAndSizeIsNoValue) {
  const std::vector<std::uint8_t> bytes(32, 1);
  const std::vector<std::pair<std::string, std::uint32_t>> known{
      {"flt ", 4}, {"sp78", 2}, {"fpe2", 2}, {"ui8 ", 1}, {"ui16", 2}};
  for (const auto& [type, rightSize] : known) {
    for (std::uint32_t size = 0; size <= 33; ++size) {
      EXPECT_EQ(valueOf(type, size, bytes).has_value(), size == rightSize) << type << size;
    }
  }
  for (const char* type : {"ui32", "flt", "FLT ", "si8 ", "flag", "ch8*", "fp88"}) {
    for (std::uint32_t size = 0; size <= 8; ++size) {
      EXPECT_EQ(valueOf(type, size, bytes), std::nullopt) << type << size;
    }
  }
}

}  // namespace
}  // namespace korvantis
