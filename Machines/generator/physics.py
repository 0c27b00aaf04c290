"""Does what a machine file says fit together? Volts, amperes, charge, energy and counters.

Nothing here knows how the files are made: each check reads the finished document.
"""

import struct

from .battery import COMPUTING
from .contract import FRAME_KEYS

WRAP = 2**32
BATTERY_FACTS = ("DesignCapacity", "AppleRawMaxCapacity", "BatterySerialNumber")
PROCESS_COUNTERS = (
    "userTime",
    "systemTime",
    "idleWakeups",
    "interruptWakeups",
    "bytesRead",
    "bytesWritten",
    "energy",
)


def states(machine):
    """(at, seconds the frame lasts, every key's value in force, keys that the frame itself carries)."""
    frames, state = machine["frames"], dict.fromkeys(FRAME_KEYS)
    end = machine.get("duration", frames[-1]["at"])
    for frame, following in zip(frames, [*frames[1:], {"at": end}]):
        state = {**state, **{key: value for key, value in frame.items() if key in FRAME_KEYS}}
        yield frame["at"], following["at"] - frame["at"], state, frame


def silicon_watts(energy):
    """(watts of the four components, all four exact) or None, as nanojoules over 0.1 s say."""
    exact, parts = {}, {}
    rules = (
        ("CPU Energy", ("cpu",)),
        ("GPU Energy", ("gpu",)),
        ("ANE0", ("ane",)),
        ("DRAM0", ("dram", "ram")),
    )
    for channel in energy or ():
        name = channel.get("name")
        if name is None:
            continue
        if name in [rule[0] for rule in rules]:
            exact[name] = channel["value"]
            continue
        for whole, words in rules:
            if any(word in name.lower() for word in words):
                parts[whole] = parts.get(whole, 0) + channel["value"]
                break
    if not exact and not parts:
        return None
    return [max(0, exact.get(name, parts.get(name, 0))) / 1e8 for name, _ in rules], len(exact) == 4


def at_end(counter, seconds):
    """A counter's last value before its frame ends."""
    if not isinstance(counter, dict):
        return counter
    return counter["start"] + int(counter["perSecond"] * seconds)


def start_of(counter):
    return counter["start"] if isinstance(counter, dict) else counter


def rate_of(counter):
    return counter["perSecond"] if isinstance(counter, dict) else 0


