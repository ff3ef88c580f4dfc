#include "platform/linux/FileReveal.h"

#include <cerrno>
#include <memory>
#include <string_view>
#include <systemd/sd-bus.h>
#include <utility>

#include "platform/linux/DesktopOpener.h"
#include "platform/linux/SpawnedProgram.h"
#include "platform/linux/UtilityThread.h"

namespace korvantis {
namespace {

struct Unreference {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

constexpr double openerSeconds = 2;
constexpr std::uint64_t answerMicroseconds = 5'000'000;

std::unique_ptr<sd_bus_message, Unreference> showItemsCall(sd_bus* bus,
                                                           const std::vector<std::string>& paths) {
  sd_bus_message* made = nullptr;
  if (sd_bus_message_new_method_call(bus, &made, "org.freedesktop.FileManager1",
                                     "/org/freedesktop/FileManager1",
                                     "org.freedesktop.FileManager1", "ShowItems") < 0) {
    return nullptr;
  }
  std::unique_ptr<sd_bus_message, Unreference> call(made);
  if (sd_bus_message_open_container(made, 'a', "s") < 0) return nullptr;
  for (const std::string& path : paths) {
    if (sd_bus_message_append(made, "s", fileURLOf(path).c_str()) < 0) return nullptr;
  }
  if (sd_bus_message_close_container(made) < 0) return nullptr;
  return sd_bus_message_append(made, "s", "") < 0 ? nullptr : std::move(call);
}

/// False where no file manager took the request. One that is slow to start has taken it.
bool showItems(const std::vector<std::string>& paths) {
  sd_bus* opened = nullptr;
  if (sd_bus_open_user(&opened) < 0) return false;
  const std::unique_ptr<sd_bus, Unreference> bus(opened);
  const auto call = showItemsCall(opened, paths);
  if (!call) return false;
  const int error = sd_bus_call(opened, call.get(), answerMicroseconds, nullptr, nullptr);
  return error >= 0 || error == -ETIMEDOUT;
}

void openFolderOf(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('/') + 1);
  std::string error;
  const auto opener = SpawnedProgram::start("xdg-open", {folder}, ProgramOutput::discarded, error);
  if (opener) static_cast<void>(opener->waitUntilEnd(openerSeconds));
}

}  // namespace

std::string fileURLOf(const std::string& path) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char character : path) {
    const auto byte = static_cast<unsigned char>(character);
    if (plain.find(character) != std::string_view::npos) {
      url += character;
    } else {
      url += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
  }
  return url;
}

void revealInFileManager(const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  // Without a thread to be had, nothing is shown: the files are where they are.
  static_cast<void>(startThread([paths] {
    if (!showItems(paths)) openFolderOf(paths.front());
  }));
}

}  // namespace korvantis
