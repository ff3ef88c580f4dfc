#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

/// Dates and times of day in the language of the screens, whatever the locale. Any thread.
namespace korvantis::EnglishDates {

/// Such as "Nov".
QString monthName(const QDate& date);
/// Such as "Nov 21".
QString monthAndDay(const QDate& date);
/// Such as "09:05", from "00:00" to "23:59".
QString timeOfDay(const QTime& time);
/// Such as "Sat, Nov 21 2026, 09:05".
QString wholeMoment(const QDateTime& moment);

}  // namespace korvantis::EnglishDates
