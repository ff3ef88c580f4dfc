#include "platform/linux/applications/BundlePaths.h"

#include <algorithm>
#include <array>

#include "platform/linux/applications/KnownPrograms.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis::BundlePaths {
namespace {

/// The word under which a helper lies. The names are those that the programs give themselves, cut
/// to the 15 bytes that the kernel keeps.
std::string_view helperWord(const ProcessEvidence& process) {
  constexpr std::array<std::string_view, 3> contents{"Web Content", "Isolated Web Co",
                                                     "Privileged Cont"};
  const std::string& name = process.name();
  const std::string_view program = process.program();
  const bool showsPages = std::find(contents.begin(), contents.end(), name) != contents.end();
  if (showsPages || program == "WebKitWebProcess") return "WebContent";
  if (name == "Socket Process" || program == "WebKitNetworkProcess") return "Networking";
  return "Helper";
}

}  // namespace

bool isMain(const ApplicationMatch& match, ProcessEvidence& process) {
  if (match.rule == ApplicationRule::sharedHelper) return false;
  if (process.hasArgumentBeginning("--type=") || process.hasArgument("-contentproc")) return false;
  switch (match.rule) {
    case ApplicationRule::executableLocation:
    case ApplicationRule::appImage:
    case ApplicationRule::sandbox: return isMainProgramOf(*match.entry, process.program());
    // A shell that has read a script only waits for the program that the script has started.
    case ApplicationRule::interpreterScript: return !KnownPrograms::isShell(process.program());
    default: return true;
  }
}

std::string executable(const IndexedEntry& entry, bool isMainProgram, ProcessEvidence& process) {
  std::string path = entry.bundlePath + "/Contents/";
  if (isMainProgram) {
    path += "MacOS/";
  } else {
    path.append("Frameworks/").append(helperWord(process)).append("/");
  }
  return path.append(process.program());
}

std::string sessionComponent(const ProcessEvidence& process) {
  const std::string& path = process.executable();
  return "/System" + (path.empty() ? "/" + process.name() : path);
}

bool holds(std::string_view relative) {
  constexpr std::array<std::string_view, 5> parts{"", "/", "/Contents", "/Contents/Info.plist",
                                                  "/Contents/MacOS"};
  return std::find(parts.begin(), parts.end(), relative) != parts.end();
}

PropertyMap propertyList(const IndexedEntry& entry) {
  PropertyMap list;
  const auto put = [&list](const char* key, const std::string& text) {
    if (!text.empty()) list[key] = PropertyValue{text};
  };
  put("CFBundleDisplayName", entry.entry.localizedName);
  put("CFBundleName", entry.entry.name);
  put("CFBundleIdentifier", entry.identifier);
  put("CFBundleIconFile", entry.entry.icon);
  return list;
}

}  // namespace korvantis::BundlePaths
