#!/usr/bin/env python3
"""The check of the machine files finds what it is there to find: each test spoils one thing in a file
that is right, and the check must name it."""

import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
MACHINES = Path(__file__).resolve().parents[2] / "Machines"
sys.path.insert(0, str(MACHINES))

from generator import contract, machines  # noqa: E402
from generator.values import flt, growing  # noqa: E402


class SpoiledMachine(unittest.TestCase):
    def assert_found(self, name, problem, spoil):
        machine = contract.parse((MACHINES / f"{name}.json").read_text(encoding="utf-8"))
        self.assertEqual(self.problems(name, machine), [])
        spoil(machine["frames"])
        found = self.problems(name, machine)
        self.assertTrue(any(problem in one for one in found), f"{problem!r} is not among {found}")

    def problems(self, name, machine):
        return contract.problems_of(machine) or machines.problems_of(name, machine)

    def assert_registry_found(self, problem, **changes):
        self.assert_found(
            "laptop-unplugged", problem, lambda frames: frames[3]["registry"].update(changes)
        )

    def test_voltage_that_contradicts_the_power(self):
        self.assert_registry_found("battery power is not volts times amperes", Voltage=11000)

    def test_current_that_contradicts_the_charge(self):
        # 3 A for 120 s are 100 mAh; the file moves by some 17 mAh.
        watts = 12.0 * -3.0
        power = {"SystemPowerIn": 0, "BatteryPower": watts * 1000, "SystemLoad": -watts * 1000}
        self.assert_registry_found(
            "charge moved by", Voltage=12000, Amperage=-3000, PowerTelemetryData=power
        )

    def test_load_that_is_not_what_the_sources_give(self):
        power = {"SystemPowerIn": 0, "BatteryPower": -6000, "SystemLoad": 5000}
        self.assert_registry_found("power in is not load plus charge", PowerTelemetryData=power)

    def test_percentage_that_contradicts_the_charge(self):
        self.assert_registry_found("percentage and mAh disagree", CurrentCapacity=70)

    def test_charge_above_the_full_capacity(self):
        self.assert_registry_found(
            "capacities contradict one another", AppleRawCurrentCapacity=6000
        )

    def test_charging_without_external_power(self):
        self.assert_registry_found("charging without external power", Amperage=500)

    def test_another_battery_in_mid_recording(self):
        self.assert_registry_found("DesignCapacity changed", DesignCapacity=6000)

    def test_full_and_charging_at_once(self):
        self.assert_found(
            "laptop-full-on-ac",
            "full, and yet not",
            lambda frames: frames[0]["registry"].update(IsCharging=True),
        )

    def test_silicon_above_the_system_load(self):
        self.assert_found(
            "laptop-unplugged",
            "the silicon takes more than the whole system",
            lambda frames: frames[0]["energyChannels"][0].update(value=10**9),
        )

    def test_counter_that_steps_back(self):
        self.assert_found(
            "network-busy", "fell by", lambda frames: frames[5]["interfaces"][0].update(bytesIn=4)
        )

    def test_wrap_that_is_off_by_one_byte(self):
        self.assert_found(
            "network-busy",
            "fell by 4294967295",
            lambda frames: frames[1]["interfaces"][3]["bytesOut"].update(start=1),
        )

    def test_seam_that_looks_like_a_wrap(self):
        self.assert_found(
            "laptop-full-on-ac",
            "would be taken for a wrap at the seam",
            lambda frames: frames[0]["interfaces"][1].update(bytesIn=growing(100, 10)),
        )

    def test_more_busy_cores_than_there_are(self):
        self.assert_found(
            "process-heavy",
            "cores are busy",
            lambda frames: frames[0]["processes"][2].update(
                userTime=growing(10**12, 9 * 10**9)
            ),
        )

    def test_fan_above_its_highest_speed(self):
        self.assert_found(
            "laptop-heavy-load",
            "fan 0 turns at 8000.0",
            lambda frames: frames[10]["smc"].update(F0Ac=flt(8000)),
        )

    def test_story_that_is_not_told(self):
        self.assert_found(
            "laptop-lid-closed",
            "an hour closed",
            lambda frames: [frame.pop("suspended", None) for frame in frames],
        )

    def test_unknown_key(self):
        self.assert_found(
            "laptop-unplugged",
            "$.frames[1].registri: unknown key",
            lambda frames: frames[1].update(registri={}),
        )

    def test_frames_out_of_order(self):
        self.assert_found(
            "laptop-unplugged",
            "$.frames[1].at: must ascend from 0",
            lambda frames: frames[1].update(at=0),
        )

    def test_repeated_key(self):
        with self.assertRaisesRegex(ValueError, 'the key "at" occurs twice'):
            contract.parse('{"frames": [{"at": 0, "at": 0}]}')


if __name__ == "__main__":
    unittest.main()
