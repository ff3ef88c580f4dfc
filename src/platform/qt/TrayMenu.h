#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <vector>

#include "platform/StatusItemCalls.h"
#include "platform/qt/TrayTypes.h"

namespace korvantis {

/// The menu of the status item as trays ask for it over the message bus. Its entries never
/// change. Entry 0 is the menu itself, the lines count from 1. Main thread.
class TrayMenu : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
  Q_PROPERTY(uint Version READ version CONSTANT)
  Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

 public:
  TrayMenu(QObject* parent, std::vector<StatusItemMenuEntry> lines);

  static uint version() { return 3; }
  static QString textDirection() { return QStringLiteral("ltr"); }
  static QString status() { return QStringLiteral("normal"); }
  static QStringList iconThemePath() { return {}; }

 public slots:
  /// The entry `parentId` and what lies under it; gives the revision.
  Q_SCRIPTABLE uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                              korvantis::TrayMenuNode& layout) const;
  Q_SCRIPTABLE QList<korvantis::TrayMenuProperties> GetGroupProperties(
      const QList<int>& ids, const QStringList& propertyNames) const;
  Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name) const;
  Q_SCRIPTABLE void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
  Q_SCRIPTABLE bool AboutToShow(int id) const;

  /// The same for several entries at once, which is how trays ask a menu of version 3. Give the
  /// ids that are no entries; the second one also those that must be read anew: none.
  Q_SCRIPTABLE QList<int> EventGroup(const QList<korvantis::TrayMenuEvent>& events);
  Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknownIDs) const;

 signals:
  void LayoutUpdated(uint revision, int parent);
  void ItemActivationRequested(int id, uint timestamp);

 private:
  bool isLine(int id) const { return id >= 1 && id <= static_cast<int>(entries.size()); }
  bool isKnown(int id) const { return id == 0 || isLine(id); }
  QVariantMap propertiesOf(int id) const;

  std::vector<StatusItemMenuEntry> entries;
};

}  // namespace korvantis
