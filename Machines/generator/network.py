"""A busy network: counters of every kind, the raw buffer, and the tool that fails."""

import struct

from .recording import Recording, steps, wobble
from .values import Interface, channels, nettop_output


WRAP = 2**32


def interface_message(index, bytes_in, bytes_out, type_=18, length=160):
    """One record of the kernel's interface list as its buffer holds it."""
    message = bytearray(max(length, 160))
    struct.pack_into("<HBB", message, 0, length, 5, type_)
    struct.pack_into("<H", message, 12, index)
    struct.pack_into("<QQ", message, 96, bytes_in, bytes_out)
    return bytes(message[:length])


def network_busy():
    """Thirteen minutes of traffic on many interfaces. Counters go round at 32 bits, start again,
    vanish with their interface and come back; the tool answers, fails, hangs and is missing."""
    recording = Recording("Laptop with a busy network", "2026-02-16T13:00:00Z", duration=780)
    lo0 = Interface(1, "lo0", 9_801_223_114, 9_801_223_114)
    gif0, stf0 = Interface(2, "gif0"), Interface(3, "stf0")
    wired = Interface(
        7, "en5", WRAP - 3 * 54_000_000, WRAP - 66_000_000
    )  # 32-bit counters of an adapter
    wifi = Interface(11, "en0", 48_300_113_004, 5_120_331_871)
    awdl = Interface(13, "awdl0", 2_110_334, 1_807_226)
    tunnel = Interface(19, "utun3", 5_301_244_870, 4_944_120_918)
    ipsec = Interface(21, "ipsec0", 12_880_145, 3_344_019)
    nameless = Interface(22, None, 5_000, 5_000)
    apps = {
        "Safari.611": [901_233_118, 60_120_334],
        "com.apple.WebKi.661": [2_400_133_820, 81_340_117],
        "backup.tool.v2.1402": [61_200_331, 7_120_334_871],
        "Chat Client.902": [44_120_117, 12_008_331],
        "mDNSResponder.421": [9_120_331, 4_100_772],
        "trustd.318": [0, 0],
    }

    def tool(seconds_, status=0, tail=""):
        rows = [("launchd", 1, "", "")] + [
            (*name.rsplit(".", 1), *totals) for name, totals in apps.items()
        ]
        return {"status": status, "output": nettop_output(rows) + tail, "seconds": seconds_}

    for at, seconds in steps(0, 780, 60):
        stage = at // 60
        tools = {
            3: tool(0.2, tail="no.pid.here,1,2,\nbad.12,twelve,3,\nshort.13\n\n"),
            4: tool(0.1, status=1),
            5: tool(12.0),
            6: None,
        }
        # The adapter's counters are 32 bits wide: at stages 1 (out) and 3 (in) they have gone round.
        for interface in (wired, wifi, tunnel):
            interface.counters.advance(at)
        for name, total in list(wired.counters.totals.items()):
            if total >= WRAP:
                wired.counters.totals[name] = total - WRAP
        if stage == 8:  # the driver was reloaded: a counter above 32 bits starts again
            wifi.counters.totals.update(bytesIn=1_204, bytesOut=880)
        if stage == 9:  # the tunnel is back under its old index with new counters
            tunnel.counters.totals.update(bytesIn=0, bytesOut=0)
        interfaces = [
            lo0.frame(at, 5000, 5000),
            gif0.frame(at),
            stf0.frame(at),
            wired.frame(at, 900_000, 1_100_000),
            wifi.frame(at, 2_400_000, 310_000),
            awdl.frame(at, 40, 35),
            ipsec.frame(at, 800, 300),
            nameless.frame(at, 10, 10),
        ]
        if stage not in (7, 8):
            interfaces.append(tunnel.frame(at, 120_000, 22_000))
        if stage in (2, 10):
            interfaces.append(
                {"index": 30 + stage, "name": "en9", "bytesIn": 7, "bytesOut": 7, "type": 12}
            )
        buffer = None
        if (
            stage == 11
        ):  # the kernel's own bytes: another record type between, and a cut last record
            buffer = (
                interface_message(1, 9_900_000_000, 9_900_000_000)
                + interface_message(4, 0, 0, type_=12, length=20)
                + interface_message(
                    11,
                    wifi.counters.totals["bytesIn"],
                    wifi.counters.totals["bytesOut"],
                    length=176,
                )
                + interface_message(99, 1, 1)
                + interface_message(7, 1, 1)[:100]
            ).hex()
        recording.add(
            at,
            interfaces=None if stage == 12 else interfaces,
            interfaceBuffer=buffer,
            nettop=tools.get(stage, tool(0.2)),
            energyChannels=channels(*wobble((3.1, 0.3, 0.0, 0.6), "net", at)),
        )
        for (name, totals), part in zip(apps.items(), (0.1, 0.6, 0.01, 0.02, 0.01, 0.0)):
            totals[0] += int(3_000_000 * part * seconds)
            totals[1] += int(
                1_300_000 * (0.8 if name.startswith("backup") else part * 0.2) * seconds
            )
    return recording.finished()
