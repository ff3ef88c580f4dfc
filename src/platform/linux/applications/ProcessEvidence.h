#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessReading.h"
#include "platform/linux/applications/ControlGroup.h"

namespace korvantis {

/// What a process shows of itself, each fact read when it is first asked for. Refers to the
/// reading that it was made for. One thread.
class ProcessEvidence {
 public:
  explicit ProcessEvidence(ProcessReading& processReading);

  ProcessIdentity identity() const { return reading.identity(); }
  std::int32_t parent() const { return reading.stat().parent; }
  /// The name that it goes by, at most 15 bytes.
  const std::string& name() const { return reading.stat().name; }
  /// The path of its executable; empty when it can't be told.
  const std::string& executable() const { return executablePath; }
  /// The base name of that, else its name.
  std::string_view program() const;

  /// Its arguments, the program first.
  const std::vector<std::string>& words();
  /// Whether `argument` is one of its arguments, or stands between blanks in one: some programs
  /// write their whole command line as one word.
  bool hasArgument(std::string_view argument);
  /// Whether an argument begins so, likewise.
  bool hasArgumentBeginning(std::string_view beginning);

  const ControlGroup& group();

  /// A variable of its environment as it was when it began; empty when it is not set or refused.
  std::string variable(std::string_view name);

  /// The id of the flatpak that it runs in; empty outside of one.
  const std::string& sandboxId();

  /// Its working directory; empty when it can't be told.
  std::string workingDirectory() const { return reading.workingDirectory(); }

 private:
  const std::string& commandText();

  ProcessReading& reading;
  std::string executablePath;
  std::optional<std::vector<std::string>> argumentWords;
  std::optional<std::string> command;
  std::optional<ControlGroup> controlGroup;
  std::optional<std::string> environment;
  std::optional<std::string> sandbox;
};

}  // namespace korvantis
