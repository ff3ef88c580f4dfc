#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "support/ListeningPort.h"

namespace korvantis::test {

/// A web server on a free port of the loopback interface that serves one connection after the
/// other on a thread of its own. It takes a whole request and then does what the test says.
class HTTPServer {
 public:
  /// Sends these bytes and closes.
  static HTTPServer answering(std::string bytes) {
    return HTTPServer(
        [bytes = std::move(bytes)](HTTPServer&, int connection) { send(connection, bytes); });
  }

  /// Sends these bytes and then keeps the connection open without another one.
  static HTTPServer hanging(std::string bytes = {}) {
    return HTTPServer([bytes = std::move(bytes)](HTTPServer& server, int connection) {
      send(connection, bytes);
      server.waitForEnd();
    });
  }

  /// Breaks the connection off (RST).
  static HTTPServer resetting() {
    return HTTPServer([](HTTPServer&, int connection) {
      const linger atOnce{.l_onoff = 1, .l_linger = 0};
      ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    });
  }

  HTTPServer(const HTTPServer&) = delete;
  HTTPServer& operator=(const HTTPServer&) = delete;
  ~HTTPServer() {
    {
      const std::lock_guard guard(lock);
      isEnding = true;
    }
    ended.notify_all();
    ::shutdown(listener.descriptor(), SHUT_RDWR);
    thread.join();
  }

  /// Where it is reached: "http://127.0.0.1:12345".
  std::string address() const { return "http://127.0.0.1:" + std::to_string(listener.port()); }

  /// The requests that came, each with its head and body as received.
  std::vector<std::string> requests() {
    const std::lock_guard guard(lock);
    return received;
  }

 private:
  using Serve = std::function<void(HTTPServer&, int connection)>;

  explicit HTTPServer(Serve how) : serve(std::move(how)), thread([this] { run(); }) {}

  void run() {
    while (true) {
      const int connection = ::accept4(listener.descriptor(), nullptr, nullptr, SOCK_CLOEXEC);
      if (connection < 0) return;
      // A client that sends no whole request must not hold us up for ever.
      const timeval limit{.tv_sec = 2, .tv_usec = 0};
      ::setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
      std::string request = wholeRequest(connection);
      {
        const std::lock_guard guard(lock);
        received.push_back(std::move(request));
      }
      serve(*this, connection);
      ::close(connection);
    }
  }

  void waitForEnd() {
    std::unique_lock guard(lock);
    ended.wait(guard, [this] { return isEnding; });
  }

  static void send(int connection, const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
      const ssize_t put =
          ::send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
      if (put <= 0) return;
      sent += static_cast<std::size_t>(put);
    }
  }

  /// The number in the header that tells the length of the body.
  static std::size_t bodyLength(std::string head) {
    std::transform(head.begin(), head.end(), head.begin(),
                   [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    const std::string name = "content-length:";
    const auto found = head.find(name);
    return found == std::string::npos ? 0 : std::stoul(head.substr(found + name.size()));
  }

  static std::string wholeRequest(int connection) {
    std::string request;
    std::array<char, 4096> chunk{};
    while (true) {
      const auto end = request.find("\r\n\r\n");
      if (end != std::string::npos &&
          request.size() >= end + 4 + bodyLength(request.substr(0, end)))
        return request;
      const ssize_t got = ::recv(connection, chunk.data(), chunk.size(), 0);
      if (got <= 0) return request;
      request.append(chunk.data(), static_cast<std::size_t>(got));
    }
  }

  ListeningPort listener;
  Serve serve;
  std::mutex lock;
  std::condition_variable ended;
  bool isEnding = false;
  std::vector<std::string> received;
  std::thread thread;
};

}  // namespace korvantis::test
