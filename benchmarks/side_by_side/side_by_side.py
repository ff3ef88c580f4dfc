#!/usr/bin/env python3
"""Prints what one refresh costs, as Markdown: our engine's tick beside top, htop and btop.

side_by_side.py BIN [--processes 400] [--seconds 50] [--rounds 2]

BIN holds idle_processes, tick_loop and scan_floor. All run by turns on this machine, round after
round, under the same idle processes, each refreshing every 2 seconds; the peers draw on a terminal
of their own. Figures are CPU time, which other load disturbs less than elapsed time: that of every
process of a program's tree, read from its CPU clock, less the first seconds. System calls come
from strace in runs of their own, since tracing slows. Only processes started here are ended.
"""
import argparse
import collections
import fcntl
import os
import platform
import pty
import shutil
import signal
import statistics
import struct
import subprocess
import sys
import tempfile
import termios
import threading
import time

INTERVAL = 2.0
WARM_UP = 6.0
PEER_SECONDS = 20.0
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


def total_calls(lines):
    """The last line of strace's table."""
    words = [line.split() for line in lines]
    counts = [int(line[0]) for line in words if len(line) == 2 and line[1] == "total"]
    return counts[0] if counts else None


def traced_calls(pid, seconds=10):
    """System calls of a running program's tree in one refresh; absent when tracing is refused."""
    with tempfile.TemporaryDirectory() as folder:
        log = os.path.join(folder, "calls")
        tracer = subprocess.Popen(["strace", "-f", "-qq", "-c", "-U", "calls,name", "-o", log,
                                   "-p", str(pid)], stderr=subprocess.DEVNULL)
        time.sleep(seconds)
        tracer.send_signal(signal.SIGINT)
        tracer.wait()
        try:
            with open(log) as lines:
                calls = total_calls(lines)
        except OSError:
            return None
        return None if calls is None else calls / (seconds / INTERVAL)


def traced_calls_of_peer(command):
    with tempfile.TemporaryDirectory() as home:
        peer = Terminal(command, home)
        try:
            time.sleep(WARM_UP)
            return traced_calls(peer.pid)
        finally:
            peer.end()


class Ticks:
    """What tick_loop told: each tick's CPU milliseconds, and which were plain."""

    def __init__(self, binaries, seconds, interval=INTERVAL):
        output = subprocess.run([f"{binaries}/tick_loop", str(seconds), str(interval)],
                                capture_output=True, text=True, check=True).stdout.splitlines()
        lines = [line.split() for line in output]
        self.pss = [int(line[1]) / 1024 for line in lines if line[0] == "pss"][0]
        ticks = [line for line in lines if line[0] != "pss"]
        self.costs = [float(cost) / 1e3 for _, _, cost in ticks]
        self.plain = [float(cost) / 1e3 for kind, _, cost in ticks if kind == "plain"]
        self.processes = int(ticks[-1][1])

    def worst_over_median(self):
        return max(self.costs) / statistics.median(self.costs)


def plain_tick_calls(binaries, seconds=13):
    """System calls of a plain tick: those between its two marks."""
    with tempfile.NamedTemporaryFile(mode="r", errors="replace") as log:
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


def floor_cost(binaries):
    """CPU milliseconds of enumerate + stat + io with fresh opens, and how many processes."""
    words = subprocess.run([f"{binaries}/scan_floor", "15"], capture_output=True, text=True,
                           check=True).stdout.split()
    return float(words[0]) / 1e3, int(words[1])


def floor_calls(binaries):
    """System calls of one round of the floor: what a run of two rounds makes beyond one of one."""
    totals = []
    for rounds in (1, 2):
        with tempfile.NamedTemporaryFile(mode="r") as log:
            subprocess.run(["strace", "-f", "-qq", "-c", "-U", "calls,name", "-o", log.name,
                            f"{binaries}/scan_floor", str(rounds)], stdout=subprocess.DEVNULL,
                           check=True)
            totals.append(total_calls(log))
    return totals[1] - totals[0] if None not in totals else None


class Herd:
    """So many idle processes, as long as the block lasts."""

    def __init__(self, binaries, count):
        self.command = [f"{binaries}/idle_processes", str(count)]

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.process.stdout.readline()

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()


def machine():
    model = "unknown processor"
    with open("/proc/cpuinfo") as lines:
        for line in lines:
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    load = os.getloadavg()[0]
    return (f"{model}, {os.cpu_count()} cores, {memory:.0f} GiB, Linux {platform.release()}, "
            f"{time.strftime('%Y-%m-%d')}; load average before the run {load:.1f}")


def number(value, digits=2):
    return "-" if value is None else f"{value:.{digits}f}"


def ratio(value, base):
    return None if value is None or not base else value / base


