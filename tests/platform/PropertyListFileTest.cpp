#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/linux/PropertyListFile.h"
#include "support/CommaLocale.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

std::string repeated(std::string_view piece, int times) {
  std::string text;
  for (int time = 0; time < times; ++time) text += piece;
  return text;
}

/// A file in XML form around the elements of its map.
std::string xml(const std::string& elements) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n<dict>" +
         elements + "</dict>\n</plist>\n";
}

/// Puts a file in binary form together out of its objects, the first of which is the top.
class BinaryFile {
 public:
  explicit BinaryFile(std::vector<std::string> parts) : objects(std::move(parts)) {}

  /// Bytes of each reference from object to object.
  static constexpr unsigned referenceSize = 2;

  /// A list or a map (`kind` 0xA0 or 0xD0) of references, fewer than 15 entries.
  static std::string container(unsigned kind, const std::vector<unsigned>& references) {
    const std::size_t count = kind == 0xD0 ? references.size() / 2 : references.size();
    std::string bytes(1, static_cast<char>(kind | count));
    for (const unsigned reference : references) bytes += bigEndian(reference, referenceSize);
    return bytes;
  }

  static std::string text(const std::string& text) {
    return static_cast<char>(0x50 | text.size()) + text;
  }

  static std::string bigEndian(std::uint64_t value, unsigned size) {
    std::string bytes;
    for (unsigned left = size; left > 0; --left) {
      bytes += static_cast<char>(value >> (8 * (left - 1)) & 0xFFU);
    }
    return bytes;
  }

  std::string bytes() const {
    std::string file = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
      offsets += bigEndian(file.size(), 4);
      file += object;
    }
    const std::size_t table = file.size();
    file += offsets + std::string(6, '\0') + '\x04' + static_cast<char>(referenceSize);
    return file + bigEndian(objects.size(), 8) + bigEndian(0, 8) + bigEndian(table, 8);
  }

 private:
  std::vector<std::string> objects;
};

/// A map with the one key "k" in front of further objects; the value is object 2.
std::string binaryMapOf(const std::vector<std::string>& values) {
  std::vector<std::string> objects{BinaryFile::container(0xD0, {1, 2}), BinaryFile::text("k")};
  objects.insert(objects.end(), values.begin(), values.end());
  return BinaryFile(objects).bytes();
}

class PropertyListFile : public testing::Test {
 protected:
  std::optional<PropertyMap> readBytes(std::string_view bytes) {
    return readPropertyListFile(folder.write("Info.plist", bytes));
  }

  /// The one value of a map in XML form.
  std::optional<PropertyValue> valueOf(const std::string& element) {
    return valueIn(xml("<key>k</key>" + element));
  }

  /// The value under "k".
  std::optional<PropertyValue> valueIn(std::string_view bytes) {
    const auto map = readBytes(bytes);
    if (!map || map->count("k") == 0) return std::nullopt;
    return map->at("k");
  }

  test::TemporaryFolder folder;
};

template <typename Value>
PropertyValue property(Value value) {
  return PropertyValue{std::move(value)};
}

PropertyValue text(const char* value) {
  return property(std::string(value));
}

TEST_F(PropertyListFile, XmlFormGivesEveryKindOfValue) {
  const auto map =
      readBytes(xml("<key>CFBundleIdentifier</key><string>org.example.app</string>"
                    "<key>yes</key><true/><key>no</key><false/>"
                    "<key>whole</key><integer>42</integer><key>real</key><real>1.5</real>"
                    "<key>bytes</key><data>AAEC/w==</data>"
                    "<key>list</key><array><string>a</string><integer>1</integer></array>"
                    "<key>map</key><dict><key>inner</key><string>b</string></dict>"));
  const PropertyMap expected{
      {"CFBundleIdentifier", text("org.example.app")},
      {"yes", property(true)},
      {"no", property(false)},
      {"whole", property(std::int64_t{42})},
      {"real", property(1.5)},
      {"bytes", property(PropertyValue::Bytes{0, 1, 2, 255})},
      {"list", property(PropertyValue::List{text("a"), property(std::int64_t{1})})},
      {"map", property(PropertyMap{{"inner", text("b")}})}};
  EXPECT_EQ(map, expected);
}

