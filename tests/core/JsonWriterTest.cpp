#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "core/JsonWriter.h"
#include "core/StrainKind.h"

namespace korvantis {
namespace {

std::string textOf(JsonWriter& writer) {
  return writer.takeText().value_or("no JSON form");
}

TEST(JsonWriter, WritesAnObjectWithEveryKindOfValueInTheOrderGiven) {
  JsonWriter json;
  json.beginObject();
  json.member("z", "literal");
  json.member("a", std::string("text"));
  json.member("flag", true);
  json.member("number", 1.0);
  json.member("small", std::uint16_t{65535});
  json.member("least", std::numeric_limits<std::int64_t>::min());
  json.member("most", std::numeric_limits<std::uint64_t>::max());
  json.member("strain", StrainKind::neuralEngine);
  json.key("none");
  json.null();
  json.endObject();
  EXPECT_EQ(textOf(json), R"({"z":"literal","a":"text","flag":true,"number":1.0,"small":65535,)"
                          R"("least":-9223372036854775808,"most":18446744073709551615,)"
                          R"("strain":"neuralEngine","none":null})");
}

TEST(JsonWriter, CommasStandBetweenElementsAndNowhereElse) {
  JsonWriter json;
  json.beginList();
  json.beginObject();
  json.endObject();
  json.beginObject();
  json.member("list", std::vector<int>{});
  json.member("lists", std::vector<std::vector<int>>{{1, 2}, {}, {3}});
  json.endObject();
  json.beginList();
  json.endList();
  json.value(false);
  json.endList();
  EXPECT_EQ(textOf(json), R"([{},{"list":[],"lists":[[1,2],[],[3]]},[],false])");
}

TEST(JsonWriter, KeysAndTextsAreEscapedAndRepaired) {
  JsonWriter json;
  json.beginObject();
  json.member("a\"b", "tab\t\x01 \\ ünï");
  json.member("bad\xFF", "cut \xE2\x82");
  json.endObject();
  EXPECT_EQ(textOf(json), "{\"a\\\"b\":\"tab\\t\\u0001 \\\\ ünï\",\"bad\uFFFD\":\"cut \uFFFD\"}");
}

TEST(JsonWriter, ATextLongerThanTheRoomIsWrittenWhole) {
  const std::string longText(100'000, 'x');
  JsonWriter json;
  json.value(std::vector<std::string>{longText, "\n" + longText});
  EXPECT_EQ(textOf(json), "[\"" + longText + "\",\"\\n" + longText + "\"]");
}

TEST(JsonWriter, ANumberWithoutAFormLeavesNoText) {
  for (const double number : {std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(), std::nan("")}) {
    JsonWriter json;
    json.beginList();
    json.value(number);
    json.value(1.5);
    json.endList();
    EXPECT_FALSE(json.takeText());
  }
}

}  // namespace
}  // namespace korvantis
