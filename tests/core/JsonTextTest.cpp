#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "core/JsonText.h"

namespace korvantis {
namespace {

using Json = nlohmann::ordered_json;

std::string libraryText(const Json& value) {
  return value.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace);
}

TEST(JsonText, WritesEveryKindOfValueOnOneLine) {
  const Json value{{"z", {1, -2, 18446744073709551615U}},
                   {"a", {true, false, nullptr}},
                   {"number", 0.1},
                   {"none", Json::object()},
                   {"nothing", Json::array()},
                   {"text", "plain"}};
  EXPECT_EQ(jsonText(value),
            R"({"z":[1,-2,18446744073709551615],"a":[true,false,null],"number":0.1,"none":{},)"
            R"("nothing":[],"text":"plain"})");
}

TEST(JsonText, TextsAreWrittenAsTheLibraryDoes) {
  for (const std::string& text :
       {std::string(), std::string("plain ~ text"), std::string("\"quoted\" and \\ \n\t\b\x01\x7F"),
        std::string("zero \0 inside", 13), std::string("ünïcode \U0001F600"),
        std::string("bad \xFF\xC3 end"), std::string("cut \xE2\x82")}) {
    EXPECT_EQ(jsonText(Json(text)), libraryText(text));
    Json object = Json::object();
    object[text] = 1;
    EXPECT_EQ(jsonText(object), libraryText(object)) << "as a key";
  }
}

TEST(JsonText, NumbersAreWrittenAsTheLibraryDoes) {
  std::mt19937_64 generator(7);
  std::vector<double> numbers{0.0,
                              -0.0,
                              1.0,
                              -1.5,
                              1e15,
                              1e16,
                              123456789.125,
                              1e300,
                              5e-324,
                              0.30000000000000004,
                              100.0,
                              2.5,
                              std::numeric_limits<double>::max()};
  for (int count = 0; count < 10'000; ++count) {
    numbers.push_back(static_cast<double>(generator()) / static_cast<double>(generator() | 1U));
  }
  for (const double number : numbers) EXPECT_EQ(jsonText(Json(number)), libraryText(number));
}

TEST(JsonText, AZeroByteIsNoPartOfAnyJsonText) {
  using namespace std::string_view_literals;
  EXPECT_EQ(parsedJson("[1]"sv), nlohmann::json::parse("[1]"));
  EXPECT_TRUE(parsedJson("[1]\0"sv).is_discarded());
  EXPECT_TRUE(parsedJson("[1]\0rubbish"sv).is_discarded());
  EXPECT_TRUE(parsedJson("[1,\0 2]"sv).is_discarded());
  EXPECT_TRUE(parsedJson("[1"sv).is_discarded());
}

TEST(JsonText, ANumberWithoutAFormAnywhereInsideLeavesNoText) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(jsonText(Json(infinity)));
  EXPECT_FALSE(jsonText(Json{{"a", {1, {{"b", -infinity}}}}}));
  EXPECT_FALSE(jsonText(Json{{"a", std::numeric_limits<double>::quiet_NaN()}}));
}

}  // namespace
}  // namespace korvantis
