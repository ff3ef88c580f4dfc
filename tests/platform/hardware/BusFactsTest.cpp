#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <time.h>
#include <unistd.h>

#include "platform/hardware/HardwareTree.h"
#include "platform/hardware/MockedBus.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/hardware/BusFacts.h"

namespace korvantis {
namespace {

using test::HardwareTree;
using test::MockedBus;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

const char* const keyboards = "AppleDeviceManagementHIDEventService";

struct Message {
  sd_bus_message* message = nullptr;
  Message() = default;
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;
  ~Message() { sd_bus_message_unref(message); }
};

/// Holds an inhibitor for as long as the answer lives: the service watches its descriptor.
void inhibit(const MockedBus& bus, Message& answer, const char* what, const char* who,
             const char* why, const char* mode) {
  ASSERT_GE(sd_bus_call_method(bus.connection(), "org.freedesktop.login1",
                               "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                               "Inhibit", nullptr, &answer.message, "ssss", what, who, why, mode),
            0);
}

template <typename... Arguments>
void askBluetoothMock(const MockedBus& bus, const char* member, const char* types,
                      Arguments... arguments) {
  ASSERT_GE(sd_bus_call_method(bus.connection(), "org.bluez", "/org/bluez", "org.bluez.Mock",
                               member, nullptr, nullptr, types, arguments...),
            0)
      << member;
}

void addDevice(const MockedBus& bus, const char* address, const char* alias) {
  askBluetoothMock(bus, "AddDevice", "sss", "hci0", address, alias);
}

void addBattery(const MockedBus& bus, const char* object, std::uint8_t percent) {
  ASSERT_GE(sd_bus_call_method(bus.connection(), "org.bluez", object, "org.freedesktop.DBus.Mock",
                               "AddProperties", nullptr, nullptr, "sa{sv}", "org.bluez.Battery1", 1,
                               "Percentage", "y", percent),
            0);
}

PropertyMap assertion(const char* type, const char* who, const char* why) {
  return {{"AssertType", PropertyValue{std::string(type)}},
          {"Process Name", PropertyValue{std::string(who)}},
          {"AssertName", PropertyValue{std::string(why)}}};
}

AssertionsByProcess assertionsOf(const HardwareTree& tree) {
  return tree.calls.power.IOPMCopyAssertionsByProcess().value();
}

/// Asks until there is something: a busy machine may take longer than the bus is given.
template <typename Ask>
auto eventually(HardwareTree& tree, const Ask& ask) {
  auto answer = ask(tree);
  for (int tries = 0; tries < 100 && answer.empty(); ++tries) {
    tree.seconds = tree.seconds + 6;
    answer = ask(tree);
  }
  return answer;
}

std::vector<PropertyMap> bluetoothDevicesOf(const HardwareTree& tree) {
  return tree.services(keyboards);
}

double threadSeconds() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

TEST(BusFacts, InhibitorsThatBlockSleepOrIdleAreAssertions) {
  MockedBus bus;
  bus.startService("logind", "org.freedesktop.login1");
  HardwareTree tree;
  tree.sources.systemBus = bus.address();
  tree.open();
  EXPECT_THAT(assertionsOf(tree), IsEmpty());
  Message film;
  Message backup;
  Message both;
  Message delayed;
  Message lid;
  inhibit(bus, film, "idle", "player", "Playing", "block");
  inhibit(bus, backup, "sleep", "backup", "Copying", "block");
  inhibit(bus, both, "shutdown:sleep:idle", "update", "Installing", "block");
  inhibit(bus, delayed, "sleep", "network", "Closing", "delay");
  inhibit(bus, lid, "handle-lid-switch", "dock", "Docked", "block");
  tree.seconds = tree.seconds + 2;
  // The stand-in gives all of them one process number.
  EXPECT_THAT(
      eventually(tree, assertionsOf),
      ElementsAre(
          Pair(123456, ElementsAre(assertion("PreventUserIdleDisplaySleep", "player", "Playing"),
                                   assertion("PreventSystemSleep", "backup", "Copying"),
                                   assertion("PreventUserIdleDisplaySleep", "update", "Installing"),
                                   assertion("PreventSystemSleep", "update", "Installing")))));
}

TEST(BusFacts, ConnectedBluetoothDevicesWithABatteryAreInputDevices) {
  MockedBus bus;
  bus.startService("bluez5", "org.bluez");
  askBluetoothMock(bus, "AddAdapter", "ss", "hci0", "box");
  addDevice(bus, "11:22:33:44:55:66", "MX Keys");
  addDevice(bus, "11:22:33:44:55:67", "Far Mouse");
  addDevice(bus, "11:22:33:44:55:68", "Pen");
  askBluetoothMock(bus, "ConnectDevice", "ss", "hci0", "11:22:33:44:55:66");
  askBluetoothMock(bus, "ConnectDevice", "ss", "hci0", "11:22:33:44:55:68");
  addBattery(bus, "/org/bluez/hci0/dev_11_22_33_44_55_66", 85);
  addBattery(bus, "/org/bluez/hci0/dev_11_22_33_44_55_67", 40);
  HardwareTree tree;
  tree.sources.systemBus = bus.address();
  tree.open();
  EXPECT_THAT(
      eventually(tree, bluetoothDevicesOf),
      UnorderedElementsAre(PropertyMap{{"Product", PropertyValue{std::string("MX Keys")}},
                                       {"BatteryPercent", PropertyValue{std::int64_t{85}}}}));
}

/// Gives an object of the session manager's stand-in a method that answers with a fixed value.
void addSessionMethod(const MockedBus& bus, const char* path, const char* interface,
                      const char* name, const char* type, const char* code) {
  ASSERT_GE(sd_bus_call_method(bus.connection(), "org.gnome.SessionManager", path,
                               "org.freedesktop.DBus.Mock", "AddMethod", nullptr, nullptr, "sssss",
                               interface, name, "", type, code),
            0);
}

void addSessionInhibitor(const MockedBus& bus, const char* path, const char* application,
                         const char* reason, const char* flags) {
  const char* const interface = "org.gnome.SessionManager.Inhibitor";
  ASSERT_GE(
      sd_bus_call_method(bus.connection(), "org.gnome.SessionManager", "/org/gnome/SessionManager",
                         "org.freedesktop.DBus.Mock", "AddObject", nullptr, nullptr,
                         "ssa{sv}a(ssss)", path, interface, 0, 0),
      0);
  addSessionMethod(bus, path, interface, "GetAppId", "s", application);
  addSessionMethod(bus, path, interface, "GetReason", "s", reason);
  addSessionMethod(bus, path, interface, "GetFlags", "u", flags);
}

TEST(BusFacts, InhibitorsOfTheSessionManagerAreAssertionsOfNobody) {
  MockedBus bus;
  const char* const manager = "/org/gnome/SessionManager";
  bus.startPlainService("org.gnome.SessionManager", manager);
  addSessionInhibitor(bus, "/org/gnome/SessionManager/Inhibitor1", "ret = 'player'",
                      "ret = 'Playing'", "ret = 8");
  addSessionInhibitor(bus, "/org/gnome/SessionManager/Inhibitor2", "ret = 'burner'",
                      "ret = 'Burning'", "ret = 5");
  addSessionInhibitor(bus, "/org/gnome/SessionManager/Inhibitor3", "ret = 'editor'",
                      "ret = 'Unsaved'", "ret = 1");
  addSessionMethod(bus, manager, "org.gnome.SessionManager", "GetInhibitors", "ao",
                   "ret = ['/org/gnome/SessionManager/Inhibitor%d' % n for n in (1, 2, 3, 4)]");
  HardwareTree tree;
  tree.sources.sessionBus = bus.address();
  tree.open();
  EXPECT_THAT(
      eventually(tree, assertionsOf),
      ElementsAre(Pair(0, ElementsAre(assertion("PreventUserIdleDisplaySleep", "player", "Playing"),
                                      assertion("PreventSystemSleep", "burner", "Burning")))));
}

TEST(BusFacts, ABusWithoutTheServicesAnswersNothing) {
  const MockedBus bus;
  HardwareTree tree;
  tree.sources.systemBus = bus.address();
  tree.sources.sessionBus = bus.address();
  tree.open();
  EXPECT_THAT(assertionsOf(tree), IsEmpty());
  EXPECT_THAT(tree.services(keyboards), IsEmpty());
}

TEST(BusFacts, AnswersStandForTenSecondsAfterTheBusHasGone) {
  MockedBus bus;
  bus.startService("logind", "org.freedesktop.login1");
  HardwareTree tree;
  tree.sources.systemBus = bus.address();
  tree.open();
  Message film;
  inhibit(bus, film, "idle", "player", "Playing", "block");
  EXPECT_THAT(eventually(tree, assertionsOf), testing::SizeIs(1));
  bus.end();
  tree.seconds = tree.seconds + 10;
  EXPECT_THAT(assertionsOf(tree), testing::SizeIs(1));
  tree.seconds = tree.seconds + 0.1;
  EXPECT_THAT(assertionsOf(tree), IsEmpty());
}

TEST(BusFacts, NoBusIsTriedAtASlowPaceAndFoundLater) {
  const TemporaryFolder folder;
  BusSession session("unix:path=" + folder.path("bus"), [] { return 1000.0; });
  const std::vector<BusQuestion> question{{"a.b", "/", "a.b", "C"}};
  EXPECT_FALSE(session.ask(question)[0].came);
  const double before = threadSeconds();
  for (int tick = 0; tick < 1000; ++tick) ASSERT_FALSE(session.ask(question)[0].came);
  EXPECT_LT(threadSeconds() - before, 0.1) << "not opened again within 5 seconds";

  const MockedBus bus;
  double seconds = 1000;
  BusSession later("", [&] { return seconds; });
  EXPECT_FALSE(later.ask(question)[0].came);
  BusSession there(bus.address(), [&] { return seconds; });
  auto answers = there.ask(question);
  for (int tries = 0; tries < 100 && !answers[0].came; ++tries) {
    seconds += 6;
    answers = there.ask(question);
  }
  EXPECT_TRUE(answers[0].came);
  EXPECT_EQ(answers[0].message, nullptr) << "the bus itself says that there is no such service";
}

/// A socket that takes connections and never says a word.
FileDescriptor silentSocket(const std::string& path) {
  FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  EXPECT_EQ(::bind(socket.number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::listen(socket.number(), 8), 0);
  return socket;
}

TEST(BusFacts, ABusThatHangsIsLeftAfterItsLimit) {
  const TemporaryFolder folder;
  const FileDescriptor hanging = silentSocket(folder.path("bus"));
  BusSession session("unix:path=" + folder.path("bus"), [] { return 1000.0; });
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(session.ask({{"a.b", "/", "a.b", "C"}})[0].came);
  const auto took = std::chrono::steady_clock::now() - begin;
  EXPECT_GE(took, std::chrono::milliseconds(200));
  EXPECT_FALSE(session.ask({{"a.b", "/", "a.b", "C"}})[0].came);
  // Without the 5 seconds' rest it would have waited once more.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 2 * took);
}

TEST(BusFacts, ATickNeverWaitsForABusThatHangs) {
  const TemporaryFolder folder;
  const FileDescriptor hanging = silentSocket(folder.path("bus"));
  HardwareTree tree;
  tree.sources.systemBus = "unix:path=" + folder.path("bus");
  tree.sources.inBackground = true;
  tree.open();
  const auto begin = std::chrono::steady_clock::now();
  for (int tick = 0; tick < 20; ++tick) {
    EXPECT_THAT(assertionsOf(tree), IsEmpty());
    EXPECT_THAT(tree.services(keyboards), IsEmpty());
    tree.seconds = tree.seconds + 6;
  }
  // Each of the twenty would have taken 200 ms.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(2000));
}

TEST(BusFacts, InTheBackgroundTheNextTickHasTheAnswer) {
  MockedBus bus;
  bus.startService("logind", "org.freedesktop.login1");
  Message film;
  inhibit(bus, film, "idle", "player", "Playing", "block");
  HardwareTree tree;
  tree.sources.systemBus = bus.address();
  tree.sources.inBackground = true;
  tree.open();
  for (int tries = 0; tries < 1000 && assertionsOf(tree).empty(); ++tries) {
    ::usleep(10'000);
    tree.seconds = tree.seconds + 1;
  }
  EXPECT_THAT(assertionsOf(tree), testing::SizeIs(1));
}

TEST(BusFacts, ConcurrentTicksShareOneFetch) {
  const TemporaryFolder folder;
  HardwareTree tree;
  tree.sources.systemBus = "unix:path=" + folder.path("nobody");
  tree.sources.inBackground = true;
  tree.open();
  const auto ask = [&] {
    for (int tick = 0; tick < 200; ++tick) {
      EXPECT_THAT(assertionsOf(tree), IsEmpty());
      EXPECT_THAT(tree.services(keyboards), IsEmpty());
      tree.seconds.fetch_add(1);
    }
  };
  std::thread other(ask);
  ask();
  other.join();
}

}  // namespace
}  // namespace korvantis
