"""Machines at work: a desktop with its fans, a laptop with many processes."""

from .recording import CANCELLED, IDLE, Laptop, Recording, steps, wobble
from .values import (
    Interface,
    Process,
    between,
    channels,
    fan_keys,
    flt,
    nettop_output,
    noise,
    ui8,
)


def desktop_fans():
    """A desktop at work in a ten-minute cycle: no battery, two fans that follow the temperature."""
    recording = Recording(
        "Desktop with two fans", "2026-02-13T10:00:00Z", atEnd="repeat", duration=600
    )
    work = [(0, 6), (120, 42), (300, 46), (420, 9), (600, 6)]
    en0 = Interface(4, "en0", 812_440_117_902, 96_301_775_113)
    en1 = Interface(5, "en1")
    rows = [
        Process(0, "kernel_task", cpu=0.05),
        Process(1, "launchd", cpu=0.002),
        Process(131, "WindowServer", cpu=0.08),
        Process(402, "coreaudiod"),
        Process(1204, "ffmpeg"),
        Process(1371, "postgres"),
        Process(1502, "Music"),
    ]
    for at, seconds in steps(0, 600, 30):
        cpu, gpu, dram = wobble((between(work, at), 5.0, 2.2), "desktop", at)
        rpm = round(between([(6, 1300), (12, 1320), (46, 3150)], cpu))
        smc = {
            key: flt(round(33 + 0.95 * cpu + noise(at, key), 2))
            for key in ("Tp01", "Tp05", "Tp0D", "Tp0H", "Tp0L", "Tp0P", "Tp0X", "Tp0b")
        }
        smc |= {
            "TG0P": flt(round(36 + 0.6 * gpu, 2)),
            "TM0P": flt(round(35 + 0.3 * cpu, 2)),
            "TH0A": flt(round(34 + 0.1 * cpu, 2)),
            "TH0B": flt(round(35.5 + 0.1 * cpu, 2)),
            "TA0P": flt(25.4),
            "TW0P": flt(41.75),
            "FNum": ui8(2),
        }
        smc |= fan_keys(0, rpm, 1300, 4800) | fan_keys(1, rpm - 1300 + 1350, 1350, 4700)
        shares = {0: 0.1, 131: 0.2, 402: 0.02, 1204: cpu * 0.2, 1371: 0.05, 1502: 0.04}
        busy = sum(shares.values())
        recording.add(
            at,
            registry=None,
            powerSources=[],
            energyChannels=channels(cpu, gpu, 0.0, dram),
            smc=smc,
            hid=[],
            thermal={"state": 0, "pressure": 0, "lowPowerMode": False},
            interfaces=[
                Interface(1, "lo0", 5_113_204, 5_113_204).frame(at),
                en0.frame(at, 640_000, 81_000),
                en1.frame(at),
            ],
            nettop={
                "status": 0,
                "output": nettop_output(
                    [("Music", 1502, 90_112_330, 1_204_551), ("postgres", 1371, 0, 0)]
                ),
                "seconds": 0.15,
            },
            processes=[
                row.frame(
                    at,
                    cpu=round(shares.get(row.pid, 0), 3),
                    wakeups=round(30 * shares.get(row.pid, 0)),
                    disk=round(2e5 * shares.get(row.pid, 0)),
                    watts=round(cpu * 0.6 * shares.get(row.pid, 0) / busy, 3),
                )
                for row in rows
            ],
            osascript=CANCELLED,
        )
    return recording.finished()


def process_heavy():
    """Some fifty processes at work. In the second minute some have ended, a process id is used again
    by another program, and new ones have started."""
    recording = Recording(
        "14-inch laptop with many processes", "2026-02-19T15:00:00Z", duration=300
    )
    mac = Laptop(recording, charge=0.88, serial="F5D20260219QVX15")
    names = {
        318: "trustd",
        322: "syspolicyd",
        330: "securityd",
        341: "mds",
        421: "mDNSResponder",
        512: "Dock",
        513: "SystemUIServer",
        801: "Music",
        842: "Xcode",
        860: "SourceKitService",
        901: "node",
        902: "npm",
        915: "python3.11",
        930: "postgres",
        931: "redis-server",
        940: "Terminal",
        990: "powermetrics",
        991: "sysmond",
        1002: "Activity Monitor",
    }
    shares = {
        0: 0.7,
        153: 0.35,
        391: 0.4,
        402: 0.05,
        611: 0.2,
        648: 0.9,
        702: 0.02,
        977: 0.01,
        341: 0.2,
        318: 0.05,
        512: 0.01,
        801: 0.06,
        842: 0.6,
        860: 0.8,
        901: 0.5,
        915: 0.9,
        930: 0.1,
        931: 0.02,
        940: 0.03,
        990: 0.02,
        991: 0.03,
        1002: 0.06,
    }
    mac.processes += [Process(pid, name, uptime=9000) for pid, name in names.items()]
    mac.processes += [Process(1100 + n, "clang", uptime=0.0) for n in range(6)]
    mac.processes += [Process(1200 + n, "mdworker_shared", uptime=40.0) for n in range(16)]
    mac.processes.append(Process(1301, None, uptime=100.0))
    shares |= {1100 + n: 0.5 for n in range(6)} | {1301: 0.11}
    hidden = [
        {"pid": 88, "name": "remoted", "accessible": False},
        {"pid": 89, "name": "configd", "accessible": False},
    ]
    for at, seconds in steps(0, 300, 60):
        if at == 120:
            mac.processes = [
                row
                for row in mac.processes
                if not 1206 <= row.pid < 1216 and row.pid not in (842, 1105)
            ]
            mac.processes.append(Process(1105, "swift-frontend", uptime=0.0))
            mac.processes.append(Process(1320, "com.apple.dt.instruments", uptime=0.0))
            shares |= {1105: 0.8, 1320: 0.3}
        silicon = wobble((24.0, 2.0, 0.1, 1.7), "many", at)
        rows = mac.process_rows(at, silicon[0], silicon[1], shares) + hidden
        mac.frame(
            at,
            seconds,
            load=round(6.4 + sum(silicon) * 1.05, 3),
            silicon=silicon,
            rpm=3900,
            shares=IDLE,
            net=(30000, 8000),
            processes=rows,
        )
    return recording.finished()
