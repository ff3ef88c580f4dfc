#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

namespace korvantis {

/// A question to a service on a message bus. It takes no arguments and starts no service.
struct BusQuestion {
  std::string service;
  std::string path;
  std::string interface;
  std::string member;
};

/// What came of a question: nothing in time, a refusal, or a message to read.
struct BusAnswer {
  struct Release {
    void operator()(sd_bus_message* held) const { sd_bus_message_unref(held); }
  };

  /// Whether the service, or the bus in its place, answered at all.
  bool came = false;
  /// The answer; null for a refusal, such as that of a bus that does not know the service.
  std::unique_ptr<sd_bus_message, Release> message;
};

/// A connection to a message bus that waits for nobody longer than it says: opening it, greeting
/// and asking all fall under one limit. One thread at a time.
class BusSession {
 public:
  /// Nothing is opened before the first question. An empty address is a bus that is never there.
  BusSession(std::string address, std::function<double()> monotonicSeconds);

  /// Asks all questions at once, and gives the answers in their order after at most 200 ms. A bus
  /// that can't be reached or answers nothing at all is tried again 5 seconds later.
  std::vector<BusAnswer> ask(const std::vector<BusQuestion>& questions);

 private:
  struct Close {
    void operator()(sd_bus* held) const { sd_bus_close_unref(held); }
  };
  struct Conversation;

  bool open();
  void giveUp();
  bool send(const BusQuestion& question, BusAnswer& answer, Conversation& conversation);
  bool listen(const std::vector<BusAnswer>& answers);

  const std::string address;
  const std::function<double()> monotonicSeconds;
  std::unique_ptr<sd_bus, Close> bus;
  std::optional<double> gaveUpAt;
};

}  // namespace korvantis
