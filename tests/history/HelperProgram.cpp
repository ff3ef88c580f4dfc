#include "history/HelperProgram.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace korvantis::test {

HelperProgram::HelperProgram(std::vector<std::string> words) : child(started(std::move(words))) {}

HelperProgram::~HelperProgram() {
  ::close(output);
}

ChildProcess HelperProgram::started(std::vector<std::string> words) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  words.insert(words.begin(), "history_helper");
  ChildProcess result = ChildProcess::program(KORVANTIS_HISTORY_HELPER, std::move(words),
                                              [&ends] { ::dup2(ends[1], STDOUT_FILENO); });
  ::close(ends[1]);
  output = ends[0];
  return result;
}

std::string HelperProgram::readLine() {
  std::string line;
  for (char letter = 0; letter != '\n';) {
    const ssize_t got = ::read(output, &letter, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    line += letter;
  }
  return line;
}

std::string HelperProgram::readAll() {
  std::string text;
  for (std::string line = readLine(); !line.empty(); line = readLine()) text += line;
  return text;
}

}  // namespace korvantis::test
