#include "platform/linux/MachineSources.h"

#include <chrono>
#include <memory>

#include "platform/linux/LinkDump.h"

namespace korvantis {

MachineSources systemMachineSources() {
  const auto links = std::make_shared<LinkDump>();
  MachineSources sources;
  sources.monotonicSeconds = [] {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceStart).count();
  };
  sources.dumpLinks = [links] { return links->dump(); };
  return sources;
}

}  // namespace korvantis
