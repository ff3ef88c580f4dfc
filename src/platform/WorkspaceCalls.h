#pragma once

#include <functional>
#include <string>

namespace korvantis {

/// The desktop's own services (`NSWorkspace`). Main thread.
struct WorkspaceCalls {
  /// Has the desktop open `url` with the program that it has for it (`openURL:`) and comes back at
  /// once. `completion` is called exactly once, on any thread, with whether the desktop took it;
  /// that says nothing of what the program then does.
  std::function<void(const std::string& url, std::function<void(bool opened)> completion)> openURL =
      [](const std::string&, const std::function<void(bool)>& completion) { completion(false); };
};

/// The desktop's own answers.
WorkspaceCalls systemWorkspaceCalls();

}  // namespace korvantis
