#pragma once

#include <QImage>
#include <QQuickImageProvider>
#include <QSize>
#include <QString>
#include <map>
#include <tuple>

namespace korvantis {

class AppIconCache;

/// Gives QML the icons of applications, and the symbol that stands in for one in its colour, in
/// the pixels asked for: "image://appicon/<symbol>/<colour without #>/<path in base 64>", the path
/// left empty for none. Base 64, since an address takes some characters of a path for its own.
/// Never fails. Main thread: its images are not to be loaded asynchronously.
class AppIconProvider : public QQuickImageProvider {
 public:
  /// `iconCache` must outlive the provider.
  explicit AppIconProvider(AppIconCache& iconCache);

  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

 private:
  /// A picture as it was made fit: which one, the pixels, and the colour of a symbol.
  using Fitting = std::tuple<qint64, int, int, QRgb>;

  AppIconCache& cache;
  std::map<Fitting, QImage> fittings;
};

}  // namespace korvantis
