"""Is a document a valid machine file? Answers with a list of "{JSON path}: {problem}"."""

import json
import re
from datetime import datetime
from math import isinf

UINT64 = 2**64 - 1


class Duplicate(ValueError):
    pass


def _object(pairs):
    keys = [key for key, _ in pairs]
    for key in keys:
        if keys.count(key) > 1:
            raise Duplicate(f'the key "{key}" occurs twice')
    return dict(pairs)


def _no_constant(word):
    raise ValueError(f"{word} is no JSON number")


def _finite(text):
    number = float(text)
    if isinf(number):
        raise ValueError(f"{text} is too large for a number")
    return number


def parse(text):
    return json.loads(
        text, object_pairs_hook=_object, parse_constant=_no_constant, parse_float=_finite
    )


def is_number(value):
    return isinstance(value, (int, float)) and not isinstance(value, bool)


def is_integer(value, low=-(2**63), high=2**63 - 1):
    return isinstance(value, int) and not isinstance(value, bool) and low <= value <= high


class Validator:
    def __init__(self):
        self.problems = []

    def need(self, holds, path, problem):
        if not holds:
            self.problems.append(f"{path}: {problem}")
        return holds

    def keys(self, value, path, allowed, required=()):
        if not self.need(isinstance(value, dict), path, "must be an object"):
            return False
        for key in value:
            self.need(key in allowed, f"{path}.{key}", "unknown key")
        for key in required:
            self.need(key in value, path, f'"{key}" is missing')
        return True

    def rows(self, value, path):
        return (
            enumerate(value) if self.need(isinstance(value, list), path, "must be an array") else ()
        )

    def seconds(self, value, path, least=0, strict=False):
        self.need(
            is_number(value) and (value > least if strict else value >= least),
            path,
            "must be seconds",
        )

    def text(self, value, path, nullable=False):
        self.need(isinstance(value, str) or nullable and value is None, path, "must be a string")

    def counter(self, value, path):
        if isinstance(value, dict):
            if self.keys(value, path, ("start", "perSecond"), ("start", "perSecond")):
                self.need(
                    is_integer(value.get("start"), 0, UINT64),
                    path + ".start",
                    "must be a whole number",
                )
                self.need(
                    is_number(value.get("perSecond")), path + ".perSecond", "must be a number"
                )
        else:
            self.need(is_integer(value, 0, UINT64), path, "must be a counter")

    # One method a key of a frame; null has been dealt with.

    def registry(self, value, path):
        self.need(isinstance(value, dict), path, "must be a dictionary")

    def powerSources(self, value, path):
        for place, source in self.rows(value, path):
            self.need(
                source is None or isinstance(source, dict),
                f"{path}[{place}]",
                "must be a dictionary or null",
            )

    def energyChannels(self, value, path):
        for place, channel in self.rows(value, path):
            at = f"{path}[{place}]"
            if self.keys(channel, at, ("name", "value"), ("value",)):
                self.text(channel.get("name"), at + ".name", nullable=True)
                self.need(is_integer(channel.get("value")), at + ".value", "must be an integer")

    def smc(self, value, path):
        if not self.need(isinstance(value, dict), path, "must be an object"):
            return
        for key, entry in value.items():
            at = f"{path}.{key}"
            self.need(len(key.encode()) == 4, at, "must be a key of 4 bytes")
            if self.keys(entry, at, ("type", "bytes", "size"), ("type", "bytes")):
                self.need(
                    isinstance(entry.get("type"), str) and len(entry["type"]) == 4,
                    at + ".type",
                    "must have 4 characters",
                )
                self.hexadecimal(entry.get("bytes"), at + ".bytes")
                self.need(
                    is_integer(entry.get("size", 0), 0, 2**32 - 1), at + ".size", "must be a size"
                )

    def hexadecimal(self, value, path):
        self.need(
            isinstance(value, str) and re.fullmatch("([0-9a-fA-F]{2})*", value) is not None,
            path,
            "must be hexadecimal",
        )

    def hid(self, value, path):
        for place, service in self.rows(value, path):
            at = f"{path}[{place}]"
            if self.keys(service, at, ("product", "value")):
                reading = service.get("value")
                self.need(
                    reading is None or is_number(reading), at + ".value", "must be a number or null"
                )

    def thermal(self, value, path):
        if self.keys(value, path, ("state", "pressure", "lowPowerMode"), ("state",)):
            self.need(is_integer(value.get("state")), path + ".state", "must be an integer")
            pressure = value.get("pressure")
            self.need(
                pressure is None or is_integer(pressure, 0, UINT64),
                path + ".pressure",
                "must be an integer or null",
            )
            self.need(
                isinstance(value.get("lowPowerMode", False), bool),
                path + ".lowPowerMode",
                "must be true or false",
            )

    def interfaces(self, value, path):
        for place, interface in self.rows(value, path):
            at = f"{path}[{place}]"
            if self.keys(
                interface, at, ("index", "name", "bytesIn", "bytesOut", "type"), ("index",)
            ):
                self.need(
                    is_integer(interface.get("index"), 0, 65535),
                    at + ".index",
                    "must be from 0 to 65535",
                )
                self.text(interface.get("name"), at + ".name", nullable=True)
                self.counter(interface.get("bytesIn", 0), at + ".bytesIn")
                self.counter(interface.get("bytesOut", 0), at + ".bytesOut")
                self.need(
                    is_integer(interface.get("type", 18), 0, 255),
                    at + ".type",
                    "must be from 0 to 255",
                )

    interfaceBuffer = hexadecimal

    def run(self, value, path, allowed):
        if self.keys(value, path, ("status", *allowed), ("status",)):
            self.need(
                is_integer(value.get("status"), -(2**31), 2**31 - 1),
                path + ".status",
                "must be an integer",
            )
            self.text(value.get("output", ""), path + ".output")
            self.text(value.get("error", ""), path + ".error")
            self.seconds(value.get("seconds", 0), path + ".seconds")

    def nettop(self, value, path):
        self.run(value, path, ("output", "seconds"))

    def processes(self, value, path):
        counters = (
            "userTime",
            "systemTime",
            "idleWakeups",
            "interruptWakeups",
            "bytesRead",
            "bytesWritten",
            "energy",
        )
        for place, process in self.rows(value, path):
            at = f"{path}[{place}]"
            if self.keys(process, at, ("pid", "name", "accessible", *counters), ("pid",)):
                self.need(
                    is_integer(process.get("pid"), -(2**31), 2**31 - 1),
                    at + ".pid",
                    "must be a process id",
                )
                self.text(process.get("name"), at + ".name", nullable=True)
                self.need(
                    isinstance(process.get("accessible", True), bool),
                    at + ".accessible",
                    "must be true or false",
                )
                for counter in counters:
                    self.counter(process.get(counter, 0), f"{at}.{counter}")

    def helper(self, value, path):
        if not self.keys(
            value, path, ("mode", "owner", "group", "executable", "replies"), ("executable",)
        ):
            return
        mode = value.get("mode")
        self.need(
            mode is None or isinstance(mode, str) and re.fullmatch("[0-7]{1,4}", mode) is not None,
            path + ".mode",
            "must be octal",
        )
        for key in ("owner", "group"):
            self.need(
                value.get(key) is None or is_integer(value[key]),
                f"{path}.{key}",
                "must be an id or null",
            )
        self.need(
            isinstance(value.get("executable"), bool), path + ".executable", "must be true or false"
        )
        for word, reply in value.get("replies", {}).items():
            self.run(reply, f"{path}.replies.{word}", ("output", "error", "seconds"))

    def osascript(self, value, path):
        self.run(value, path, ("output", "error", "installs"))
        if value.get("installs") is not None:
            self.helper(value["installs"], path + ".installs")


