#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// Sets a locale whose decimal sign is a comma, the German one unless another is named, for the
/// whole program until it goes; compiles it if the machine has none. Ask `isSet()`: a machine may
/// not be able to.
class CommaLocale {
 public:
  explicit CommaLocale(const std::string& language = "de_DE")
      : previous(std::setlocale(LC_ALL, nullptr)) {
    const std::string name = language + ".UTF-8";
    if (select(name) || select(language)) return;
    const std::string command = "localedef -i '" + language + "' -f UTF-8 '" + folder.path(name) +
                                "' >'" + folder.path("log") + "' 2>&1";
    // Its exit status also tells of mere warnings; whether the locale can be set is what counts.
    static_cast<void>(std::system(command.c_str()));  // NOLINT: a fixed command of this test
    ::setenv("LOCPATH", folder.path().c_str(), 1);
    select(name);
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
  bool select(const std::string& name) {
    return std::setlocale(LC_ALL, name.c_str()) != nullptr && isSet();
  }

  TemporaryFolder folder;
  std::string previous;
};

}  // namespace korvantis::test
