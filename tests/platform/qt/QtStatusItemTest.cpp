#include <QCoreApplication>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

#include "platform/qt/QtStatusItem.h"
#include "platform/qt/TrayTypes.h"
#include "support/PrivateBus.h"

namespace korvantis {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");

/// A tray's list of items, as a desktop keeps it.
class FakeWatcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

 public:
  QStringList registered;
  QStringList labels;

 public slots:
  void noteLabel(const QString& label, const QString& /*guide*/) { labels += label; }
  Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service) { registered += service; }
};

class QtStatusItemTest : public testing::Test {
 protected:
  QtStatusItemTest() {
    startWatcher();
    item = std::make_unique<QtStatusItem>(QDBusConnection::connectToBus(
        QString::fromStdString(bus.address()), QStringLiteral("item")));
  }
  ~QtStatusItemTest() override {
    item.reset();
    QDBusConnection::disconnectFromBus(QStringLiteral("item"));
    QDBusConnection::disconnectFromBus(QStringLiteral("tray"));
  }

  void startWatcher() {
    tray.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                        QDBusConnection::ExportScriptableSlots);
    ASSERT_TRUE(tray.registerService(watcherService));
  }

  void add() {
    StatusItemDescription description;
    description.accessibilityDescription = "Korvantis";
    description.images = {{1, {0xFF, 0x10, 0x20, 0x30}}, {2, std::vector<std::uint8_t>(16, 7)}};
    description.menu = {{"Open", [this] { ++opened; }}, {"", {}}, {"Quit_it", {}}};
    description.action = [this](std::optional<StatusItemPoint> point) { clicks.push_back(point); };
    item->add(std::move(description));
  }

  bool isRegistered(qsizetype times) {
    return QTest::qWaitFor([&] { return watcher.registered.size() == times; }) &&
           QTest::qWaitFor([&] { return item->isShown(); });
  }

  /// Calls the item without blocking this thread, which also has to answer.
  QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(watcher.registered.last(), path, interface, method);
    message.setArguments(arguments);
    QDBusPendingCall pending = tray.asyncCall(message);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }));
    return pending.reply();
  }

  QVariant property(const QString& path, const QString& interface, const char* name) {
    const QDBusMessage reply = call(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("Get"), {interface, QString::fromUtf8(name)});
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    return reply.arguments().value(0).value<QDBusVariant>().variant();
  }
  QVariant itemProperty(const char* name) { return property(itemPath, itemInterface, name); }

  test::PrivateBus bus;
  FakeWatcher watcher;
  QDBusConnection tray =
      QDBusConnection::connectToBus(QString::fromStdString(bus.address()), QStringLiteral("tray"));
  std::unique_ptr<QtStatusItem> item;
  int opened = 0;
  std::vector<std::optional<StatusItemPoint>> clicks;
};

TEST_F(QtStatusItemTest, RegistersWithTheWatcher) {
  EXPECT_FALSE(item->isShown());
  add();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_TRUE(watcher.registered[0].startsWith(
      QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid())));
}

TEST_F(QtStatusItemTest, RegistersAgainWhenTheWatcherStartsAnew) {
  add();
  ASSERT_TRUE(isRegistered(1));
  tray.unregisterService(watcherService);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !item->isShown(); }));
  startWatcher();
  EXPECT_TRUE(isRegistered(2));
}

TEST_F(QtStatusItemTest, AppearsWhenTheWatcherComesLater) {
  tray.unregisterService(watcherService);
  add();
  QCoreApplication::processEvents();
  EXPECT_FALSE(item->isShown());
  startWatcher();
  EXPECT_TRUE(isRegistered(1));
}

TEST_F(QtStatusItemTest, TellsTitlePicturesToolTipAndLabel) {
  add();
  item->setTitle(QStringLiteral(" CPU 5%"));
  ASSERT_TRUE(isRegistered(1));
  EXPECT_EQ(itemProperty("Title").toString(), QStringLiteral("Korvantis"));
  EXPECT_EQ(itemProperty("Id").toString(), QStringLiteral("korvantis"));
  EXPECT_EQ(itemProperty("Category").toString(), QStringLiteral("SystemServices"));
  EXPECT_EQ(itemProperty("Status").toString(), QStringLiteral("Active"));
  EXPECT_FALSE(itemProperty("ItemIsMenu").toBool());
  EXPECT_EQ(itemProperty("XAyatanaLabel").toString(), QStringLiteral(" CPU 5%"));
  EXPECT_EQ(itemProperty("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/MenuBar"));
  const auto pixmaps = qdbus_cast<QList<TrayPixmap>>(itemProperty("IconPixmap"));
  ASSERT_EQ(pixmaps.size(), 2);
  EXPECT_EQ(pixmaps[0].width, 1);
  EXPECT_EQ(pixmaps[0].data, QByteArray("\xFF\x10\x20\x30", 4));
  EXPECT_EQ(pixmaps[1].data.size(), 16);
  const auto toolTip = qdbus_cast<TrayToolTip>(itemProperty("ToolTip"));
  EXPECT_EQ(toolTip.title, QStringLiteral("Korvantis"));
  EXPECT_EQ(toolTip.description, QStringLiteral("CPU 5%"));
}

