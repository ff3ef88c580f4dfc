#include "ui/panes/EnglishDates.h"

#include <array>

namespace korvantis::EnglishDates {

namespace {

constexpr std::array monthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array dayNames{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

}  // namespace

QString monthName(const QDate& date) {
  if (!date.isValid()) return {};
  return QString::fromLatin1(monthNames.at(static_cast<std::size_t>(date.month() - 1)));
}

QString monthAndDay(const QDate& date) {
  return monthName(date) + u' ' + QString::number(date.day());
}

QString timeOfDay(const QTime& time) {
  const auto twoDigits = [](int number) { return QString::number(number).rightJustified(2, u'0'); };
  return twoDigits(time.hour()) + u':' + twoDigits(time.minute());
}

QString wholeMoment(const QDateTime& moment) {
  const QDate date = moment.date();
  if (!date.isValid()) return {};
  const char* const dayName = dayNames.at(static_cast<std::size_t>(date.dayOfWeek() - 1));
  return QString::fromLatin1(dayName) + QStringLiteral(", ") + monthAndDay(date) + u' ' +
         QString::number(date.year()) + QStringLiteral(", ") + timeOfDay(moment.time());
}

}  // namespace korvantis::EnglishDates
