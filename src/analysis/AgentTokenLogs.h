#pragma once

#include <cstdint>
#include <string>

#include "analysis/AgentTokens.h"
#include "platform/FileManagerCalls.h"

namespace korvantis {

/// The bytes of the session logs (".jsonl") below `folder`: of the first 40 that the walk comes
/// upon whose size can be told. No log is opened. 0 when there is no such folder. Any thread.
std::uint64_t bytesOfTokenLogs(const FileManagerCalls& files, const std::string& folder);

/// The tokens that so many bytes of logs stand for: an estimate that looks at no date and has a
/// floor. Any thread.
AgentTokens tokensOfLogBytes(std::uint64_t bytes);

}  // namespace korvantis