TEST_F(QtStatusItemTest, TraysHearOfANewLabelAndNotOfAnEqualOne) {
  add();
  ASSERT_TRUE(isRegistered(1));
  ASSERT_TRUE(tray.connect(watcher.registered[0], itemPath, itemInterface,
                           QStringLiteral("XAyatanaNewLabel"), &watcher,
                           SLOT(noteLabel(QString, QString))));
  // Only once the tray's wish to hear has reached the bus.
  itemProperty("Title");
  item->setTitle(QStringLiteral(" a"));
  item->setTitle(QStringLiteral(" a"));
  item->setTitle(QStringLiteral(" b"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.labels.size() >= 2; }));
  itemProperty("Title");
  EXPECT_EQ(watcher.labels, QStringList({QStringLiteral(" a"), QStringLiteral(" b")}));
}

TEST_F(QtStatusItemTest, AClickTellsItsPlaceWhereTheDesktopKnowsIt) {
  add();
  ASSERT_TRUE(isRegistered(1));
  call(itemPath, itemInterface, QStringLiteral("Activate"), {1200, 14});
  call(itemPath, itemInterface, QStringLiteral("Activate"), {0, 0});
  call(itemPath, itemInterface, QStringLiteral("SecondaryActivate"), {7, 0});
  ASSERT_EQ(clicks.size(), 3U);
  ASSERT_TRUE(clicks[0].has_value());
  EXPECT_EQ(clicks[0]->x, 1200);
  EXPECT_EQ(clicks[0]->y, 14);
  EXPECT_FALSE(clicks[1].has_value());
  EXPECT_TRUE(clicks[2].has_value());
}

TEST_F(QtStatusItemTest, ServesARealMenu) {
  add();
  ASSERT_TRUE(isRegistered(1));
  const QDBusMessage reply =
      call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
           QStringLiteral("GetLayout"), {0, -1, QStringList()});
  ASSERT_EQ(reply.arguments().size(), 2);
  const auto menu = qdbus_cast<TrayMenuNode>(reply.arguments()[1]);
  ASSERT_EQ(menu.children.size(), 3);
  EXPECT_EQ(menu.children[0].properties[QStringLiteral("label")].toString(),
            QStringLiteral("Open"));
  EXPECT_EQ(menu.children[1].properties[QStringLiteral("type")].toString(),
            QStringLiteral("separator"));
  // A single underline would be read as the mark of a key.
  EXPECT_EQ(menu.children[2].properties[QStringLiteral("label")].toString(),
            QStringLiteral("Quit__it"));
}

TEST_F(QtStatusItemTest, AClickInTheMenuDoesWhatItsLineSays) {
  add();
  ASSERT_TRUE(isRegistered(1));
  const auto event = [this](int id, const char* kind) {
    call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
         QStringLiteral("Event"),
         {id, QString::fromUtf8(kind), QVariant::fromValue(QDBusVariant(0)), 0U});
  };
  event(1, "hovered");
  event(2, "clicked");
  event(99, "clicked");
  event(-1, "clicked");
  QCoreApplication::processEvents();
  EXPECT_EQ(opened, 0);
  event(1, "clicked");
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened == 1; }));
}

TEST_F(QtStatusItemTest, AClickThatTraysTellInAGroupDoesTheSame) {
  add();
  ASSERT_TRUE(isRegistered(1));
  const auto events = [this](const QList<TrayMenuEvent>& group) {
    const QDBusMessage reply =
        call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
             QStringLiteral("EventGroup"), {QVariant::fromValue(group)});
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    return qdbus_cast<QList<int>>(reply.arguments().value(0));
  };
  const QString clicked = QStringLiteral("clicked");
  const QDBusVariant nothing(0);
  EXPECT_EQ(events({{1, QStringLiteral("hovered"), nothing, 0}, {2, clicked, nothing, 0}}),
            QList<int>());
  QCoreApplication::processEvents();
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(
      events({{99, clicked, nothing, 0}, {1, clicked, nothing, 7}, {-1, clicked, nothing, 0}}),
      QList<int>({99, -1}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened == 1; }));
}

TEST_F(QtStatusItemTest, NoLineChangesBeforeTheMenuIsShown) {
  add();
  ASSERT_TRUE(isRegistered(1));
  const QDBusMessage reply =
      call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
           QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>({0, 1, 88}))});
  ASSERT_EQ(reply.arguments().size(), 2);
  EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments()[0]), QList<int>());
  EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments()[1]), QList<int>({88}));
}

TEST_F(QtStatusItemTest, TellsThePropertiesOfAllLines) {
  add();
  ASSERT_TRUE(isRegistered(1));
  const auto properties = [this](const QList<int>& ids) {
    const QDBusMessage reply =
        call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"),
             QStringLiteral("GetGroupProperties"), {QVariant::fromValue(ids), QStringList()});
    return qdbus_cast<QList<TrayMenuProperties>>(reply.arguments().value(0));
  };
  EXPECT_EQ(properties({}).size(), 4);
  ASSERT_EQ(properties({1, 77}).size(), 1);
  EXPECT_EQ(properties({1})[0].properties[QStringLiteral("label")].toString(),
            QStringLiteral("Open"));
}

TEST(QtStatusItemWithoutABus, DoesNothingAndDoesNotFail) {
  QtStatusItem item(QDBusConnection(QStringLiteral("nothing")));
  item.add({});
  item.setTitle(QStringLiteral(" x"));
  EXPECT_FALSE(item.isShown());
}

}  // namespace
}  // namespace korvantis

#include "QtStatusItemTest.moc"
