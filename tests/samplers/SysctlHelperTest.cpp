#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "samplers/SysctlHelper.h"

namespace korvantis {
namespace {

/// Figures by name, byte by byte.
struct ScriptedFigures {
  std::map<std::string, std::string> bytesByName;
  bool failsSecondCall = false;
  int callsMade = 0;
  bool sawZeroedBuffer = true;

  SysctlCalls calls() {
    SysctlCalls result;
    result.sysctlbyname = [this](const char* name, void* oldValue, std::size_t* oldSize) {
      ++callsMade;
      const auto found = bytesByName.find(name);
      if (found == bytesByName.end()) return -1;
      const std::string& bytes = found->second;
      if (oldValue != nullptr) {
        if (failsSecondCall || bytes.size() > *oldSize) return -1;
        const std::string before(static_cast<const char*>(oldValue), *oldSize);
        sawZeroedBuffer = sawZeroedBuffer && before.find_first_not_of('\0') == std::string::npos;
        std::memcpy(oldValue, bytes.data(), bytes.size());
      }
      *oldSize = bytes.size();
      return 0;
    };
    return result;
  }

  std::optional<std::string> text(const std::string& bytes) {
    bytesByName["name"] = bytes;
    return SysctlHelper::string(calls(), "name");
  }
};

TEST(SysctlHelper, StringEndsAtTheFirstZeroByte) {
  ScriptedFigures figures;
  EXPECT_EQ(figures.text(std::string("chip\0rest\0", 10)), "chip");
  EXPECT_EQ(figures.callsMade, 2);
  EXPECT_TRUE(figures.sawZeroedBuffer);
}

TEST(SysctlHelper, StringWithoutAZeroByteIsTheWholeBuffer) {
  ScriptedFigures figures;
  EXPECT_EQ(figures.text("chip"), "chip");
}

TEST(SysctlHelper, StringIsTrimmedOfWhitespaceAndNewlines) {
  ScriptedFigures figures;
  EXPECT_EQ(figures.text(" \t\r\n A chip\v\f\n "), "A chip");
  EXPECT_EQ(figures.text("\xC2\xA0\xE3\x80\x80"
                         "chip\xE2\x80\xA8\xC2\x85"),
            "chip");
  EXPECT_EQ(figures.text(" \n"), "");
}

TEST(SysctlHelper, StringWithBadBytesIsRepaired) {
  ScriptedFigures figures;
  EXPECT_EQ(figures.text("chip\xFF"), "chip\xEF\xBF\xBD");
}

TEST(SysctlHelper, StringIsAbsentWhenItsSizeFails) {
  ScriptedFigures figures;
  EXPECT_EQ(SysctlHelper::string(figures.calls(), "unknown"), std::nullopt);
  EXPECT_EQ(figures.callsMade, 1);
}

TEST(SysctlHelper, StringIsAbsentWhenItsSizeIsBelowOne) {
  ScriptedFigures figures;
  EXPECT_EQ(figures.text(""), std::nullopt);
  EXPECT_EQ(figures.callsMade, 1);
}

TEST(SysctlHelper, StringIsAbsentWhenTheSecondCallFails) {
  ScriptedFigures figures;
  figures.failsSecondCall = true;
  EXPECT_EQ(figures.text("chip"), std::nullopt);
  EXPECT_EQ(figures.callsMade, 2);
}

TEST(SysctlHelper, Int32IsOneCallIntoFourBytes) {
  ScriptedFigures figures;
  figures.bytesByName["name"] = std::string("\xFE\xFF\xFF\xFF", 4);
  EXPECT_EQ(SysctlHelper::int32(figures.calls(), "name"), -2);
  EXPECT_EQ(figures.callsMade, 1);
  EXPECT_TRUE(figures.sawZeroedBuffer);
  figures.bytesByName["name"] = std::string(8, '\1');
  EXPECT_EQ(SysctlHelper::int32(figures.calls(), "name"), std::nullopt);
}

TEST(SysctlHelper, Int64IsOneCallIntoEightBytes) {
  ScriptedFigures figures;
  figures.bytesByName["name"] = std::string("\0\0\0\0\1\0\0\0", 8);
  EXPECT_EQ(SysctlHelper::int64(figures.calls(), "name"), std::int64_t{1} << 32);
  EXPECT_EQ(figures.callsMade, 1);
}

TEST(SysctlHelper, NumbersAreAbsentWhenTheCallFails) {
  ScriptedFigures figures;
  EXPECT_EQ(SysctlHelper::int32(figures.calls(), "unknown"), std::nullopt);
  EXPECT_EQ(SysctlHelper::int64(figures.calls(), "unknown"), std::nullopt);
}

}  // namespace
}  // namespace korvantis
