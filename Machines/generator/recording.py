"""A recording under construction: frames that carry only what changed, and whole computers."""

from .battery import Battery
from .values import Interface, Process, channels, fan_keys, flt, nettop_output, noise, ui8

QUIET = {"state": 0, "pressure": 0, "lowPowerMode": False}

# Somebody was asked for the administrator's password and said no.
CANCELLED = {"status": 1, "output": "", "error": "0:98: execution error: User canceled. (-128)\n"}


class Recording:
    """The top level of a machine file. Keys that keep their value are left out of a frame."""

    def __init__(self, name, started_at, **top):
        self.top = {"name": name, "startedAt": started_at, **top}
        self.frames = []
        self.state = {}

    def add(self, at, suspended=None, **keys):
        frame = {"at": at}
        if suspended is not None:
            frame["suspended"] = suspended
        for key, value in keys.items():
            if key not in self.state or self.state[key] != value:
                if value is not None or self.state.get(key) is not None:
                    frame[key] = value
                self.state[key] = value
        self.frames.append(frame)

    def finished(self):
        return {**self.top, "frames": self.frames}


def steps(start, end, step):
    """(at, seconds until the next frame) pairs."""
    return [(at, min(step, end - at)) for at in range(start, end, step)]


class Laptop:
    """A 14-inch laptop: 70 Wh pack, two fans, eight performance and two efficiency cores."""

    fans = 2
    hid = None

    def __init__(self, recording, *, charge, serial, pack=None):
        self.recording = recording
        self.serial = serial
        self.process_basis = self.net_basis = None
        self.battery = pack or Battery(
            design=6140, full=5890, cycles=118, serial=serial, charge=charge
        )
        self.interfaces = {
            "lo0": Interface(1, "lo0", 88_120_441, 88_120_441),
            "en0": Interface(11, "en0", 9_412_008_113, 5_203_511_902),
            "awdl0": Interface(13, "awdl0", 0, 70_112),
            "utun0": Interface(16, "utun0", 0, 5_120),
        }
        self.processes = [
            Process(0, "kernel_task", cpu=0.05),
            Process(1, "launchd", cpu=0.002),
            Process(153, "WindowServer", cpu=0.06),
            Process(391, "mds_stores"),
            Process(402, "coreaudiod", cpu=0.003),
            Process(611, "Safari", cpu=0.03),
            Process(648, "com.apple.WebKit.WebContent", cpu=0.05),
            Process(702, "Mail", cpu=0.005),
            Process(733, "Finder", cpu=0.002),
            Process(977, "quorvex", cpu=0.003),
        ]
        self.net_totals = {
            "mDNSResponder.421": [2_114_032, 1_207_441],
            "com.apple.WebKi.661": [811_340_882, 40_118_226],
            "Mail.702": [61_202_118, 3_441_870],
        }

    def smc(self, seed, cpu, gpu, rpm, room):
        """Temperatures follow the power; the fans are given."""
        keys = {}
        for index, key in enumerate(("Tp01", "Tp05", "Tp0D", "Tp0H", "Tp0L", "Tp0P")):
            keys[key] = flt(round(room + 11 + 1.55 * cpu + 1.2 * noise(seed, key) + 0.2 * index, 2))
        for key in ("Tp09", "Tp0T"):
            keys[key] = flt(round(room + 10 + 1.1 * cpu + 0.8 * noise(seed, key), 2))
        keys["TG0D"] = flt(round(room + 9 + 0.5 * cpu + 1.5 * gpu, 2))
        keys["Tm0P"] = flt(round(room + 8 + 0.6 * cpu + 0.3 * gpu, 2))
        keys["TH0x"] = flt(round(room + 7 + 0.35 * cpu, 2))
        keys["TB0T"] = flt(round(self.battery.temperature, 2))
        keys["TW0P"] = flt(round(room + 9 + 0.25 * cpu, 2))
        keys["Ts0P"] = flt(round(room + 4 + 0.1 * cpu, 2))
        keys["FNum"] = ui8(self.fans)
        for fan in range(self.fans):
            keys.update(fan_keys(fan, min(rpm + 60 * fan, 7826) if rpm else 0, 2317, 7826))
        return keys

    def process_rows(self, at, cpu, gpu, shares):
        """`shares` maps pid to the cores that it keeps busy; energy is split in that proportion."""
        self.process_basis = shares, cpu
        busy = sum(shares.values()) or 1.0
        rows = []
        for process in self.processes:
            share = shares.get(process.pid, 0.0)
            watts = cpu * 0.6 * share / busy + (gpu * 0.5 if process.pid == 153 and share else 0.0)
            rows.append(
                process.frame(
                    at,
                    cpu=share,
                    wakeups=round(40 * share**0.5),
                    disk=round(4e5 * share),
                    watts=round(watts, 3),
                )
            )
        return rows

    def process_rates_hold(self, cpu, shares):
        """Whether the counters may go on growing as they were last told to."""
        if self.process_basis is None:
            return False
        told_shares, told_cpu = self.process_basis
        return told_shares == shares and 0.7 * told_cpu <= cpu <= 1.4 * told_cpu

    def frame(
        self,
        at,
        seconds,
        *,
        load,
        silicon,
        adapter=None,
        rpm=0,
        room=24.0,
        net=(0, 0),
        shares=None,
        suspended=None,
        thermal=None,
        battery=None,
        **keys,
    ):
        cpu, gpu, ane, dram = silicon
        registry, source = self.battery.read(load, seconds, adapter, **(battery or {}))
        shares = shares if shares is not None else IDLE
        rows = [(*name.rsplit(".", 1), *totals) for name, totals in self.net_totals.items()]
        nettop = {
            "status": 0,
            "output": nettop_output([("launchd", 1, 0, 0), *rows]),
            "seconds": 0.2,
        }
        for totals, part in zip(self.net_totals.values(), (0.02, 0.9, 0.05)):
            totals[0] += int(net[0] * part * seconds)
            totals[1] += int(net[1] * part * seconds)
        given = {
            "registry": registry,
            "powerSources": [source],
            "energyChannels": channels(cpu, gpu, ane, dram, ("DISP0", 0.9), ("AMCC0", 0.15)),
            "smc": self.smc((self.serial, at), cpu, gpu, rpm, room),
            "hid": self.hid,
            "thermal": thermal or QUIET,
            "nettop": nettop,
        }
        if net != self.net_basis:
            self.net_basis = net
            given["interfaces"] = [
                interface.frame(at, *(net if name == "en0" else (0, 0)))
                for name, interface in self.interfaces.items()
            ]
        if "processes" not in keys and not self.process_rates_hold(cpu, shares):
            given["processes"] = self.process_rows(at, cpu, gpu, shares)
        given.update(keys)
        self.recording.add(at, suspended, **given)


# Cores kept busy, by pid of the laptop's standing processes.
IDLE = {0: 0.03, 153: 0.05, 402: 0.002, 611: 0.01, 648: 0.02, 977: 0.004}
BROWSING = {0: 0.06, 153: 0.18, 402: 0.01, 611: 0.12, 648: 0.35, 702: 0.01, 733: 0.01, 977: 0.004}
BUSY = {0: 0.4, 153: 0.25, 391: 0.3, 611: 0.1, 648: 0.6, 977: 0.005}
ASLEEP = {}


def wobble(values, *key, by=0.06):
    """Each value moved by up to `by` of itself, in 1 mW steps."""
    return tuple(
        round(value * (1 + by * noise(*key, place)), 3) for place, value in enumerate(values)
    )
