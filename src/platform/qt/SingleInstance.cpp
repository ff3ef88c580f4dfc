#include "platform/qt/SingleInstance.h"

#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <utility>

namespace korvantis {
namespace {

const QString objectPath = QStringLiteral("/org/korvantis/Instance");
const QString interfaceName = QStringLiteral("org.korvantis.Instance");
constexpr int answerMilliseconds = 1000;

}  // namespace

SingleInstance::SingleInstance(QDBusConnection bus, const QString& dataFolder, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), service_(serviceName(dataFolder)) {}

QString SingleInstance::serviceName(const QString& dataFolder) {
  const QByteArray digest =
      QCryptographicHash::hash(dataFolder.toUtf8(), QCryptographicHash::Sha256).toHex();
  return interfaceName + QStringLiteral(".d") + QString::fromLatin1(digest.left(16));
}

bool SingleInstance::claim() {
  if (!bus_.isConnected()) return true;
  // The object first, so that whoever sees the name can already call it.
  bus_.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
  const auto reply =
      bus_.interface()->registerService(service_, QDBusConnectionInterface::DontQueueService,
                                        QDBusConnectionInterface::DontAllowReplacement);
  if (!reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered) return true;
  bus_.unregisterObject(objectPath);
  const QDBusMessage call = QDBusMessage::createMethodCall(service_, objectPath, interfaceName,
                                                           QStringLiteral("Activate"));
  // One that hangs can't be brought to the front, but it still owns the data.
  static_cast<void>(bus_.call(call, QDBus::Block, answerMilliseconds));
  return false;
}

}  // namespace korvantis
