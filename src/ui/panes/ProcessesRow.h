#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/EnumerationTable.h"
#include "core/Instant.h"

namespace korvantis {

/// What a row of the processes pane stands for. The raw value is the name that QML gets.
enum class ProcessesRowKind {
  appGroup,
  caption,
  helperShare,
  process,
  project,
  projectProcess,
  container,
  port,
  idleServer
};

template <>
struct EnumerationTable<ProcessesRowKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<ProcessesRowKind, Raw>;
  static constexpr std::array rows{Row{ProcessesRowKind::appGroup, "appGroup"},
                                   Row{ProcessesRowKind::caption, "caption"},
                                   Row{ProcessesRowKind::helperShare, "helperShare"},
                                   Row{ProcessesRowKind::process, "process"},
                                   Row{ProcessesRowKind::project, "project"},
                                   Row{ProcessesRowKind::projectProcess, "projectProcess"},
                                   Row{ProcessesRowKind::container, "container"},
                                   Row{ProcessesRowKind::port, "port"},
                                   Row{ProcessesRowKind::idleServer, "idleServer"}};
};

/// One row of a list of the processes pane, in the words shown. A card is one row or several that
/// follow each other. Texts that a kind of row doesn't have stay empty.
struct ProcessesRow {
  Q_GADGET
  QML_VALUE_TYPE(processesRow)
  Q_PROPERTY(QString kind READ kindName FINAL)
  Q_PROPERTY(bool isFirstOfCard MEMBER isFirstOfCard FINAL)
  Q_PROPERTY(bool isLastOfCard MEMBER isLastOfCard FINAL)
  Q_PROPERTY(QString groupID MEMBER groupID FINAL)
  Q_PROPERTY(QString bundlePath MEMBER bundlePath FINAL)
  Q_PROPERTY(bool isExpanded MEMBER isExpanded FINAL)
  Q_PROPERTY(QString title MEMBER title FINAL)
  Q_PROPERTY(QString subtitle MEMBER subtitle FINAL)
  Q_PROPERTY(QString countText MEMBER countText FINAL)
  Q_PROPERTY(QString verdict MEMBER verdict FINAL)
  Q_PROPERTY(QString pidText MEMBER pidText FINAL)
  Q_PROPERTY(QString roleText MEMBER roleText FINAL)
  Q_PROPERTY(QStringList ports MEMBER ports FINAL)
  Q_PROPERTY(QString idleText MEMBER idleText FINAL)
  Q_PROPERTY(QString cpuText MEMBER cpuText FINAL)
  Q_PROPERTY(QString memoryText MEMBER memoryText FINAL)
  Q_PROPERTY(QString energyText MEMBER energyText FINAL)
  Q_PROPERTY(QString networkText MEMBER networkText FINAL)
  Q_PROPERTY(bool isHot MEMBER isHot FINAL)
  Q_PROPERTY(QString description READ description FINAL)

 public:
  ProcessesRowKind kind = ProcessesRowKind::appGroup;
  /// What tells one of these from another in a list.
  std::string identity{};
  /// Whether a card begins or ends with this row.
  bool isFirstOfCard = false;
  bool isLastOfCard = false;
  /// The application that the row is, or belongs to.
  QString groupID{};
  /// Where an application lies; empty when that is unknown.
  QString bundlePath{};
  /// Of an application: its details are listed below it.
  bool isExpanded = false;
  /// Of what can be stopped: its pid and when it began, which together tell it from a later one
  /// that got the same pid. The start is absent when nobody knows it.
  std::int32_t pid = 0;
  std::optional<Instant> startedAt{};

  QString title{};
  /// The fainter line below the title, or beside it.
  QString subtitle{};
  /// How many processes: "7 helpers" of an application, "3p" of a role.
  QString countText{};
  /// The name of the verdict on quitting, such as "ask_first".
  QString verdict{};
  QString pidText{};
  QString roleText{};
  /// Each with its colon, such as ":3000".
  QStringList ports{};
  /// "Idle" of a port, "Idle 12m" of a server.
  QString idleText{};
  QString cpuText{};
  QString memoryText{};
  QString energyText{};
  QString networkText{};
  /// Busy enough to stand out.
  bool isHot = false;

  bool operator==(const ProcessesRow&) const = default;

  QString kindName() const;

  /// The whole row in one sentence, for those who can't see it.
  QString description() const;
};

}  // namespace korvantis
