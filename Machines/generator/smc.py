"""SMC keys of every data type and size."""

import struct

from .recording import Recording, steps
from .values import channels, fan_keys, flt, fpe2, smc_value, sp78, ui8


def smc_data_types():
    """SMC keys of every data type and of odd sizes, and fan counts good and bad. No battery."""
    recording = Recording("Computer with an unusual SMC", "2026-02-18T11:11:11.250Z", duration=420)
    not_a_number, infinite = struct.pack("<f", float("nan")), struct.pack("<f", float("inf"))
    temperatures = {
        "TC0P": sp78(50.5),
        "TC0D": smc_value("sp5a", bytes.fromhex("3280")),
        "TC0E": smc_value("sp1e", bytes.fromhex("2a40")),
        "TC0F": smc_value("sp78", bytes.fromhex("f600")),  # -10 degrees
        "TC1C": smc_value("flt\0", struct.pack("<f", 47.25)),
        "TC2C": smc_value("flt ", not_a_number),
        "TC3C": smc_value("flt ", infinite),
        "TC4C": flt(0.0),
        "TC5C": flt(150.0),
        "TC6C": flt(149.99),
        "TC7C": smc_value("flt ", struct.pack("<f", 48.0)[:2]),  # half a float
        "TC8C": smc_value("sp78", b"\x30"),  # half a fixed-point number
        "TG0P": smc_value("ui8 ", bytes([44])),
        "TG0D": smc_value("ui16", bytes.fromhex("002d")),
        "TG1D": smc_value("si16", bytes.fromhex("002e")),
        "TM0P": smc_value("fp88", bytes.fromhex("2d80")),
        "Tm0P": smc_value("ioft", struct.pack("<q", 45 * 65536)),
        "TH0A": smc_value("flag", b"\x01"),
        "TH0B": smc_value("ch8*", b"hot\0"),
        "TH0x": smc_value("hex_", b"\x2b\x00\xff"),
        "TA0P": smc_value("ui32", (45).to_bytes(4, "big")),
        "TB0T": smc_value("ui64", (45).to_bytes(8, "big")),
        "TB1T": smc_value("si8 ", b"\xf6"),
        "TB2T": smc_value("{fds", bytes(16)),
        "TW0P": smc_value("flt ", b"", 0),  # size 0: as good as absent
        "Ts0P": smc_value("flt ", struct.pack("<f", 33.0) + bytes(29)),  # 33 bytes: one too many
        "Ts1P": smc_value(
            "flt ", struct.pack("<f", 31.5) + bytes(28)
        ),  # 32 bytes: the most there can be
        "Tp01": smc_value("flt ", struct.pack("<f", 52.0), 2),  # says 2 bytes, has 4
        "Tp05": smc_value("flt ", struct.pack("<f", 53.0), 4294967295),
    }
    fans = (
        fan_keys(0, 2300.6, 1200, 5800)
        | fan_keys(1, 2301.25, 1200, 5800, fpe2)
        | {"F2Ac": smc_value("ui16", bytes.fromhex("08fc")), "F2Mn": flt(1200), "F2Mx": flt(5800)}
        | {"F3Ac": flt(1999.5), "F3Mx": smc_value("fpe2", bytes.fromhex("5a"))}
        | {"F4Ac": smc_value("fpe2", bytes.fromhex("23f4ff"), None), "F4Mn": flt(0), "F4Mx": flt(0)}
    )
    common = temperatures | fans
    stages = [
        common | {"FNum": ui8(5)},
        common | {"FNum": smc_value("ui32", b"\x02\x00\x00\x03")},  # the first byte alone counts
        common | {"FNum": ui8(16)},
        common | {"FNum": ui8(0)},
        dict(common),
        {"FNum": smc_value("flt ", b"\x01\x00\x80\x3f")} | fans,
        None,
    ]
    for (at, _), smc in zip(steps(0, 420, 60), stages):
        recording.add(
            at,
            smc=smc,
            powerSources=[],
            energyChannels=channels(4.0, 0.5, 0.0, 0.7),
            hid=[
                {"product": "Front Panel", "value": 27.5},
                {"product": "Rear Panel", "value": 29.0},
            ],
            thermal={"state": 9, "pressure": 7, "lowPowerMode": False},
            interfaces=[
                {"index": 4, "name": "en0", "bytesIn": 7_112_004_331, "bytesOut": 902_113_004}
            ],
        )
    return recording.finished()
