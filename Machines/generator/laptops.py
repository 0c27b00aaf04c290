"""Laptops: on battery, on adapters, closed, hot, and without fans."""

from .battery import ADAPTER_30, ADAPTER_67, ADAPTER_96, Battery
from .recording import ASLEEP, BROWSING, BUSY, CANCELLED, IDLE, Laptop, Recording, steps, wobble
from .values import Process, between


RENDERING = {**BUSY, 1410: 6.5}
STILL_SENSORS = [
    {"product": "PMU tdie1", "value": 38.4},
    {"product": "PMU tdie2", "value": 38.9},
    {"product": "NAND CH0 temp", "value": 33.1},
    {"product": "gas gauge battery", "value": 30.6},
]


def laptop_unplugged():
    """Ten quiet minutes. In the first two the controller has no time estimate yet."""
    recording = Recording("14-inch laptop, idle on battery", "2026-02-03T08:15:00Z", duration=600)
    mac = Laptop(recording, charge=0.78, serial="F5D20260203QVX01")
    mac.hid = STILL_SENSORS
    for at, seconds in steps(0, 600, 120):
        mac.frame(
            at,
            seconds,
            load=round(5.3 + wobble((0.9,), at, by=0.8)[0], 3),
            silicon=wobble((0.62, 0.06, 0.0, 0.21), at),
            net=(2400, 900),
            battery={"computing": at == 0},
            osascript=CANCELLED,
        )
    return recording.finished()


def laptop_heavy_load():
    """A build: two quiet minutes, ten under full load with the fans coming up, three to cool."""
    recording = Recording(
        "14-inch laptop, building on battery", "2026-02-03T13:40:00Z", duration=900
    )
    mac = Laptop(recording, charge=0.64, serial="F5D20260203QVX02")
    compilers = range(1100, 1108)
    mac.processes += [Process(pid, "clang", uptime=0.0) for pid in compilers]
    quiet = {0: 0.2, 153: 0.1, 648: 0.1, 977: 0.004}
    building = {0: 0.4, 153: 0.1, 391: 0.5, 977: 0.004} | {pid: 0.96 for pid in compilers}
    work = [(0, 1.1), (120, 1.1), (135, 31.0), (700, 29.5), (720, 2.2), (900, 1.0)]
    fans = [(0, 0), (150, 0), (180, 2400), (420, 5200), (720, 5400), (840, 2400), (870, 2317)]
    for at, seconds in steps(0, 900, 30):
        cpu = between(work, at)
        silicon = wobble((cpu, 0.4, 0.0, 0.25 + cpu * 0.06), "heavy", at)
        rpm = round(between(fans, at)) if at > 150 else 0
        shares = building if cpu > 20 else quiet
        mac.frame(
            at,
            seconds,
            load=round(5.6 + sum(silicon) * 1.12, 3),
            silicon=silicon,
            rpm=rpm,
            shares=shares,
            net=(4200, 1800),
        )
    return recording.finished()


def laptop_charging():
    """From 20 to 100 % on a 96 W adapter: constant current up to 80 %, then the taper."""
    recording = Recording(
        "14-inch laptop, charging from 20 to 100 %",
        "2026-02-04T11:55:00Z",
        pace="instant",
        atEnd="interrupt",
        duration=6000,
    )
    mac = Laptop(recording, charge=0.20, serial="F5D20260204QVX03")
    for at, seconds in steps(0, 6001, 120):
        silicon = wobble((1.9, 0.3, 0.0, 0.3), "charging", at, by=0.2)
        mac.frame(
            at,
            seconds,
            load=round(7.0 + sum(silicon), 3),
            silicon=silicon,
            adapter=ADAPTER_96,
            shares=BROWSING,
            net=(21000, 3200),
            rpm=0,
            room=25.5,
        )
    return recording.finished()


def laptop_draining_on_ac():
    """A 30 W adapter under a 44 W load: the battery supplies the rest. Later the controller goes on
    saying that it charges, which the current contradicts; at last the load falls and it does charge.
    """
    recording = Recording(
        "14-inch laptop, draining on a 30 W adapter", "2026-02-05T15:10:00Z", duration=1800
    )
    mac = Laptop(recording, charge=0.47, serial="F5D20260205QVX04")
    mac.processes.append(Process(1410, "blender", uptime=600.0))
    for at, seconds in steps(0, 1800, 90):
        working = at < 1440
        silicon = wobble((26.0, 4.0, 0.0, 1.9) if working else (1.2, 0.2, 0.0, 0.3), "weak", at)
        claims = 720 <= at < 1080
        mac.frame(
            at,
            seconds,
            load=round(9.5 + sum(silicon) * 1.1, 3),
            silicon=silicon,
            adapter=ADAPTER_30,
            rpm=4800 if working else 2317,
            shares=RENDERING if working else IDLE,
            net=(8000, 2500),
            battery={"flagged_charging": True} if claims else None,
        )
    return recording.finished()


def laptop_full_on_ac():
    """Full on the adapter: no current either way. The pass repeats without a seam."""
    recording = Recording(
        "14-inch laptop, full on its adapter", "2026-02-06T09:00:00Z", atEnd="repeat", duration=300
    )
    mac = Laptop(recording, charge=1.0, serial="F5D20260206QVX05")
    for at, seconds in steps(0, 300, 60):
        silicon = wobble((0.9, 0.1, 0.0, 0.24), "full", at)
        mac.frame(
            at,
            seconds,
            load=round(6.0 + sum(silicon), 3),
            silicon=silicon,
            adapter=ADAPTER_67,
            net=(3100, 1100),
        )
    return recording.finished()


