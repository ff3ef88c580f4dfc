#include "platform/qt/TrayItem.h"

#include <utility>

namespace korvantis {

TrayItem::TrayItem(QObject* parent, StatusItemDescription description)
    : QDBusAbstractAdaptor(parent), description_(std::move(description)) {}

QString TrayItem::title() const {
  return QString::fromStdString(description_.accessibilityDescription);
}

QList<TrayPixmap> TrayItem::iconPixmap() const {
  QList<TrayPixmap> pixmaps;
  for (const StatusItemImage& image : description_.images) {
    pixmaps.append({image.size, image.size,
                    QByteArray(reinterpret_cast<const char*>(image.pixels.data()),
                               static_cast<qsizetype>(image.pixels.size()))});
  }
  return pixmaps;
}

TrayToolTip TrayItem::toolTip() const {
  return {{}, {}, title(), label_.trimmed()};
}

void TrayItem::setLabel(const QString& label) {
  if (label == label_) return;
  label_ = label;
  emit XAyatanaNewLabel(label_, label_);
  emit NewToolTip();
}

void TrayItem::Activate(int x, int y) {
  // Desktops that do not know where the item is send zeros.
  const bool isKnown = x != 0 || y != 0;
  if (!description_.action) return;
  description_.action(isKnown ? std::optional(StatusItemPoint{x, y}) : std::nullopt);
}

void TrayItem::SecondaryActivate(int x, int y) {
  Activate(x, y);
}

void TrayItem::ContextMenu(int /*x*/, int /*y*/) {
  // The tray draws the menu itself, out of the entries that it reads.
}

void TrayItem::Scroll(int /*delta*/, const QString& /*orientation*/) {}

}  // namespace korvantis
