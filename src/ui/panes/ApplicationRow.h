#pragma once

#include <QString>
#include <cstdint>
#include <string>

#include "core/Instant.h"

namespace korvantis {

/// One row of the list of applications: an application, or one process of an opened one. All
/// texts are as shown.
struct ApplicationRow {
  bool isGroup = true;
  /// The application that the row is, or belongs to.
  std::string groupID;
  /// Of a process: its pid and when it began, which together tell it from a later one that got
  /// the same pid.
  std::int32_t pid = 0;
  Instant startedAt;

  QString name;
  QString iconName;
  /// Of an application, such as "12 processes".
  QString countText;
  /// Of a process: "PID 812", what it is for, and its ports such as ":3000 :3001".
  QString pidText;
  QString roleText;
  QString portsText;
  QString cpuText;
  QString memoryText;
  /// Read and written together.
  QString diskText;
  QString readText;
  QString writeText;
  /// Busy enough to stand out.
  bool isHot = false;
  /// Of an application: its processes are listed below it.
  bool isExpanded = false;

  bool operator==(const ApplicationRow&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const;
};

}  // namespace korvantis
