#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// What a desktop entry says about its application.
struct DesktopEntry {
  /// The name without a language, and the one in the user's language; empty when there is none.
  std::string name;
  std::string localizedName;
  /// The command line as it stands in the file.
  std::string exec;
  /// The name or path of the icon.
  std::string icon;
  /// Neither hidden from menus nor removed.
  bool isShown = true;
  /// Runs inside a terminal, whose part it is then.
  bool runsInTerminal = false;
  /// Can be started over the session bus, without a command line.
  bool isBusActivated = false;

  bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a `.desktop` file. `languages` are the forms of the user's languages, best
/// first ("de_AT", "de"). Absent when it describes no application. A text that is no UTF-8 counts
/// as missing; an escape that is none stays as it stands. Any thread.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& languages);

/// The forms in which desktop entries name the languages of these environment variables, best
/// first: "de_AT@euro", "de_AT", "de@euro", "de" for "de_AT.UTF-8@euro". `list` is LANGUAGE (names
/// with colons between them), `locale` that of messages; "C" and "POSIX" give none. Any thread.
std::vector<std::string> entryLanguages(std::string_view list, std::string_view locale);

}  // namespace korvantis
