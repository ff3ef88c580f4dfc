#include "ui/RestingModels.h"

#include <QByteArrayView>
#include <QMetaProperty>
#include <QQuickItem>
#include <QVariant>

#include "state/MonitorStore.h"

namespace korvantis::RestingModels {
namespace {

/// The property by which a model hears of its store; invalid for everything else. Views written in
/// QML have one too and keep it: their bindings read it, and a hidden view is not drawn anyway.
QMetaProperty storeOfModel(const QObject& object) {
  const int index = object.metaObject()->indexOfProperty("store");
  if (index < 0 || qobject_cast<const QQuickItem*>(&object) != nullptr) return {};
  const QMetaProperty property = object.metaObject()->property(index);
  const bool isOurs = QByteArrayView(property.enclosingMetaObject()->className())
                          .startsWith(QByteArrayView("korvantis::"));
  const bool isStore = property.metaType() == QMetaType::fromType<MonitorStore*>();
  return isOurs && isStore ? property : QMetaProperty();
}

/// Writing a property from here leaves its binding in place.
void giveStore(QObject& screen, MonitorStore* store) {
  for (QObject* const object : screen.findChildren<QObject*>()) {
    const QMetaProperty property = storeOfModel(*object);
    if (property.isValid()) property.write(object, QVariant::fromValue(store));
  }
}

}  // namespace

void rest(QObject& screen) {
  giveStore(screen, nullptr);
}

void wake(QObject& screen, MonitorStore& store) {
  giveStore(screen, &store);
}

}  // namespace korvantis::RestingModels
