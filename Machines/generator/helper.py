"""The helper tool: what it answers on good days and on bad ones."""

import json
from datetime import datetime, timedelta, timezone

from .recording import BROWSING, CANCELLED, Laptop, Recording, steps, wobble
from .values import noise


def stamp(started_at, at):
    moment = datetime.strptime(started_at, "%Y-%m-%dT%H:%M:%SZ").replace(tzinfo=timezone.utc)
    return (moment + timedelta(seconds=at)).strftime("%Y-%m-%dT%H:%M:%SZ")


def json_text(value):
    return json.dumps(value, ensure_ascii=False) + "\n"


def helper_status(**changes):
    path = "/Library/PrivilegedHelperTools/com.quorvex.helper"
    return {
        "isInstalled": True,
        "isExecutable": True,
        "isSetuidRoot": True,
        "ownerUserID": 0,
        "groupID": 0,
        "installedVersion": "0.14.0",
        "supportsProTelemetry": True,
        "path": path,
        "error": None,
    } | changes


def helper_sample(sampled_at, silicon, **changes):
    cpu, gpu, ane, _ = silicon

    def row(pid, name, impact, busy, wakeups, disk, aggregate=False):
        return {
            "pid": pid,
            "name": name,
            "energyImpact": impact,
            "cpuTimePercent": busy,
            "wakeupsPerSecond": wakeups,
            "diskBytesPerSecond": disk,
            "isAggregate": aggregate,
        }

    return {
        "isAvailable": True,
        "source": "powermetrics",
        "sampledAt": sampled_at,
        "sampleIntervalMilliseconds": 1000,
        "processes": [
            row(-1, "ALL_TASKS", 61.4, 71.2, 402.5, 91_200.0, True),
            row(648, "com.apple.WebKit.WebContent", 31.7, 35.0, 120.5, 40_960.0),
            row(153, "WindowServer", 18.2, 18.1, 96.0, 0.0),
            row(611, "Safari", 9.4, 12.3, 61.0, 12_288.0),
            row(402, "coreaudiod", None, 1.0, None, None),
        ],
        "cpuPowerWatts": cpu,
        "gpuPowerWatts": gpu,
        "anePowerWatts": ane,
        "rawSampleSummary": None,
        "error": None,
    } | changes


def helper_tool(status, sample, temperatures, **file):
    def reply(given):
        if given is None or "status" in given and "output" in given:
            return given
        return {"status": 0, "output": json_text(given), "error": "", "seconds": 0.05}

    replies = {
        "status-json": reply(status),
        "read-pro-telemetry-json": reply(sample),
        "read-temperatures-json": temperatures,
    }
    replies = {word: given for word, given in replies.items() if given is not None}
    if sample and "status" not in sample and "read-pro-telemetry-json" in replies:
        replies["read-pro-telemetry-json"]["seconds"] = 1.2
    return {"mode": "4755", "owner": 0, "group": 0, "executable": True, "replies": replies} | file


