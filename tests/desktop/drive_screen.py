"""Uses the program as a person does, with keyboard and mouse, and checks what it shows.

What is where is asked of the program's accessible names, as a screen reader does; what is pressed
goes through the display as real keys and clicks. script/test-screen starts this.
"""

import os
import signal
import subprocess
import sys
import time

import pyatspi

program, pictures = sys.argv[1:3]
failures = []
server_name = "shop-server"


def dump():
    """What a screen reader finds now, beside the pictures."""
    with open(f"{pictures}/accessible-{len(failures)}.txt", "w", encoding="utf-8") as file:
        for part in parts(application() or pyatspi.Registry.getDesktop(0)):
            try:
                file.write(f"{part.getRoleName()}: {part.name!r} {is_shown(part)}\n")
            except Exception:
                continue


def say(text):
    print("==> " + text, flush=True)


def check(what, holds):
    print(("    ok      " if holds else "    FAILED  ") + what, flush=True)
    if not holds:
        failures.append(what)
        picture(f"failed-{len(failures)}")
        dump()
    return holds


def wait_for(what, question, seconds=20.0):
    """The first answer that is not empty; fails the run after that time."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        answer = question()
        if answer:
            return answer
        time.sleep(0.1)
    check(what, False)
    return None


def xdotool(*arguments):
    result = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True)
    return result.stdout.split()


def key(*names):
    xdotool("key", "--clearmodifiers", *names)
    time.sleep(0.15)


def picture(name):
    time.sleep(0.4)
    subprocess.run(["import", "-window", "root", f"{pictures}/{name}.png"], check=False)


def parts(top):
    """Everything at and below `top`, in order."""
    waiting = [top]
    while waiting:
        part = waiting.pop()
        try:
            yield part
            waiting.extend(part[index] for index in reversed(range(part.childCount)) if part[index])
        except Exception:  # It went away meanwhile.
            continue


def application():
    desktop = pyatspi.Registry.getDesktop(0)
    for index in range(desktop.childCount):
        try:
            if desktop[index] and desktop[index].name == "korvantis":
                return desktop[index]
        except Exception:
            continue
    return None


def is_shown(part):
    states = part.getState()
    return states.contains(pyatspi.STATE_VISIBLE) and states.contains(pyatspi.STATE_SHOWING)


def find(matches, roles=()):
    """The first visible part whose name is `matches`, or for which it holds."""
    top = application()
    if not top:
        return None
    for part in parts(top):
        try:
            name = part.name
            fits = matches(name) if callable(matches) else name == matches
            if fits and (not roles or part.getRoleName() in roles) and is_shown(part):
                return part
        except Exception:
            continue
    return None


def click(part):
    box = part.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    xdotool("mousemove", box.x + box.width // 2, box.y + box.height // 2)
    time.sleep(0.2)
    xdotool("click", 1)
    time.sleep(0.3)


def press(what, matches, roles=()):
    part = wait_for(what, lambda: find(matches, roles))
    if part:
        click(part)
    return part


def is_running(process):
    return process.poll() is None


def start_server():
    """A server of our own, as a developer forgets one: in a git folder, doing nothing."""
    folder = os.path.expanduser("~/shop")
    os.makedirs(folder)
    subprocess.run(["git", "init", "-q", folder], check=True)
    # Under a name of its own: this test is Python too.
    server = os.path.join(folder, server_name)
    os.symlink("/usr/bin/python3", server)
    return subprocess.Popen(
        [server, "-m", "http.server", "0", "--bind", "127.0.0.1"],
        cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def window_id(size=None):
    for window in xdotool("search", "--onlyvisible", "--class", "korvantis"):
        values = dict(line.split("=") for line in xdotool("getwindowgeometry", "--shell", window)
                      if "=" in line)
        if size is None or (int(values["WIDTH"]), int(values["HEIGHT"])) == size:
            return window
    return None


def start_program():
    process = subprocess.Popen([program], stdout=subprocess.DEVNULL)
    window = wait_for("the window opens", lambda: window_id((1220, 790)))
    xdotool("windowactivate", "--sync", window)
    wait_for("a screen reader finds the tabs", lambda: find("Overview", ("page tab",)))
    return process


def stop_the_server_through_the_screen(server):
    say("Stopping a sleeping process through the screen")
    key("ctrl+2")
    check("Ctrl+2 shows the processes", find(lambda name: name.startswith("Filter apps")) is not None)
    toggle = find(lambda name: "System Processes" in name)
    if toggle:
        click(toggle)
    key("ctrl+f")
    xdotool("type", str(server.pid))
    row = wait_for("the search finds the process by its pid",
                   lambda: find(lambda name: server_name in name, ("list item",)))
    picture("processes-search")
    if not row:
        return
    stop = f"Stop {server_name}"
    # By keyboard into the list, to its first row, and open.
    for _ in range(8):
        if find(lambda name: name.startswith(stop)):
            break
        key("Tab")
        key("Home")
        key("Right")
    picture("processes-open")
    check("the process runs before", is_running(server))
    press("a button stops the process", lambda name: name.startswith(stop), ("push button", "button"))
    gone = wait_for("the process is gone", lambda: not is_running(server), 10)
    check("it ended by the polite signal", bool(gone) and server.returncode == -signal.SIGTERM)
    wait_for("its row goes too", lambda: not find(lambda name: name.startswith(stop)), 10)
    picture("processes-stopped")
    key("Escape")


def walk_the_panes():
    say("Walking the panes")
    for number, name in enumerate(
            ["Overview", "Processes", "Insights", "History", "Agents", "Sound"], 1):
        key(f"ctrl+{number}")
        tab = find(lambda text: text == name or text.startswith(name + ", "), ("page tab",))
        check(f"Ctrl+{number} selects {name}",
              tab is not None and tab.getState().contains(pyatspi.STATE_SELECTED))
        picture(f"pane-{number}")


def change_settings():
    say("Changing settings")
    press("the light look can be chosen", "Appearance: Light Mode")
    picture("light")
    press("the dark look can be chosen", "Appearance: Dark Mode")
    press("the gear opens the settings", lambda name: name.startswith("Korvantis Preferences"))
    wait_for("the sheet opens", lambda: find("Close"))
    picture("settings-sheet")
    key("Escape")
    wait_for("Escape closes the sheet", lambda: not find("Close"))
    key("ctrl+comma")
    wait_for("Ctrl+comma opens a window", lambda: find("Close"))
    press("the appearance can be changed", "Appearance", ("page tab", "push button", "button"))
    press("the interval can be chosen", lambda name: name.startswith("5"),
          ("radio button", "push button", "button"))
    wait_for("the bar tells the new interval", lambda: find("Live 5s tick"))
    picture("settings-window")
    key("Escape")
    wait_for("Escape closes the window", lambda: not find("Close"))


def status_item_address():
    listed = subprocess.run(
        ["dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus",
         "/org/freedesktop/DBus", "org.freedesktop.DBus.ListNames"],
        capture_output=True, text=True).stdout.split()
    return next((name for name in listed if name.startswith("org.kde.StatusNotifierItem-")), None)


def use_the_tray(process):
    say("Using the tray")
    address = wait_for("the status item is on the bus", status_item_address)
    picture("tray")
    if not address:
        return
    subprocess.run(["dbus-send", "--session", "--type=method_call", f"--dest={address}",
                    "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate",
                    "int32:1500", "int32:10"], check=False)
    wait_for("an activation opens the panel", lambda: window_id((820, 560)))
    picture("panel")
    xdotool("mousemove", 300, 900)
    xdotool("click", 1)
    wait_for("a click elsewhere closes it", lambda: not window_id((820, 560)))
    main = window_id((1220, 790))
    if main:
        xdotool("windowactivate", "--sync", main)
        key("alt+F4")
    wait_for("the window closes", lambda: not window_id((1220, 790)))
    check("and the program goes on", is_running(process))
    subprocess.run([program], timeout=20, check=False)
    wait_for("a second launch brings the window back", lambda: window_id((1220, 790)))
    key("ctrl+q")
    wait_for("Ctrl+Q ends the program", lambda: not is_running(process))


def main():
    server = start_server()
    process = start_program()
    try:
        stop_the_server_through_the_screen(server)
        walk_the_panes()
        change_settings()
        use_the_tray(process)
    finally:
        for child in (server, process):
            if is_running(child):
                child.kill()
    say("All is well" if not failures else f"{len(failures)} checks failed")
    return 1 if failures else 0


sys.exit(main())
