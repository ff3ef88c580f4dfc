#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/HelperRole.h"
#include "core/ProcessSample.h"

/// What a process is for inside its application. Nothing here reads a file; any thread.
namespace korvantis {

/// Whether a program lies where `bundlePath` keeps its main program.
bool liesInMainFolder(std::string_view executablePath, std::string_view bundlePath);

/// The role that the words in a helper's name, path and arguments give away; absent when none
/// does.
std::optional<HelperRole> roleOfWords(const ProcessSample& process);

/// The role of `process`, of which `words` is `roleOfWords`. The process `rootPID` is always
/// `main`, and so is a second instance of the bundle's main program.
HelperRole helperRole(const ProcessSample& process, std::optional<HelperRole> words,
                      std::int32_t rootPID, const std::optional<std::string>& bundlePath);

}  // namespace korvantis
