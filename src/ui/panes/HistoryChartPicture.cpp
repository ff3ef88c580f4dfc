#include "ui/panes/HistoryChartPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "ui/panes/HistoryChartColumns.h"
#include "ui/panes/HistoryChartCoverage.h"

namespace korvantis {

namespace {

constexpr double averageLineWidth = 2;
constexpr double peakLineWidth = 1;
constexpr double peakOpacity = 0.45;
constexpr double opacityAtTop = 0.35;
constexpr double opacityAtBottom = 0.02;
/// No screen is larger; a width gone wrong must not take all memory.
constexpr double mostPixels = 32000;
constexpr unsigned opaque = 255;
/// So many rows of the image are written together, which keeps both them and the columns that
/// they are read from near at hand.
constexpr int rowsAtOnce = 32;

int pixelsOf(double units, double ratio) {
  const double pixels = std::round((units + 2 * HistoryChartPicture::margin) * ratio);
  return units > 0 && pixels > 0 ? static_cast<int>(std::min(pixels, mostPixels)) : 0;
}

/// Where points lie in the picture.
struct Placing {
  const HistoryChartScale& scale;
  double margin;
  double width;
  double height;

  float yOf(double value) const {
    return static_cast<float>(margin + scale.shareOfValue(value) * height);
  }
  std::vector<PixelPoint> line(const QList<HistoryPoint>& points,
                               double HistoryPoint::*value) const {
    std::vector<PixelPoint> line;
    if (!scale.hasTimes()) return line;
    line.reserve(static_cast<std::size_t>(points.size()));
    for (const HistoryPoint& point : points) {
      if (!isDrawable(point.date) || !isDrawable(point.*value)) continue;
      line.push_back(
          {static_cast<float>(margin + scale.shareOfTime(point.date) * width), yOf(point.*value)});
    }
    return line;
  }
};

/// The fading ground between the averages and 0.
class Ground {
 public:
  Ground(const std::vector<ColumnBand>& bands, float base, int height) : bands_(bands) {
    whole_.include(base);
    for (const ColumnBand& band : bands) {
      if (band.isEmpty()) continue;
      whole_.include(band.upper);
      whole_.include(band.lower);
    }
    base_ = base;
    const float range = std::max(1.0F, whole_.lower - whole_.upper);
    opacities_.resize(static_cast<std::size_t>(height));
    for (std::size_t row = 0; row < opacities_.size(); ++row) {
      const double share = (static_cast<double>(row) + 0.5 - whole_.upper) / range;
      const double fading = std::clamp(share, 0.0, 1.0) * (opacityAtBottom - opacityAtTop);
      opacities_[row] = static_cast<std::uint8_t>(std::lround((opacityAtTop + fading) * opaque));
    }
  }

  /// Writes the opacities of one column.
  void fill(int column, std::vector<std::uint8_t>& opacities) const {
    std::fill(opacities.begin(), opacities.end(), std::uint8_t{0});
    ColumnBand band = bands_[static_cast<std::size_t>(column)];
    if (band.isEmpty()) return;
    band.include(base_);
    // Rows whose middle lies inside; the line over the upper edge makes it smooth.
    const auto height = static_cast<float>(opacities.size());
    const auto first = static_cast<std::size_t>(std::clamp(band.upper + 0.5F, 0.0F, height));
    const auto end = static_cast<std::size_t>(std::clamp(band.lower + 0.5F, 0.0F, height));
    if (first < end) {
      std::copy(opacities_.begin() + static_cast<std::ptrdiff_t>(first),
                opacities_.begin() + static_cast<std::ptrdiff_t>(end),
                opacities.begin() + static_cast<std::ptrdiff_t>(first));
    }
  }