FRAME_KEYS = (
    "registry",
    "powerSources",
    "energyChannels",
    "smc",
    "hid",
    "thermal",
    "interfaces",
    "interfaceBuffer",
    "nettop",
    "processes",
    "helper",
    "osascript",
)


def problems_of(machine):
    check = Validator()
    if not check.keys(
        machine, "$", ("name", "startedAt", "pace", "atEnd", "duration", "frames"), ("frames",)
    ):
        return check.problems
    check.text(machine.get("name", ""), "$.name")
    if "startedAt" in machine:
        try:
            datetime.fromisoformat(machine["startedAt"])
            zone = machine["startedAt"].endswith("Z")
        except (TypeError, ValueError):
            zone = False
        check.need(zone, "$.startedAt", "must be an ISO 8601 moment in UTC")
    check.need(
        machine.get("pace", "real") in ("real", "instant"), "$.pace", 'must be "real" or "instant"'
    )
    check.need(
        machine.get("atEnd", "hold") in ("hold", "repeat", "interrupt"), "$.atEnd", "unknown word"
    )
    check.seconds(machine.get("duration", 0), "$.duration", strict=machine.get("atEnd") == "repeat")
    frames = machine["frames"]
    if not check.need(isinstance(frames, list) and frames, "$.frames", "must be a non-empty array"):
        return check.problems
    before = None
    for place, frame in enumerate(frames):
        path = f"$.frames[{place}]"
        if not check.keys(frame, path, ("at", "suspended", *FRAME_KEYS), ("at",)):
            continue
        check.seconds(frame.get("at"), path + ".at")
        at = frame.get("at") if is_number(frame.get("at")) else 0
        check.need(at == 0 if before is None else at > before, path + ".at", "must ascend from 0")
        before = at
        if "suspended" in frame:
            check.seconds(frame["suspended"], path + ".suspended", strict=True)
        for key in FRAME_KEYS:
            if frame.get(key) is not None:
                getattr(check, key)(frame[key], f"{path}.{key}")
    return check.problems
