#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <string>

namespace korvantis {

/// The words and figures of the card of one subscription plan.
struct PlanCard {
  Q_GADGET
  QML_VALUE_TYPE(planCard)
  Q_PROPERTY(QString tool MEMBER tool FINAL)
  Q_PROPERTY(QString planName MEMBER planName FINAL)
  Q_PROPERTY(QString paceText MEMBER paceText FINAL)
  Q_PROPERTY(QColor paceColor MEMBER paceColor FINAL)
  Q_PROPERTY(QColor accentColor MEMBER accentColor FINAL)
  Q_PROPERTY(QString fiveHourText MEMBER fiveHourText FINAL)
  Q_PROPERTY(double fiveHourPercent MEMBER fiveHourPercent FINAL)
  Q_PROPERTY(QString weeklyText MEMBER weeklyText FINAL)
  Q_PROPERTY(double weeklyPercent MEMBER weeklyPercent FINAL)
  Q_PROPERTY(QString todayText MEMBER todayText FINAL)
  Q_PROPERTY(QString weekText MEMBER weekText FINAL)

 public:
  QString tool{};
  QString planName{};
  QString paceText{};
  QColor paceColor{};
  QColor accentColor{};
  /// The share used and when it begins anew, such as "41% · Resets in 2h 18m".
  QString fiveHourText{};
  /// Where the bar stands, 0 to 100.
  double fiveHourPercent = 0;
  QString weeklyText{};
  double weeklyPercent = 0;
  /// Tokens, grouped as the user's language does.
  QString todayText{};
  QString weekText{};

  bool operator==(const PlanCard&) const = default;
};

/// The words and figures of one running agent.
struct AgentSessionRow {
  std::int32_t pid = 0;
  QString toolName{};
  QString stateLabel{};
  QColor stateColor{};
  QString pidText{};
  QString projectText{};
  /// The first names of its children, at most 3.
  QStringList childNames{};
  QString cpuText{};
  QString memoryText{};

  bool operator==(const AgentSessionRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return std::to_string(pid); }
};

}  // namespace korvantis
