#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// A square picture for a status item.
struct StatusItemImage {
  /// Width and height in pixels.
  std::int32_t size = 0;
  /// Rows from the top, four bytes a pixel: alpha, red, green, blue, not premultiplied.
  std::vector<std::uint8_t> pixels;
};

/// Where on the screen a status item was clicked, in pixels from the top left.
struct StatusItemPoint {
  int x = 0;
  int y = 0;
};

/// One line of a status item's menu; an empty title is a separator.
struct StatusItemMenuEntry {
  std::string title;
  std::function<void()> action;
};

/// What a status item is made of.
struct StatusItemDescription {
  std::string accessibilityDescription;
  /// The same picture in several sizes; its shape counts, a menu bar may colour it anew.
  std::vector<StatusItemImage> images;
  std::vector<StatusItemMenuEntry> menu;
  /// A click on the item; the point is absent where the desktop does not tell it.
  std::function<void(std::optional<StatusItemPoint>)> action;
};

/// The one entry of this program in the menu bar or tray. Main thread.
struct StatusItemCalls {
  /// Puts the item up, now or as soon as there is a tray. Called once.
  std::function<void(StatusItemDescription)> add;
  /// The text beside the picture.
  std::function<void(const std::string& title)> setTitle;
  /// True while a tray shows the item.
  std::function<bool()> isShown;
};

/// The menu bar's or tray's own item. Needs an application object.
StatusItemCalls systemStatusItemCalls();

}  // namespace korvantis
