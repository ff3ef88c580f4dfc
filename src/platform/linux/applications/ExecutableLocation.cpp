#include "platform/linux/applications/ExecutableLocation.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/applications/EntryChoice.h"
#include "platform/linux/applications/KnownPrograms.h"

namespace korvantis {
namespace {

/// The name of the snap that a path lies in; empty for any other path.
std::string snapOf(std::string_view path) {
  constexpr std::string_view place = "/snap/";
  if (!path.starts_with(place)) return {};
  path.remove_prefix(place.size());
  const std::size_t slash = path.find('/');
  return std::string(slash == std::string_view::npos ? std::string_view() : path.substr(0, slash));
}

}  // namespace

EntryPointer ExecutableLocation::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  // An application may bring its own interpreter; what that runs need not be the application's.
  if (KnownPrograms::isInterpreter(process.program())) return nullptr;
  const std::string snap = snapOf(process.executable());
  if (!snap.empty()) return chooseEntry(around.index->ofSnap(snap), process, around);
  return chooseEntry(around.index->aroundFile(process.executable()), process, around);
}

}  // namespace korvantis
