#include "platform/linux/ProcessName.h"

namespace korvantis {
namespace {

constexpr std::size_t fullName = 15;
constexpr std::size_t longestName = 31;

std::string_view baseName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

std::string longProcessName(std::string_view name, std::string_view executable,
                            std::string_view firstArgument) {
  if (name.size() == fullName) {
    for (const std::string_view path : {executable, firstArgument}) {
      const std::string_view base = baseName(path);
      if (base.starts_with(name)) return std::string(base.substr(0, longestName));
    }
  }
  return std::string(name.substr(0, longestName));
}

}  // namespace korvantis
