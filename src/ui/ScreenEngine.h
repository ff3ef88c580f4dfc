#pragma once

class QQmlEngine;

namespace korvantis {

/// Teaches `engine` where the screens are and how to draw system symbols and
/// applications' icons. Main thread.
void prepareScreens(QQmlEngine& engine);

}  // namespace korvantis
