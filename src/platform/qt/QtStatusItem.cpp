#include "platform/qt/QtStatusItem.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <atomic>
#include <utility>

#include "platform/qt/SessionBus.h"

namespace korvantis {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");

/// The name under which trays look for an item: the process and a count.
QString nextServiceName() {
  static std::atomic<int> count = 0;
  return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
      .arg(QCoreApplication::applicationPid())
      .arg(++count);
}

}  // namespace

QtStatusItem::QtStatusItem(QDBusConnection bus, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), service_(nextServiceName()) {
  registerTrayTypes();
  watcherOfWatcher_.setConnection(bus_);
  watcherOfWatcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
  watcherOfWatcher_.addWatchedService(watcherService);
  connect(&watcherOfWatcher_, &QDBusServiceWatcher::serviceRegistered, this,
          &QtStatusItem::registerWithWatcher);
  connect(&watcherOfWatcher_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this] { isRegistered_ = false; });
}

QtStatusItem::~QtStatusItem() {
  if (!item_ || !bus_.isConnected()) return;
  bus_.unregisterService(service_);
  bus_.unregisterObject(itemPath);
  bus_.unregisterObject(QString::fromLatin1(TrayItem::menuPath));
}

void QtStatusItem::add(StatusItemDescription description) {
  if (item_ || !bus_.isConnected()) return;
  // The objects own their adaptors.
  static_cast<void>(std::make_unique<TrayMenu>(&menuObject_, description.menu).release());
  item_ = std::make_unique<TrayItem>(&itemObject_, std::move(description)).release();
  bus_.registerObject(itemPath, &itemObject_, QDBusConnection::ExportAdaptors);
  bus_.registerObject(QString::fromLatin1(TrayItem::menuPath), &menuObject_,
                      QDBusConnection::ExportAdaptors);
  bus_.registerService(service_);
  registerWithWatcher();
}

void QtStatusItem::registerWithWatcher() {
  if (!item_) return;
  QDBusMessage call = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                                     QStringLiteral("RegisterStatusNotifierItem"));
  call << service_;
  auto* const pending = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
    isRegistered_ = !QDBusPendingReply<>(*pending).isError();
    pending->deleteLater();
  });
}

void QtStatusItem::setTitle(const QString& title) {
  if (item_) item_->setLabel(title);
}

StatusItemCalls systemStatusItemCalls() {
  const auto item = std::make_shared<QtStatusItem>(sessionBus());
  StatusItemCalls calls;
  calls.add = [item](StatusItemDescription description) { item->add(std::move(description)); };
  calls.setTitle = [item](const std::string& title) {
    item->setTitle(QString::fromStdString(title));
  };
  calls.isShown = [item] { return item->isShown(); };
  return calls;
}

}  // namespace korvantis
