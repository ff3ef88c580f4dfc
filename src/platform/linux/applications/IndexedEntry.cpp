#include "platform/linux/applications/IndexedEntry.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

// Shorter names turn up inside others by chance.
constexpr std::size_t shortestTelling = 4;

constexpr std::array<std::string_view, 8> packings{".bin", "-bin", ".real", "-real",
                                                   ".sh",  ".py",  ".jar",  "-wrapped"};
constexpr std::string_view entryExtension = ".desktop";

}  // namespace

std::string programStem(std::string_view word) {
  std::string stem(baseNameOf(word));
  std::transform(stem.begin(), stem.end(), stem.begin(), [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  for (const std::string_view packing : packings) {
    if (stem.size() > packing.size() && stem.ends_with(packing)) {
      stem.resize(stem.size() - packing.size());
      break;
    }
  }
  return stem;
}

bool stemsAreAlike(std::string_view first, std::string_view second) {
  if (first == second) return !first.empty();
  const std::string_view shorter = first.size() < second.size() ? first : second;
  const std::string_view longer = first.size() < second.size() ? second : first;
  return shorter.size() >= shortestTelling && longer.find(shorter) != std::string_view::npos;
}

bool isMainProgramOf(const IndexedEntry& entry, std::string_view executable) {
  const std::string stem = programStem(executable);
  return std::any_of(entry.stems.begin(), entry.stems.end(), [&stem](const std::string& own) {
    // Not the other way round: "browser_crash_handler" is no "browser".
    return own == stem || (stem.size() >= shortestTelling && own.find(stem) != std::string::npos);
  });
}

std::string bundlePathOf(std::string_view entryPath) {
  if (entryPath.ends_with(entryExtension)) entryPath.remove_suffix(entryExtension.size());
  return std::string(entryPath).append(".app");
}

}  // namespace korvantis
