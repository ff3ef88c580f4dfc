#pragma once

#include <optional>
#include <string>

namespace korvantis {

/// Where an export of the history lies, as paths. Each is present only if its file was written.
struct ExportedCSVFiles {
  /// The machine's readings.
  std::optional<std::string> readingsURL;
  /// The ledger of the applications.
  std::optional<std::string> appsURL;

  bool operator==(const ExportedCSVFiles&) const = default;
};

}  // namespace korvantis