 private:
  const std::vector<ColumnBand>& bands_;
  ColumnBand whole_;
  float base_ = 0;
  std::vector<std::uint8_t> opacities_;
};

/// `part` of `whole`, both out of 255.
unsigned scaled(unsigned part, unsigned whole) {
  return (part * whole + opaque / 2) / opaque;
}

using Shades = std::array<std::uint8_t, opaque + 1>;

/// How opaque the line of the peaks is where it covers so much of a pixel.
Shades peakShades() {
  Shades shades{};
  for (std::size_t coverage = 0; coverage < shades.size(); ++coverage) {
    shades[coverage] =
        static_cast<std::uint8_t>(std::lround(peakOpacity * static_cast<double>(coverage)));
  }
  return shades;
}

/// Lays the ground and both lines over each other. All have one colour, so only opacities count.
std::vector<std::uint8_t> laidOver(const Ground& ground, const HistoryChartCoverage& averages,
                                   const HistoryChartCoverage& peaks) {
  const Shades shades = peakShades();
  const auto height = static_cast<std::size_t>(averages.height());
  std::vector<std::uint8_t> opacities;
  opacities.reserve(height * static_cast<std::size_t>(averages.width()));
  std::vector<std::uint8_t> column(height);
  for (int index = 0; index < averages.width(); ++index) {
    ground.fill(index, column);
    const auto average = averages.column(index);
    const auto peak = peaks.column(index);
    for (std::size_t row = 0; row < height; ++row) {
      if (average[row] == 0 && peak[row] == 0) continue;
      const unsigned seenThrough = scaled(opaque - column[row], opaque - average[row]);
      column[row] =
          static_cast<std::uint8_t>(opaque - scaled(seenThrough, opaque - shades[peak[row]]));
    }
    opacities.insert(opacities.end(), column.begin(), column.end());
  }
  return opacities;
}

/// The colour in each opacity, as the image holds it.
std::array<QRgb, opaque + 1> tintsOf(const QColor& color) {
  std::array<QRgb, opaque + 1> tints{};
  for (std::size_t opacity = 0; opacity < tints.size(); ++opacity) {
    tints[opacity] =
        qPremultiply(qRgba(color.red(), color.green(), color.blue(), static_cast<int>(opacity)));
  }
  return tints;
}

/// Turns the columns of opacities into rows of colour.
void paint(QImage& image, const std::vector<std::uint8_t>& opacities, const QColor& color) {
  const auto tints = tintsOf(color);
  const auto height = static_cast<std::size_t>(image.height());
  const int width = image.width();
  for (int first = 0; first < image.height(); first += rowsAtOnce) {
    const int end = std::min(first + rowsAtOnce, image.height());
    for (int row = first; row < end; ++row) {
      auto* const pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
      const std::uint8_t* opacity = opacities.data() + row;
      for (int column = 0; column < width; ++column, opacity += height) {
        pixels[column] = tints[*opacity];
      }
    }
  }
}

}  // namespace

QSize HistoryChartPicture::pixelSize() const {
  return {pixelsOf(width, pixelRatio), pixelsOf(height, pixelRatio)};
}

QImage HistoryChartPicture::draw(const QList<HistoryPoint>& points) const {
  const QSize size = pixelSize();
  if (size.isEmpty()) return {};
  const double edge = margin * pixelRatio;
  const Placing placing{scale, edge, size.width() - 2 * edge, size.height() - 2 * edge};
  const auto averageLine = placing.line(points, &HistoryPoint::avg);
  const auto peakLine = placing.line(points, &HistoryPoint::peak);
  const auto averageBands = columnBands(averageLine, size.width());
  HistoryChartCoverage averages(size.width(), size.height());
  averages.drawLine(averageLine, averageBands, static_cast<float>(averageLineWidth * pixelRatio));
  HistoryChartCoverage peaks(size.width(), size.height());
  peaks.drawLine(peakLine, columnBands(peakLine, size.width()),
                 static_cast<float>(peakLineWidth * pixelRatio));
  const Ground ground(averageBands, placing.yOf(0), size.height());
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  paint(image, laidOver(ground, averages, peaks), color);
  image.setDevicePixelRatio(pixelRatio);
  return image;
}

}  // namespace korvantis
