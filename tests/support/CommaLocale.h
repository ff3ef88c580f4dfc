#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// Sets a German locale, whose decimal sign is a comma, for the whole program until it goes;
/// compiles one if the machine has none. Ask `isSet()`: a machine may not be able to.
class CommaLocale {
 public:
  CommaLocale() : previous(std::setlocale(LC_ALL, nullptr)) {
    if (select("de_DE.UTF-8") || select("de_DE")) return;
    const std::string command = "localedef -i de_DE -f UTF-8 '" + folder.path("de_DE.UTF-8") +
                                "' >'" + folder.path("log") + "' 2>&1";
    // Its exit status also tells of mere warnings; whether the locale can be set is what counts.
    static_cast<void>(std::system(command.c_str()));  // NOLINT: a fixed command of this test
    ::setenv("LOCPATH", folder.path().c_str(), 1);
    select("de_DE.UTF-8");
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
  ~CommaLocale() {
    std::setlocale(LC_ALL, previous.c_str());
    ::unsetenv("LOCPATH");
  }

  /// Whether C's own formatting now writes a comma.
  bool isSet() const { return *std::localeconv()->decimal_point == ','; }

 private:
  bool select(const char* name) { return std::setlocale(LC_ALL, name) != nullptr && isSet(); }

  TemporaryFolder folder;
  std::string previous;
};

}  // namespace korvantis::test
