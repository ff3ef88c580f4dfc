#!/usr/bin/env python3
"""Records the desktop programs that run now as a fixture for tests/platform.

Usage: KORVANTIS_IN_DESKTOP="python3 record.py > NAME.txt" script/test-desktop. Takes every process whose environment holds
KORVANTIS_DESKTOP_TEST (script/test-desktop sets it), stripped to what the rules look at: of an entry
its few keys, of a script its first line and the lines with paths, of a native program its mark,
of an environment the two launch variables. Home and temporary folders get plain names.
"""
import os
import re
import subprocess
import sys

WORK = os.environ["KORVANTIS_DESKTOP_TEST"]
KEYS = ("Type", "Name", "Exec", "Icon", "Terminal", "NoDisplay", "Hidden", "DBusActivatable")
FOLDERS = ["/usr/share/applications", os.environ["XDG_DATA_HOME"] + "/applications"]


def plain(text):
    text = re.sub(re.escape(WORK) + r"/firefox-\w+", "/home/user/firefox", text)
    return text.replace(WORK + "/home", "/home/user").replace(WORK + "/run", "/run/user/1000")


def read(path):
    try:
        with open(path, "rb") as file:
            return file.read().decode("utf-8", "replace")
    except OSError:
        return ""


written = set()


def put_file(path):
    """The file at `path`, with the links that lead to it."""
    path = os.path.normpath(path)
    if path in written or not os.path.lexists(path):
        return
    written.add(path)
    if os.path.islink(path):
        print("link", plain(path), os.readlink(path))
        put_file(os.path.join(os.path.dirname(path), os.readlink(path)))
        return
    with open(path, "rb") as file:
        mark = file.read(4)
    if mark == b"\x7fELF":
        print("native", plain(path))
    elif mark.startswith(b"#!"):
        print("script", plain(path))
        lines = read(path).splitlines()
        for line in lines[:1] + [l for l in lines[1:] if re.search(r"/(usr|opt)/\S", l)][:30]:
            print("|", plain(line))


def put_entry(path):
    lines, group = [], None
    for line in read(path).splitlines():
        if line.startswith("["):
            group = line
        if group == "[Desktop Entry]" and line.split("=")[0] in KEYS:
            lines.append(line)
    print("file", plain(path))
    print("| [Desktop Entry]")
    for line in lines:
        print("|", plain(line))
    words = [l[5:] for l in lines if l.startswith("Exec=")]
    program = words[0].split()[0].strip('"') if words else ""
    for folder in ["", "/usr/local/bin/", "/usr/bin/"]:
        if program and (program.startswith("/") or folder) and os.path.exists(folder + program):
            put_file(folder + program)
            break


def put_process(pid):
    stat = read(f"/proc/{pid}/stat")
    name = stat[stat.index("(") + 1:stat.rindex(")")]
    fields = stat[stat.rindex(")") + 2:].split()
    print(f"process {pid} parent {fields[1]} session {fields[3]} start {fields[19]}")
    print("name", name)
    try:
        exe = os.readlink(f"/proc/{pid}/exe")
        print("exe", plain(exe))
    except OSError:
        pass
    words = read(f"/proc/{pid}/cmdline")
    for word in words.rstrip("\0").split("\0")[:24]:
        print("word", plain(word)[:200])
    print("cgroup", read(f"/proc/{pid}/cgroup").splitlines()[-1])
    for variable in read(f"/proc/{pid}/environ").split("\0"):
        if variable.startswith("GIO_LAUNCHED_DESKTOP_FILE"):
            print("env", plain(variable))


def parent_of(pid):
    stat = read(f"/proc/{pid}/stat")
    return int(stat[stat.rindex(")") + 2:].split()[1]) if stat else 0


def bus_names():
    out = subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                          "--object-path", "/org/freedesktop/DBus", "--method",
                          "org.freedesktop.DBus.ListNames"], capture_output=True, text=True).stdout
    for name in re.findall(r"'([a-zA-Z][\w.-]*)'", out):
        reply = subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                                "--object-path", "/org/freedesktop/DBus", "--method",
                                "org.freedesktop.DBus.GetConnectionUnixProcessID", name],
                               capture_output=True, text=True).stdout
        found = re.search(r"uint32 (\d+)", reply)
        if found:
            print("bus", name, found.group(1))


def main():
    mine = os.getpid()
    skip = {mine, os.getppid()}
    # Some programs write over their environment; their parents tell.
    script = parent_of(os.getppid())
    for folder in FOLDERS:
        for name in sorted(os.listdir(folder)):
            if name.endswith(".desktop"):
                put_entry(os.path.join(folder, name))
    pids = []
    for pid in sorted(int(n) for n in os.listdir("/proc") if n.isdigit()):
        marked = f"KORVANTIS_DESKTOP_TEST={WORK}" in read(f"/proc/{pid}/environ").split("\0")
        parent = parent_of(pid)
        if pid not in skip and parent not in skip and (marked or parent in pids + [script]):
            pids.append(pid)
    for pid in pids:
        try:
            exe = os.readlink(f"/proc/{pid}/exe")
        except OSError:
            exe = ""
        if exe and os.path.basename(exe) in ("tee", "cat"):
            continue
        put_process(pid)
    for pid in pids:
        try:
            put_file(os.readlink(f"/proc/{pid}/exe"))
        except OSError:
            pass
    bus_names()


main()
