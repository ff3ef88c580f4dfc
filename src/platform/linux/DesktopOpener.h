#pragma once

#include <string>

namespace korvantis {

/// Has the desktop's opener (`xdg-open` on PATH) open `url`; whether it took it. For any scheme
/// but the web's the desktop must name a program first (`xdg-mime`), since the opener accepts what
/// nobody can open. Holds the calling thread, 4 seconds at most: an opener that still runs after
/// its 2 seconds has taken the URL, one that can't even name a program after 2 has not.
bool openWithDesktop(const std::string& url);

}  // namespace korvantis
