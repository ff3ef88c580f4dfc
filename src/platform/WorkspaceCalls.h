#pragma once

#include <functional>
#include <string>
#include <vector>

namespace korvantis {

/// The desktop's own services (`NSWorkspace`). Main thread.
struct WorkspaceCalls {
  /// Has the desktop open `url` with the program that it has for it (`openURL:`) and comes back at
  /// once. `completion` is called exactly once, on any thread, with whether the desktop took it;
  /// that says nothing of what the program then does.
  std::function<void(const std::string& url, std::function<void(bool opened)> completion)> openURL =
      [](const std::string&, const std::function<void(bool)>& completion) { completion(false); };

  /// Shows the files at these paths selected in the file manager
  /// (`activateFileViewerSelectingURLs:`), or their folder where it can't do that; comes back at
  /// once.
  std::function<void(const std::vector<std::string>& paths)> activateFileViewerSelectingURLs =
      [](const std::vector<std::string>&) {};
};

/// The desktop's own answers.
WorkspaceCalls systemWorkspaceCalls();

}  // namespace korvantis
