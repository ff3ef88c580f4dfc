#include <gtest/gtest.h>
#include <string>

#include "core/LowerCase.h"

namespace korvantis {
namespace {

TEST(LowerCase, LowersOnlyLettersOfASCII) {
  EXPECT_EQ(lowerCased(""), "");
  EXPECT_EQ(lowerCased("@AZ[`az{ 09_-"), "@az[`az{ 09_-");
}

TEST(LowerCase, LowersLettersOfOtherAlphabets) {
  EXPECT_EQ(lowerCased("\u00C4\u00D6\u00DC \u0416 \u03A9"), "\u00E4\u00F6\u00FC \u0436 \u03C9");
}

TEST(LowerCase, KelvinSignGivesALetterOfASCII) {
  EXPECT_EQ(lowerCased("\u212A"), "k");
}

TEST(LowerCase, DottedCapitalIKeepsItsDotAndPlainIIsNoTurkishOne) {
  EXPECT_EQ(lowerCased("\u0130 I"), "i\u0307 i");
}

TEST(LowerCase, LastSigmaOfAWordTakesItsFinalForm) {
  EXPECT_EQ(lowerCased("A\u03A3 \u03A3A"), "a\u03C2 \u03C3a");
}

TEST(LowerCase, BytesThatAreNoTextStayAmongLoweredOnes) {
  EXPECT_EQ(lowerCased("A\xFF"
                       "B\u00C4\xC4"),
            "a\xFF"
            "b\u00E4\xC4");
  EXPECT_EQ(lowerCased(std::string("A\0\xC4", 3)), std::string("a\0\xC4", 3));
}

}  // namespace
}  // namespace korvantis