def helper_installed():
    """A helper tool through its good and its bad days; the SMC alone gives no temperature here."""
    started = "2026-02-17T09:30:00Z"
    recording = Recording("14-inch laptop with the helper tool", started, duration=960)
    mac = Laptop(recording, charge=0.69, serial="F5D20260217QVX13")
    whole_smc = mac.smc
    mac.smc = lambda *given: {
        key: value for key, value in whole_smc(*given).items() if key[0] == "F"
    }
    mac.hid = [
        {"product": "PMU tdie1", "value": 41.2},
        {"product": "gas gauge battery", "value": 30.3},
    ]

    def temperatures(at):
        named = (
            ("TC0P", "CPU Proximity", 42.5),
            ("TH0x", "SSD", 34.0),
            ("TB0T", "Battery TS_MAX", 30.4),
            ("TW0P", "Wireless Module", 38.25),
        )
        rows = [
            {"key": key, "name": name, "temperature": round(value + noise(at, key), 2)}
            for key, name, value in named
        ]
        return {"status": 0, "output": json_text(rows), "error": "", "seconds": 0.1}

    def failing(status, error, output="", seconds=0.05):
        return {"status": status, "output": output, "error": error, "seconds": seconds}

    def tool(at, silicon):
        """The tool at a moment: (helper, osascript)."""
        good_status, sample = helper_status(), helper_sample(stamp(started, at), silicon)
        good = helper_tool(good_status, sample, temperatures(at))
        stage = at // 60
        if stage < 2:
            return good, CANCELLED
        if stage == 2:  # a sample without the optional figures
            bare = {
                key: value
                for key, value in sample.items()
                if key not in ("rawSampleSummary", "error", "gpuPowerWatts")
            }
            return (
                helper_tool(
                    good_status, bare | {"anePowerWatts": None, "processes": []}, temperatures(at)
                ),
                CANCELLED,
            )
        if stage == 3:  # the tool says itself that its sample is no good
            bad = helper_sample(
                stamp(started, at),
                silicon,
                isAvailable=False,
                processes=[],
                cpuPowerWatts=None,
                gpuPowerWatts=None,
                anePowerWatts=None,
                error="powermetrics gave no sample",
            )
            return helper_tool(good_status, bad, temperatures(at)), CANCELLED
        if stage == 4:  # a date in another form; one temperature row without its name
            rows = failing(0, "", json_text([{"key": "TC0P", "temperature": 42.0}]))
            return (
                helper_tool(good_status, sample | {"sampledAt": "17.02.2026 09:34"}, rows),
                CANCELLED,
            )
        if stage == 5:  # failures in words, and an older tool's status without a path
            old = helper_status()
            del old["path"]
            return (
                helper_tool(
                    old, failing(1, "powermetrics: unable to start\n"), failing(2, "SMC busy\n")
                ),
                CANCELLED,
            )
        if stage == 6:  # slower than anyone waits
            return (
                helper_tool(
                    failing(0, "", json_text(good_status), 3.0),
                    failing(0, "", json_text(sample), 25.0),
                    temperatures(at),
                ),
                CANCELLED,
            )
        if stage == 7:  # a success with nothing to say, and no JSON at all
            return (
                helper_tool(
                    failing(0, ""), failing(0, ""), failing(0, "", "no temperatures today\n")
                ),
                CANCELLED,
            )
        if stage == 8:  # it knows no command
            return helper_tool(None, None, None), CANCELLED
        if stage == 9:  # setuid bit lost
            return helper_tool(good_status, sample, temperatures(at), mode="755"), CANCELLED
        if stage == 10:  # not root's
            return (
                helper_tool(good_status, sample, temperatures(at), owner=501, group=20),
                CANCELLED,
            )
        if stage == 11:  # attributes that cannot be read
            return (
                helper_tool(
                    good_status, sample, temperatures(at), mode=None, owner=None, group=None
                ),
                CANCELLED,
            )
        if stage == 12:  # nobody may run it
            return (
                helper_tool(good_status, sample, temperatures(at), mode="600", executable=False),
                CANCELLED,
            )
        if stage == 13:  # removed; an installation would be refused
            return None, CANCELLED
        # removed; an installation succeeds
        return None, {"status": 0, "output": "", "error": "", "installs": good}

    # In the first minutes a sample is never older than its 15 seconds.
    for at, seconds in [*steps(0, 120, 15), *steps(120, 960, 60)]:
        silicon = wobble((2.1, 0.4, 0.0, 0.3), "helper", at)
        helper, script = tool(at, silicon)
        mac.frame(
            at,
            seconds,
            load=round(6.0 + sum(silicon), 3),
            silicon=silicon,
            shares=BROWSING,
            net=(11000, 2000),
            helper=helper,
            osascript=script,
        )
    return recording.finished()
