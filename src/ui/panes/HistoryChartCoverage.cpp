#include "ui/panes/HistoryChartCoverage.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace korvantis {

namespace {

constexpr float full = 255;
/// A stroke's edge is this far from its middle beyond its radius where its last shade ends.
constexpr float softEdge = 0.5F;
/// With more points than this for each column single strokes can't be told apart.
constexpr std::size_t mostPointsPerColumn = 2;

std::uint8_t shade(float share) {
  return static_cast<std::uint8_t>(std::clamp(share, 0.0F, 1.0F) * full + 0.5F);
}

/// The pixel in which a place lies, at most one outside of `count` pixels.
int pixelAt(float place, int count) {
  return static_cast<int>(std::floor(std::clamp(place, -1.0F, static_cast<float>(count))));
}

void cover(std::uint8_t& pixel, std::uint8_t coverage) {
  pixel = std::max(pixel, coverage);
}

/// The straight piece of a line between two points, as far as `reach` around it.
class Capsule {
 public:
  Capsule(PixelPoint from, PixelPoint to, float reach)
      : from_(from), dx_(to.x - from.x), dy_(to.y - from.y), reach_(reach) {
    const float squared = dx_ * dx_ + dy_ * dy_;
    inverse_ = squared > 0 ? 1 / squared : 0;
    upper_ = std::min(from.y, to.y) - reach;
    lower_ = std::max(from.y, to.y) + reach;
    if (std::abs(dx_) > 1e-3F) {
      slope_ = dy_ / dx_;
      around_ = reach * std::sqrt(1 + slope_ * slope_);
    } else {
      around_ = lower_ - upper_;
    }
  }

  /// From where to where it can lie at `x`.
  ColumnBand bandAt(float x) const {
    const float middle = from_.y + slope_ * (x - from_.x);
    return {std::max(upper_, middle - around_), std::min(lower_, middle + around_)};
  }

  /// How far it reaches beyond the point; not above 0 outside.
  float depthAt(float x, float y) const {
    const float px = x - from_.x;
    const float py = y - from_.y;
    const float along = std::clamp((px * dx_ + py * dy_) * inverse_, 0.0F, 1.0F);
    const float ox = px - along * dx_;
    const float oy = py - along * dy_;
    return reach_ - std::sqrt(ox * ox + oy * oy);
  }

 private:
  PixelPoint from_;
  float dx_;
  float dy_;
  float reach_;
  float inverse_ = 0;
  float slope_ = 0;
  float around_ = 0;
  float upper_ = 0;
  float lower_ = 0;
};

}  // namespace

HistoryChartCoverage::HistoryChartCoverage(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

std::span<const std::uint8_t> HistoryChartCoverage::column(int index) const {
  const auto height = static_cast<std::size_t>(height_);
  return std::span(pixels_).subspan(static_cast<std::size_t>(index) * height, height);
}

std::span<std::uint8_t> HistoryChartCoverage::mutableColumn(int index) {
  const auto height = static_cast<std::size_t>(height_);
  return std::span(pixels_).subspan(static_cast<std::size_t>(index) * height, height);
}

void HistoryChartCoverage::drawLine(std::span<const PixelPoint> points,
                                    const std::vector<ColumnBand>& bands, float lineWidth) {
  const float radius = lineWidth / 2;
  if (points.size() > mostPointsPerColumn * static_cast<std::size_t>(width_)) {
    drawBands(bands, radius);
  } else if (points.size() == 1) {
    drawStroke(points.front(), points.front(), lineWidth);
  } else {
    for (std::size_t index = 1; index < points.size(); ++index) {
      drawStroke(points[index - 1], points[index], radius);
    }
  }
}

void HistoryChartCoverage::drawStroke(PixelPoint from, PixelPoint to, float radius) {
  const float reach = radius + softEdge;
  const Capsule capsule(from, to, reach);
  const int first = std::max(0, pixelAt(std::min(from.x, to.x) - reach, width_));
  const int last = std::min(width_ - 1, pixelAt(std::max(from.x, to.x) + reach, width_));
  for (int index = first; index <= last; ++index) {
    const float x = static_cast<float>(index) + 0.5F;
    const ColumnBand band = capsule.bandAt(x);
    const int upper = std::max(0, pixelAt(band.upper, height_));
    const int lower = std::min(height_ - 1, pixelAt(band.lower, height_));
    const std::span<std::uint8_t> pixels = mutableColumn(index);
    for (int row = upper; row <= lower; ++row) {
      const float depth = capsule.depthAt(x, static_cast<float>(row) + 0.5F);
      if (depth > 0) cover(pixels[static_cast<std::size_t>(row)], shade(depth));
    }
  }
}

/// A line wider than a column reaches into its neighbours, less and less far up and down.
void HistoryChartCoverage::drawBands(const std::vector<ColumnBand>& bands, float radius) {
  for (int column = 0; column < width_; ++column) {
    const ColumnBand& band = bands[static_cast<std::size_t>(column)];
    if (band.isEmpty()) continue;
    drawBand(column, band, radius, 1);
    for (int away = 1; static_cast<float>(away) - softEdge < radius; ++away) {
      const float distance = static_cast<float>(away);
      const float strength = std::min(1.0F, radius + softEdge - distance);
      const float rest = std::sqrt(std::max(0.0F, radius * radius - distance * distance));
      drawBand(column - away, band, rest, strength);
      drawBand(column + away, band, rest, strength);
    }
  }
}

void HistoryChartCoverage::drawBand(int column, const ColumnBand& band, float radius,
                                    float strength) {
  if (column < 0 || column >= width_) return;
  const float upper = std::max(0.0F, band.upper - radius);
  const float lower = std::min(static_cast<float>(height_), band.lower + radius);
  if (upper >= lower) return;
  const std::span<std::uint8_t> pixels = mutableColumn(column);
  const auto first = static_cast<std::size_t>(upper);
  const auto last = static_cast<std::size_t>(std::ceil(lower)) - 1;
  const std::uint8_t inside = shade(strength);
  for (std::size_t row = first + 1; row < last; ++row) cover(pixels[row], inside);
  const auto covered = [&](std::size_t row) {
    const auto top = static_cast<float>(row);
    return strength * (std::min(lower, top + 1) - std::max(upper, top));
  };
  cover(pixels[first], shade(covered(first)));
  cover(pixels[last], shade(covered(last)));
}

}  // namespace korvantis
