#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <unordered_set>

#include "core/Uuid.h"
#include "platform/RandomCalls.h"

namespace korvantis {
namespace {

const std::string exampleText = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

Uuid example() {
  return Uuid{{0xE6, 0x21, 0xE1, 0xF8, 0xC3, 0x6C, 0x49, 0x5A, 0x93, 0xFC, 0x0C, 0x24, 0x7A, 0x3E,
               0x6E, 0x5F}};
}

RandomCalls filledWith(unsigned char byte) {
  return RandomCalls{[byte](void* buffer, std::size_t size) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    for (std::size_t index = 0; index < size; ++index) bytes[index] = byte;
  }};
}

TEST(Uuid, TextIsUpperCaseInFiveHyphenatedGroups) {
  EXPECT_EQ(example().text(), exampleText);
  EXPECT_EQ(Uuid().text(), "00000000-0000-0000-0000-000000000000");
}

TEST(Uuid, ReadsUpperLowerAndMixedCase) {
  EXPECT_EQ(Uuid::fromText(exampleText), example());
  EXPECT_EQ(Uuid::fromText("e621e1f8-c36c-495a-93fc-0c247a3e6e5f"), example());
  EXPECT_EQ(Uuid::fromText("e621E1f8-C36c-495A-93Fc-0c247A3e6E5f"), example());
}

TEST(Uuid, RefusesEveryOtherText) {
  for (const char* text :
       {"", "E621E1F8", "E621E1F8C36C495A93FC0C247A3E6E5F",
        "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}", "E621E1F8-C36C-495A-93FC-0C247A3E6E5",
        "E621E1F8-C36C-495A-93FC-0C247A3E6E5F0", " 621E1F8-C36C-495A-93FC-0C247A3E6E5F",
        "G621E1F8-C36C-495A-93FC-0C247A3E6E5F", "E621E1F8-C36C-495A-93FC-0C247A3E6E5@",
        "E621E1F80C36C-495A-93FC-0C247A3E6E5F", "E621E1F8-C36C-495A-93FC00C247A3E6E5F",
        "-E621E1F8C36C-495A-93FC-0C247A3E6E5F", "E621E1F8-C36C-495A-93FC-0C247A3E6E-F",
        "E621E1F8-C36C-495A-93FC-0C247A3E6E`F"}) {
    EXPECT_FALSE(Uuid::fromText(text)) << text;
  }
  EXPECT_FALSE(Uuid::fromText(std::string(36, '\0')));
}

TEST(Uuid, RandomMarksVersionAndVariantAndKeepsAllOtherBits) {
  EXPECT_EQ(Uuid::random(filledWith(0x00)).text(), "00000000-0000-4000-8000-000000000000");
  EXPECT_EQ(Uuid::random(filledWith(0xFF)).text(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
}

TEST(Uuid, RandomOnesDiffer) {
  std::set<Uuid> seen;
  for (int count = 0; count < 1000; ++count) seen.insert(Uuid::random());
  EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, RandomOnesReadBackFromTheirText) {
  const Uuid uuid = Uuid::random();
  EXPECT_EQ(uuid.text()[14], '4');
  EXPECT_NE(std::string("89AB").find(uuid.text()[19]), std::string::npos);
  EXPECT_EQ(Uuid::fromText(uuid.text()), uuid);
}

TEST(Uuid, HashTellsApartWhatDiffersInOneByte) {
  std::unordered_set<std::size_t> hashes;
  for (std::size_t position = 0; position < 16; ++position) {
    Uuid uuid;
    uuid.bytes[position] = 1;
    hashes.insert(std::hash<Uuid>()(uuid));
  }
  EXPECT_EQ(hashes.size(), 16U);
  EXPECT_EQ(std::hash<Uuid>()(example()), std::hash<Uuid>()(*Uuid::fromText(exampleText)));
}

}  // namespace
}  // namespace korvantis
