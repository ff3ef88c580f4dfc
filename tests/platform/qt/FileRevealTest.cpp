#include <QDBusConnection>
#include <QTest>
#include <gtest/gtest.h>

#include "platform/WorkspaceCalls.h"
#include "support/PrivateBus.h"

namespace korvantis {
namespace {

/// A file manager that writes down what it is to show.
class FakeFileManager : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

 public:
  QStringList shown;

 public slots:
  Q_SCRIPTABLE void ShowItems(const QStringList& urls, const QString& /*startupId*/) {
    shown += urls;
  }
};

TEST(FileRevealOnABus, TheFileManagerShowsBothFilesInTheirOrder) {
  const test::PrivateBus bus;
  qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(bus.address()));
  QDBusConnection connection = QDBusConnection::connectToBus(QString::fromStdString(bus.address()),
                                                             QStringLiteral("file-manager"));
  FakeFileManager manager;
  connection.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &manager,
                            QDBusConnection::ExportScriptableSlots);
  ASSERT_TRUE(connection.registerService(QStringLiteral("org.freedesktop.FileManager1")));
  systemWorkspaceCalls().activateFileViewerSelectingURLs({"/tmp/a b.csv", "/tmp/c.csv"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return manager.shown.size() == 2; }));
  EXPECT_EQ(manager.shown, QStringList({QStringLiteral("file:///tmp/a%20b.csv"),
                                        QStringLiteral("file:///tmp/c.csv")}));
  QDBusConnection::disconnectFromBus(QStringLiteral("file-manager"));
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

}  // namespace
}  // namespace korvantis

#include "FileRevealTest.moc"
