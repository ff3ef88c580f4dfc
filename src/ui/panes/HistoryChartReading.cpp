#include "ui/panes/HistoryChartReading.h"

#include <QDateTime>
#include <algorithm>

#include "ui/panes/EnglishDates.h"
#include "ui/panes/HistoryWords.h"

namespace korvantis {

namespace {

constexpr double mostSeconds = 1e13;

}  // namespace

HistoryChartReading historyChartReading(const HistoryPoint& point, const QString& unit,
                                        const QTimeZone& zone) {
  // A time that is no date has no words.
  const double seconds = std::clamp(point.date, -mostSeconds, mostSeconds);
  const auto moment = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds), zone);
  HistoryChartReading reading;
  reading.isShown = true;
  reading.time = EnglishDates::wholeMoment(moment);
  reading.average = HistoryWords::average(point.avg, unit);
  reading.peak = HistoryWords::peak(point.peak, unit);
  reading.sentence =
      reading.time + QStringLiteral(". ") + reading.average + QStringLiteral(", ") + reading.peak;
  return reading;
}

}  // namespace korvantis