def compare(binaries, seconds, rounds):
    """The figures of all programs under one herd, by turns."""
    found = {"ticks": [], "floor": [], "peers": collections.defaultdict(list)}
    for _ in range(rounds):
        found["ticks"].append(Ticks(binaries, seconds))
        found["floor"].append(floor_cost(binaries))
        for name, command in PEERS.items():
            if shutil.which(command[0]):
                found["peers"][name] += measured_peer(command, PEER_SECONDS)
    found["calls"] = {}
    if shutil.which("strace"):
        found["calls"] = {name: traced_calls_of_peer(PEERS[name]) for name in found["peers"]}
        found["calls"]["plain"] = plain_tick_calls(binaries)
        found["calls"]["floor"] = floor_calls(binaries)
    return found


def scaling(binaries, few, many):
    """How much dearer a process becomes when there are more of them: 1 is not at all."""
    each = {few: [], many: []}
    for count in (few, many, few, many):
        with Herd(binaries, count):
            ticks = Ticks(binaries, 15, 1)
            each[count].append(statistics.median(ticks.plain) / ticks.processes)
    return statistics.mean(each[many]) / statistics.mean(each[few])


def print_costs(found, processes):
    ticks, calls = found["ticks"], found["calls"]
    floor = statistics.mean(cost for cost, _ in found["floor"])
    top = statistics.mean(found["peers"]["top"]) if found["peers"]["top"] else None
    all_costs = [cost for run in ticks for cost in run.costs]
    rows = [("our plain tick (median)",
             statistics.median(cost for run in ticks for cost in run.plain), calls.get("plain")),
            ("our mean tick, all paced work included", statistics.mean(all_costs), None),
            ("our worst tick", max(all_costs), None),
            ("enumerate + stat + io, fresh opens", floor, calls.get("floor"))]
    rows += [(f"{name} (mean)", statistics.mean(costs), calls.get(name))
             for name, costs in found["peers"].items() if costs]
    print("| one refresh of | CPU ms | x top | x fresh opens | system calls a process |")
    print("|---|---|---|---|---|")
    for name, cost, count in rows:
        print(f"| {name} | {cost:.2f} | {number(ratio(cost, top))} | {cost / floor:.2f} "
              f"| {number(ratio(count, processes), 1)} |")
    for name in PEERS:
        if not found["peers"][name]:
            print(f"| {name} | not installed here | - | - | - |")
    return dict((name, cost) for name, cost, _ in rows), top, floor


def print_promises(found, costs, top, floor, processes, growth):
    mean = costs["our mean tick, all paced work included"]
    plain = costs["our plain tick (median)"]
    calls = found["calls"].get("plain")
    worst = statistics.median(run.worst_over_median() for run in found["ticks"])
    pss = max(run.pss for run in found["ticks"])
    rows = [("plain tick / top", ratio(plain, top), "1.2", "0.75"),
            ("plain tick / fresh opens", ratio(plain, floor), "1.5", ""),
            ("mean tick / btop", ratio(mean, costs.get("btop (mean)")), "1.0", ""),
            ("mean tick / htop", ratio(mean, costs.get("htop (mean)")), "0.33", ""),
            ("mean tick / top", ratio(mean, top), "", "1.0"),
            ("worst tick / median tick", worst, "3", "1.5"),
            ("system calls a process, plain tick", ratio(calls, processes), "10", "3"),
            ("cost of a process at 1000 / at 400", growth, "1.15", "1.15"),
            ("engine without a window, PSS in MB", pss, "12", "8")]
    print("\n| promise | measured | at most | goal |\n|---|---|---|---|")
    for name, value, most, goal in rows:
        print(f"| {name} | {number(value)} | {most} | {goal} |")


def report(binaries, chosen):
    print(f"{machine()}\n", flush=True)
    with Herd(binaries, chosen.processes):
        found = compare(binaries, chosen.seconds, chosen.rounds)
    processes = found["ticks"][-1].processes
    growth = scaling(binaries, 400, 1000)
    print(f"{processes} processes, {chosen.processes} of them idle ones started for this; a refresh "
          f"every {INTERVAL:g} s; {chosen.rounds} rounds of {chosen.seconds:g} s for us and "
          f"{PEER_SECONDS:g} s for each other program.\n")
    costs, top, floor = print_costs(found, processes)
    print_promises(found, costs, top, floor, processes, growth)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binaries")
    parser.add_argument("--processes", type=int, default=400)
    parser.add_argument("--seconds", type=float, default=50)
    parser.add_argument("--rounds", type=int, default=2)
    chosen = parser.parse_args()
    # So that whatever was started is ended as well when this is.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    report(chosen.binaries, chosen)


if __name__ == "__main__":
    main()
