#include "platform/linux/applications/KnownPrograms.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace korvantis::KnownPrograms {
namespace {

constexpr std::array<std::string_view, 9> shells{"sh",  "bash", "dash", "zsh",    "ksh",
                                                 "ash", "fish", "csh",  "busybox"};

constexpr std::array<std::string_view, 23> languages{
    "python", "pypy", "perl",     "ruby",     "node",  "nodejs", "gjs",   "gjs-console",
    "java",   "mono", "electron", "wish",     "tclsh", "php",    "lua",   "luajit",
    "guile",  "deno", "bun",      "qmlscene", "qml",   "wine",   "wine64"};

constexpr std::array<std::string_view, 77> sessionNames{
    // Desktop shells, window managers, panels
    "gnome-shell", "gnome-session", "gnome-session-binary", "mutter", "plasmashell", "kwin_x11",
    "kwin_wayland", "kwin_wayland_wrapper", "ksmserver", "kded5", "kded6", "kglobalaccel5",
    "kglobalacceld", "startplasma-x11", "startplasma-wayland", "plasma_session", "xfce4-session",
    "xfce4-panel", "xfwm4", "xfdesktop", "xfsettingsd", "xfce4-notifyd", "wrapper-2.0", "xfconfd",
    "cinnamon", "cinnamon-session", "muffin", "mate-session", "mate-panel", "marco", "budgie-panel",
    "budgie-wm", "lxsession", "lxpanel", "lxqt-session", "lxqt-panel", "openbox", "fluxbox",
    "icewm", "awesome", "bspwm", "dwm", "qtile", "xmonad", "enlightenment", "i3", "i3bar", "sway",
    "swaybar", "Hyprland", "waybar", "wayfire", "labwc", "river", "weston",
    // Displays and sound
    "Xorg", "X", "Xwayland", "Xvfb", "pulseaudio", "pipewire", "pipewire-pulse", "wireplumber",
    // Session manager, bus and what hangs on them
    "systemd", "dbus-daemon", "dbus-broker", "dbus-broker-launch", "dbus-launch",
    "at-spi-bus-launcher", "at-spi2-registryd", "dconf-service", "xdg-desktop-portal",
    "xdg-document-portal", "xdg-permission-store", "ibus-daemon", "fcitx5", "gnome-keyring-daemon"};

constexpr std::array<std::string_view, 4> sessionFamilies{"gsd-", "gvfsd", "xdg-desktop-portal-",
                                                          "evolution-"};

constexpr std::array<std::string_view, 43> starters{
    // Terminal multiplexers
    "tmux", "screen", "zellij", "dtach", "abduco",
    // Application menus
    "rofi", "dmenu", "dmenu_run", "wofi", "fuzzel", "krunner", "ulauncher", "albert", "synapse",
    "xfce4-appfinder", "lxqt-runner", "gmrun", "gnome-panel",
    // Programs that open or wrap others
    "xdg-open", "exo-open", "gtk-launch", "gio", "dex", "kioclient", "kioclient5", "kde-open",
    "systemd-run", "dbus-run-session", "flatpak", "snap", "bwrap", "firejail", "sudo", "su",
    "pkexec", "runuser", "login", "nohup", "setsid", "timeout", "nice", "env", "xdg-dbus-proxy"};

constexpr std::array<std::string_view, 3> sharedHelpers{"WebKitWebProcess", "WebKitNetworkProcess",
                                                        "WebKitGPUProcess"};

template <typename Names>
bool holds(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::string_view withoutVersion(std::string_view name) {
  const std::size_t last = name.find_last_not_of("0123456789.");
  return last == std::string_view::npos ? name : name.substr(0, last + 1);
}

}  // namespace

bool isShell(std::string_view name) {
  return holds(shells, name);
}

bool isInterpreter(std::string_view name) {
  return isShell(name) || holds(languages, name) || holds(languages, withoutVersion(name));
}

bool isSessionComponent(std::string_view name) {
  const bool isOfFamily =
      std::any_of(sessionFamilies.begin(), sessionFamilies.end(),
                  [name](std::string_view family) { return name.starts_with(family); });
  return holds(sessionNames, name) || isOfFamily;
}

bool startsOthers(std::string_view name) {
  return holds(starters, name) || isSessionComponent(name);
}

bool isSharedHelper(std::string_view name) {
  return holds(sharedHelpers, name);
}

}  // namespace korvantis::KnownPrograms
