#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHostAddress>
#include <QLocalSocket>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <sys/resource.h>

namespace korvantis {
namespace {

using nlohmann::ordered_json;
using testing::ElementsAreArray;

/// Each key of an object with the type of its value, in order. Numbers with and without a fraction
/// are told apart; a list is told by the types that lie in it.
using Shape = std::vector<std::pair<std::string, std::string>>;

std::string typeOf(const ordered_json& value) {
  if (value.is_number_float()) return "number";
  if (value.is_number_integer()) return "integer";
  if (value.is_string()) return "text";
  if (value.is_boolean()) return "boolean";
  if (!value.is_array()) return value.type_name();
  for (const ordered_json& element : value) {
    if (!element.is_object()) return "list of " + typeOf(element);
  }
  return "list";
}

Shape shapeOf(const ordered_json& object) {
  Shape shape;
  for (const auto& [key, value] : object.items()) shape.emplace_back(key, typeOf(value));
  return shape;
}

/// The shape that a reply must have, list elements aside.
const Shape status{{"cpuPercent", "number"},           {"memoryUsedBytes", "integer"},
                   {"memoryTotalBytes", "integer"},    {"memoryPressure", "text"},
                   {"gpuPercent", "number"},           {"neuralEnginePercent", "number"},
                   {"cpuCelsius", "number"},           {"powerWatts", "number"},
                   {"networkInBytesPerSec", "number"}, {"networkOutBytesPerSec", "number"},
                   {"activeStrains", "list of text"}};
const Shape whatsWrong{
    {"activeStrains", "list of text"}, {"idleServerCount", "integer"}, {"topCPUApp", "text"}};

/// What the objects in each list must look like.
const std::map<std::string, Shape> elements{{"apps",
                                             {{"id", "text"},
                                              {"name", "text"},
                                              {"cpuPercent", "number"},
                                              {"memoryBytes", "integer"},
                                              {"energyWatts", "number"},
                                              {"processCount", "integer"}}},
                                            {"ports",
                                             {{"port", "integer"},
                                              {"pid", "integer"},
                                              {"processName", "text"},
                                              {"appName", "text"},
                                              {"projectName", "text"},
                                              {"isIdle", "boolean"}}},
                                            {"projects",
                                             {{"name", "text"},
                                              {"path", "text"},
                                              {"cpuPercent", "number"},
                                              {"memoryBytes", "integer"},
                                              {"ports", "list of integer"}}},
                                            {"idleServers",
                                             {{"pid", "integer"},
                                              {"name", "text"},
                                              {"projectName", "text"},
                                              {"ports", "list of integer"},
                                              {"memoryBytes", "integer"},
                                              {"idleSeconds", "number"}}},
                                            {"agents",
                                             {{"pid", "integer"},
                                              {"toolName", "text"},
                                              {"state", "text"},
                                              {"projectName", "text"},
                                              {"cpuPercent", "number"},
                                              {"memoryBytes", "integer"}}},
                                            {"limits",
                                             {{"tool", "text"},
                                              {"planName", "text"},
                                              {"fiveHourUsedPercent", "number"},
                                              {"weeklyUsedPercent", "number"},
                                              {"paceText", "text"}}}};

/// An empty list has the type "list" whatever may lie in it.
void expectShape(const ordered_json& object, const Shape& expected, const std::string& what) {
  const Shape shape = shapeOf(object);
  ASSERT_EQ(shape.size(), expected.size()) << what;
  for (std::size_t index = 0; index < shape.size(); ++index) {
    EXPECT_EQ(shape[index].first, expected[index].first) << what;
    const bool isEmptyList = shape[index].second == "list";
    EXPECT_TRUE(isEmptyList ? expected[index].second.starts_with("list")
                            : shape[index].second == expected[index].second)
        << what << ", " << shape[index].first << " is " << shape[index].second;
  }
}

/// The program without a display, in a home of its own, and its bridge.
class ProgramsBridge : public testing::Test {
 protected:
  void SetUp() override {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    for (const char* variable :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "KORVANTIS_CAPTURE_ASSETS_DIR"}) {
      environment.remove(QString::fromUtf8(variable));
    }
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    // One test makes the program abort, which must leave no memory image behind.
    program.setChildProcessModifier([] {
      const rlimit none{0, 0};
      ::setrlimit(RLIMIT_CORE, &none);
    });
    program.start(QStringLiteral(KORVANTIS_PROGRAM), {});
    ASSERT_TRUE(program.waitForStarted());
    while (!answers() && program.state() == QProcess::Running) QThread::msleep(20);
    ASSERT_EQ(program.state(), QProcess::Running) << program.readAll().toStdString();
  }

  ~ProgramsBridge() override {
    program.kill();
    program.waitForFinished();
  }

  bool answers() const { return !askInBytes("{\"command\":\"are you there\"}\n").isEmpty(); }

  /// Everything that comes back until the program closes the connection.
  QByteArray askInBytes(const QByteArray& request) const {
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(5000)) return {};
    socket.write(request);
    socket.flush();
    while (socket.state() == QLocalSocket::ConnectedState && socket.waitForReadyRead(30000)) {
    }
    return socket.readAll();
  }

  /// The first object of a list for which `isSought` holds, asked for again until there is one: not
  /// every tick looks for ports. Null when the program has gone or never tells of it.
  template <typename IsSought>
  ordered_json elementOf(const std::string& command, const std::string& key,
                         const IsSought& isSought) const {
    for (int round = 0; round < 100 && program.state() == QProcess::Running; ++round) {
      const ordered_json reply = ask(command);
      for (const ordered_json& element : reply.at(key)) {
        if (isSought(element)) return element;
      }
      QThread::msleep(50);
    }
    return {};
  }

