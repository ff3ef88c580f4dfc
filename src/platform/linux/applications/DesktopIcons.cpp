#include "platform/linux/applications/DesktopIcons.h"

#include <chrono>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <utility>

#include "platform/linux/FileText.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::string_view systemMonitorBundle =
    "/System/Applications/Utilities/Activity Monitor.app";
/// Its name in the themes, by the desktops' common naming.
constexpr const char* systemMonitorIcon = "utilities-system-monitor";
constexpr std::string_view bundleExtension = ".app";
/// Icons are some kilobytes; what is larger is not taken into memory.
constexpr std::size_t largestIcon = 4 << 20;

double uptime() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

bool isThere(const std::string& root, const std::string& path) {
  const auto canonical = canonicalPath(root, path);
  struct stat facts {};
  return canonical && ::stat((root + *canonical).c_str(), &facts) == 0;
}

/// On disk, or presented for the desktop entry of the same name.
bool isThereOrPresented(const std::string& root, const std::string& path) {
  if (path.find('\0') != std::string::npos) return false;
  if (isThere(root, path)) return true;
  return path.ends_with(bundleExtension) &&
         isThere(root, path.substr(0, path.size() - bundleExtension.size()) + ".desktop");
}

std::optional<std::string> contentOf(const std::string& root, const std::string& file) {
  const auto canonical = canonicalPath(root, file);
  if (!canonical) return std::nullopt;
  FileText content = readFileText(AT_FDCWD, root + *canonical, largestIcon + 1);
  if (content.text.empty() || content.text.size() > largestIcon) return std::nullopt;
  return std::move(content.text);
}

}  // namespace

IconCalls desktopIconCalls(IconFiles::Places places) {
  const std::string root = places.root;
  const auto files = std::make_shared<IconFiles>(std::move(places));
  IconCalls calls;
  calls.fileExistsAtPath = [root](const std::string& path) {
    return isThereOrPresented(root, path);
  };
  calls.iconForFile = [root, files](const std::string& path) {
    const auto file = path == systemMonitorBundle ? files->find(systemMonitorIcon, uptime())
                                                  : files->ofBundle(path, uptime());
    return file ? contentOf(root, *file) : std::nullopt;
  };
  return calls;
}

IconCalls systemIconCalls() {
  return desktopIconCalls(systemIconPlaces());
}

}  // namespace korvantis
