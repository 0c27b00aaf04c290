"""A day of work, phase by phase."""

from .battery import ADAPTER_67
from .recording import ASLEEP, BROWSING, BUSY, IDLE, Laptop, Recording, steps, wobble
from .values import Process

COMPILING = {**BUSY, 1204: 0.9, 1205: 0.9, 1206: 0.9, 1207: 0.9}
# Kinds of work: load outside the silicon, silicon watts, cores by pid, bytes a second in and out.
OPEN_OFFICE = (5.4, (1.3, 0.2, 0.0, 0.3), BROWSING, (14000, 2500))
WRITING = (5.0, (0.8, 0.1, 0.0, 0.2), IDLE, (3000, 900))
MEETING = (6.3, (4.2, 1.4, 0.6, 0.7), {**BROWSING, 402: 0.12, 648: 1.1}, (310000, 260000))
BUILDING = (5.6, (17.0, 0.3, 0.0, 1.2), COMPILING, (9000, 2500))
FILM = (
    4.6,
    (0.9, 0.7, 0.0, 0.3),
    {0: 0.05, 153: 0.2, 402: 0.04, 648: 0.3, 977: 0.004},
    (740000, 9000),
)
CLOSED = (0.18, (0.01, 0.0, 0.0, 0.02), ASLEEP, (0, 0))
# The minute at which each phase begins, what it is, its kind of work, the adapter.
DAY = [
    (0, "at home, mail", OPEN_OFFICE, None),
    (50, "train, lid closed", CLOSED, None),
    (90, "writing", WRITING, None),
    (150, "meeting", MEETING, None),
    (210, "office", OPEN_OFFICE, None),
    (240, "build", BUILDING, None),
    (265, "office", OPEN_OFFICE, None),
    (305, "lunch, charging", OPEN_OFFICE, ADAPTER_67),
    (375, "writing", WRITING, None),
    (440, "meeting", MEETING, None),
    (500, "build", BUILDING, None),
    (530, "office", OPEN_OFFICE, None),
    (600, "train, lid closed", CLOSED, None),
    (720, "film", FILM, None),
    (830, "charging, in use", OPEN_OFFICE, ADAPTER_67),
    (930, "night, closed and charging", CLOSED, ADAPTER_67),
    (1430, "morning, full", OPEN_OFFICE, ADAPTER_67),
]


def day_of_work():
    """24 hours from seven in the morning. A frame every ten minutes and at each change."""
    recording = Recording(
        "14-inch laptop, a day of work",
        "2026-03-10T07:00:00Z",
        pace="instant",
        atEnd="interrupt",
        duration=86400,
    )
    mac = Laptop(recording, charge=1.0, serial="F5D20260310QVX16")
    wanted = ("Tp01", "Tp05", "Tp09", "TH0x", "TB0T", "FNum", "F0Ac", "F0Mn", "F0Mx")
    whole_smc = mac.smc
    mac.smc = lambda *given: {
        key: value for key, value in whole_smc(*given).items() if key in wanted
    }
    mac.fans = 1
    mac.processes += [Process(pid, "swift-frontend", uptime=0.0) for pid in range(1204, 1208)]
    for place, (minute, _, (rest, silicon_watts, shares, net), adapter) in enumerate(DAY):
        end = DAY[place + 1][0] if place + 1 < len(DAY) else 1440
        closed = shares is ASLEEP
        minutes = [*steps(minute, end, 20 if closed else 10)]
        if end == 1440:
            minutes.append((1440, 10))
        for at, length in minutes:
            silicon = silicon_watts if closed else wobble(silicon_watts, "day", at, by=0.25)
            busy = shares is COMPILING
            mac.frame(
                at * 60,
                length * 60,
                load=round(rest + sum(silicon), 3),
                silicon=silicon,
                adapter=adapter,
                rpm=3100 if busy else 0,
                room=23.0,
                net=net,
                shares=shares,
                suspended=(end - minute) * 60 if closed and at == minute else None,
            )
    return recording.finished()
