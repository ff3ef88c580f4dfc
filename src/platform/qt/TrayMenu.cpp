#include "platform/qt/TrayMenu.h"

#include <QTimer>
#include <utility>

namespace korvantis {

TrayMenu::TrayMenu(QObject* parent, std::vector<StatusItemMenuEntry> lines)
    : QDBusAbstractAdaptor(parent), entries(std::move(lines)) {}

QVariantMap TrayMenu::propertiesOf(int id) const {
  if (id == 0) return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
  if (!isLine(id)) return {};
  const std::string& title = entries[static_cast<std::size_t>(id - 1)].title;
  if (title.empty()) return {{QStringLiteral("type"), QStringLiteral("separator")}};
  // An underline would mark the letter behind it as the key of the line.
  QString label = QString::fromStdString(title).replace(u'_', QStringLiteral("__"));
  return {{QStringLiteral("label"), label},
          {QStringLiteral("enabled"), true},
          {QStringLiteral("visible"), true}};
}

uint TrayMenu::GetLayout(int parentId, int recursionDepth, const QStringList& /*propertyNames*/,
                         TrayMenuNode& layout) const {
  layout = TrayMenuNode{parentId, propertiesOf(parentId), {}};
  if (parentId == 0 && recursionDepth != 0) {
    for (int id = 1; isLine(id); ++id) layout.children.append({id, propertiesOf(id), {}});
  }
  return 1;
}

QList<TrayMenuProperties> TrayMenu::GetGroupProperties(const QList<int>& ids,
                                                       const QStringList& /*propertyNames*/) const {
  QList<TrayMenuProperties> properties;
  if (ids.isEmpty()) {
    // No id asks for all of them.
    for (int id = 0; id == 0 || isLine(id); ++id) properties.append({id, propertiesOf(id)});
  }
  for (const int id : ids) {
    if (isKnown(id)) properties.append({id, propertiesOf(id)});
  }
  return properties;
}

QDBusVariant TrayMenu::GetProperty(int id, const QString& name) const {
  const QVariant value = propertiesOf(id).value(name);
  return QDBusVariant(value.isValid() ? value : QVariant(QString()));
}

void TrayMenu::Event(int id, const QString& eventId, const QDBusVariant& /*data*/,
                     uint /*timestamp*/) {
  if (eventId != QStringLiteral("clicked") || !isLine(id)) return;
  const auto& action = entries[static_cast<std::size_t>(id - 1)].action;
  // After the answer has gone out: the line may end the program.
  if (action) QTimer::singleShot(0, this, action);
}

bool TrayMenu::AboutToShow(int /*id*/) const {
  return false;
}

QList<int> TrayMenu::EventGroup(const QList<TrayMenuEvent>& events) {
  QList<int> unknownIDs;
  for (const TrayMenuEvent& event : events) {
    if (!isKnown(event.id)) unknownIDs.append(event.id);
    Event(event.id, event.eventId, event.data, event.timestamp);
  }
  return unknownIDs;
}

QList<int> TrayMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknownIDs) const {
  for (const int id : ids) {
    if (!isKnown(id)) unknownIDs.append(id);
  }
  return {};
}

}  // namespace korvantis
