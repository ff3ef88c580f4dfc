#include "platform/linux/applications/ProcessEvidence.h"

#include <algorithm>
#include <cstddef>

#include "platform/linux/TextFields.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::size_t longestGroup = 16'384;
constexpr std::size_t longestEnvironment = 262'144;
constexpr std::size_t longestInfo = 65'536;
// What follows are names of files.
constexpr std::size_t mostWords = 64;

std::vector<std::string> wordsOf(std::string_view bytes) {
  std::vector<std::string> words;
  while (!bytes.empty() && words.size() < mostWords) {
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    words.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return words;
}

/// The name in the group that says what runs in a sandbox.
std::string sandboxedApplication(std::string_view text) {
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.starts_with('[')) isInGroup = line == "[Application]";
    if (isInGroup && line.starts_with("name=")) return std::string(line.substr(5));
  }
  return {};
}

}  // namespace

ProcessEvidence::ProcessEvidence(ProcessReading& processReading)
    : reading(processReading), executablePath(processReading.executablePath()) {}

std::string_view ProcessEvidence::program() const {
  return executablePath.empty() ? std::string_view(name()) : baseNameOf(executablePath);
}

const std::vector<std::string>& ProcessEvidence::words() {
  if (!argumentWords) argumentWords = wordsOf(reading.commandLine());
  return *argumentWords;
}

const std::string& ProcessEvidence::commandText() {
  if (!command) {
    command = " ";
    for (const std::string& word : words()) command->append(word).append(" ");
  }
  return *command;
}

bool ProcessEvidence::hasArgument(std::string_view argument) {
  return commandText().find(" " + std::string(argument) + " ") != std::string::npos;
}

bool ProcessEvidence::hasArgumentBeginning(std::string_view beginning) {
  return commandText().find(" " + std::string(beginning)) != std::string::npos;
}

const ControlGroup& ProcessEvidence::group() {
  if (!controlGroup) controlGroup = parseControlGroup(reading.fileText("cgroup", longestGroup));
  return *controlGroup;
}

std::string ProcessEvidence::variable(std::string_view name) {
  if (!environment) environment = '\0' + reading.fileText("environ", longestEnvironment) + '\0';
  const std::string key = '\0' + std::string(name) + '=';
  const std::size_t found = environment->find(key);
  if (found == std::string::npos) return {};
  const std::size_t start = found + key.size();
  return environment->substr(start, environment->find('\0', start) - start);
}

const std::string& ProcessEvidence::sandboxId() {
  if (!sandbox) {
    sandbox = sandboxedApplication(reading.fileText("root/.flatpak-info", longestInfo));
  }
  return *sandbox;
}

}  // namespace korvantis
