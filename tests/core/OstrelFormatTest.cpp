#include <csignal>
#include <gtest/gtest.h>
#include <limits>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "support/CommaLocale.h"

namespace korvantis {
namespace {

constexpr std::uint64_t kilobyte = 1024;
constexpr std::uint64_t megabyte = 1048576;
constexpr std::uint64_t gigabyte = 1073741824;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double none = std::numeric_limits<double>::quiet_NaN();

const testing::KilledBySignal aborted(SIGABRT);

using OstrelFormat::bytes;
using OstrelFormat::duration;
using OstrelFormat::rate;

TEST(OstrelFormat, BytesOfZeroIsZeroB) {
  EXPECT_EQ(bytes(0), "0 B");
}

TEST(OstrelFormat, BytesBelowOneKilobyteAreCounted) {
  EXPECT_EQ(bytes(1), "1 B");
  EXPECT_EQ(bytes(999), "999 B");
  EXPECT_EQ(bytes(1023), "1023 B");
}

TEST(OstrelFormat, BytesFrom1024AreWholeKilobytes) {
  EXPECT_EQ(bytes(1024), "1 KB");
  EXPECT_EQ(bytes(1535), "1 KB");
  EXPECT_EQ(bytes(1537), "2 KB");
  EXPECT_EQ(bytes(100 * kilobyte), "100 KB");
}

TEST(OstrelFormat, BytesOneBelowAMegabyteRoundUpTo1024KilobytesWithoutAStepUp) {
  EXPECT_EQ(bytes(1048575), "1024 KB");
}

TEST(OstrelFormat, BytesFromOneMegabyteAreWholeMegabytes) {
  EXPECT_EQ(bytes(megabyte), "1 MB");
  EXPECT_EQ(bytes(512 * megabyte), "512 MB");
  EXPECT_EQ(bytes(megabyte + megabyte / 4 * 3), "2 MB");
}

TEST(OstrelFormat, BytesOneBelowAGigabyteRoundUpTo1024MegabytesWithoutAStepUp) {
  EXPECT_EQ(bytes(gigabyte - 1), "1024 MB");
}

TEST(OstrelFormat, BytesFromOneGigabyteHaveOneDecimal) {
  EXPECT_EQ(bytes(1073741824), "1.0 GB");
  EXPECT_EQ(bytes(gigabyte + gigabyte / 2), "1.5 GB");
  EXPECT_EQ(bytes(16 * gigabyte), "16.0 GB");
}

TEST(OstrelFormat, BytesRoundHalvesToTheEvenFigure) {
  EXPECT_EQ(bytes(kilobyte * 5 / 2), "2 KB");
  EXPECT_EQ(bytes(kilobyte * 7 / 2), "4 KB");
  EXPECT_EQ(bytes(megabyte * 5 / 2), "2 MB");
  EXPECT_EQ(bytes(megabyte * 7 / 2), "4 MB");
  EXPECT_EQ(bytes(gigabyte + gigabyte / 4), "1.2 GB");
  EXPECT_EQ(bytes(gigabyte + gigabyte / 4 * 3), "1.8 GB");
}

TEST(OstrelFormat, BytesHaveNoStepAboveGigabytes) {
  EXPECT_EQ(bytes(2048 * gigabyte), "2048.0 GB");
  EXPECT_EQ(bytes(std::numeric_limits<std::uint64_t>::max()), "17179869184.0 GB");
}

TEST(OstrelFormat, RateBelowOneIsZero) {
  EXPECT_EQ(rate(0.5), "0 B/s");
  EXPECT_EQ(rate(0), "0 B/s");
  EXPECT_EQ(rate(0.999999), "0 B/s");
}

TEST(OstrelFormat, RateThatIsNoNumberOrNegativeIsZero) {
  EXPECT_EQ(rate(none), "0 B/s");
  EXPECT_EQ(rate(-1), "0 B/s");
  EXPECT_EQ(rate(-2e9), "0 B/s");
  EXPECT_EQ(rate(-infinity), "0 B/s");
  EXPECT_EQ(rate(-0.0), "0 B/s");
}

TEST(OstrelFormat, RateFromOneIsWholeBytes) {
  EXPECT_EQ(rate(1.0), "1 B/s");
  EXPECT_EQ(rate(999.4), "999 B/s");
  EXPECT_EQ(rate(1023), "1023 B/s");
  EXPECT_EQ(rate(1023.9), "1024 B/s");
}

TEST(OstrelFormat, RateRoundsHalvesToTheEvenFigure) {
  EXPECT_EQ(rate(2.5), "2 B/s");
  EXPECT_EQ(rate(3.5), "4 B/s");
  EXPECT_EQ(rate(2560), "2 KB/s");
  EXPECT_EQ(rate(3584), "4 KB/s");
}

TEST(OstrelFormat, RateFrom1024IsWholeKilobytes) {
  EXPECT_EQ(rate(1024), "1 KB/s");
  EXPECT_EQ(rate(1536.0), "2 KB/s");
  EXPECT_EQ(rate(1048575), "1024 KB/s");
}

TEST(OstrelFormat, RateFromOneMegabyteHasOneDecimal) {
  EXPECT_EQ(rate(1048576), "1.0 MB/s");
  EXPECT_EQ(rate(1572864.0), "1.5 MB/s");
  EXPECT_EQ(rate(1073741823), "1024.0 MB/s");
}

TEST(OstrelFormat, RateFromOneGigabyteHasOneDecimal) {
  EXPECT_EQ(rate(1073741824), "1.0 GB/s");
  EXPECT_EQ(rate(2.5 * 1073741824), "2.5 GB/s");
  EXPECT_EQ(rate(2048.0 * 1073741824), "2048.0 GB/s");
  EXPECT_EQ(rate(infinity), "inf GB/s");
}

TEST(OstrelFormat, DurationBelowAMinuteIsCutToWholeSeconds) {
  EXPECT_EQ(duration(0), "0s");
  EXPECT_EQ(duration(0.9), "0s");
  EXPECT_EQ(duration(42), "42s");
  EXPECT_EQ(duration(59.9), "59s");
}

TEST(OstrelFormat, DurationFromAMinuteDropsSeconds) {
  EXPECT_EQ(duration(60), "1m");
  EXPECT_EQ(duration(119.9), "1m");
  EXPECT_EQ(duration(300), "5m");
  EXPECT_EQ(duration(3599.9), "59m");
}

TEST(OstrelFormat, DurationFromAnHourIsHoursAndMinutes) {
  EXPECT_EQ(duration(3600), "1h 0m");
  EXPECT_EQ(duration(7500), "2h 5m");
  EXPECT_EQ(duration(86399), "23h 59m");
}

TEST(OstrelFormat, DurationFromADayIsDaysAndHours) {
  EXPECT_EQ(duration(86400), "1d 0h");
  EXPECT_EQ(duration(86400 + 3599), "1d 0h");
  EXPECT_EQ(duration(3 * 86400 + 4 * 3600), "3d 4h");
  EXPECT_EQ(duration(400 * 86400 - 1), "399d 23h");
}

TEST(OstrelFormat, DurationBelowZeroIsZeroSeconds) {
  EXPECT_EQ(duration(-5), "0s");
  EXPECT_EQ(duration(-0.5), "0s");
  EXPECT_EQ(duration(-86400), "0s");
  EXPECT_EQ(duration(-9223372036854775808.0), "0s");
}

TEST(OstrelFormat, DurationTakesTheLargestValueThatFits) {
  EXPECT_EQ(duration(9223372036854774784.0), "106751991167300d 15h");
}

TEST(OstrelFormatDeathTest, DurationThatIsNotFiniteStopsTheProgram) {
  EXPECT_EXIT(duration(none), aborted, "");
  EXPECT_EXIT(duration(infinity), aborted, "");
  EXPECT_EXIT(duration(-infinity), aborted, "");
}

TEST(OstrelFormatDeathTest, DurationThatFitsNo64BitsStopsTheProgram) {
  EXPECT_EXIT(duration(9223372036854775808.0), aborted, "");
  EXPECT_EXIT(duration(-9223372036854777856.0), aborted, "");
}

TEST(OstrelFormat, DecimalSignIsAPointInALocaleThatWritesAComma) {
  const test::CommaLocale comma;
  if (!comma.isSet()) GTEST_SKIP() << "this machine can't make a German locale";
  EXPECT_EQ(bytes(gigabyte + gigabyte / 2), "1.5 GB");
  EXPECT_EQ(rate(1572864.0), "1.5 MB/s");
  EXPECT_EQ(fixedDecimals(1234567.5, 2), "1234567.50");
}

}  // namespace
}  // namespace korvantis
