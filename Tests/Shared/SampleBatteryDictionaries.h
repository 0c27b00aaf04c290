#pragma once

#include "Dictionary.h"

namespace quorvex::samples {

/// A controller that answers everything, with a battery that supplements its adapter. No value
/// equals one of the power source, so that a test sees where a value comes from.
inline Dictionary fullRegistry() {
  return {{"CurrentCapacity", 81},
          {"AppleRawCurrentCapacity", 3600},
          {"AppleRawMaxCapacity", 4500},
          {"NominalChargeCapacity", 4600},
          {"DesignCapacity", 5000},
          {"CycleCount", 112},
          {"Voltage", 12000},
          {"Amperage", -1500},
          {"InstantAmperage", -1600},
          {"Temperature", 3120},
          {"IsCharging", false},
          {"FullyCharged", false},
          {"ExternalConnected", true},
          {"AdapterDetails", Dictionary{{"Watts", 96}}},
          {"TimeRemaining", 131},
          {"AvgTimeToEmpty", 132},
          {"InstantTimeToEmpty", 133},
          {"AvgTimeToFull", 61},
          {"InstantTimeToFull", 62},
          {"BatterySerialNumber", "F8Y1234"}};
}

inline Dictionary fullPowerSource() {
  return {{"Current Capacity", 79},    {"Is Charging", true},
          {"Is Charged", true},        {"Watts", 67},
          {"Time to Empty", 130},      {"Time to Full Charge", 60},
          {"BatteryHealth", "Good"},   {"Hardware Serial Number", "HW99"},
          {"Power Source State", "AC"}};
}

}  // namespace quorvex::samples
