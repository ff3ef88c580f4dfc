#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace korvantis::test {

/// Sets an environment variable, or takes it away when no value is given, until it goes.
class ScopedVariable {
 public:
  ScopedVariable(std::string variable, const std::optional<std::string>& value)
      : name(std::move(variable)), before(valueOf(name)) {
    put(value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { put(before); }

 private:
  static std::optional<std::string> valueOf(const std::string& variable) {
    const char* value = std::getenv(variable.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }
  void put(const std::optional<std::string>& value) const {
    if (value)
      ::setenv(name.c_str(), value->c_str(), 1);
    else
      ::unsetenv(name.c_str());
  }

  std::string name;
  std::optional<std::string> before;
};

}  // namespace korvantis::test
