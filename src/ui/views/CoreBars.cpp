#include "ui/views/CoreBars.h"

#include <QPainter>
#include <algorithm>

#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

constexpr double usualHeight = 14;
constexpr double widestGap = 2;
constexpr double corner = 1;

}  // namespace

CoreBars::CoreBars(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setImplicitHeight(usualHeight);
}

void CoreBars::setShares(const QList<double>& shares) {
  if (shares == shares_) return;
  shares_ = shares;
  update();
  emit sharesChanged();
}

void CoreBars::setPerformanceCores(int count) {
  if (count == performanceCores_) return;
  performanceCores_ = count;
  update();
  emit performanceCoresChanged();
}

void CoreBars::paint(QPainter* painter) {
  if (shares_.isEmpty()) return;
  const auto count = static_cast<double>(shares_.size());
  // With very many cores the gaps give way first.
  const double gap = std::min(widestGap, width() / count / 4);
  const double barWidth = (width() - gap * (count - 1)) / count;
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  for (qsizetype index = 0; index < shares_.size(); ++index) {
    const double x = static_cast<double>(index) * (barWidth + gap);
    painter->setBrush(OstrelTheme::elevatedCard());
    painter->drawRoundedRect(QRectF(x, 0, barWidth, height()), corner, corner);
    const double filled = height() * std::clamp(shares_[index], 0.0, 1.0);
    painter->setBrush(index < performanceCores_ ? OstrelTheme::cpu() : OstrelTheme::gpu());
    painter->drawRoundedRect(QRectF(x, height() - filled, barWidth, filled), corner, corner);
  }
}

}  // namespace korvantis
