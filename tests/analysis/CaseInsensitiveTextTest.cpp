#include <gtest/gtest.h>
#include <string>

#include "analysis/CaseInsensitiveText.h"

namespace korvantis {
namespace {

TEST(CaseInsensitiveText, CaseAloneMakesNoDifference) {
  EXPECT_TRUE(equalIgnoringCase("Google Chrome", "gOOGLE cHROME"));
  EXPECT_TRUE(equalIgnoringCase("", ""));
}

TEST(CaseInsensitiveText, AnythingElseDoes) {
  EXPECT_FALSE(equalIgnoringCase("Xcode", "Xcode "));
  EXPECT_FALSE(equalIgnoringCase("Xcode", "Xcod"));
  EXPECT_FALSE(equalIgnoringCase("", "X"));
  EXPECT_FALSE(equalIgnoringCase("[", "{")) << "only letters have a case";
  EXPECT_FALSE(equalIgnoringCase("@", "`"));
}

TEST(CaseInsensitiveText, LettersOfOtherScriptsHaveACaseToo) {
  EXPECT_TRUE(equalIgnoringCase("ÉDITEUR", "éditeur"));
  EXPECT_TRUE(equalIgnoringCase("РЕДАКТОР", "редактор"));
  EXPECT_TRUE(equalIgnoringCase("\xF0\x90\x90\x80", "\xF0\x90\x90\xA8")) << "Deseret";
  EXPECT_FALSE(equalIgnoringCase("éditeur", "editeur"));
  EXPECT_TRUE(equalIgnoringCase("編集", "編集"));
  EXPECT_FALSE(equalIgnoringCase("編集", "編輯"));
}

TEST(CaseInsensitiveText, ACharacterCanEqualSeveral) {
  EXPECT_TRUE(equalIgnoringCase("STRASSE", "straße"));
  EXPECT_TRUE(
      equalIgnoringCase("o\xEF\xAC\x83"
                        "ce",
                        "OFFICE"))
      << "one ligature for ffi";
  EXPECT_TRUE(equalIgnoringCase("\xCE\x90", "\xCE\x99\xCC\x88\xCC\x81")) << "the longest folding";
  EXPECT_FALSE(equalIgnoringCase("STRASE", "straße"));
}

TEST(CaseInsensitiveText, BothFormsOfTheGreekSigmaEqualTheCapital) {
  EXPECT_TRUE(equalIgnoringCase("ΣΊΣΥΦΟΣ", "σίσυφος"));
}

TEST(CaseInsensitiveText, TheDotlessIIsALetterOfItsOwnInEveryLanguage) {
  EXPECT_TRUE(equalIgnoringCase("TITLE", "title"));
  EXPECT_FALSE(equalIgnoringCase("I", "ı"));
}

TEST(CaseInsensitiveText, BytesThatAreNoTextEqualOnlyThemselves) {
  EXPECT_TRUE(equalIgnoringCase("A\xFF", "a\xFF"));
  EXPECT_FALSE(equalIgnoringCase("A\xFF", "a\xFE"));
  EXPECT_FALSE(equalIgnoringCase("\xC3", "\xC3\x89"));
  EXPECT_TRUE(equalIgnoringCase("\x80\x80\x80\x80\x80", "\x80\x80\x80\x80\x80"));
  EXPECT_FALSE(equalIgnoringCase("\xFF", "\xEF\xBF\xBD"));
}

TEST(CaseInsensitiveText, AZeroByteDoesNotEndAText) {
  EXPECT_FALSE(equalIgnoringCase(std::string("a\0b", 3), std::string("a\0c", 3)));
  EXPECT_TRUE(equalIgnoringCase(std::string("a\0b", 3), std::string("A\0B", 3)));
}

}  // namespace
}  // namespace korvantis
