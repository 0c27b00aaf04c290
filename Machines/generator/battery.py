"""A battery pack that obeys its own physics: what its controller says follows from the load."""

from dataclasses import dataclass
from math import sqrt

from .values import between

# Open-circuit voltage of one lithium-polymer cell over its state of charge.
CELL_VOLTS = [
    (0.0, 3.20),
    (0.05, 3.45),
    (0.10, 3.57),
    (0.20, 3.67),
    (0.40, 3.77),
    (0.60, 3.88),
    (0.80, 4.06),
    (1.0, 4.28),
]
PACK_OHMS = 0.085
TAPER_FROM = 0.80
TAPER_END_AMPERES = 0.30
COMPUTING = 65535  # the controller's word for "not known yet"


@dataclass(frozen=True)
class Adapter:
    """An adapter's rating. It never delivers more than `watts`."""

    watts: int
    millivolts: int
    milliamperes: int
    name: str

    def details(self):
        return {
            "Watts": self.watts,
            "AdapterVoltage": self.millivolts,
            "Current": self.milliamperes,
            "Name": self.name,
            "IsWireless": False,
        }


ADAPTER_96 = Adapter(96, 20000, 4700, "96W USB-C Power Adapter")
ADAPTER_67 = Adapter(67, 20300, 3300, "67W USB-C Power Adapter")
ADAPTER_30 = Adapter(30, 20000, 1500, "30W USB-C Power Adapter")


class Battery:
    """Charge in mAh; a positive current flows into the pack. Each `read` tells the moment's figures and
    then lets the current flow until the next read."""

    def __init__(
        self, *, design, full, cycles, serial, charge, max_charge_amperes=4.9, temperature=30.2
    ):
        self.design, self.full, self.cycles, self.serial = design, full, cycles, serial
        self.charge = full * charge
        self.max_charge_amperes = max_charge_amperes
        self.temperature = temperature

    @property
    def share(self):
        return self.charge / self.full

    @property
    def is_full(self):
        return self.charge >= self.full - 1.5

    def _amperes(self, watts, charge):
        """The current at which the pack takes (or, negative, gives) `watts` at its terminals."""
        volts = 3 * between(CELL_VOLTS, charge / self.full)
        return (-volts + sqrt(volts * volts + 4 * PACK_OHMS * watts)) / (2 * PACK_OHMS)

    def _charge_amperes(self, spare_watts, charge):
        share = charge / self.full
        limit = self.max_charge_amperes
        if share > TAPER_FROM:
            limit = TAPER_END_AMPERES + (limit - TAPER_END_AMPERES) * (1 - share) / (1 - TAPER_FROM)
        return min(limit, self._amperes(spare_watts, charge))

    def _minutes_to_full(self, spare_watts):
        charge, minutes = self.charge, 0
        while charge < self.full - 1.5 and minutes < 600:
            charge += self._charge_amperes(spare_watts, charge) * 1000 / 60
            minutes += 1
        return minutes

    def read(self, load, seconds, adapter=None, *, computing=False, flagged_charging=None):
        """Registry dictionary and power-source dictionary for a system load in watts.

        computing: no time estimates yet; flagged_charging: what the charging flag says, against
        the current if need be.
        """
        spare = adapter.watts * 0.94 - load if adapter else -load
        if adapter and self.is_full and spare >= 0:
            milliamperes = 0
        elif spare < 0:
            milliamperes = round(self._amperes(spare, self.charge) * 1000)
        else:
            room = (self.full - self.charge) * 3600 / seconds
            milliamperes = int(min(self._charge_amperes(spare, self.charge) * 1000, room))
        volts = 3 * between(CELL_VOLTS, self.share) + milliamperes / 1000 * PACK_OHMS
        millivolts = round(volts * 1000)
        battery_milliwatts = round(millivolts * milliamperes / 1000)
        full = adapter is not None and self.is_full and milliamperes == 0
        charging = milliamperes > 0 if flagged_charging is None else flagged_charging
        percent = min(100, round(self.charge / self.full * 100))

        to_empty = to_full = COMPUTING
        if milliamperes < 0 and not computing:
            to_empty = round(self.charge / -milliamperes * 60)
        if milliamperes > 0 and not computing:
            missing = round((self.full - self.charge) / milliamperes * 60)
            to_full = max(missing, self._minutes_to_full(spare))
        system_in = round(load * 1000) + battery_milliwatts if adapter else 0

        registry = {
            "CurrentCapacity": percent,
            "MaxCapacity": 100,
            "AppleRawCurrentCapacity": round(self.charge),
            "AppleRawMaxCapacity": self.full,
            "NominalChargeCapacity": self.full + 61,
            "DesignCapacity": self.design,
            "CycleCount": self.cycles,
            "Voltage": millivolts,
            "Amperage": milliamperes,
            "InstantAmperage": milliamperes,
            "Temperature": round(self.temperature * 100),
            "IsCharging": charging,
            "FullyCharged": full,
            "ExternalConnected": adapter is not None,
            "TimeRemaining": to_empty if milliamperes < 0 else to_full,
            "AvgTimeToEmpty": to_empty,
            "AvgTimeToFull": to_full,
            "AdapterDetails": adapter.details() if adapter else {},
            "PowerTelemetryData": {
                "SystemPowerIn": system_in,
                "BatteryPower": battery_milliwatts,
                "SystemLoad": system_in - battery_milliwatts,
            },
            "BatterySerialNumber": self.serial,
        }
        source = {
            "Name": "InternalBattery-0",
            "Type": "InternalBattery",
            "Power Source State": "AC Power" if adapter else "Battery Power",
            "Current Capacity": percent,
            "Max Capacity": 100,
            "Is Charging": charging,
            "Is Charged": full,
            "Time to Empty": to_empty if to_empty != COMPUTING else -1,
            "Time to Full Charge": to_full if to_full != COMPUTING else -1,
            "BatteryHealth": "Good",
            "Hardware Serial Number": self.serial,
        }

        self.charge += milliamperes * seconds / 3600
        warm = 29.0 + 1.4 * abs(milliamperes) / 1000
        self.temperature += (warm - self.temperature) * min(1.0, seconds / 2400)
        return registry, source