def laptop_lid_closed():
    """Five minutes awake on battery, an hour closed, ten minutes awake."""
    recording = Recording(
        "14-inch laptop, an hour with its lid closed",
        "2026-02-09T17:25:00Z",
        pace="instant",
        atEnd="interrupt",
        duration=4500,
    )
    mac = Laptop(recording, charge=0.55, serial="F5D20260209QVX06")
    for at, seconds in [*steps(0, 300, 60), *steps(300, 3900, 1200), *steps(3900, 4501, 60)]:
        if 300 <= at < 3900:
            mac.frame(
                at,
                seconds,
                load=0.24,
                silicon=(0.01, 0.0, 0.0, 0.02),
                shares=ASLEEP,
                suspended=3600 if at == 300 else None,
            )
        else:
            silicon = wobble((1.5, 0.2, 0.0, 0.3), "lid", at, by=0.2)
            mac.frame(
                at,
                seconds,
                load=round(5.9 + sum(silicon), 3),
                silicon=silicon,
                shares=BROWSING,
                net=(15000, 2400),
            )
    return recording.finished()


def laptop_hot():
    """A sustained load in a warm room: the thermal state rises step by step, the system throttles the
    processor, and both come down again. Battery-saving mode is switched on at the worst of it."""
    recording = Recording(
        "14-inch laptop, throttled by heat", "2026-07-21T14:05:00Z", duration=1800
    )
    mac = Laptop(recording, charge=0.71, serial="F5D20260721QVX07")
    mac.processes.append(Process(1410, "blender", uptime=600.0))
    cpu_watts = [
        (0, 34),
        (420, 34),
        (480, 27),
        (780, 26),
        (840, 17),
        (1080, 13),
        (1200, 9),
        (1320, 2),
        (1800, 1.5),
    ]
    fans = [
        (0, 2600),
        (300, 5600),
        (600, 7200),
        (780, 7826),
        (1200, 7826),
        (1500, 4200),
        (1800, 2400),
    ]
    levels = [
        (0, 0, 0),
        (240, 1, 1),
        (420, 1, 2),
        (600, 2, 2),
        (840, 2, 3),
        (960, 3, 4),
        (1200, 2, 2),
        (1320, 1, 1),
        (1500, 0, 0),
    ]
    rooms = [(0, 36), (420, 43), (840, 58), (1080, 62), (1200, 60), (1500, 40), (1800, 36)]
    for at, seconds in steps(0, 1800, 60):
        state, pressure = [(s, p) for since, s, p in levels if since <= at][-1]
        silicon = wobble((between(cpu_watts, at), 3.0, 0.1, 1.6), "hot", at, by=0.02)
        mac.frame(
            at,
            seconds,
            load=round(8.8 + sum(silicon) * 1.08, 3),
            silicon=silicon,
            adapter=ADAPTER_96,
            rpm=round(between(fans, at)),
            room=between(rooms, at),
            shares=RENDERING if at < 1320 else BROWSING,
            thermal={"state": state, "pressure": pressure, "lowPowerMode": 960 <= at < 1320},
            net=(5200, 1900),
        )
    return recording.finished()


class FanlessLaptop(Laptop):
    """A 13-inch laptop: 52 Wh pack, no fan, no temperature key in its SMC."""

    fans = 0

    def smc(self, seed, cpu, gpu, rpm, room):
        return {"#KEY": {"type": "ui32", "bytes": "000003f2"}}


def laptop_fanless_hid():
    """Temperatures from HID services only, some of them nameless, silent or out of range."""
    recording = Recording(
        "13-inch laptop without fans", "2026-02-12T19:30:00Z", atEnd="repeat", duration=360
    )
    pack = Battery(
        design=4563,
        full=4211,
        cycles=203,
        serial="F8Y20260212QVX10",
        charge=1.0,
        max_charge_amperes=3.4,
    )
    mac = FanlessLaptop(recording, charge=1.0, serial="F8Y20260212QVX10", pack=pack)
    for at, seconds in steps(0, 360, 60):
        silicon = wobble((1.3, 0.3, 0.0, 0.2), "fanless", at, by=0.15)
        warm = round(37.0 + 2.1 * silicon[0], 2)
        mac.hid = [
            {"product": "PMU tdie1", "value": warm},
            {"product": "PMU tdie2", "value": round(warm + 0.6, 2)},
            {"product": "PMU tdie2", "value": round(warm + 0.9, 2)},
            {"product": "PMU tdev1", "value": round(warm - 3.2, 2)},
            {"product": "PMU tcal", "value": 51.85},
            {"product": "NAND CH0 temp", "value": 33.5},
            {"product": "gas gauge battery", "value": 30.4},
            {"product": "gas gauge battery", "value": 30.7},
            {"product": "gas gauge battery", "value": 0.0},
            {"product": None, "value": 29.25},
            {"product": 17, "value": 29.5},
            {"product": "PMU TP1a", "value": None},
            {"product": "PMU TP2a", "value": 150.0},
            {"product": "PMU TP3a", "value": -40.0},
        ]
        mac.frame(
            at,
            seconds,
            load=round(3.8 + sum(silicon), 3),
            silicon=silicon,
            adapter=ADAPTER_30,
            shares=BROWSING,
            net=(9000, 1500),
            thermal={"state": 0, "pressure": None, "lowPowerMode": True},
            **({"powerSources": [None]} if at == 180 else {}),
        )
    return recording.finished()
