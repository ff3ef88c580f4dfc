#include "samplers/LiveProcessFacts.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace korvantis::test::LiveProcessFacts {

namespace {

std::string fileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string folder(pid_t pid) {
  return "/proc/" + std::to_string(pid) + "/";
}

/// The number after a label such as "VmSwap:"; -1 without it.
std::int64_t labelledNumber(const std::string& text, const std::string& label) {
  const std::size_t at = text.find(label);
  return at == std::string::npos ? -1 : std::stoll(text.substr(at + label.size()));
}

/// The fields of its "stat" file from the third on: those after the name.
std::istringstream statFields(pid_t pid) {
  const std::string text = fileText(folder(pid) + "stat");
  return std::istringstream(text.substr(text.rfind(')') + 1));
}

}  // namespace

char state(pid_t pid) {
  char letter = '?';
  statFields(pid) >> letter;
  return letter;
}

std::int64_t cpuTicks(pid_t pid) {
  std::istringstream fields = statFields(pid);
  std::string skipped;
  for (int field = 3; field < 14; ++field) fields >> skipped;
  std::int64_t user = 0;
  std::int64_t system = 0;
  fields >> user >> system;
  return user + system;
}

double ticksPerSecond() {
  return static_cast<double>(::sysconf(_SC_CLK_TCK));
}

std::uint64_t privateBytes(pid_t pid) {
  const std::string text = fileText(folder(pid) + "status");
  return static_cast<std::uint64_t>(labelledNumber(text, "RssAnon:") +
                                    labelledNumber(text, "VmSwap:")) *
         1024;
}

std::int64_t ownWrittenBytes() {
  return labelledNumber(fileText("/proc/self/io"), "\nwrite_bytes:");
}

std::string link(pid_t pid, const std::string& name) {
  return std::filesystem::read_symlink(folder(pid) + name).string();
}

std::string outputOf(const std::string& command) {
  std::string output;
  // The command is a fixed text of the test.
  FILE* pipe = ::popen(command.c_str(), "r");  // NOLINT(cert-env33-c)
  if (pipe == nullptr) return output;
  std::array<char, 4096> chunk{};
  for (std::size_t got = 1; got > 0;) {
    got = std::fread(chunk.data(), 1, chunk.size(), pipe);
    output.append(chunk.data(), got);
  }
  ::pclose(pipe);
  if (output.ends_with('\n')) output.pop_back();
  return output;
}

}  // namespace korvantis::test::LiveProcessFacts