TEST_F(PropertyListFile, BinaryFormGivesTheSameValues) {
  const std::string real = std::string("\x23") + BinaryFile::bigEndian(0x3FF8000000000000, 8);
  const auto map = readBytes(
      BinaryFile({BinaryFile::container(0xD0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
                  BinaryFile::text("CFBundleIdentifier").replace(0, 1, std::string("\x5F\x10\x12")),
                  BinaryFile::text("yes"), BinaryFile::text("whole"), BinaryFile::text("real"),
                  BinaryFile::text("list"), BinaryFile::text("bytes"),
                  BinaryFile::text("org.example"), "\x09", std::string("\x11\x01\x00", 3), real,
                  BinaryFile::container(0xA0, {2, 8}), std::string("\x42\x00\xFF", 3)})
          .bytes());
  const PropertyMap expected{{"CFBundleIdentifier", text("org.example")},
                             {"yes", property(true)},
                             {"whole", property(std::int64_t{256})},
                             {"real", property(1.5)},
                             {"list", property(PropertyValue::List{text("yes"), property(true)})},
                             {"bytes", property(PropertyValue::Bytes{0, 255})}};
  EXPECT_EQ(map, expected);
}

TEST_F(PropertyListFile, EmptyMapIsAMap) {
  EXPECT_EQ(readBytes(xml("")), PropertyMap());
  EXPECT_EQ(readBytes("<plist><dict/></plist>"), PropertyMap());
  EXPECT_EQ(readBytes(BinaryFile({"\xD0"}).bytes()), PropertyMap());
}

TEST_F(PropertyListFile, TopLevelThatIsNoMapIsAbsent) {
  for (const char* element : {"<array/>", "<string>a</string>", "<integer>1</integer>", "<true/>",
                              "<array><dict/></array>"}) {
    EXPECT_FALSE(readBytes("<plist>" + std::string(element) + "</plist>")) << element;
  }
  EXPECT_FALSE(readBytes(BinaryFile({"\xA0"}).bytes()));
  EXPECT_FALSE(readBytes(BinaryFile({BinaryFile::text("a")}).bytes()));
}

TEST_F(PropertyListFile, SignedIntegersKeepTheirSign) {
  EXPECT_EQ(valueOf("<integer>-1</integer>"), property(std::int64_t{-1}));
  EXPECT_EQ(valueOf("<integer>-9223372036854775808</integer>"),
            property(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(valueOf("<integer>9223372036854775807</integer>"),
            property(std::numeric_limits<std::int64_t>::max()));
  EXPECT_EQ(valueIn(binaryMapOf({"\x13" + BinaryFile::bigEndian(~std::uint64_t{1}, 8)})),
            property(std::int64_t{-2}));
}

TEST_F(PropertyListFile, IntegersAboveTheSignedRangeAreRealNumbers) {
  EXPECT_EQ(valueOf("<integer>18446744073709551615</integer>"), property(18446744073709551616.0));
  EXPECT_EQ(valueOf("<integer>9223372036854775808</integer>"), property(9223372036854775808.0));
  const std::string wide = "\x14" + BinaryFile::bigEndian(0, 8);
  EXPECT_EQ(valueIn(binaryMapOf({wide + BinaryFile::bigEndian(~std::uint64_t{0}, 8)})),
            property(18446744073709551616.0));
  EXPECT_EQ(valueIn(binaryMapOf({wide + BinaryFile::bigEndian(7, 8)})), property(std::int64_t{7}));
}

TEST_F(PropertyListFile, DatesAreSecondsSince1970) {
  EXPECT_EQ(valueOf("<date>2001-01-01T00:00:01Z</date>"), property(978307201.0));
  EXPECT_EQ(valueOf("<date>1970-01-01T00:00:00Z</date>"), property(0.0));
  EXPECT_EQ(valueOf("<date>1969-12-31T23:59:50Z</date>"), property(-10.0));
  EXPECT_EQ(valueOf("<date>2024-02-29T12:00:00Z</date>"), property(1709208000.0));
}

TEST_F(PropertyListFile, DatesKeepTheirFractionOnEitherSideOf2001) {
  const auto date = [this](std::uint64_t bits) {
    return valueIn(binaryMapOf({"\x33" + BinaryFile::bigEndian(bits, 8)}));
  };
  EXPECT_EQ(date(0x3FF8000000000000), property(978307201.5));  // 1.5 after
  EXPECT_EQ(date(0xBFF8000000000000), property(978307198.5));  // 1.5 before
}

TEST_F(PropertyListFile, ValuesWithoutAFormOfTheirOwnAreLeftOut) {
  const auto map = readBytes(
      xml("<key>far</key><date>2100-01-01T00:00:00Z</date><key>near</key><string>kept</string>"
          "<key>list</key><array><date>2100-01-01T00:00:00Z</date><true/></array>"));
  const PropertyMap expected{{"near", text("kept")},
                             {"list", property(PropertyValue::List{property(true)})}};
  EXPECT_EQ(map, expected);
  // An archiver's reference in binary form.
  EXPECT_EQ(readBytes(binaryMapOf({std::string("\x80\x01")})), PropertyMap());
}

TEST_F(PropertyListFile, LastOfRepeatedKeysCounts) {
  EXPECT_EQ(readBytes(xml("<key>a</key><string>1</string><key>a</key><string>2</string>")),
            (PropertyMap{{"a", text("2")}}));
}

TEST_F(PropertyListFile, TextsAreUtf8WithEntitiesCommentsAndCdataResolved) {
  EXPECT_EQ(valueOf("<string>Caf\xC3\xA9 &amp; &lt;b&gt; &#233; &#x1F600;</string>"),
            text("Caf\xC3\xA9 & <b> \xC3\xA9 \xF0\x9F\x98\x80"));
  EXPECT_EQ(valueOf("<string>a<!-- no --><![CDATA[<b>]]></string>"), text("a<b>"));
  EXPECT_EQ(valueIn(binaryMapOf({std::string("\x62\x00\xE9\x00\x41", 5)})), text("\xC3\xA9"
                                                                                 "A"));
}

TEST_F(PropertyListFile, TextThatIsNoUtf8MakesTheFileDamaged) {
  EXPECT_FALSE(readBytes(xml("<key>k</key><string>\xFF</string>")));
  EXPECT_FALSE(readBytes(xml("<key>k</key><string>&#xD800;</string>")));
  EXPECT_FALSE(readBytes(xml("<key>\xC3</key><string>a</string>")));
  EXPECT_FALSE(readBytes(xml("<key>k</key><array><string>\xC0\x80</string></array>")));
  EXPECT_FALSE(readBytes(binaryMapOf({BinaryFile::text("\xE9")})));
}

TEST_F(PropertyListFile, ByteOrderMarkIsPassedOver) {
  EXPECT_EQ(readBytes("\xEF\xBB\xBF" + xml("<key>k</key><true/>")),
            (PropertyMap{{"k", property(true)}}));
}

TEST_F(PropertyListFile, DamagedXmlIsAbsent) {
  for (const char* bytes :
       {"", "hello", "<plist>", "<plist><dict>", "<plist><dict><key>a</key><string>b",
        "<plist><dict><key>a</key><string>b</string></dict>", "<plist></dict></plist>",
        "<plist><dict><string>a</string></dict></plist>", "<plist><wrong/></plist>",
        "<plist><dict><key>a</key><string>&bad;</string></dict></plist>", "{\"a\": 1}",
        "\xFF\xFE"}) {
    EXPECT_FALSE(readBytes(bytes)) << bytes;
  }
}

TEST_F(PropertyListFile, BinaryFormCutAnywhereIsAbsent) {
  const std::string bytes = binaryMapOf({BinaryFile::text("value")});
  ASSERT_EQ(valueIn(bytes), text("value"));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(readBytes(std::string_view(bytes).substr(0, length))) << length;
  }
}

TEST_F(PropertyListFile, BinaryFormWithAnyByteChangedNeverCrashes) {
  const std::string bytes = binaryMapOf(
      {BinaryFile::container(0xA0, {3, 4}), BinaryFile::text("one"), std::string("\x10\x07")});
  ASSERT_TRUE(readBytes(bytes));
  int absent = 0;
  for (std::size_t position = 0; position < bytes.size(); ++position) {
    for (const unsigned byte : {0x00U, 0x01U, 0x0FU, 0x5FU, 0xA2U, 0xAFU, 0xD1U, 0xDFU, 0xFFU}) {
      std::string damaged = bytes;
      damaged[position] = static_cast<char>(byte);
      absent += readBytes(damaged) ? 0 : 1;
    }
  }
  EXPECT_GT(absent, 0);
}

TEST_F(PropertyListFile, ModestNestingIsReadAndDeepNestingIsAbsent) {
  const auto nested = [](int levels) {
    return xml("<key>k</key>" + repeated("<array>", levels) + repeated("</array>", levels));
  };
  EXPECT_TRUE(readBytes(nested(100)));
  EXPECT_FALSE(readBytes(nested(200)));
  EXPECT_FALSE(readBytes(nested(9999)));
  EXPECT_FALSE(readBytes(nested(250000)));
  EXPECT_FALSE(readBytes(xml("<key>k</key>" + repeated("<array><!--</array>-->", 100000))));
}

TEST_F(PropertyListFile, DeepNestingInBinaryFormIsAbsent) {
  const auto nested = [](unsigned levels) {
    std::vector<std::string> values;
    for (unsigned level = 1; level < levels; ++level) {
      values.push_back(BinaryFile::container(0xA0, {level + 2}));
    }
    values.push_back(BinaryFile::container(0xA0, {}));
    return binaryMapOf(values);
  };
  EXPECT_TRUE(readBytes(nested(100)));
  EXPECT_FALSE(readBytes(nested(200)));
  EXPECT_FALSE(readBytes(nested(60000)));
}

TEST_F(PropertyListFile, ObjectThatHoldsItselfIsAbsent) {
  EXPECT_FALSE(readBytes(binaryMapOf({BinaryFile::container(0xA0, {2})})));
  EXPECT_FALSE(readBytes(binaryMapOf({BinaryFile::container(0xA0, {0})})));
}

TEST_F(PropertyListFile, SmallFileThatUnfoldsToBillionsOfValuesIsAbsent) {
  std::vector<std::string> values;
  for (unsigned level = 0; level < 40; ++level) {
    values.push_back(BinaryFile::container(0xA0, {level + 3, level + 3}));
  }
  values.push_back(BinaryFile::text("x"));
  EXPECT_FALSE(readBytes(binaryMapOf(values)));
  // Sharing as such is how this form is made.
  values.erase(values.begin(), values.begin() + 37);
  for (unsigned level = 0; level < 3; ++level) {
    values[level] = BinaryFile::container(0xA0, {level + 3, level + 3});
  }
  EXPECT_TRUE(readBytes(binaryMapOf(values)));
}

TEST_F(PropertyListFile, SmallFileThatUnfoldsToManyLongTextsIsAbsent) {
  const std::string longText =
      "\x5F\x12" + BinaryFile::bigEndian(1000000, 4) + std::string(1000000, 'x');
  const auto shared = [&](std::size_t times) {
    const std::string references = repeated(BinaryFile::bigEndian(3, 2), static_cast<int>(times));
    return binaryMapOf({"\xAF\x11" + BinaryFile::bigEndian(times, 2) + references, longText});
  };
  EXPECT_TRUE(readBytes(shared(20)));
  EXPECT_FALSE(readBytes(shared(100)));
}

TEST_F(PropertyListFile, FileAboveFourMebibytesIsAbsent) {
  const std::string whole = xml("<key>k</key><true/>");
  const std::size_t most = std::size_t{4} << 20U;
  EXPECT_TRUE(readBytes(std::string(most - whole.size(), ' ') + whole));
  EXPECT_FALSE(readBytes(std::string(most - whole.size() + 1, ' ') + whole));
}

TEST_F(PropertyListFile, MissingFileFolderAndBrokenLinkAreAbsent) {
  folder.link("broken", folder.path("nowhere"));
  EXPECT_FALSE(readPropertyListFile(folder.path("missing.plist")));
  EXPECT_FALSE(readPropertyListFile(folder.path("missing/Info.plist")));
  EXPECT_FALSE(readPropertyListFile(folder.path()));
  EXPECT_FALSE(readPropertyListFile(folder.path("broken")));
  EXPECT_FALSE(readPropertyListFile(""));
  EXPECT_FALSE(readPropertyListFile("/dev/zero"));
}

TEST_F(PropertyListFile, PipeIsAbsentAndDoesNotBlock) {
  const std::string pipe = folder.path("pipe.plist");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(readPropertyListFile(pipe));
}

TEST_F(PropertyListFile, LinkToAFileIsFollowed) {
  folder.write("real.plist", xml("<key>k</key><true/>"));
  folder.link("Info.plist", "real.plist");
  EXPECT_TRUE(readPropertyListFile(folder.path("Info.plist")));
}

TEST_F(PropertyListFile, RealNumbersHaveAPointInALocaleThatWritesAComma) {
  const test::CommaLocale comma;
  if (!comma.isSet()) GTEST_SKIP() << "this machine can't make a German locale";
  EXPECT_EQ(valueOf("<real>1.5</real>"), property(1.5));
}

TEST_F(PropertyListFile, PrintsNothingAboutDamage) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  readBytes("<plist><dict><key>a</key><string>b");
  readBytes("hello");
  readBytes(binaryMapOf({"\xFF"}));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(PropertyListFile, ConcurrentReadersAllGetTheWholeMap) {
  const std::string bytes =
      xml("<key>k</key><real>1.5</real><key>t</key><string>\xC3\xA9</string>");
  const std::string path = folder.write("Info.plist", bytes);
  const auto expected = readPropertyListFile(path);
  ASSERT_TRUE(expected);
  std::vector<int> matches(4);
  std::vector<std::thread> readers;
  for (int& count : matches) {
    readers.emplace_back([&] {
      for (int time = 0; time < 100; ++time) count += readPropertyListFile(path) == expected;
    });
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(matches, (std::vector<int>{100, 100, 100, 100}));
}

}  // namespace
}  // namespace korvantis
