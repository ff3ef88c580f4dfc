#include "ui/views/ScrollPlaces.h"

#include <QByteArray>
#include <QQuickWindow>
#include <QVariant>

namespace korvantis {

namespace {

QByteArray propertyName(const QString& name) {
  return "korvantis scrolled " + name.toUtf8();
}

}  // namespace

void ScrollPlaces::keep(QQuickItem* view, const QString& name, double place) {
  if (QQuickWindow* const window = view ? view->window() : nullptr)
    window->setProperty(propertyName(name).constData(), place);
}

double ScrollPlaces::kept(QQuickItem* view, const QString& name) {
  const QQuickWindow* const window = view ? view->window() : nullptr;
  return window ? window->property(propertyName(name).constData()).toDouble() : 0;
}

}  // namespace korvantis
