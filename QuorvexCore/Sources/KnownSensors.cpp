#include "KnownSensors.h"

#include <algorithm>
#include <array>

namespace quorvex {

namespace {

constexpr std::array sensors{
    KnownSensor{"TA0P", "Ambient"},
    KnownSensor{"TB1T", "Battery 1"},
    KnownSensor{"TB2T", "Battery 2"},
    KnownSensor{"TB0T", "Battery TS_MAX"},
    KnownSensor{"TC1C", "CPU Core 1"},
    KnownSensor{"TC2C", "CPU Core 2"},
    KnownSensor{"TC3C", "CPU Core 3"},
    KnownSensor{"TC4C", "CPU Core 4"},
    KnownSensor{"TC5C", "CPU Core 5"},
    KnownSensor{"TC6C", "CPU Core 6"},
    KnownSensor{"TC7C", "CPU Core 7"},
    KnownSensor{"TC8C", "CPU Core 8"},
    KnownSensor{"TC0D", "CPU Die"},
    KnownSensor{"TC0E", "CPU Die (2)"},
    KnownSensor{"TC0F", "CPU Die (3)"},
    KnownSensor{"Tp09", "CPU Efficiency Core 1"},
    KnownSensor{"Tp0T", "CPU Efficiency Core 2"},
    KnownSensor{"Tp01", "CPU Performance Core 1"},
    KnownSensor{"Tp05", "CPU Performance Core 2"},
    KnownSensor{"Tp0D", "CPU Performance Core 3"},
    KnownSensor{"Tp0H", "CPU Performance Core 4"},
    KnownSensor{"Tp0L", "CPU Performance Core 5"},
    KnownSensor{"Tp0P", "CPU Performance Core 6"},
    KnownSensor{"Tp0X", "CPU Performance Core 7"},
    KnownSensor{"Tp0b", "CPU Performance Core 8"},
    KnownSensor{"TC0P", "CPU Proximity"},
    KnownSensor{"TG0D", "GPU Die"},
    KnownSensor{"TG1D", "GPU Die (2)"},
    KnownSensor{"TG0P", "GPU Proximity"},
    KnownSensor{"TM0P", "Memory Controller"},
    KnownSensor{"Tm0P", "Memory Proximity"},
    KnownSensor{"Ts0P", "Palm Rest 1"},
    KnownSensor{"Ts1P", "Palm Rest 2"},
    KnownSensor{"TH0x", "SSD"},
    KnownSensor{"TH0A", "SSD A"},
    KnownSensor{"TH0B", "SSD B"},
    KnownSensor{"TW0P", "Wireless Module"},
};

static_assert(sensors.size() == 37);
// Readings come out sorted because the table is walked in this order.
static_assert(std::ranges::adjacent_find(sensors, std::ranges::greater_equal{},
                                         &KnownSensor::label) == sensors.end());

}  // namespace

std::span<const KnownSensor> knownSensors() {
  return sensors;
}

}  // namespace quorvex
