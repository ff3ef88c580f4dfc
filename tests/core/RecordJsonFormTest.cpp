#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "AllRecords.h"
#include "core/JsonValue.h"
#include "core/RecordJson.h"

/// The JSON form at work: single records, written out.
namespace korvantis {
namespace {

std::string repeated(const std::string& piece, int times) {
  std::string text;
  for (int time = 0; time < times; ++time) text += piece;
  return text;
}

TEST(RecordJsonForm, SensorItemIsWrittenOnOneLine) {
  const SensorItem sensor{.name = "Die 1", .group = "CPU", .celsius = 41.25};
  EXPECT_EQ(encodeJson(sensor), R"({"name":"Die 1","group":"CPU","celsius":41.25})");
}

TEST(RecordJsonForm, SystemSampleWithNoBatteryHasNoBatteryKeyAndDecodesBackEqual) {
  const SystemSample sample;
  const auto text = encodeJson(sample);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->find("\"battery\""), std::string::npos);
  EXPECT_NE(text->find("\"perCoreCPUPercent\":[]"), std::string::npos);
  EXPECT_EQ(decodeJson<SystemSample>(*text), sample);
}

TEST(RecordJsonForm, MemoryPressureIsTheNumberOfItsLevel) {
  SystemSample sample;
  sample.memoryPressure = MemoryPressureLevel::critical;
  const auto text = encodeJson(sample);
  ASSERT_TRUE(text);
  EXPECT_NE(text->find("\"memoryPressure\":4,"), std::string::npos);
}

TEST(RecordJsonForm, EnumerationsAreTheTextOfTheirRawValue) {
  const QuitSafetyResult result{
      .verdict = QuitSafetyVerdictKind::doNot, .reason = "r", .freedPorts = {80, 8080}};
  EXPECT_EQ(encodeJson(result),
            R"({"verdict":"do_not","reason":"r","freedMemoryBytes":0,"freedPorts":[80,8080]})");
}

TEST(RecordJsonForm, RawValueOutsideTheTableFailsTheWholeRecord) {
  const auto decoded = [](const std::string& verdict) {
    return decodeJson<QuitSafetyResult>(R"({"verdict":")" + verdict +
                                        R"(","reason":"","freedMemoryBytes":0,"freedPorts":[]})");
  };
  EXPECT_TRUE(decoded("ask_first"));
  EXPECT_FALSE(decoded("askFirst"));
  EXPECT_FALSE(decoded("SAFE"));
  EXPECT_FALSE(decoded(""));
}

TEST(RecordJsonForm, RawValueOutsideTheTableInsideAListFailsTheWholeRecord) {
  auto text = encodeJson(EngineSnapshot()).value();
  const std::string empty = "\"activeStrains\":[]";
  const auto at = text.find(empty);
  ASSERT_NE(at, std::string::npos);
  std::string good = text;
  good.replace(at, empty.size(), R"("activeStrains":["cpu","battery"])");
  EXPECT_EQ(decodeJson<EngineSnapshot>(good).value().activeStrains,
            (std::vector{StrainKind::cpu, StrainKind::battery}));
  text.replace(at, empty.size(), R"("activeStrains":["cpu","CPU"])");
  EXPECT_FALSE(decodeJson<EngineSnapshot>(text));
}

TEST(RecordJsonForm, DamageDeepInsideFailsTheWholeRecord) {
  EngineSnapshot snapshot;
  snapshot.appGroups.resize(2);
  snapshot.appGroups[1].processes.resize(1);
  auto json = toJson(snapshot);
  EXPECT_EQ(fromJson<EngineSnapshot>(json), snapshot);
  json["appGroups"][1]["processes"][0].erase("pid");
  EXPECT_FALSE(fromJson<EngineSnapshot>(json));
}

TEST(RecordJsonForm, InfiniteNumberDeepInsideFailsTheWholeEncoding) {
  EngineSnapshot snapshot;
  snapshot.appGroups.resize(1);
  snapshot.appGroups[0].processes.resize(1);
  EXPECT_TRUE(encodeJson(snapshot));
  snapshot.appGroups[0].processes[0].cpuPercent = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(encodeJson(snapshot));
}

