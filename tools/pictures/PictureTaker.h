#pragma once

#include <QString>

#include "pictures/PictureOptions.h"
#include "pictures/SampleMachine.h"
#include "ui/OstrelAppDelegate.h"

namespace korvantis::pictures {

/// Draws the program's own windows over a made-up machine into PNG files. Main thread.
class PictureTaker {
 public:
  /// `wanted` names the files and their folder; `bundleFolder` is an empty folder.
  PictureTaker(PictureOptions wanted, const std::string& bundleFolder);

  /// Draws all that is wanted and prints the name of each file; false when one can't be written.
  bool takeAll();

 private:
  bool takeDefaults();
  bool take(const QString& pane, const QString& theme);
  QQuickWindow& shownWindow();
  bool save(QQuickWindow& window, const QString& name) const;

  PictureOptions options;
  SampleMachine machine;
  OstrelAppDelegate delegate;
};

}  // namespace korvantis::pictures
