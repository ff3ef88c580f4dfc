#include "analysis/HelperRoles.h"

#include <utility>

#include "analysis/HelperRoleWords.h"
#include "analysis/PathNames.h"
#include "core/LowerCase.h"

namespace korvantis {

bool liesInMainFolder(std::string_view executablePath, std::string_view bundlePath) {
  if (!executablePath.starts_with(bundlePath)) return false;
  return executablePath.substr(bundlePath.size()).starts_with("/Contents/MacOS/");
}

std::optional<HelperRole> roleOfWords(const ProcessSample& process) {
  std::string haystack;
  haystack.reserve(process.name.size() + process.executablePath.size() + process.arguments.size() +
                   2);
  haystack.append(process.name).append(" ").append(process.executablePath);
  haystack.append(" ").append(process.arguments);
  return helperRoleOfWords(lowerCased(std::move(haystack)));
}

HelperRole helperRole(const ProcessSample& process, std::optional<HelperRole> words,
                      std::int32_t rootPID, const std::optional<std::string>& bundlePath) {
  if (process.pid == rootPID) return HelperRole::main;
  if (words) return *words;
  const bool isMain = bundlePath && liesInMainFolder(process.executablePath, *bundlePath) &&
                      process.name == nameWithoutExtension(*bundlePath);
  return isMain ? HelperRole::main : HelperRole::other;
}

}  // namespace korvantis
