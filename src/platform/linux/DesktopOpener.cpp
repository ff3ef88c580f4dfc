#include "platform/linux/DesktopOpener.h"

#include <utility>

#include "platform/WorkspaceCalls.h"
#include "platform/linux/FileReveal.h"
#include "platform/linux/SpawnedProgram.h"
#include "platform/linux/UtilityThread.h"

namespace korvantis {
namespace {

constexpr double answerSeconds = 2;

/// The part of a URL before its first colon.
std::string schemeOf(const std::string& url) {
  return url.substr(0, url.find(':'));
}

/// Whether the desktop has a program for that scheme.
bool hasHandler(const std::string& scheme) {
  std::string error;
  const auto query = SpawnedProgram::start(
      "xdg-mime", {"query", "default", "x-scheme-handler/" + scheme}, ProgramOutput::piped, error);
  if (!query) return false;
  const std::string handler = query->readOutput(answerSeconds);
  query->terminate();
  return handler.find_first_not_of(" \t\r\n") != std::string::npos;
}

void openURL(const std::string& url, const std::function<void(bool)>& completion) {
  // Without a thread to be had: the main thread must not wait for another program. Of the usual
  // priority, which a browser that is started keeps for its life.
  if (!startThread([url, completion] { completion(openWithDesktop(url)); })) {
    completion(false);
  }
}

}  // namespace

bool openWithDesktop(const std::string& url) {
  const std::string scheme = schemeOf(url);
  const bool isWeb = scheme == "http" || scheme == "https";
  if (!isWeb && !hasHandler(scheme)) return false;
  std::string error;
  const auto opener = SpawnedProgram::start("xdg-open", {url}, ProgramOutput::discarded, error);
  if (!opener) return false;
  return !opener->waitUntilEnd(answerSeconds) || opener->terminationStatus() == 0;
}

WorkspaceCalls systemWorkspaceCalls() {
  return {openURL, revealInFileManager};
}

}  // namespace korvantis
