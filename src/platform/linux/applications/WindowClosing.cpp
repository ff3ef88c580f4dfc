#include "platform/linux/applications/WindowClosing.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace korvantis {
namespace {

constexpr auto limit = std::chrono::milliseconds(300);
constexpr std::uint32_t mostWords = 4096;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using Answer = std::unique_ptr<Reply, Free>;

std::string hostName() {
  std::array<char, 256> name{};
  ::gethostname(name.data(), name.size() - 1);
  return name.data();
}

/// One connection to the display.
class Display {
 public:
  Display() : connection(xcb_connect(nullptr, &screenNumber)) {
    if (xcb_connection_has_error(connection.get()) != 0) return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (int index = 0; screens.rem > 0; ++index, xcb_screen_next(&screens)) {
      if (index == screenNumber) root = screens.data->root;
    }
  }

  bool isThere() const { return root != XCB_WINDOW_NONE; }

  /// The windows that the window manager knows.
  std::vector<std::uint32_t> windows() const {
    return numbers(root, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW);
  }

  bool closesForOthers() const {
    const auto supported = numbers(root, "_NET_SUPPORTED", XCB_ATOM_ATOM);
    return std::find(supported.begin(), supported.end(), atom("_NET_CLOSE_WINDOW")) !=
           supported.end();
  }

  bool isOf(std::uint32_t window, std::int32_t pid) const {
    const auto owners = numbers(window, "_NET_WM_PID", XCB_ATOM_CARDINAL);
    if (owners.size() != 1 || owners.front() != static_cast<std::uint32_t>(pid)) return false;
    // A program that shows itself from another machine has a number of that machine.
    return text(window, XCB_ATOM_WM_CLIENT_MACHINE) == hostName();
  }

  void close(std::uint32_t window) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("_NET_CLOSE_WINDOW");
    constexpr std::uint32_t fromPager = 2;
    event.data.data32[1] = fromPager;
    constexpr std::uint32_t mask =
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(connection.get(), 0, root, mask, reinterpret_cast<const char*>(&event));
  }

  void finish() const {
    // An answer to anything says that all before it has arrived.
    const Answer<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
  }

 private:
  xcb_atom_t atom(std::string_view name) const {
    const auto asked =
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Answer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection.get(), asked, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }

  Answer<xcb_get_property_reply_t> property(std::uint32_t window, xcb_atom_t name,
                                            xcb_atom_t type) const {
    const auto asked = xcb_get_property(connection.get(), 0, window, name, type, 0, mostWords);
    return Answer<xcb_get_property_reply_t>(
        xcb_get_property_reply(connection.get(), asked, nullptr));
  }

  std::vector<std::uint32_t> numbers(std::uint32_t window, std::string_view name,
                                     xcb_atom_t type) const {
    const auto reply = property(window, atom(name), type);
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
  }

  std::string text(std::uint32_t window, xcb_atom_t name) const {
    const auto reply = property(window, name, XCB_GET_PROPERTY_TYPE_ANY);
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
  }

  int screenNumber = 0;
  std::unique_ptr<xcb_connection_t, Disconnect> connection;
  xcb_window_t root = XCB_WINDOW_NONE;
};

/// How far a request to close windows has come. Whoever waits for it and whoever makes it agree on
/// one of the last two, so that a request is never denied and made afterwards.
enum class Progress { looking, closing, givenUp };

bool closeAll(std::int32_t pid, std::atomic<Progress>& progress) {
  const Display display;
  if (!display.isThere() || !display.closesForOthers()) return false;
  bool hasAny = false;
  for (const std::uint32_t window : display.windows()) {
    if (!display.isOf(window, pid)) continue;
    auto expected = Progress::looking;
    progress.compare_exchange_strong(expected, Progress::closing);
    if (expected == Progress::givenUp) return false;
    display.close(window);
    hasAny = true;
  }
  display.finish();
  return hasAny;
}

}  // namespace

bool closeWindowsOf(std::int32_t pid) {
  const char* display = std::getenv("DISPLAY");
  if (pid < 1 || display == nullptr || display[0] == '\0') return false;
  // The library has no limits of its own, and a display can hang.
  auto promise = std::make_shared<std::promise<bool>>();
  auto progress = std::make_shared<std::atomic<Progress>>(Progress::looking);
  auto answer = promise->get_future();
  try {
    std::thread([promise, progress, pid] {
      promise->set_value(closeAll(pid, *progress));
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  if (answer.wait_for(limit) == std::future_status::ready) return answer.get();
  auto expected = Progress::looking;
  return !progress->compare_exchange_strong(expected, Progress::givenUp);
}

}  // namespace korvantis
