#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "core/JsonText.h"
#include "core/JsonValue.h"

namespace korvantis {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

template <typename Value>
std::optional<Value> read(const std::string& text) {
  return fromJson<Value>(json::parse(text));
}

TEST(JsonValue, IntegerTakesWholeNumbers) {
  EXPECT_EQ(read<std::int64_t>("3"), 3);
  EXPECT_EQ(read<std::int64_t>("-3"), -3);
  EXPECT_EQ(read<std::int64_t>("0"), 0);
  EXPECT_EQ(read<std::int64_t>("-0"), 0);
}

TEST(JsonValue, IntegerTakesANumberWithoutFractionAsWhole) {
  EXPECT_EQ(read<std::int64_t>("3.0"), 3);
  EXPECT_EQ(read<std::int64_t>("-3.0"), -3);
  EXPECT_EQ(read<std::int64_t>("3e2"), 300);
  EXPECT_EQ(read<std::uint16_t>("65535.0"), 65535);
  EXPECT_EQ(read<std::uint64_t>("-0.0"), 0U);
  EXPECT_EQ(read<std::uint64_t>("18446744073709549568.0"), 18446744073709549568U);
}

TEST(JsonValue, IntegerRefusesFractionsFlagsTextsAndNull) {
  for (const char* text :
       {"2.5", "-0.5", "0.1", "true", "false", "\"3\"", "\"\"", "null", "[]", "[3]", "{}"}) {
    EXPECT_FALSE(read<std::int64_t>(text)) << text;
    EXPECT_FALSE(read<std::uint64_t>(text)) << text;
  }
}

TEST(JsonValue, IntegerRefusesWhatItsTypeDoesNotHold) {
  EXPECT_EQ(read<std::int64_t>("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_FALSE(read<std::int64_t>("9223372036854775808"));
  EXPECT_FALSE(read<std::int64_t>("9223372036854775808.0"));
  EXPECT_EQ(read<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_FALSE(read<std::int64_t>("-9223372036854775809"));
  EXPECT_EQ(read<std::uint64_t>("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  EXPECT_FALSE(read<std::uint64_t>("18446744073709551616"));
  EXPECT_FALSE(read<std::uint64_t>("-1"));
  EXPECT_FALSE(read<std::uint64_t>("-1.0"));
  EXPECT_EQ(read<std::int32_t>("2147483647"), 2147483647);
  EXPECT_FALSE(read<std::int32_t>("2147483648"));
  EXPECT_EQ(read<std::int32_t>("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_FALSE(read<std::int32_t>("-2147483649"));
  EXPECT_FALSE(read<std::int32_t>("2147483648.0"));
  EXPECT_EQ(read<std::uint32_t>("4294967295"), 4294967295U);
  EXPECT_FALSE(read<std::uint32_t>("4294967296"));
  EXPECT_EQ(read<std::uint16_t>("65535"), 65535);
  EXPECT_FALSE(read<std::uint16_t>("65536"));
  EXPECT_FALSE(read<std::uint16_t>("65536.0"));
  EXPECT_FALSE(read<std::int64_t>("1e300"));
}

TEST(JsonValue, DoubleTakesEveryNumber) {
  EXPECT_EQ(read<double>("3"), 3.0);
  EXPECT_EQ(read<double>("-3"), -3.0);
  EXPECT_EQ(read<double>("2.5"), 2.5);
  EXPECT_EQ(read<double>("18446744073709551615"), 18446744073709551616.0);
  EXPECT_EQ(read<Instant>("12"), Instant{12.0});
  for (const char* text : {"true", "\"3\"", "null", "[]", "{}"}) {
    EXPECT_FALSE(read<double>(text)) << text;
  }
}

TEST(JsonValue, FlagTakesOnlyTrueAndFalse) {
  EXPECT_EQ(read<bool>("true"), true);
  EXPECT_EQ(read<bool>("false"), false);
  for (const char* text : {"0", "1", "\"true\"", "null"}) EXPECT_FALSE(read<bool>(text)) << text;
}

TEST(JsonValue, ListIsReadWholeOrNotAtAll) {
  EXPECT_EQ(read<std::vector<std::string>>(R"(["a","b"])"), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(read<std::vector<std::string>>("[]"), std::vector<std::string>());
  EXPECT_FALSE(read<std::vector<std::string>>(R"(["a",1])"));
  EXPECT_FALSE(read<std::vector<std::string>>(R"(["a",null])"));
  EXPECT_FALSE(read<std::vector<std::string>>(R"({"a":"b"})"));
  EXPECT_FALSE(read<std::vector<std::string>>(R"("a")"));
}

TEST(JsonValue, UuidIsReadInEitherCaseAndNothingElse) {
  EXPECT_TRUE(read<Uuid>(R"("e621e1f8-C36C-495a-93FC-0C247A3E6E5F")"));
  EXPECT_FALSE(read<Uuid>(R"("e621e1f8")"));
  EXPECT_FALSE(read<Uuid>("7"));
}

TEST(JsonText, DoublesComeBackAsTheyWere) {
  for (const double number : {0.1, 1.0 / 3, 5e-324, 1.7976931348623157e308, -0.0, 3.0, 1e21}) {
    const auto text = jsonText(number);
    ASSERT_TRUE(text);
    EXPECT_EQ(read<double>(*text), number) << *text;
  }
}

TEST(JsonText, IntegersHaveNoPoint) {
  EXPECT_EQ(jsonText(std::uint64_t{18446744073709551615U}), "18446744073709551615");
  EXPECT_EQ(jsonText(std::int64_t{-5}), "-5");
}

TEST(JsonText, KeepsTheOrderOfKeys) {
  EXPECT_EQ(jsonText(ordered_json{{"z", 1}, {"a", 2}, {"m", 3}}), R"({"z":1,"a":2,"m":3})");
}

TEST(JsonText, FailsForInfiniteNumbersAtAnyDepth) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(jsonText(infinity));
  EXPECT_FALSE(jsonText(-infinity));
  EXPECT_FALSE(jsonText(none));
  EXPECT_FALSE(jsonText(ordered_json{{"a", {1, 2, {{"b", none}}}}}));
}

TEST(JsonText, RepairsBadUtf8InValuesAndKeys) {
  EXPECT_EQ(jsonText(ordered_json{{"k\xFF", "v\xC3"}}), "{\"k\uFFFD\":\"v\uFFFD\"}");
}

}  // namespace
}  // namespace korvantis
