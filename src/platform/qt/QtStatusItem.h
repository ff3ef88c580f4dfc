#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QPointer>
#include <memory>

#include "platform/StatusItemCalls.h"
#include "platform/qt/TrayItem.h"
#include "platform/qt/TrayMenu.h"

namespace korvantis {

/// Keeps a status item in the tray of the desktop: registers it with the watcher of tray items on
/// the message bus, now and each time that watcher starts anew. Without a bus or a watcher there
/// is no item and nothing fails. Main thread.
class QtStatusItem : public QObject {
  Q_OBJECT

 public:
  /// `bus` is the session's; a test gives one of its own.
  explicit QtStatusItem(QDBusConnection bus, QObject* parent = nullptr);
  ~QtStatusItem() override;

  void add(StatusItemDescription description);
  void setTitle(const QString& title);
  bool isShown() const { return isRegistered_; }

 private:
  void registerWithWatcher();

  QDBusConnection bus_;
  QString service_;
  QDBusServiceWatcher watcherOfWatcher_;
  /// Carry the adaptors under the two paths of the item.
  QObject itemObject_;
  QObject menuObject_;
  QPointer<TrayItem> item_;
  bool isRegistered_ = false;
};

}  // namespace korvantis
