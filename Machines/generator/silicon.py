"""Energy channels that are missing or incomplete."""

from .recording import BROWSING, Laptop, Recording, steps, wobble


def no_energy_library():
    """The energy library is missing: no silicon power, everything else answers. In the last minute the
    controller's registry entry is gone too, and only the power-source service tells of the battery.
    """
    recording = Recording(
        "14-inch laptop without the energy library", "2026-02-10T10:20:00Z", duration=480
    )
    mac = Laptop(recording, charge=0.83, serial="F5D20260210QVX08")
    for at, seconds in steps(0, 481, 60):
        mac.frame(
            at,
            seconds,
            load=round(7.4 + wobble((0.8,), "none", at, by=0.9)[0], 3),
            silicon=(1.4, 0.2, 0.0, 0.3),
            shares=BROWSING,
            net=(18000, 2600),
            energyChannels=None,
            **({"registry": None} if at == 480 else {}),
        )
    return recording.finished()


def silicon_incomplete():
    """Energy channels come and go: a component only in parts, a component missing, negative and
    nameless channels, nothing that is known, an empty list, and again all four."""
    recording = Recording(
        "14-inch laptop with incomplete energy channels", "2026-02-11T16:45:00Z", duration=420
    )
    mac = Laptop(recording, charge=0.59, serial="F5D20260211QVX09")

    def named(*pairs):
        return [{"name": name, "value": value} for name, value in pairs]

    stages = [
        # The processor only as clusters: their sum counts, and the record is marked incomplete.
        named(
            ("ECPU0", 34_000_000),
            ("PCPU0", 81_000_000),
            ("PCPU1", 62_500_000),
            ("GPU Energy", 21_000_000),
            ("ANE0", 0),
            ("DRAM0", 29_000_000),
        ),
        # No memory channel at all.
        named(
            ("CPU Energy", 176_000_000),
            ("GPU Energy", 20_400_000),
            ("ANE0", 0),
            ("ISP0", 3_000_000),
        ),
        # Memory under other names; a complete total beside its own clusters is not counted twice.
        named(
            ("CPU Energy", 181_500_000),
            ("ECPU0", 36_000_000),
            ("PCPU0", 145_500_000),
            ("GPU Energy", 22_000_000),
            ("ANE0", 0),
            ("DRAM1", 17_000_000),
            ("SOC_RAM", 9_000_000),
        ),
        # A counter that fell back, and a channel without a name.
        named(
            ("CPU Energy", 169_000_000),
            ("GPU Energy", -4_000_000),
            (None, 52_000_000),
            ("DRAM0", 27_500_000),
        ),
        # Nothing that is known: no reading, which is not a reading of zero.
        named(("DISP0", 88_000_000), ("ISP0", 2_000_000)),
        [],
        named(
            ("CPU Energy", 174_000_000),
            ("GPU Energy", 21_300_000),
            ("ANE0", 0),
            ("DRAM0", 28_400_000),
        ),
    ]
    for (at, seconds), energy in zip(steps(0, 420, 60), stages):
        mac.frame(
            at,
            seconds,
            load=round(8.2 + wobble((0.7,), "parts", at, by=0.5)[0], 3),
            silicon=(1.75, 0.2, 0.0, 0.28),
            shares=BROWSING,
            net=(12000, 2100),
            energyChannels=energy,
        )
    return recording.finished()
