#include "platform/linux/applications/ProgramFile.h"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/FileText.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::size_t longestScript = 65536;
constexpr std::size_t markLength = 4;

bool isExecutableFile(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && (facts.st_mode & 0111) != 0;
}

std::optional<ProgramFile> programAt(const std::string& root, const std::string& path) {
  const auto canonical = canonicalPath(root, path);
  if (!canonical || !isExecutableFile(root + *canonical)) return std::nullopt;
  const std::string mark = readFileText(AT_FDCWD, root + *canonical, markLength).text;
  if (mark ==
      "\x7f"
      "ELF")
    return ProgramFile{*canonical, ProgramFile::Kind::native, {}};
  if (!mark.starts_with("#!")) return std::nullopt;
  return ProgramFile{*canonical, ProgramFile::Kind::script,
                     readFileText(AT_FDCWD, root + *canonical, longestScript).text};
}

bool isPathByte(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= '0' && byte <= '9') ||
         std::string_view("/._+-@").find(byte) != std::string_view::npos;
}

}  // namespace

std::optional<ProgramFile> findProgram(const std::string& root, std::string_view word,
                                       const std::vector<std::string>& folders) {
  if (word.starts_with('/')) return programAt(root, std::string(word));
  if (word.empty() || word.find('/') != std::string_view::npos) return std::nullopt;
  for (const std::string& folder : folders) {
    if (auto program = programAt(root, folder + "/" + std::string(word))) return program;
  }
  return std::nullopt;
}

std::vector<std::string> pathsInScript(std::string_view text) {
  std::vector<std::string> paths;
  for (std::size_t start = text.find('/'); start != std::string_view::npos;
       start = text.find('/', start)) {
    std::size_t end = start;
    while (end < text.size() && isPathByte(text[end])) ++end;
    // What follows a variable or another word ("$HOME/bin", "../lib", "http://") is only the end
    // of a path.
    const char before = start == 0 ? ' ' : text[start - 1];
    const bool isWhole = std::string_view(" \t\n\"'=:;(`").find(before) != std::string_view::npos &&
                         (before != ':' || text.substr(start, 2) != "//");
    std::string path(text.substr(start, end - start));
    const bool isNew = std::find(paths.begin(), paths.end(), path) == paths.end();
    if (isWhole && path.size() > 1 && isNew) paths.push_back(std::move(path));
    start = end;
  }
  return paths;
}

}  // namespace korvantis
