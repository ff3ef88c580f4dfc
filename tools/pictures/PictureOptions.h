#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>

namespace korvantis::pictures {

/// What somebody wants drawn. Lists that are left empty stand for the README's set.
struct PictureOptions {
  /// Names of panes, such as "overview".
  QStringList panes;
  /// "dark" and "light".
  QStringList themes;
  /// Of the window, in points; absent for its own.
  std::optional<QSize> size;
  double scale = 1;
  /// The panel instead of the window.
  bool showsPopover = false;
  /// The tab of the settings that lies over the window; empty for none.
  QString settingsTab;
  QString folder;
};

/// Reads the command line, which must begin with the program's name; absent, with what is wrong in
/// `error`, when there is something in it that is not known.
std::optional<PictureOptions> readOptions(const QStringList& words, QString& error);

}  // namespace korvantis::pictures
