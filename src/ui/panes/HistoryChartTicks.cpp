#include "ui/panes/HistoryChartTicks.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/FixedDecimals.h"
#include "ui/panes/EnglishDates.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

constexpr double day = 86400;
constexpr int minutesOfDay = 1440;
constexpr double month = 30.4 * day;
constexpr double year = 365 * day;
/// As far as this from 1970 every calendar step begins in a year that there was.
constexpr double lastTimeOfCalendar = 900 * year;

/// Figures from here on are written in thousands, millions and so on.
constexpr double firstLarge = 10000;

struct Magnitude {
  double factor = 1;
  const char* letter = "";
};

Magnitude magnitudeOf(double top) {
  Magnitude found;
  if (top < firstLarge) return found;
  double factor = 1;
  for (const char* const letter : std::array{"k", "M", "G", "T", "P", "E", "Z", "Y"}) {
    factor *= 1000;
    if (top >= factor) found = {factor, letter};
  }
  return found;
}

/// How many digits after the point tell the multiples of `step` apart.
int decimalsOf(double step) {
  constexpr int most = 8;
  double scaled = step;
  for (int decimals = 0; decimals < most; ++decimals, scaled *= 10) {
    if (std::abs(scaled - std::round(scaled)) < scaled * 1e-6) return decimals;
  }
  return most;
}

enum class Calendar { minutes, days, months, years };

/// So many minutes, days, months or years.
struct TimeStep {
  Calendar calendar;
  int count;

  double seconds() const {
    switch (calendar) {
      case Calendar::minutes: return 60.0 * count;
      case Calendar::days: return day * count;
      case Calendar::months: return month * count;
      case Calendar::years: return year * count;
    }
    return year;
  }
};

constexpr std::array timeSteps{TimeStep{Calendar::minutes, 1},   TimeStep{Calendar::minutes, 2},
                               TimeStep{Calendar::minutes, 5},   TimeStep{Calendar::minutes, 10},
                               TimeStep{Calendar::minutes, 15},  TimeStep{Calendar::minutes, 30},
                               TimeStep{Calendar::minutes, 60},  TimeStep{Calendar::minutes, 120},
                               TimeStep{Calendar::minutes, 180}, TimeStep{Calendar::minutes, 240},
                               TimeStep{Calendar::minutes, 360}, TimeStep{Calendar::minutes, 720},
                               TimeStep{Calendar::days, 1},      TimeStep{Calendar::days, 2},
                               TimeStep{Calendar::days, 7},      TimeStep{Calendar::days, 14},
                               TimeStep{Calendar::months, 1},    TimeStep{Calendar::months, 2},
                               TimeStep{Calendar::months, 3},    TimeStep{Calendar::months, 6},
                               TimeStep{Calendar::years, 1},     TimeStep{Calendar::years, 2},
                               TimeStep{Calendar::years, 5},     TimeStep{Calendar::years, 10},
                               TimeStep{Calendar::years, 20},    TimeStep{Calendar::years, 50},
                               TimeStep{Calendar::years, 100},   TimeStep{Calendar::years, 500},
                               TimeStep{Calendar::years, 1000}};

TimeStep timeStep(double span, int mostTicks) {
  const auto found = std::find_if(timeSteps.begin(), timeSteps.end(), [&](const TimeStep& step) {
    return span / step.seconds() <= static_cast<double>(mostTicks - 1);
  });
  return found == timeSteps.end() ? timeSteps.back() : *found;
}

/// The first day at or before `date` on which a step can begin.
QDate beginningOf(const QDate& date, const TimeStep& step) {
  switch (step.calendar) {
    case Calendar::minutes: return date;
    case Calendar::days:
      // The Julian day 0 is a Monday, so steps of weeks begin on Mondays.
      return QDate::fromJulianDay(date.toJulianDay() - date.toJulianDay() % step.count);
    case Calendar::months: {
      const int sinceJanuary = date.month() - 1;
      return {date.year(), sinceJanuary - sinceJanuary % step.count + 1, 1};
    }
    case Calendar::years: return {date.year() - date.year() % step.count, 1, 1};
  }
  return date;
}

QDate after(const QDate& date, const TimeStep& step) {
  switch (step.calendar) {
    case Calendar::minutes: return date.addDays(1);
    case Calendar::days: return date.addDays(step.count);
    case Calendar::months: return date.addMonths(step.count);
    case Calendar::years: return date.addYears(step.count);
  }
  return date.addDays(1);
}

QDateTime momentAt(double time, const QTimeZone& zone) {
  return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(time), zone);
}

int minuteOf(const QDateTime& moment) {
  return moment.time().hour() * 60 + moment.time().minute();
}

QString labelOf(const QDateTime& moment, const TimeStep& step) {
  using namespace EnglishDates;
  const QDate date = moment.date();
  switch (step.calendar) {
    case Calendar::minutes:
      return minuteOf(moment) == 0 ? monthAndDay(date) : timeOfDay(moment.time());
    case Calendar::days: return monthAndDay(date);
    case Calendar::months:
      return date.month() == 1 ? monthName(date) + u' ' + QString::number(date.year())
                               : monthName(date);
    case Calendar::years: return QString::number(date.year());
  }
  return {};
}

}  // namespace

QList<HistoryChartTick> valueTicks(const HistoryChartScale& scale, const QString& unit) {
  const Magnitude magnitude = magnitudeOf(std::max(scale.top, -scale.bottom));
  const int decimals = decimalsOf(scale.step / magnitude.factor);
  const double first = std::round(scale.bottom / scale.step);
  const auto count = static_cast<int>(std::round(scale.top / scale.step) - first);
  QList<HistoryChartTick> ticks;
  for (int index = 0; index <= count; ++index) {
    const double value = (first + index) * scale.step;
    const std::string text = fixedDecimals(value / magnitude.factor, decimals) + magnitude.letter;
    ticks.append({value, textOf(text) + u' ' + unit});
  }
  return ticks;
}

QList<HistoryChartTick> timeTicks(const HistoryChartScale& scale, int mostTicks,
                                  const QTimeZone& zone) {
  const double furthest = std::max(std::abs(scale.firstTime), std::abs(scale.lastTime));
  if (!scale.hasTimes() || furthest > lastTimeOfCalendar || mostTicks < 1) return {};
  const TimeStep step = timeStep(scale.lastTime - scale.firstTime, mostTicks);
  const QDateTime first = momentAt(scale.firstTime, zone);
  QList<HistoryChartTick> ticks;
  double previous = scale.firstTime - 1;
  for (QDate date = beginningOf(first.date(), step);; date = after(date, step)) {
    const bool isWithinDays = step.calendar == Calendar::minutes;
    int minute = isWithinDays && date == first.date() ? minuteOf(first) : 0;
    for (minute -= minute % step.count; minute < (isWithinDays ? minutesOfDay : 1);
         minute += step.count) {
      const QDateTime wanted(date, QTime(minute / 60, minute % 60), zone);
      const auto at = static_cast<double>(wanted.toSecsSinceEpoch());
      if (at > scale.lastTime || ticks.size() >= mostTicks) return ticks;
      if (at < scale.firstTime || at <= previous) continue;
      // Where the clocks are set forward there is no such time of day, and this is the next one.
      ticks.append({at, labelOf(momentAt(at, zone), step)});
      previous = at;
    }
  }
}

}  // namespace korvantis