class Physics:
    def __init__(self, machine, resets=()):
        self.machine = machine
        self.resets = set(resets)
        self.problems = []

    def need(self, holds, at, problem):
        if not holds:
            self.problems.append(f"at {at} s: {problem}")

    def run(self):
        before = None
        for at, _, state, frame in states(self.machine):
            if state["registry"]:
                self.battery(at, state["registry"], state["powerSources"])
                self.energy(at, state["registry"], state["energyChannels"])
            # What a frame tells of the battery holds until a later one tells it anew.
            if "registry" in frame:
                if before and before[1] and frame["registry"]:
                    self.charge_follows_current(at, *before, frame["registry"])
                before = (at, frame["registry"])
        self.counters()
        self.process_load()
        self.seam()
        return self.problems

    def battery(self, at, registry, sources):
        volts, amperes = registry["Voltage"] / 1000, registry["Amperage"] / 1000
        charge, full, design = (
            registry[key]
            for key in ("AppleRawCurrentCapacity", "AppleRawMaxCapacity", "DesignCapacity")
        )
        plugged = registry["ExternalConnected"]
        self.need(9.0 <= volts <= 13.5, at, f"{volts} V is no voltage of a three-cell pack")
        self.need(abs(amperes) <= 8.0, at, f"{amperes} A is more than the pack takes")
        self.need(0 <= charge <= full <= design * 1.05, at, "capacities contradict one another")
        self.need(500 <= registry["Temperature"] <= 5500, at, "battery temperature out of range")
        self.need(
            abs(registry["CurrentCapacity"] - 100 * charge / full) <= 0.51,
            at,
            "percentage and mAh disagree",
        )
        self.need(plugged or amperes <= 0, at, "charging without external power")
        if registry["FullyCharged"]:
            self.need(
                plugged and amperes == 0 and not registry["IsCharging"] and charge >= full - 2,
                at,
                "full, and yet not",
            )

        if "PowerTelemetryData" in registry:
            self.power_balance(at, registry, volts * amperes)
        self.times(at, registry, charge, full, amperes)

        source = sources[0] if sources else None
        if source:
            pairs = (
                ("Current Capacity", "CurrentCapacity"),
                ("Is Charging", "IsCharging"),
                ("Is Charged", "FullyCharged"),
                ("Hardware Serial Number", "BatterySerialNumber"),
            )
            for theirs, ours in pairs:
                self.need(
                    theirs not in source or source[theirs] == registry[ours],
                    at,
                    f'"{theirs}" and "{ours}" disagree',
                )
            if "Power Source State" in source:
                self.need(
                    (source["Power Source State"] == "AC Power") == plugged,
                    at,
                    "power source state and adapter disagree",
                )

    def power_balance(self, at, registry, battery_watts):
        power = registry["PowerTelemetryData"]
        self.need(
            abs(power["BatteryPower"] / 1000 - battery_watts) < 0.0011,
            at,
            "battery power is not volts times amperes",
        )
        self.need(
            power["SystemPowerIn"] == power["SystemLoad"] + power["BatteryPower"],
            at,
            "power in is not load plus charge",
        )
        self.need(power["SystemLoad"] > 0, at, "no system load")
        if registry["ExternalConnected"]:
            adapter = registry["AdapterDetails"]
            rated = adapter["AdapterVoltage"] * adapter["Current"] / 1e6
            self.need(
                abs(adapter["Watts"] - rated) <= 0.05 * rated,
                at,
                "adapter watts are not its volts times amperes",
            )
            self.need(
                0 <= power["SystemPowerIn"] <= adapter["Watts"] * 1000,
                at,
                "the adapter gives more than it can",
            )
        else:
            self.need(
                power["SystemPowerIn"] == 0 and not registry["AdapterDetails"],
                at,
                "an adapter while unplugged",
            )

    def times(self, at, registry, charge, full, amperes):
        empty, to_full = (
            registry.get(key, COMPUTING) for key in ("AvgTimeToEmpty", "AvgTimeToFull")
        )
        slack = 1 + abs(0.5 / (amperes * 1000) * 60) if amperes else 1  # the mAh are whole numbers
        if empty != COMPUTING:
            self.need(
                amperes < 0 and abs(empty - charge / (-amperes * 1000) * 60) <= slack,
                at,
                "time to empty is not charge over current",
            )
        if to_full != COMPUTING:
            least = (full - charge) / (amperes * 1000) * 60 if amperes > 0 else float("inf")
            self.need(to_full >= least - 1 - slack, at, "full earlier than the current allows")

    def energy(self, at, registry, energy):
        silicon = silicon_watts(energy)
        if silicon and (not registry["ExternalConnected"] or "PowerTelemetryData" in registry):
            load = -registry["Voltage"] * registry["Amperage"] / 1e6
            if registry["ExternalConnected"]:
                load = registry["PowerTelemetryData"]["SystemLoad"] / 1000
            self.need(sum(silicon[0]) < load, at, "the silicon takes more than the whole system")

    def charge_follows_current(self, at, began, old, registry):
        moved = registry["AppleRawCurrentCapacity"] - old["AppleRawCurrentCapacity"]
        expected = old["Amperage"] * (at - began) / 3600  # mA s / 3600 = mAh
        self.need(
            abs(moved - expected) <= 1.01,
            at,
            f"charge moved by {moved} mAh since {began} s, the current makes {expected:.2f}",
        )
        for key in BATTERY_FACTS:
            self.need(registry.get(key) == old.get(key), at, f"{key} changed")
        self.need(
            registry.get("CycleCount", 0) >= old.get("CycleCount", 0), at, "the cycle count fell"
        )

    def counters(self):
        """Counters never step back, unless they go round at exactly 32 bits or the file's story says so."""
        ends = {}
        for at, seconds, state, frame in states(self.machine):
            for key, identity, names in (
                ("interfaces", ("index", "name"), ("bytesIn", "bytesOut")),
                ("processes", ("pid",), PROCESS_COUNTERS),
            ):
                for row in frame.get(key) or ():
                    for name in names:
                        counter = row.get(name, 0)
                        subject = (key, *(row.get(part) for part in identity), name)
                        if subject in ends:
                            fallen = ends[subject][0] - start_of(counter)
                            known = (
                                fallen <= 0 or fallen == WRAP or (at, subject[-2]) in self.resets
                            )
                            self.need(known, at, f"{subject} fell by {fallen}")
                        self.need(rate_of(counter) >= 0, at, f"{subject} runs backwards")
                        ends[subject] = [start_of(counter), counter, at]
            # What stays in force grows on until the next frame that carries it.
            for subject, (_, counter, since) in ends.items():
                ends[subject][0] = at_end(counter, at + seconds - since)

    def process_load(self):
        for at, _, state, frame in states(self.machine):
            rows = frame.get("processes") or ()
            cores = (
                sum(
                    rate_of(row.get("userTime", 0)) + rate_of(row.get("systemTime", 0))
                    for row in rows
                )
                / 1e9
            )
            self.need(cores <= 10.0, at, f"{cores:.1f} cores are busy")
            silicon = silicon_watts(state["energyChannels"])
            watts = sum(rate_of(row.get("energy", 0)) for row in rows) / 1e9
            if silicon and silicon[1]:
                self.need(
                    watts <= silicon[0][0] + silicon[0][1] + 0.01,
                    at,
                    f"processes take {watts:.2f} W, the processor less",
                )

    def seam(self):
        """Under "repeat" a pass ends where the next one begins."""
        if self.machine.get("atEnd") != "repeat":
            return
        passes = list(states(self.machine))
        first, last = passes[0], passes[-1]
        for counter_rows in zip(first[2]["interfaces"] or (), last[2]["interfaces"] or ()):
            for name in ("bytesIn", "bytesOut"):
                end = at_end(counter_rows[1][name], last[1])
                safe = end == start_of(counter_rows[0][name]) or end >= WRAP
                self.need(
                    safe,
                    last[0],
                    f"{name} of {counter_rows[0]['name']} would be taken for a wrap at the seam",
                )
        if first[2]["registry"]:
            moved = (
                first[2]["registry"]["AppleRawCurrentCapacity"]
                - last[2]["registry"]["AppleRawCurrentCapacity"]
            )
            self.need(
                abs(moved - last[2]["registry"]["Amperage"] * last[1] / 3600) <= 1.01,
                last[0],
                "the charge jumps at the seam",
            )


def smc_number(entry):
    """The number behind a float or 7.8 fixed-point key."""
    data = bytes.fromhex(entry["bytes"])
    if entry["type"] == "flt ":
        return struct.unpack("<f", data)[0]
    return struct.unpack(">h", data)[0] / 256


def ordinary_sensors(machine):
    """Problems with the SMC keys of a machine whose story is not the SMC itself."""
    problems = []
    for at, _, state, frame in states(machine):
        smc = frame.get("smc") or {}
        for key, entry in smc.items():
            if key[0] == "T" and not 15 < smc_number(entry) < 110:
                problems.append(f"at {at} s: {key} reads {smc_number(entry):.1f} degrees")
        for fan in range(int(smc.get("FNum", {"bytes": "00"})["bytes"][:2], 16)):
            rpm, low, high = (smc_number(smc[f"F{fan}{part}"]) for part in ("Ac", "Mn", "Mx"))
            if rpm != 0 and not low <= rpm <= high:
                problems.append(f"at {at} s: fan {fan} turns at {rpm}, outside {low} to {high}")
    return problems
