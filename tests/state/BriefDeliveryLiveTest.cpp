#include <QByteArray>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>

#include "state/BriefServices.h"
#include "state/BriefText.h"
#include "state/RemoteAlertStore.h"
#include "support/ChildProcess.h"
#include "support/HTTPServer.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::HTTPServer;
using test::TemporaryFolder;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr auto cloud = WhatsAppDeliveryMode::cloudWebhook;
constexpr auto desktop = WhatsAppDeliveryMode::desktopApp;

std::string contents(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string answer(const std::string& status, const std::string& more = "") {
  return "HTTP/1.1 " + status + "\r\n" + more + "Content-Length: 0\r\nConnection: close\r\n\r\n";
}

/// The real network, with requests to CallMeBot led to `server` instead, and limits that are
/// shortened to `limitSeconds`.
BriefDeliveryCalls networkCalls(const std::string& server, double limitSeconds = 5) {
  BriefDeliveryCalls calls;
  calls.http.dataForRequest = [server, limitSeconds](HTTPRequest request) {
    const std::string service = "https://" + std::string(briefServices::callMeBotHost);
    if (request.url.starts_with(service)) request.url.replace(0, service.size(), server);
    request.timeoutSeconds = std::min(request.timeoutSeconds, limitSeconds);
    return systemHTTPCalls().dataForRequest(request);
  };
  return calls;
}

BriefDelivery toWebhook(const std::string& server, double limitSeconds = 5) {
  return RemoteAlertStore::sendWhatsAppMessage(networkCalls(server, limitSeconds), "+1", cloud,
                                               server + "/s3cret", "text");
}

BriefDelivery toAPI(const std::string& server, double limitSeconds = 5) {
  return RemoteAlertStore::sendWhatsAppMessage(networkCalls(server, limitSeconds), "+1", cloud,
                                               "s3cret", "text");
}

EngineSnapshot strained() {
  EngineSnapshot snapshot;
  snapshot.system.cpuPercent = 84.2;
  snapshot.system.memoryUsedBytes = 22978297856;
  snapshot.system.memoryTotalBytes = 38654705664;
  snapshot.system.memoryPressure = MemoryPressureLevel::warning;
  snapshot.system.thermal.cpuCelsius = 93;
  snapshot.system.thermal.systemPowerWatts = 41.8;
  snapshot.system.battery.reset();
  snapshot.activeStrains = {StrainKind::cpu, StrainKind::temperature};
  snapshot.agentSessions.resize(2);
  snapshot.idleServers.resize(1);
  return snapshot;
}

TEST(BriefDeliveryLive, AWebhookReceivesTheFiveLines) {
  HTTPServer server = HTTPServer::answering(answer("200 OK"));
  const std::string brief = formatBrief(strained(), "Apple M3 Pro", "Strain Alert");
  const BriefDelivery outcome = RemoteAlertStore::sendWhatsAppMessage(
      networkCalls(server.address()), "+1 (555) 123", cloud, server.address() + "/hook?a=b", brief);
  EXPECT_EQ(outcome, (BriefDelivery{true, "✓ Sent via WhatsApp Webhook"}));

  ASSERT_THAT(server.requests(), SizeIs(1));
  const std::string request = server.requests()[0];
  EXPECT_THAT(request, StartsWith("POST /hook?a=b HTTP/1.1\r\n"));
  EXPECT_THAT(request, HasSubstr("\r\nContent-Type: application/json\r\n"));
  const auto body = nlohmann::json::parse(request.substr(request.find("\r\n\r\n") + 4));
  EXPECT_EQ(body.size(), 3U);
  EXPECT_EQ(body.at("phone"), "+1555123");
  EXPECT_EQ(body.at("text"), brief);
  EXPECT_EQ(body.at("content"),
            "📊 Korvantis Brief — Apple M3 Pro [Strain Alert]\n"
            "• Status: ⚠️ Active Strain (cpu, temperature)\n"
            "• Load: CPU 84.2% · RAM 21.4/36 GB (Warning)\n"
            "• Thermal & Power: 93°C · 41.8W · Battery AC\n"
            "• Active: 2 AI Agent(s) · 1 Idle Dev Server(s)");
  std::istringstream lines(body.at("content").get<std::string>());
  int number = 0;
  for (std::string line; std::getline(lines, line);)
    RecordProperty("received_line_" + std::to_string(++number), line);
}

TEST(BriefDeliveryLive, TheAPIReceivesTheQueryAsItWasEncoded) {
  HTTPServer server = HTTPServer::answering(answer("200 OK"));
  const BriefDelivery outcome = RemoteAlertStore::sendWhatsAppMessage(
      networkCalls(server.address()), "+1 2", cloud, "k+=&y z", "a & b+c=d\n[100%] é 📊 \"q\"'");
  EXPECT_EQ(outcome, (BriefDelivery{true, "✓ Sent via WhatsApp API to +1 2"}));

  ASSERT_THAT(server.requests(), SizeIs(1));
  EXPECT_THAT(server.requests()[0],
              StartsWith("GET /whatsapp.php?phone=+12&text=a%20&%20b+c=d%0A%5B100%25%5D%20%C3%A9%20"
                         "%F0%9F%93%8A%20%22q%22'&apikey=k+=&y%20z HTTP/1.1\r\n"));
}

struct StatusCase {
  const char* name;
  const char* status;
  bool isSuccess;
};

class BriefDeliveryStatus : public ::testing::TestWithParam<StatusCase> {};

TEST_P(BriefDeliveryStatus, IsJudgedOnBothRoutes) {
  HTTPServer server = HTTPServer::answering(answer(GetParam().status));
  const bool isSuccess = GetParam().isSuccess;
  EXPECT_EQ(toWebhook(server.address()),
            isSuccess ? (BriefDelivery{true, "✓ Sent via WhatsApp Webhook"})
                      : (BriefDelivery{false, "WhatsApp Webhook returned non-200 status."}));
  EXPECT_EQ(toAPI(server.address()),
            isSuccess ? (BriefDelivery{true, "✓ Sent via WhatsApp API to +1"})
                      : (BriefDelivery{false, "WhatsApp API returned non-200 status."}));
  EXPECT_THAT(server.requests(), SizeIs(2)) << "one request each, nothing tried again";
}

INSTANTIATE_TEST_SUITE_P(EveryStatus, BriefDeliveryStatus,
                         ::testing::Values(StatusCase{"ok", "200 OK", true},
                                           StatusCase{"noContent", "204 No Content", true},
                                           StatusCase{"badRequest", "400 Bad Request", false},
                                           StatusCase{"unauthorized", "401 Unauthorized", false},
                                           StatusCase{"notFound", "404 Not Found", false},
                                           StatusCase{"serverError", "500 Internal Server Error",
                                                      false}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(BriefDeliveryLive, ARedirectIsNotFollowedIntoSuccess) {
  HTTPServer target = HTTPServer::answering(answer("200 OK"));
  for (const char* status : {"301 Moved Permanently", "302 Found", "307 Temporary Redirect"}) {
    HTTPServer server =
        HTTPServer::answering(answer(status, "Location: " + target.address() + "/elsewhere\r\n"));
    EXPECT_EQ(toWebhook(server.address()),
              (BriefDelivery{false, "WhatsApp Webhook returned non-200 status."}));
    EXPECT_EQ(toAPI(server.address()),
              (BriefDelivery{false, "WhatsApp API returned non-200 status."}));
  }
  EXPECT_THAT(target.requests(), SizeIs(0));
}

TEST(BriefDeliveryLive, AServerThatHangsTimesOut) {
  HTTPServer silent = HTTPServer::hanging();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(toWebhook(silent.address(), 0.3),
            (BriefDelivery{false, "WhatsApp Webhook Error: The request timed out."}));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));

  HTTPServer halfway = HTTPServer::hanging("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc");
  EXPECT_EQ(toAPI(halfway.address(), 0.3),
            (BriefDelivery{false, "WhatsApp API Error: The request timed out."}));
}

TEST(BriefDeliveryLive, AConnectionThatIsResetIsAnErrorAndNothingIsSentAgain) {
  HTTPServer server = HTTPServer::resetting();
  EXPECT_EQ(toWebhook(server.address()),
            (BriefDelivery{false, "WhatsApp Webhook Error: The network connection was lost."}));
  EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST(BriefDeliveryLive, AConnectionThatClosesWithoutAnAnswerIsAnErrorAndNothingIsSentAgain) {
  HTTPServer server = HTTPServer::answering("");
  EXPECT_EQ(toWebhook(server.address()),
            (BriefDelivery{false, "WhatsApp Webhook Error: The network connection was lost."}));
  EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST(BriefDeliveryLive, GarbageInsteadOfHTTPIsNoSuccess) {
  for (const char* garbage : {"220 mail.example.org ESMTP\r\n", "\x16\x03\x01\x02\xFF\xFE garbage",
                              "HTTP/1.1 abc\r\n\r\n", "HTTP/9 2000000000000 x\r\n\r\n"}) {
    HTTPServer server = HTTPServer::answering(garbage);
    const BriefDelivery outcome = toWebhook(server.address(), 2);
    EXPECT_FALSE(outcome.delivered) << garbage;
    EXPECT_THAT(outcome.status, StartsWith("WhatsApp Webhook ")) << garbage;
  }
}

TEST(BriefDeliveryLive, NobodyListeningIsAnError) {
  const test::ListeningPort closed(false, false);
  EXPECT_EQ(toWebhook("http://127.0.0.1:" + std::to_string(closed.port())),
            (BriefDelivery{false, "WhatsApp Webhook Error: Could not connect to the server."}));
}

TEST(BriefDeliveryLive, AnUnknownSchemeAndALoneWordAreErrors) {
  EXPECT_EQ(
      RemoteAlertStore::sendWhatsAppMessage(networkCalls(""), "+1", cloud, "httpx://a/b", "t"),
      (BriefDelivery{false, "WhatsApp Webhook Error: Unsupported URL."}));
  EXPECT_EQ(RemoteAlertStore::sendWhatsAppMessage(networkCalls(""), "+1", cloud, "httpkey", "t"),
            (BriefDelivery{false, "WhatsApp Webhook Error: Unsupported URL."}));
}

TEST(BriefDeliveryLive, ACertificateThatNobodyTrustsIsAnError) {
  const TemporaryFolder folder;
  const std::string key = folder.path("key.pem");
  const std::string certificate = folder.path("certificate.pem");
  const std::string log = folder.write("log", "");
  const auto toLog = [&] {
    if (std::freopen(log.c_str(), "w", stdout) == nullptr) ::_exit(1);
    if (std::freopen("/dev/null", "w", stderr) == nullptr) ::_exit(1);
  };
  test::ChildProcess maker =
      test::ChildProcess::program("/usr/bin/openssl",
                                  {"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes",
                                   "-keyout", key, "-out", certificate, "-days", "2", "-subj",
                                   "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1"},
                                  toLog);
  maker.waitForSignal();
  ASSERT_TRUE(std::filesystem::exists(certificate)) << "this needs openssl";
  const test::ChildProcess server = test::ChildProcess::program(
      "/usr/bin/openssl",
      {"openssl", "s_server", "-accept", "127.0.0.1:0", "-key", key, "-cert", certificate, "-www"},
      toLog);
  std::string port;
  while (port.empty() && !server.hasEnded()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const std::string said = contents(log);
    const auto found = said.find("ACCEPT 127.0.0.1:");
    if (found != std::string::npos && said.find('\n', found) != std::string::npos)
      port = said.substr(found + 17, said.find('\n', found) - found - 17);
  }

  EXPECT_EQ(toWebhook("https://127.0.0.1:" + port),
            (BriefDelivery{false,
                           "WhatsApp Webhook Error: No secure connection to the server: its "
                           "certificate is not trusted."}));
  EXPECT_EQ(toAPI("https://127.0.0.1:" + port),
            (BriefDelivery{false,
                           "WhatsApp API Error: No secure connection to the server: its "
                           "certificate is not trusted."}));
}

TEST(BriefDeliveryLive, NoStatusOfAnyFailureShowsTheKeyOrWebhook) {
  const test::ListeningPort closed(false, false);
  const std::string nobody = "http://127.0.0.1:" + std::to_string(closed.port());
  HTTPServer hanging = HTTPServer::hanging();
  HTTPServer resetting = HTTPServer::resetting();
  HTTPServer failing = HTTPServer::answering(answer("500 s3cret"));
  for (const std::string& server :
       {nobody, hanging.address(), resetting.address(), failing.address()}) {
    for (const BriefDelivery& outcome : {toWebhook(server, 0.2), toAPI(server, 0.2)}) {
      EXPECT_FALSE(outcome.delivered);
      EXPECT_THAT(outcome.status, Not(HasSubstr("s3cret")));
      EXPECT_THAT(outcome.status, Not(HasSubstr("127.0.0.1")));
    }
  }
}

/// What every process of the machine was started with.
std::string allCommandLines() {
  std::string all;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    all += contents(entry.path().string() + "/cmdline");
  }
  return all;
}

TEST(BriefDeliveryLive, TheKeyIsInNoProcessListWhileADeliveryRuns) {
  // Put together here, so that it does not stand in this program's own text or arguments.
  const std::string secret = "k3y" + std::to_string(::getpid()) + "-" + std::string(12, 'z');
  HTTPServer server = HTTPServer::hanging();
  std::thread delivery([&] {
    RemoteAlertStore::sendWhatsAppMessage(networkCalls(server.address(), 1), "+1", cloud,
                                          server.address() + "/" + secret, "text");
  });
  while (server.requests().empty()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_THAT(allCommandLines(), Not(HasSubstr(secret)));
  delivery.join();
  EXPECT_THAT(server.requests().at(0), HasSubstr(secret));
}

/// Begins a delivery that hangs and then ends the program.
[[noreturn]] void exitDuringADelivery() {
  static HTTPServer server = HTTPServer::hanging();
  systemBackgroundCalls().detached([] { toWebhook(server.address(), 60); });
  while (server.requests().empty()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  std::exit(0);
}

TEST(BriefDeliveryLiveDeathTest, AProgramThatEndsDuringADeliveryEndsWell) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(exitDuringADelivery(), ::testing::ExitedWithCode(0), "");
}

/// The real start of programs, with `script` in the place of osascript and time that passes
/// `hurry` times as fast.
BriefDeliveryCalls scriptedProgramCalls(const TemporaryFolder& folder, const std::string& script,
                                        double hurry = 1) {
  const std::string program = folder.write("osascript", "#!/bin/sh\n" + script + "\n");
  std::filesystem::permissions(program, std::filesystem::perms(0755));
  BriefDeliveryCalls calls;
  calls.tasks.launch = [program, launch = systemTaskCalls().launch](
                           const std::string& executable,
                           const std::vector<std::string>& arguments) {
    EXPECT_EQ(executable, "/usr/bin/osascript");
    return launch(program, arguments);
  };
  calls.clock.now = [hurry, start = systemClock().now()] {
    return start + (systemClock().now() - start) * hurry;
  };
  calls.background.sleep = [hurry](double seconds) {
    systemBackgroundCalls().sleep(seconds / hurry);
  };
  return calls;
}

BriefDelivery throughScript(const std::string& script, double hurry = 1) {
  const TemporaryFolder folder;
  return RemoteAlertStore::sendIMessageViaOSAScript(scriptedProgramCalls(folder, script, hurry),
                                                    "me \"x\"", "a\nb");
}

TEST(BriefDeliveryLive, AProgramThatSucceedsGetsTheScriptAsOneArgument) {
  const TemporaryFolder folder;
  const auto calls = scriptedProgramCalls(
      folder, "printf '%s|%s|%s' \"$#\" \"$1\" \"$2\" > '" + folder.path("seen") + "'");
  EXPECT_EQ(RemoteAlertStore::sendIMessageViaOSAScript(calls, "me \"x\"", "a\n\\b"),
            (BriefDelivery{true, "✓ Sent via iMessage to me \"x\""}));
  EXPECT_EQ(contents(folder.path("seen")),
            "2|-e|tell application \"Messages\"\n"
            "    set targetService to 1st account whose service type = iMessage\n"
            "    set targetBuddy to participant \"me \\\"x\\\"\" of targetService\n"
            "    send \"a\n\\\\b\" to targetBuddy\nend tell");
}

TEST(BriefDeliveryLive, AProgramThatFailsGivesItsErrorOutput) {
  EXPECT_EQ(throughScript("echo chatter; echo ' execution error: é ' >&2; exit 1"),
            (BriefDelivery{false, "iMessage: execution error: é"}));
}

TEST(BriefDeliveryLive, AProgramThatFailsWithoutAWordGivesNone) {
  EXPECT_EQ(throughScript("exit 3"), (BriefDelivery{false, "iMessage: "}));
}

TEST(BriefDeliveryLive, AProgramWhoseErrorOutputIsNoTextIsUnknown) {
  EXPECT_EQ(throughScript("printf '\\377\\376' >&2; exit 1"),
            (BriefDelivery{false, "iMessage: Unknown AppleScript error"}));
}

TEST(BriefDeliveryLive, AProgramThatIsKilledHasFailed) {
  EXPECT_EQ(throughScript("echo why >&2; kill -9 $$"), (BriefDelivery{false, "iMessage: why"}));
}

TEST(BriefDeliveryLive, AProgramThatHangsFor6SecondsIsTerminatedAfter5) {
  const TemporaryFolder folder;
  const std::string ended = folder.path("ended");
  const auto calls = scriptedProgramCalls(
      folder, "trap 'echo yes > \"" + ended + "\"; exit 0' TERM\nsleep 0.6 & wait", 10);
  EXPECT_EQ(
      RemoteAlertStore::sendIMessageViaOSAScript(calls, "me", "text"),
      (BriefDelivery{false, "iMessage timed out (ensure Messages.app is signed into iMessage)."}));
  while (contents(ended).empty()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

TEST(BriefDeliveryLive, WithoutTheProgramTheSystemsWordsAreTheAnswer) {
  if (std::filesystem::exists(briefServices::osascript)) GTEST_SKIP() << "this machine has it";
  BriefDeliveryCalls calls;
  calls.tasks = systemTaskCalls();
  EXPECT_EQ(RemoteAlertStore::sendIMessageViaOSAScript(calls, "me", "text"),
            (BriefDelivery{false, "iMessage Error: No such file or directory"}));
}

/// Puts a folder of programs in front of PATH for the length of a test.
class DesktopPrograms {
 public:
  DesktopPrograms() {
    qputenv("PATH", QByteArray::fromStdString(folder.path() + ":" + before.toStdString()));
  }
  DesktopPrograms(const DesktopPrograms&) = delete;
  DesktopPrograms& operator=(const DesktopPrograms&) = delete;
  ~DesktopPrograms() { qputenv("PATH", before); }

  void add(const std::string& name, const std::string& script) const {
    const std::string program = folder.write(name, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(program, std::filesystem::perms(0755));
  }

  const TemporaryFolder folder;

 private:
  const QByteArray before = qgetenv("PATH");
};

BriefDeliveryCalls desktopCalls() {
  BriefDeliveryCalls calls;
  calls.mainRunLoop.async = [](const std::function<void()>& task) { task(); };
  calls.workspace = systemWorkspaceCalls();
  return calls;
}

TEST(BriefDeliveryLive, ADeepLinkReachesTheDesktopsOpener) {
  const DesktopPrograms programs;
  const std::string seen = programs.folder.path("seen");
  programs.add("xdg-mime",
               "[ \"$*\" = 'query default x-scheme-handler/whatsapp' ] && echo wa.desktop");
  programs.add("xdg-open", "printf '%s' \"$1\" > '" + seen + "'");
  EXPECT_EQ(RemoteAlertStore::sendWhatsAppMessage(desktopCalls(), "+1 2", desktop, "", "a & b\n"),
            (BriefDelivery{true, "✓ Opened WhatsApp with pre-filled brief for +1 2"}));
  EXPECT_EQ(contents(seen), "whatsapp://send?phone=12&text=a%20&%20b%0A");
}

TEST(BriefDeliveryLive, ADeepLinkThatNoProgramOpensGoesToTheWebInstead) {
  const DesktopPrograms programs;
  const std::string seen = programs.folder.path("seen");
  programs.add("xdg-mime", "exit 0");
  programs.add("xdg-open", "printf '%s' \"$1\" > '" + seen + "'; exit 4");
  EXPECT_EQ(RemoteAlertStore::sendWhatsAppMessage(desktopCalls(), "+1 2", desktop, "", "t"),
            (BriefDelivery{true, "✓ Opened wa.me WhatsApp brief for +1 2"}));
  EXPECT_EQ(contents(seen), "https://wa.me/12?text=t");
}

TEST(BriefDeliveryLive, AWebLinkReachesTheDesktopsOpener) {
  const DesktopPrograms programs;
  const std::string seen = programs.folder.path("seen");
  programs.add("xdg-open", "printf '%s' \"$1\" > '" + seen + "'");
  EXPECT_EQ(RemoteAlertStore::sendWhatsAppMessage(desktopCalls(), "+1 2", cloud, "", "t"),
            (BriefDelivery{true, "✓ Opened WhatsApp Web/App for +1 2"}));
  EXPECT_EQ(contents(seen), "https://wa.me/12?text=t");
}

}  // namespace
}  // namespace korvantis
