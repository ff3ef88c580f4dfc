#include "ui/views/SteadyScroll.h"

#include <algorithm>
#include <cstddef>

namespace korvantis {

void SteadyScroll::setColumn(QQuickItem* column) {
  if (column_ == column) return;
  column_ = column;
  remember();
  emit columnChanged();
}

double SteadyScroll::shiftAfterLayout(double top, double bottom, QQuickItem* heldBlock) {
  std::vector<double> shifts;
  for (const Block& block : blocks_) {
    const bool wasInView = block.y < bottom && block.y + block.height > top;
    if (!wasInView || !block.item || !block.item->isVisible()) continue;
    if (block.item == heldBlock) {
      shifts.assign(1, shiftOf(block));
      break;
    }
    shifts.push_back(shiftOf(block));
  }
  remember();
  if (shifts.empty()) return 0;
  const auto middle = shifts.begin() + static_cast<std::ptrdiff_t>(shifts.size() / 2);
  std::nth_element(shifts.begin(), middle, shifts.end());
  return *middle;
}

double SteadyScroll::shiftOf(const Block& block) const {
  return block.item->y() - block.y;
}

void SteadyScroll::remember() {
  blocks_.clear();
  if (!column_) return;
  const QList<QQuickItem*> items = column_->childItems();
  for (QQuickItem* const item : items) {
    if (item->isVisible()) blocks_.push_back({item, item->y(), item->height()});
  }
}

}  // namespace korvantis
