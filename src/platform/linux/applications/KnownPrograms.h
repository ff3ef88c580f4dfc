#pragma once

#include <string_view>

namespace korvantis {

/// What kinds of programs there are, by the base names of their executables. Any thread.
namespace KnownPrograms {

/// Runs programs that are given to it as files: a language's interpreter or a shell. A version at
/// the end of its name ("python3.11") does not count.
bool isInterpreter(std::string_view name);

/// A shell. Shells are interpreters.
bool isShell(std::string_view name);

/// Belongs to the desktop session itself: the desktop shell, window manager, sound server, session
/// bus and their like. Whoever quits one of them quits or harms the session.
bool isSessionComponent(std::string_view name);

/// Starts programs of other applications, so that it must never stand for an application: what
/// runs below it would all be taken for its own.
bool startsOthers(std::string_view name);

/// A helper that comes with a toolkit and works for whichever application has started it.
bool isSharedHelper(std::string_view name);

}  // namespace KnownPrograms

}  // namespace korvantis
