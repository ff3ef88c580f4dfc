#include "analysis/AgentScanner.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "analysis/AgentTokenLogs.h"
#include "analysis/AgentTools.h"
#include "analysis/OrdinaryPID.h"
#include "analysis/PathNames.h"
#include "analysis/PlanLimits.h"
#include "analysis/StableMergeSort.h"
#include "core/Utf8.h"

namespace korvantis {

namespace {

constexpr double tokenScanIntervalSeconds = 30.0;
constexpr double workingPercent = 3.5;
constexpr double waitingPercent = 0.4;
constexpr std::size_t mostChildNames = 5;

struct Agent {
  const ProcessSample* process;
  std::string_view toolName;
};

using Children = std::vector<const ProcessSample*>;
using ChildrenByPID = std::unordered_map<std::int32_t, Children>;

std::string placeOf(const ProcessSample& process) {
  return process.projectPath ? *process.projectPath : process.workingDirectory.value_or("");
}

/// One Cursor for each place, since each of its windows is a process; of every other tool each
/// process is an agent of its own.
std::vector<Agent> agentsAmong(const std::vector<ProcessSample>& processes,
                               const TextFacts<std::string_view>& tools) {
  std::vector<Agent> agents;
  std::unordered_set<std::string> placesOfCursor;
  for (std::size_t index = 0; index < processes.size(); ++index) {
    const ProcessSample& process = processes[index];
    const std::string_view tool = tools[index];
    if (tool.empty()) continue;
    if (tool == "Cursor" && !placesOfCursor.insert(placeOf(process)).second) continue;
    agents.push_back({&process, tool});
  }
  return agents;
}

/// The direct children of each agent, in the order of the list.
ChildrenByPID childrenOf(const std::vector<Agent>& agents,
                         const std::vector<ProcessSample>& processes) {
  ChildrenByPID children;
  for (const Agent& agent : agents) children.try_emplace(agent.process->pid);
  if (children.empty()) return children;
  for (const ProcessSample& process : processes) {
    // What the kernel and the first process started are nobody's children.
    if (process.ppid < firstOrdinaryPID) continue;
    const auto parent = children.find(process.ppid);
    if (parent != children.end()) parent->second.push_back(&process);
  }
  return children;
}

/// No prompt is read: an agent that neither works nor sleeps is thought to wait for an answer.
AgentState stateOf(double cpuPercent, bool hasChildren) {
  if (cpuPercent >= workingPercent || hasChildren) return AgentState::working;
  return cpuPercent >= waitingPercent ? AgentState::waitingForApproval : AgentState::idle;
}

/// The session but for its tokens. A process of unknown folder is taken to work in `home`.
AgentSession sessionOf(const Agent& agent, const Children& children, const std::string& home) {
  const ProcessSample& process = *agent.process;
  AgentSession session;
  session.pid = process.pid;
  session.toolName = agent.toolName;
  session.cpuPercent = process.cpuPercent;
  session.memoryBytes = process.memoryBytes;
  for (const ProcessSample* child : children) {
    session.cpuPercent += child->cpuPercent;
    session.memoryBytes += child->memoryBytes;
    if (session.childProcesses.size() < mostChildNames) {
      session.childProcesses.push_back(child->name);
    }
  }
  session.state = stateOf(session.cpuPercent, !children.empty());
  session.projectPath =
      process.projectPath ? *process.projectPath : process.workingDirectory.value_or(home);
  session.projectName = lastPathComponent(session.projectPath);
  session.startedAt = process.startedAt;
  return session;
}

}  // namespace

AgentScanner::AgentScanner(Clock clockCalls, FileManagerCalls files)
    : clock(std::move(clockCalls)),
      fileManager(std::move(files)),
      homeDir(fileManager.homeDirectoryForCurrentUser()) {}

AgentScanner::Scan AgentScanner::scanAgentsAndLimits(const std::vector<ProcessSample>& processes) {
  refreshLocalTokenLogsIfNeeded();
  std::unique_lock guard(lock);
  const AgentTokens claudeTokens = cachedClaudeTokens;
  const AgentTokens codexTokens = cachedCodexTokens;
  // Taken, not copied: a second caller at the same time reads the texts for itself.
  TextFacts<std::string_view> known = std::exchange(knownTools, {});
  guard.unlock();

  TextFacts tools(processes, std::move(known), agentToolOf);
  const std::vector<Agent> agents = agentsAmong(processes, tools);
  const ChildrenByPID children = childrenOf(agents, processes);
  const std::string home = repairedUtf8(homeDir);
  Scan scan;
  scan.sessions.reserve(agents.size());
  for (const Agent& agent : agents) {
    AgentSession session = sessionOf(agent, children.at(agent.process->pid), home);
    // There are logs of one tool alone; its figures stand in for those of all others.
    const bool isCodex = agent.toolName.find("Codex") != std::string_view::npos;
    const AgentTokens& tokens = isCodex ? codexTokens : claudeTokens;
    session.tokensToday = tokens.today;
    session.tokensWeek = tokens.week;
    scan.sessions.push_back(std::move(session));
  }
  stableMergeSort(scan.sessions, [](const AgentSession& first, const AgentSession& second) {
    return first.cpuPercent > second.cpuPercent;
  });
  scan.planLimits = planLimits(claudeTokens, codexTokens);
  guard.lock();
  std::swap(knownTools, tools);
  guard.unlock();
  return scan;
}

void AgentScanner::refreshLocalTokenLogsIfNeeded() {
  if (!beginTokenScan()) return;
  const std::uint64_t bytes = bytesOfTokenLogs(fileManager, homeDir + "/.claude/projects");
  if (bytes == 0) return;
  const AgentTokens tokens = tokensOfLogBytes(bytes);
  const std::lock_guard guard(lock);
  cachedClaudeTokens = tokens;
}

/// Whether a scan is due. Its time counts from here on, so that one that fails or takes long is
/// not tried again at once.
bool AgentScanner::beginTokenScan() {
  const double now = clock.now();
  const std::lock_guard guard(lock);
  if (now - lastTokenScanTime < tokenScanIntervalSeconds) return false;
  lastTokenScanTime = now;
  return true;
}

}  // namespace korvantis
