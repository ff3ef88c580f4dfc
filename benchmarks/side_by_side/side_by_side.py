#!/usr/bin/env python3
"""Prints what one refresh costs: our engine's tick beside top, htop and btop.

side_by_side.py BIN [--processes 400] [--seconds 50]

BIN holds idle_processes, tick_loop and scan_floor. All run one after the other on this machine,
under the same idle processes, each refreshing every 2 seconds; the peers draw on a terminal of
their own. CPU time is that of every process of a program's tree, read from its CPU clock, less
the first seconds. System calls come from strace in a run of their own, since tracing slows.
"""
import argparse
import collections
import fcntl
import os
import pty
import shutil
import signal
import statistics
import struct
import subprocess
import tempfile
import termios
import threading
import time

INTERVAL = 2.0
WARM_UP = 6.0
PEERS = {
    "top": ["top", "-d", "2"],
    "htop": ["htop", "-d", "20"],
    "btop": ["btop", "--utf-force"],
}


def process_ids():
    return [int(name) for name in os.listdir("/proc") if name.isdigit()]


def tree(root):
    """`root` and all that descends from it."""
    children = collections.defaultdict(list)
    for pid in process_ids():
        try:
            with open(f"/proc/{pid}/stat", errors="replace") as stat:
                text = stat.read()
        except OSError:
            continue
        children[int(text[text.rindex(")") + 2:].split()[1])].append(pid)
    found, waiting = [], [root]
    while waiting:
        pid = waiting.pop()
        found.append(pid)
        waiting += children[pid]
    return found


def cpu_milliseconds(root):
    """CPU time of a tree so far; a process that has just ended counts nothing."""
    total = 0.0
    for pid in tree(root):
        try:
            total += time.clock_gettime(((~pid) << 3) | 2) * 1e3
        except OSError:
            pass
    return total


def drain(descriptor):
    try:
        while os.read(descriptor, 65536):
            pass
    except OSError:
        pass


class Terminal:
    """A program on a terminal of 200 by 50 whose output is thrown away."""

    def __init__(self, command, home):
        environment = dict(os.environ, HOME=home, XDG_CONFIG_HOME=home, TERM="xterm-256color",
                           LANG="C.UTF-8", LC_ALL="C.UTF-8")
        self.pid, self.descriptor = pty.fork()
        if self.pid == 0:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 200, 0, 0))
            os.execvpe(command[0], command, environment)
        threading.Thread(target=drain, args=(self.descriptor,), daemon=True).start()

    def end(self):
        os.kill(self.pid, signal.SIGKILL)
        os.waitpid(self.pid, 0)


def measured_peer(command, seconds):
    """CPU milliseconds of each refresh."""
    with tempfile.TemporaryDirectory() as home:
        peer = Terminal(command, home)
        try:
            time.sleep(WARM_UP)
            costs, last, due = [], cpu_milliseconds(peer.pid), time.monotonic()
            for _ in range(int(seconds / INTERVAL)):
                due += INTERVAL
                time.sleep(max(0.0, due - time.monotonic()))
                now = cpu_milliseconds(peer.pid)
                costs.append(now - last)
                last = now
            return costs
        finally:
            peer.end()


def traced_calls_of_peer(command, seconds=10):
    """System calls of one refresh; absent without strace."""
    with tempfile.TemporaryDirectory() as home:
        log = os.path.join(home, "calls")
        peer = Terminal(["strace", "-f", "-qq", "-c", "-o", log, *command], home)
        time.sleep(seconds)
        for pid in tree(peer.pid)[1:]:
            os.kill(pid, signal.SIGTERM)
        try:
            os.waitpid(peer.pid, 0)
        except ChildProcessError:
            pass
        with open(log) as lines:
            total = [line for line in lines if line.rstrip().endswith("total")]
        return int(total[-1].split()[2 if len(total[-1].split()) < 6 else 3]) / (seconds / INTERVAL) \
            if total else None


def tick_lines(binaries, seconds):
    output = subprocess.run([f"{binaries}/tick_loop", str(seconds)], capture_output=True, text=True,
                            check=True).stdout.splitlines()
    ticks = [line.split() for line in output if not line.startswith("pss")]
    pss = [int(line.split()[1]) for line in output if line.startswith("pss")]
    return ticks, (pss or [0])[0]


def plain_tick_calls(binaries, seconds=9):
    """System calls of a plain tick: those between its two marks."""
    with tempfile.NamedTemporaryFile(mode="r") as log:
        subprocess.run(["strace", "-f", "-qq", "-s", "8", "-o", log.name, f"{binaries}/tick_loop",
                        str(seconds)], stdout=subprocess.DEVNULL, check=True)
        counts, running = [], None
        for line in log:
            if 'write(3, "begin"' in line:
                running = 0
            elif 'write(3, "plain"' in line and running is not None:
                counts.append(running)
                running = None
            elif 'write(3, "paced"' in line:
                running = None
            elif running is not None:
                running += 1
        return statistics.median(counts) if counts else None


def row(name, cpu, calls, processes, top):
    per_process = "" if calls is None else f"{calls / processes:.1f}"
    print(f"| {name} | {cpu:.2f} | {cpu / top:.2f} | {per_process} |")


def report(binaries, seconds):
    ticks, pss = tick_lines(binaries, seconds)
    costs = [float(cost) / 1e3 for _, _, cost in ticks]
    plain = [float(cost) / 1e3 for kind, _, cost in ticks if kind == "plain"]
    processes = int(ticks[-1][1])
    floor = float(subprocess.run([f"{binaries}/scan_floor", "15"], capture_output=True, text=True,
                                 check=True).stdout.split()[0]) / 1e3
    peers = {name: measured_peer(command, seconds) for name, command in PEERS.items()
             if shutil.which(command[0])}
    top = statistics.mean(peers["top"])
    has_strace = shutil.which("strace") is not None

    print(f"\n{processes} processes, a refresh every {INTERVAL:g} s, {seconds:g} s each\n")
    print("| one refresh of | CPU ms | x top | system calls a process |\n|---|---|---|---|")
    row("our plain tick (median)", statistics.median(plain),
        plain_tick_calls(binaries) if has_strace else None, processes, top)
    row("our mean tick, paced work included", statistics.mean(costs), None, processes, top)
    row("our worst tick", max(costs), None, processes, top)
    row("enumerate + stat + io, fresh opens", floor, None, processes, top)
    for name, peer_costs in peers.items():
        calls = traced_calls_of_peer(PEERS[name]) if has_strace else None
        row(f"{name} (mean)", statistics.mean(peer_costs), calls, processes, top)
    print(f"\nworst tick / median tick: {max(costs) / statistics.median(costs):.2f}")
    print(f"memory of the engine without a window (PSS): {pss / 1024:.1f} MB")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("binaries")
    parser.add_argument("--processes", type=int, default=400)
    parser.add_argument("--seconds", type=float, default=50)
    chosen = parser.parse_args()
    herd = subprocess.Popen([f"{chosen.binaries}/idle_processes", str(chosen.processes)],
                            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        herd.stdout.readline()
        report(chosen.binaries, chosen.seconds)
    finally:
        herd.stdin.close()
        herd.wait()


if __name__ == "__main__":
    main()
