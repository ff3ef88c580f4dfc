#include "platform/linux/applications/EntryChoice.h"

#include <algorithm>
#include <string>

namespace korvantis {
namespace {

bool wasGivenArguments(const IndexedEntry& entry, ProcessEvidence& process) {
  const auto& wanted = entry.extraArguments;
  return std::all_of(wanted.begin(), wanted.end(), [&process](const std::string& argument) {
    return process.hasArgument(argument);
  });
}

/// Options fine-tune a program; any other word tells it to be something else, such as the one
/// that a terminal is to run.
bool needsArguments(const IndexedEntry& entry) {
  const auto& wanted = entry.extraArguments;
  return std::any_of(wanted.begin(), wanted.end(), [](const std::string& argument) {
    return !argument.starts_with('-') || argument == "--" || argument == "-e";
  });
}

/// The one with the most arguments, all of them given; null when none or two are equal in that.
EntryPointer byArguments(const std::vector<EntryPointer>& candidates, ProcessEvidence& process) {
  EntryPointer best;
  bool isTie = false;
  for (const EntryPointer& entry : candidates) {
    const auto count = entry->extraArguments.size();
    if (count == 0 || !wasGivenArguments(*entry, process)) continue;
    isTie = best && count == best->extraArguments.size();
    if (!best || count > best->extraArguments.size()) best = entry;
  }
  return isTie ? nullptr : best;
}

EntryPointer withoutArguments(const std::vector<EntryPointer>& candidates) {
  EntryPointer plain;
  for (const EntryPointer& entry : candidates) {
    if (!entry->extraArguments.empty()) continue;
    if (!plain) {
      plain = entry;
      continue;
    }
    // Two entries of one and the same program are two names for it.
    if (plain->program.empty() || plain->program != entry->program) return nullptr;
  }
  return plain;
}

}  // namespace

EntryPointer chooseEntry(const std::vector<EntryPointer>& candidates, ProcessEvidence& process,
                         const ProcessSurroundings& around) {
  if (candidates.empty()) return nullptr;
  if (candidates.size() == 1) {
    const EntryPointer& only = candidates.front();
    return needsArguments(*only) && !wasGivenArguments(*only, process) ? nullptr : only;
  }
  if (EntryPointer found = byArguments(candidates, process)) return found;
  const EntryPointer parents = around.applicationOf(process.parent());
  const bool isParents =
      parents && std::find(candidates.begin(), candidates.end(), parents) != candidates.end();
  return isParents ? parents : withoutArguments(candidates);
}

}  // namespace korvantis
