#pragma once

#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace korvantis::test {

/// A run of the helper program of these tests (HistoryHelper.cpp) and what it prints. A process of
/// its own, since SQLite must not be used across a fork.
class HelperProgram {
 public:
  explicit HelperProgram(std::vector<std::string> words);
  HelperProgram(const HelperProgram&) = delete;
  HelperProgram& operator=(const HelperProgram&) = delete;
  ~HelperProgram();

  /// What it prints until it ends, or the next line; waits for it.
  std::string readAll();
  std::string readLine();

  ChildProcess& process() { return child; }

 private:
  ChildProcess started(std::vector<std::string> words);

  int output = -1;
  ChildProcess child;
};

}  // namespace korvantis::test
