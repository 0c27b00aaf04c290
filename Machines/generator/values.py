"""Raw values as the platform gives them, and counters that carry over from frame to frame."""

import hashlib
import struct


def noise(*key):
    """A fixed pseudo-random number from -1 to 1 for a key: the same on every computer."""
    digest = hashlib.sha256(repr(key).encode()).digest()
    return int.from_bytes(digest[:6], "big") / 2**47 - 1.0


def between(values, x):
    """The piecewise linear function through `values` (pairs in ascending order), at x."""
    if x <= values[0][0]:
        return values[0][1]
    for (x0, y0), (x1, y1) in zip(values, values[1:]):
        if x <= x1:
            return y0 + (y1 - y0) * (x - x0) / (x1 - x0)
    return values[-1][1]


# SMC values. A type is always four characters; short ones are filled with a blank.


def smc_value(type_, data, size=None):
    value = {"type": type_, "bytes": data.hex()}
    if size is not None:
        value["size"] = size
    return value


def flt(number):
    return smc_value("flt ", struct.pack("<f", number))


def ui8(number):
    return smc_value("ui8 ", bytes([number]))


def sp78(degrees):
    return smc_value("sp78", struct.pack(">h", round(degrees * 256)))


def fpe2(rpm):
    return smc_value("fpe2", struct.pack(">H", round(rpm * 4)))


def fan_keys(index, rpm, low, high, coded=flt):
    return {f"F{index}Ac": coded(rpm), f"F{index}Mn": coded(low), f"F{index}Mx": coded(high)}


def channels(cpu, gpu, ane, dram, *others):
    """Energy of one 0.1 s pair of samples, in nanojoules, from watts."""
    names = (("CPU Energy", cpu), ("GPU Energy", gpu), ("ANE0", ane), ("DRAM0", dram), *others)
    return [{"name": name, "value": round(watts * 1e8)} for name, watts in names]


def growing(start, per_second):
    """A counter: a plain number when it stands still."""
    return {"start": start, "perSecond": per_second} if per_second else start


class Counters:
    """Named counters of one interface or process. `totals` are their values at the moment `since`; from
    then on they grow at the rates that were written last."""

    def __init__(self, **totals):
        self.totals = totals
        self.rates = {}
        self.since = 0

    def advance(self, at):
        for name, rate in self.rates.items():
            self.totals[name] += int(rate * (at - self.since))
        self.since = at

    def frame(self, at, **rates):
        self.advance(at)
        self.rates = rates
        return {name: growing(total, rates.get(name, 0)) for name, total in self.totals.items()}


class Interface:
    def __init__(self, index, name, bytes_in=0, bytes_out=0):
        self.index, self.name = index, name
        self.counters = Counters(bytesIn=bytes_in, bytesOut=bytes_out)

    def frame(self, at, rate_in=0, rate_out=0):
        return {
            "index": self.index,
            "name": self.name,
            **self.counters.frame(at, bytesIn=rate_in, bytesOut=rate_out),
        }


class Process:
    """One row of the process table. `cpu` is in cores (1.0 keeps one core busy), `watts` its energy."""

    def __init__(self, pid, name, uptime=20000.0, cpu=0.01):
        self.pid, self.name = pid, name
        busy = int(uptime * cpu * 1e9)
        self.counters = Counters(
            userTime=busy * 3 // 4,
            systemTime=busy // 4,
            idleWakeups=int(uptime * 2),
            interruptWakeups=int(uptime),
            bytesRead=int(uptime * 9000),
            bytesWritten=int(uptime * 4000),
            energy=busy * 2,
        )

    def frame(self, at, cpu=0.0, wakeups=0, disk=0, watts=0.0):
        return {
            "pid": self.pid,
            "name": self.name,
            **self.counters.frame(
                at,
                userTime=round(cpu * 0.75e9),
                systemTime=round(cpu * 0.25e9),
                idleWakeups=round(wakeups * 0.6, 1),
                interruptWakeups=round(wakeups * 0.4, 1),
                bytesRead=round(disk * 0.6),
                bytesWritten=round(disk * 0.4),
                energy=round(watts * 1e9),
            ),
        }


def nettop_output(rows):
    """What `nettop -P -x -L 1 -J bytes_in,bytes_out` prints for (name, pid, in, out) rows."""
    lines = [",bytes_in,bytes_out,"]
    lines += [f"{name}.{pid},{got},{sent}," for name, pid, got, sent in rows]
    return "\n".join(lines) + "\n"
