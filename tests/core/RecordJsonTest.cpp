#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "AllRecords.h"
#include "FilledRecord.h"
#include "core/JsonValue.h"
#include "core/RecordJson.h"

/// The rules of the JSON form, each for every record and every one of its fields.
namespace korvantis {
namespace {

using Json = nlohmann::ordered_json;
using test::filledRecord;

/// The JSON object of a filled record.
template <typename Record>
Json filledObject() {
  return toJson(filledRecord<Record>());
}

/// What the rules of the form are for one field, whatever its type.
struct FieldRule {
  std::string key;
  bool isOptional = false;
  bool isList = false;
  /// JSON values that it must refuse.
  std::vector<Json> wrong;
};

template <typename Value>
std::vector<Json> wrongValues() {
  constexpr bool isNumber = std::is_same_v<Value, double> || std::is_same_v<Value, Instant>;
  constexpr bool isLevel = std::is_same_v<Value, MemoryPressureLevel>;
  std::vector<Json> wrong{Json::array({nullptr}), Json::object({{"unknown", 1}})};
  if (!std::is_same_v<Value, bool>) wrong.emplace_back(true);
  if (!std::is_same_v<Value, std::string>) wrong.emplace_back("3");
  if (!isNumber) wrong.emplace_back(2.5);
  if (!isNumber && !Integer<Value>) wrong.emplace_back(isLevel ? 3 : 1);
  if constexpr (Integer<Value>) {
    wrong.emplace_back(1e300);
    wrong.push_back(Json::parse("18446744073709551616"));
    if (std::is_signed_v<Value>) wrong.emplace_back(std::numeric_limits<std::uint64_t>::max());
    if (!std::is_signed_v<Value>) wrong.emplace_back(-1);
  }
  return wrong;
}

template <typename Value>
struct Rules {
  static FieldRule of(std::string_view key) {
    return {std::string(key), false, isList<Value>, wrongValues<Value>()};
  }
};

template <typename Value>
struct Rules<std::optional<Value>> {
  static FieldRule of(std::string_view key) {
    return {std::string(key), true, false, wrongValues<Value>()};
  }
};

template <typename Owner, typename Value>
FieldRule ruleOf(const Field<Owner, Value>& field) {
  return Rules<Value>::of(field.key);
}

/// The rules of all fields of a record, in their order.
template <typename Record>
std::vector<FieldRule> rulesOf() {
  const auto all = [](const auto&... fields) { return std::vector<FieldRule>{ruleOf(fields)...}; };
  return std::apply(all, Record::fields());
}

/// Puts a number into a field that is, may be or lists a double; false for all other fields.
template <typename Value>
bool putNumber(Value& value, double number) {
  if constexpr (std::is_same_v<Value, double> || std::is_same_v<Value, std::optional<double>>) {
    value = number;
  } else if constexpr (std::is_same_v<Value, std::vector<double>>) {
    value = {1, number};
  } else if constexpr (std::is_same_v<Value, Instant> ||
                       std::is_same_v<Value, std::optional<Instant>>) {
    value = Instant{number};
  } else {
    return false;
  }
  return true;
}

template <typename Record>
class RecordJson : public testing::Test {};

TYPED_TEST_SUITE(RecordJson, test::AllRecords);

TYPED_TEST(RecordJson, FilledRecordRoundTrips) {
  const auto record = filledRecord<TypeParam>();
  const auto text = encodeJson(record);
  ASSERT_TRUE(text);
  EXPECT_EQ(decodeJson<TypeParam>(*text), record);
}

TYPED_TEST(RecordJson, DefaultRecordRoundTrips) {
  const TypeParam record;
  const auto text = encodeJson(record);
  ASSERT_TRUE(text);
  EXPECT_EQ(decodeJson<TypeParam>(*text), record);
}

TYPED_TEST(RecordJson, KeysOfAFilledRecordAreItsFieldsInOrder) {
  std::vector<std::string> keys;
  std::vector<std::string> fields;
  const Json object = Json::parse(encodeJson(filledRecord<TypeParam>()).value());
  for (const auto& entry : object.items()) keys.push_back(entry.key());
  for (const FieldRule& rule : rulesOf<TypeParam>()) fields.push_back(rule.key);
  EXPECT_EQ(keys, fields);
}

TYPED_TEST(RecordJson, AbsentOptionalsAreLeftOutAndEmptyListsAreNot) {
  const Json object = Json::parse(encodeJson(TypeParam()).value());
  for (const FieldRule& rule : rulesOf<TypeParam>()) {
    EXPECT_EQ(object.contains(rule.key), !rule.isOptional) << rule.key;
    if (rule.isList) {
      EXPECT_EQ(object.at(rule.key), Json::array()) << rule.key;
    }
  }
}

TYPED_TEST(RecordJson, MissingKeyIsAnAbsentOptionalAndFailsElsewhere) {
  for (const FieldRule& rule : rulesOf<TypeParam>()) {
    Json object = filledObject<TypeParam>();
    object.erase(rule.key);
    const auto decoded = decodeJson<TypeParam>(object.dump());
    EXPECT_EQ(decoded.has_value(), rule.isOptional) << rule.key;
    // All other fields keep what they had.
    if (decoded) {
      EXPECT_EQ(toJson(*decoded), object) << rule.key;
    }
  }
}

TYPED_TEST(RecordJson, NullIsAnAbsentOptionalAndFailsElsewhere) {
  for (const FieldRule& rule : rulesOf<TypeParam>()) {
    Json object = filledObject<TypeParam>();
    object[rule.key] = nullptr;
    const auto decoded = decodeJson<TypeParam>(object.dump());
    EXPECT_EQ(decoded.has_value(), rule.isOptional) << rule.key;
    object.erase(rule.key);
    if (decoded) {
      EXPECT_EQ(toJson(*decoded), object) << rule.key;
    }
  }
}

TYPED_TEST(RecordJson, WrongTypeOrRangeOfAnyKeyFails) {
  const Json filled = filledObject<TypeParam>();
  for (const FieldRule& rule : rulesOf<TypeParam>()) {
    for (const Json& wrong : rule.wrong) {
      Json object = filled;
      object[rule.key] = wrong;
      EXPECT_FALSE(decodeJson<TypeParam>(object.dump())) << rule.key << " " << wrong;
    }
  }
}

TYPED_TEST(RecordJson, UnknownKeysArePassedOver) {
  Json object = filledObject<TypeParam>();
  object["somethingNew"] = Json::object({{"deep", {1, 2, 3}}});
  EXPECT_EQ(decodeJson<TypeParam>(object.dump()), filledRecord<TypeParam>());
}

TYPED_TEST(RecordJson, KeysMayComeInAnyOrder) {
  const Json object = filledObject<TypeParam>();
  Json reversed = Json::object();
  for (auto entry = object.rbegin(); entry != object.rend(); ++entry) {
    reversed[entry.key()] = *entry;
  }
  EXPECT_EQ(decodeJson<TypeParam>(reversed.dump()), filledRecord<TypeParam>());
}

TYPED_TEST(RecordJson, TopLevelThatIsNoObjectFails) {
  for (const char* text : {"", " ", "[]", "null", "1", "true", "\"text\"", "[{}]", "{", "{}}",
                           "{\"a\":}", "nonsense", "\xEF\xBB\xBF"}) {
    EXPECT_FALSE(decodeJson<TypeParam>(text)) << text;
  }
  EXPECT_FALSE(decodeJson<TypeParam>("[" + filledObject<TypeParam>().dump() + "]"));
}

TYPED_TEST(RecordJson, TextCutAnywhereFails) {
  const std::string text = filledObject<TypeParam>().dump();
  const std::size_t step = text.size() / 200 + 1;
  for (std::size_t length = 0; length < text.size(); length += step) {
    ASSERT_FALSE(decodeJson<TypeParam>(text.substr(0, length))) << length;
  }
}

TYPED_TEST(RecordJson, InfiniteNumberOrNoneInAnyFieldFailsTheEncoding) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  for (const double number : {infinity, -infinity, none}) {
    const auto check = [number](const auto& field) {
      TypeParam record;
      if (putNumber(record.*field.member, number)) {
        EXPECT_FALSE(encodeJson(record)) << field.key;
      }
    };
    std::apply([&](const auto&... fields) { (check(fields), ...); }, TypeParam::fields());
  }
}

}  // namespace
}  // namespace korvantis
