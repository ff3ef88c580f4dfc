#pragma once

#include <QImage>
#include <QString>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/IconCalls.h"

namespace korvantis {

/// A picture of 24 by 24 points, sharp on screens of up to four pixels a point.
struct AppIcon {
  QImage image;
  /// Only the shape counts: it is drawn in the colour of its surroundings.
  bool isTemplate = false;
};

/// The icons of applications, so that a list which is drawn on every tick asks the desktop once
/// for each. What was found is kept for the life of the program, also when the application has
/// gone; what was not found is looked for again each time. Main thread, so there is no lock.
class AppIconCache {
 public:
  explicit AppIconCache(IconCalls iconCalls);

  /// The one of all screens, over the desktop's own icons; made on first use.
  static AppIconCache& shared();

  /// The icon of what stands at `bundlePath`; where nothing does, or it has none, the symbol named
  /// `fallbackSymbol`; where no such symbol is known, the icon of the system's own monitor, and an
  /// empty picture on a desktop that has none.
  AppIcon icon(const std::optional<QString>& bundlePath, const QString& fallbackSymbol);

 private:
  std::optional<QImage> ofFile(const std::string& path) const;

  const IconCalls calls;
  std::unordered_map<std::string, QImage> cache;
};

}  // namespace korvantis