  ordered_json ask(const std::string& command) const {
    const std::string request = ordered_json{{"command", command}}.dump() + "\n";
    const QByteArray reply = askInBytes(QByteArray::fromStdString(request));
    EXPECT_TRUE(reply.endsWith('\n')) << command;
    EXPECT_EQ(reply.count('\n'), 1) << command;
    return ordered_json::parse(reply.toStdString(), nullptr, false);
  }

  void expectList(const std::string& command, const std::string& key) const {
    const ordered_json reply = ask(command);
    ASSERT_TRUE(reply.is_object()) << command;
    ASSERT_THAT(shapeOf(reply),
                ElementsAreArray({std::pair<std::string, std::string>(key, "list")}))
        << command;
    for (const ordered_json& element : reply[key]) expectShape(element, elements.at(key), command);
  }

  QTemporaryDir home;
  QString path = home.filePath(QStringLiteral(".local/share/Korvantis/bridge.sock"));
  QProcess program;
};

TEST_F(ProgramsBridge, AnswersEveryCommandAndAliasWithItsKeysAndTypes) {
  for (const char* command : {"system_status", "status"}) {
    expectShape(ask(command), status, command);
  }
  for (const char* command : {"whats_wrong", "whats-wrong"}) {
    expectShape(ask(command), whatsWrong, command);
  }
  for (const char* command : {"top_apps", "top"}) expectList(command, "apps");
  expectList("ports", "ports");
  expectList("projects", "projects");
  expectList("idle_servers", "idleServers");
  expectList("agents", "agents");
  expectList("limits", "limits");
  EXPECT_EQ(ask("Status"), ordered_json({{"ok", true}, {"command", "Status"}}));
  EXPECT_EQ(program.state(), QProcess::Running);
}

/// A socket of this process that listens on a port which is none of those handed out by the system.
class ListeningService {
 public:
  ListeningService() {
    for (quint16 port = 41'000; port < 42'000 && !server.isListening(); ++port) {
      server.listen(QHostAddress::LocalHost, port);
    }
  }

  int port() const { return server.serverPort(); }

 private:
  QTcpServer server;
};

/// Puts this process to work in a folder for as long as the object lives.
class WorkingFolder {
 public:
  explicit WorkingFolder(const QString& folder) { QDir::setCurrent(folder); }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { QDir::setCurrent(before); }

 private:
  const QString before = QDir::currentPath();
};

/// The program's bridge while this process, from before its start on, serves a port in a project.
class BridgeBesideAServer : public ProgramsBridge {
 protected:
  BridgeBesideAServer() { QDir(project.path()).mkdir(QStringLiteral(".git")); }

  QTemporaryDir project;
  const std::string name = QFileInfo(project.path()).fileName().toStdString();
  const WorkingFolder work{project.path()};
  const ListeningService service;
};

TEST_F(BridgeBesideAServer, TellsOfTheServerAndItsProject) {
  ASSERT_GE(service.port(), 41'000);
  const ordered_json row = elementOf("ports", "ports", [&](const ordered_json& port) {
    return port.at("port") == service.port();
  });
  ASSERT_TRUE(row.is_object()) << "no row of the port";
  expectShape(row, elements.at("ports"), "ports");
  EXPECT_EQ(row["pid"], QCoreApplication::applicationPid());
  EXPECT_EQ(row["projectName"], name);
  EXPECT_EQ(row["isIdle"], false);
  const ordered_json found = elementOf("projects", "projects", [&](const ordered_json& candidate) {
    return candidate.at("name") == name;
  });
  ASSERT_TRUE(found.is_object()) << "no such project";
  expectShape(found, elements.at("projects"), "projects");
  EXPECT_EQ(found["ports"], ordered_json::array({service.port()}));
}

TEST_F(ProgramsBridge, TellsOfThisMachine) {
  EXPECT_GT(ask("status")["memoryTotalBytes"].get<std::uint64_t>(), 1'000'000U);
  EXPECT_FALSE(ask("top")["apps"].empty());
  EXPECT_LE(ask("top")["apps"].size(), 10U);
  EXPECT_NE(ask("whats_wrong")["topCPUApp"], "None");
  EXPECT_EQ(askInBytes("{\"command\":\"top\",\"limit\":0}\n"), "{\"apps\":[]}\n");
}

TEST_F(ProgramsBridge, ItsSocketAndFolderAreForThisUserAlone) {
  const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                          QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                          QFileDevice::WriteOther | QFileDevice::ExeOther;
  EXPECT_FALSE(QFileInfo(path).permissions() & others);
  EXPECT_FALSE(QFileInfo(QFileInfo(path).path()).permissions() & others);
}

TEST_F(ProgramsBridge, AClientThatGoesAwayAndANoisyOneDoNotEndTheProgram) {
  // Fewer than the backlog takes.
  for (int round = 0; round < 5; ++round) {
    QLocalSocket socket;
    socket.connectToServer(path);
    ASSERT_TRUE(socket.waitForConnected());
    socket.write("{\"command\":\"ports\"}\n");
    socket.flush();
    socket.abort();
  }
  expectShape(ordered_json::parse(askInBytes("\xFF noise").toStdString(), nullptr, false), status,
              "noise");
  EXPECT_EQ(program.state(), QProcess::Running);
}

TEST_F(ProgramsBridge, ANegativeLimitEndsTheProgram) {
  EXPECT_EQ(askInBytes("{\"command\":\"top\",\"limit\":-1}\n"), "");
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
}

}  // namespace
}  // namespace korvantis