TEST(RecordJsonForm, ComputedFiguresAreNotWritten) {
  const std::string process = encodeJson(ProcessSample()).value();
  const std::string summary = encodeJson(HistoricalAppSummary()).value();
  EXPECT_EQ(process.find("servicePorts"), std::string::npos);
  EXPECT_EQ(summary.find("averageMemoryBytes"), std::string::npos);
  EXPECT_EQ(summary.find("energyWattHours"), std::string::npos);
}

TEST(RecordJsonForm, LargestIntegersStayExact) {
  MountedVolume volume;
  volume.totalBytes = std::numeric_limits<std::uint64_t>::max();
  const auto text = encodeJson(volume).value();
  EXPECT_NE(text.find("\"totalBytes\":18446744073709551615,"), std::string::npos);
  EXPECT_EQ(decodeJson<MountedVolume>(text), volume);
}

TEST(RecordJsonForm, InstantIsSecondsSince1970AndUuidItsText) {
  Insight insight;
  insight.id.bytes.fill(0xAB);
  insight.createdAt = Instant{1700000000.5};
  const auto text = encodeJson(insight).value();
  EXPECT_NE(text.find("\"id\":\"ABABABAB-ABAB-ABAB-ABAB-ABABABABABAB\""), std::string::npos);
  EXPECT_NE(text.find("\"createdAt\":1700000000.5"), std::string::npos);
  EXPECT_EQ(decodeJson<Insight>(text), insight);
}

TEST(RecordJsonForm, BadUtf8IsWrittenAsReplacementCharacters) {
  SensorItem sensor{.name =
                        "a\xFF"
                        "b\xC3",
                    .group = "\xED\xA0\x80",
                    .celsius = 0};
  const auto text = encodeJson(sensor);
  ASSERT_TRUE(text);
  const auto decoded = decodeJson<SensorItem>(*text);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->name, "a\uFFFDb\uFFFD");
  EXPECT_EQ(decoded->group, "\uFFFD\uFFFD\uFFFD");
}

TEST(RecordJsonForm, BadUtf8FailsTheDecoding) {
  const std::string text = R"({"name":"a","group":"g","celsius":1})";
  EXPECT_TRUE(decodeJson<SensorItem>(text));
  for (const char* bad : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\\uD800"}) {
    std::string damaged = text;
    damaged.replace(damaged.find("\"a\"") + 1, 1, bad);
    EXPECT_FALSE(decodeJson<SensorItem>(damaged));
  }
}

TEST(RecordJsonForm, LastOfRepeatedKeysCounts) {
  const auto decoded = decodeJson<SensorItem>(R"({"name":"a","group":"g","celsius":1,"name":"b"})");
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->name, "b");
}

TEST(RecordJsonForm, NumberBeyondEveryDoubleFailsTheDecoding) {
  EXPECT_TRUE(decodeJson<SensorItem>(R"({"name":"a","group":"g","celsius":1e308})"));
  EXPECT_FALSE(decodeJson<SensorItem>(R"({"name":"a","group":"g","celsius":1e309})"));
  EXPECT_FALSE(decodeJson<SensorItem>(R"({"name":"a","group":"g","celsius":NaN})"));
}

TEST(RecordJsonForm, DeepNestingOverflowsNoStack) {
  constexpr int levels = 200000;
  const std::string lists = repeated("[", levels) + repeated("]", levels);
  const std::string objects = repeated("{\"a\":", levels) + "1" + repeated("}", levels);
  EXPECT_FALSE(decodeJson<SensorItem>(lists));
  EXPECT_FALSE(decodeJson<SensorItem>(objects));
  EXPECT_FALSE(decodeJson<SensorItem>(repeated("[", levels)));
  EXPECT_TRUE(decodeJson<SensorItem>(R"({"name":"a","group":"g","celsius":1,"x":)" + lists + "}"));
}

TEST(RecordJsonForm, HundredThousandUnknownKeysArePassedOver) {
  std::string text = R"({"name":"a","group":"g","celsius":1)";
  for (int key = 0; key < 100000; ++key) text += ",\"" + std::to_string(key) + "\":0";
  EXPECT_TRUE(decodeJson<SensorItem>(text + "}"));
}

}  // namespace
}  // namespace korvantis
