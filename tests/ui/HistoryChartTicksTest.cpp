#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <cmath>
#include <gtest/gtest.h>

#include "support/CommaLocale.h"
#include "ui/panes/EnglishDates.h"
#include "ui/panes/HistoryChartTicks.h"

namespace korvantis {
namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;
/// Sat, Nov 21 2026, 00:00 UTC.
constexpr double midnight = 1'795'219'200;

QStringList textsOf(const QList<HistoryChartTick>& ticks) {
  QStringList texts;
  for (const HistoryChartTick& tick : ticks) texts.append(tick.text);
  return texts;
}

QStringList timesBetween(double first, double last, int mostTicks = 8,
                         const QTimeZone& zone = QTimeZone::utc()) {
  return textsOf(timeTicks({first, last}, mostTicks, zone));
}

QStringList valuesUpTo(double peak, const char* unit) {
  return textsOf(valueTicks(historyChartScale({{0, 0, peak}}, 100), QString::fromUtf8(unit)));
}

QStringList words(const char* text) {
  return QString::fromUtf8(text).split(u'|');
}

TEST(HistoryChartTicks, ValuesAreRoundAndCarryTheirUnit) {
  EXPECT_EQ(valuesUpTo(98, "%"), words("0 %|25 %|50 %|75 %|100 %"));
  EXPECT_EQ(valuesUpTo(9, "W"), words("0.0 W|2.5 W|5.0 W|7.5 W|10.0 W"));
  EXPECT_EQ(valuesUpTo(55, "°C"), words("0 °C|20 °C|40 °C|60 °C"));
  EXPECT_EQ(valuesUpTo(0.3, "W"), words("0.0 W|0.1 W|0.2 W|0.3 W"));
}

TEST(HistoryChartTicks, LargeValuesAreShort) {
  EXPECT_EQ(valuesUpTo(2400, "RPM"), words("0 RPM|1000 RPM|2000 RPM|3000 RPM"));
  EXPECT_EQ(valuesUpTo(20000, "RPM"), words("0k RPM|5k RPM|10k RPM|15k RPM|20k RPM"));
  EXPECT_EQ(valuesUpTo(8.5e11, "%"), words("0.00T %|0.25T %|0.50T %|0.75T %|1.00T %"));
}

TEST(HistoryChartTicks, NegativeValuesAreMarkedToo) {
  const auto scale = historyChartScale({{0, -12, 20}}, 100);
  const QList<HistoryChartTick> ticks = valueTicks(scale, QStringLiteral("°C"));
  EXPECT_EQ(textsOf(ticks), words("-20 °C|-10 °C|0 °C|10 °C|20 °C"));
  EXPECT_EQ(ticks.first().at, -20);
  EXPECT_EQ(ticks.last().at, 20);
}

TEST(HistoryChartTicks, AnHourIsMarkedInMinutes) {
  EXPECT_EQ(timesBetween(midnight + 9.05 * hour, midnight + 10.05 * hour),
            words("09:10|09:20|09:30|09:40|09:50|10:00"));
}

TEST(HistoryChartTicks, SixHoursAreMarkedInHours) {
  EXPECT_EQ(timesBetween(midnight + 8.2 * hour, midnight + 14.2 * hour),
            words("09:00|10:00|11:00|12:00|13:00|14:00"));
}

TEST(HistoryChartTicks, ADayIsMarkedInHoursAndNamesTheDayAtMidnight) {
  EXPECT_EQ(timesBetween(midnight - 9.5 * hour, midnight + 14.5 * hour),
            words("16:00|20:00|Nov 21|04:00|08:00|12:00"));
}

TEST(HistoryChartTicks, AWeekIsMarkedInDays) {
  EXPECT_EQ(timesBetween(midnight - 6.5 * day, midnight + 0.5 * day),
            words("Nov 15|Nov 16|Nov 17|Nov 18|Nov 19|Nov 20|Nov 21"));
}

TEST(HistoryChartTicks, AMonthIsMarkedInWeeksThatBeginOnMondays) {
  EXPECT_EQ(timesBetween(midnight - 30 * day, midnight), words("Oct 26|Nov 2|Nov 9|Nov 16"));
}

TEST(HistoryChartTicks, AQuarterIsMarkedInMonths) {
  EXPECT_EQ(timesBetween(midnight - 90 * day, midnight, 5), words("Sep|Oct|Nov"));
}

TEST(HistoryChartTicks, AYearIsMarkedInMonthsAndNamesTheYearInJanuary) {
  EXPECT_EQ(timesBetween(midnight - 365 * day, midnight, 14),
            words("Dec|Jan 2026|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov"));
  EXPECT_EQ(timesBetween(midnight - 365 * day, midnight, 6), words("Jan 2026|Apr|Jul|Oct"));
}

TEST(HistoryChartTicks, DecadesAreMarkedInYears) {
  EXPECT_EQ(timesBetween(midnight - 30 * 365 * day, midnight),
            words("2000|2005|2010|2015|2020|2025"));
}

TEST(HistoryChartTicks, TimesStandWhereTheyAre) {
  const auto ticks = timeTicks({midnight - day, midnight + day}, 3, QTimeZone::utc());
  ASSERT_EQ(ticks.size(), 3);
  EXPECT_EQ(ticks[1], (HistoryChartTick{midnight, QStringLiteral("Nov 21")}));
}

TEST(HistoryChartTicks, TimesAreThoseOfTheZoneAlsoWhereItsClocksChange) {
  const QTimeZone berlin("Europe/Berlin");
  if (!berlin.isValid()) GTEST_SKIP() << "no time zones on this machine";
  // The clocks go from 02:00 to 03:00 on Mar 29 2026.
  const double before = 1'774'738'800;  // Mar 29, 00:00 there.
  EXPECT_EQ(timesBetween(before, before + 5 * hour, 8, berlin),
            words("Mar 29|01:00|03:00|04:00|05:00|06:00"));
  // They go back from 03:00 to 02:00 on Oct 25: that day has 25 hours.
  const double autumn = 1'792'879'200;  // Oct 25, 00:00 there.
  EXPECT_EQ(timesBetween(autumn - day, autumn + 2 * day, 4, berlin), words("Oct 24|Oct 25|Oct 26"));
}

TEST(HistoryChartTicks, ThereAreNeverMoreThanAskedFor) {
  for (int most = 1; most < 20; ++most) {
    for (int exponent = 0; exponent < 34; ++exponent) {
      const double span = 60 * std::pow(1.7, exponent);
      const auto ticks = timeTicks({midnight - span, midnight + 17}, most, QTimeZone::utc());
      EXPECT_LE(ticks.size(), most) << span;
      for (qsizetype index = 1; index < ticks.size(); ++index) {
        EXPECT_LT(ticks[index - 1].at, ticks[index].at) << span;
      }
    }
  }
}

TEST(HistoryChartTicks, TimesThatAreNoDatesHaveNone) {
  EXPECT_TRUE(timesBetween(5, 5).isEmpty());
  EXPECT_TRUE(timesBetween(0, 1e15).isEmpty());
  EXPECT_TRUE(timesBetween(-9e99, 9e99).isEmpty());
  EXPECT_TRUE(timesBetween(0, day, 0).isEmpty());
}

TEST(HistoryChartTicks, NoLocaleIsConsulted) {
  const test::CommaLocale comma;
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
  EXPECT_EQ(valuesUpTo(9, "W"), words("0.0 W|2.5 W|5.0 W|7.5 W|10.0 W"));
  EXPECT_EQ(timesBetween(midnight - 365 * day, midnight, 6), words("Jan 2026|Apr|Jul|Oct"));
  QLocale::setDefault(before);
}

TEST(EnglishDates, WriteAMomentInWords) {
  using namespace EnglishDates;
  const QDateTime moment(QDate(2026, 11, 21), QTime(9, 5, 59), QTimeZone::utc());
  EXPECT_EQ(wholeMoment(moment), QStringLiteral("Sat, Nov 21 2026, 09:05"));
  EXPECT_EQ(wholeMoment(moment.addDays(1)), QStringLiteral("Sun, Nov 22 2026, 09:05"));
  EXPECT_EQ(monthName(QDate(2026, 12, 1)), QStringLiteral("Dec"));
  EXPECT_EQ(wholeMoment(QDateTime()), QString());
  EXPECT_EQ(monthName(QDate()), QString());
}

}  // namespace
}  // namespace korvantis
