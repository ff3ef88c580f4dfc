#include "platform/linux/applications/InterpreterScript.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/linux/applications/EntryChoice.h"
#include "platform/linux/applications/KnownPrograms.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::size_t lastScriptWord = 3;

}  // namespace

EntryPointer InterpreterScript::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  if (!KnownPrograms::isInterpreter(process.program())) return nullptr;
  const auto& words = process.words();
  for (std::size_t index = 1; index <= lastScriptWord && index < words.size(); ++index) {
    std::string path = words[index];
    if (path.find('/') == std::string::npos || path.starts_with('-')) continue;
    // Names first: the file may lie on a network that does not answer.
    if (!around.index->hasScriptNamed(baseNameOf(path))) continue;
    if (!path.starts_with('/')) path.insert(0, process.workingDirectory() + "/");
    const auto script = canonicalPath(around.root, path);
    if (!script) continue;
    const auto& candidates = around.index->withScript(*script);
    if (!candidates.empty()) return chooseEntry(candidates, process, around);
  }
  return nullptr;
}

}  // namespace korvantis
