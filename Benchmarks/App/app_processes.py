#!/usr/bin/env python3
"""Measures the real app as a process beside an empty program with a tray icon, in turns.

app_processes.py QUORVEX EMPTY-TRAY APP-BENCHMARKS MACHINE-FILE [ROUNDS [SECONDS]]

Memory with the menu-bar item alone, with the dropdown open, after it is closed, and after every kind
of window was open and closed; then the CPU of both over SECONDS at rest: the app polls every 2 s and records, with no window open. Run it by
scripts/app-benchmarks, which prepares the display and the bus. It is itself the desktop's tray.
"""

import os
import pathlib
import signal
import statistics
import subprocess
import sys
import time

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
INTERFACE = Gio.DBusNodeInfo.new_for_xml(f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
</interface></node>""").interfaces[0]
LONGEST_WAIT = 20.0  # seconds


class Tray:
    """The desktop's side of tray icons: takes them in, and clicks them."""

    def __init__(self):
        self.items = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.bus.register_object("/StatusNotifierWatcher", INTERFACE, self.called, self.read, None)
        Gio.bus_own_name_on_connection(self.bus, WATCHER, Gio.BusNameOwnerFlags.NONE, None, None)
        wait(0.1)

    def called(self, _bus, sender, _path, _interface, method, _parameters, invocation):
        if method == "RegisterStatusNotifierItem":
            self.items.append(sender)
        invocation.return_value(None)

    @staticmethod
    def read(_bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", []),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def start(self, command, **environment):
        """Starts a program and waits for its icon. The process and its name on the bus."""
        known = len(self.items)
        process = subprocess.Popen(command, env={**os.environ, **environment},
                                   stdout=subprocess.PIPE)
        end = time.monotonic() + LONGEST_WAIT
        while len(self.items) == known:
            if time.monotonic() > end or process.poll() is not None:
                sys.exit(f"{command[0]} showed no icon")
            wait(0.05)
        return process, self.items[-1]

    def click(self, item):
        """Clicks the icon. The program may ask this bar something before it answers."""
        loop = GLib.MainLoop()

        def answered(bus, result):
            bus.call_finish(result)
            loop.quit()

        self.bus.call(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                      GLib.Variant("(ii)", (600, 10)), None, Gio.DBusCallFlags.NONE, -1, None,
                      answered)
        loop.run()


def wait(seconds):
    """Sleeps, and serves the bus meanwhile."""
    loop = GLib.MainLoop()
    GLib.timeout_add(int(seconds * 1000), loop.quit)
    loop.run()


def memory(process):
    """Resident and proportional memory in MB; the second shares out what several programs map."""
    fields = {}
    for line in pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, value, *_ = line.split()
        fields[name.rstrip(":")] = int(value) / 1024
    return fields["Rss"], fields["Pss"]


def cpu_seconds(process):
    """CPU time of all threads, exact to the nanosecond."""
    total = 0
    for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir():
        total += int((task / "schedstat").read_text().split()[0])
    return total / 1e9


def end(process):
    process.terminate()
    process.wait()


def measure_memory(tray, quorvex, empty, benchmarks, environment, rounds):
    names = ("menu-bar item alone", "dropdown open", "after closing it",
             "after every window was open and closed")
    ratios = {name: [] for name in names}
    figures = {name: [] for name in names}
    beside = []
    for _ in range(rounds):
        reference, _ = tray.start([empty])
        app, item = tray.start([quorvex], **environment)
        wait(2.0)
        base = memory(reference)
        beside.append(base)
        for name in names[:-1]:
            if name != names[0]:
                tray.click(item)
                wait(3.0)
            now = memory(app)
            figures[name].append(now)
            ratios[name].append([mine / its for mine, its in zip(now, base)])
        end(app)
        app, _ = tray.start([benchmarks, "open-and-close"], **environment)
        wait(8.0)
        if app.stdout.readline().strip() != b"closed":
            sys.exit("the windows did not close")
        figures[names[-1]].append(memory(app))
        ratios[names[-1]].append([mine / its for mine, its in zip(memory(app), base)])
        end(app)
        end(reference)
    print("memory in MB, medians: resident (proportional), and times that of the empty tray program")
    print(f"  empty tray program: {middle(beside, 0):.1f} ({middle(beside, 1):.1f})")
    for name in names:
        print(f"  {name}: {middle(figures[name], 0):.1f} ({middle(figures[name], 1):.1f}), "
              f"{middle(ratios[name], 0):.2f} times ({middle(ratios[name], 1):.2f})")


def middle(rows, column):
    return statistics.median(row[column] for row in rows)


def leave_active_session(quorvex, environment):
    """A recorder that is killed leaves its session active; the app goes on with it."""
    recorder = subprocess.Popen(
        [quorvex, "session", "record", "At rest", "--interval", "2"],
        env={**os.environ, **environment}, stdout=subprocess.PIPE)
    recorder.stdout.readline()
    wait(3.0)
    recorder.send_signal(signal.SIGKILL)
    recorder.wait()


def measure_cpu(tray, quorvex, empty, environment, seconds):
    for name in ("polling every 2 s", "polling and recording every 2 s"):
        if "recording" in name:
            leave_active_session(quorvex, environment)
        reference, _ = tray.start([empty])
        app, item = tray.start([quorvex], **environment)
        if "recording" not in name:  # the dropdown starts the engine, which then goes on
            tray.click(item)
            wait(3.0)
            tray.click(item)
        wait(5.0)
        before = cpu_seconds(app), cpu_seconds(reference)
        wait(seconds)
        after = cpu_seconds(app), cpu_seconds(reference)
        shares = [(now - then) / seconds * 100 for now, then in zip(after, before)]
        print(f"CPU with no window open, {name}, over {seconds:.0f} s: {shares[0]:.3f} % of a core; "
              f"the empty tray program {shares[1]:.3f} %", flush=True)
        end(app)
        end(reference)


def main():
    quorvex, empty, benchmarks, machine = sys.argv[1:5]
    rounds = int(sys.argv[5]) if len(sys.argv) > 5 else 5
    seconds = float(sys.argv[6]) if len(sys.argv) > 6 else 60.0
    environment = {"QUORVEX_MACHINE": machine, "QT_QUICK_BACKEND": "software"}
    tray = Tray()
    measure_memory(tray, quorvex, empty, benchmarks, environment, rounds)
    measure_cpu(tray, quorvex, empty, environment, seconds)


if __name__ == "__main__":
    main()
