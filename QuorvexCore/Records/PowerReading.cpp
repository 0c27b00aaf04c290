#include "PowerReading.h"

namespace quorvex {

std::string_view readingLabel(PowerReadingKind kind) {
  switch (kind) {
    case PowerReadingKind::batteryDischarge:
      return "Battery draw";
    case PowerReadingKind::batteryChargeInput:
      return "Battery charge input";
    case PowerReadingKind::batterySupplement:
      return "Battery supplement";
    case PowerReadingKind::ioReportSiliconPower:
      break;
  }
  return "IOReport silicon power";
}

std::string_view readingSummary(PowerReadingKind kind) {
  switch (kind) {
    case PowerReadingKind::batteryDischarge:
      return "SmartBattery whole-system draw while unplugged";
    case PowerReadingKind::batteryChargeInput:
      return "SmartBattery charge rate; not total system load";
    case PowerReadingKind::batterySupplement:
      return "Battery is supplementing adapter input; not total system load";
    case PowerReadingKind::ioReportSiliconPower:
      break;
  }
  return "CPU/GPU/ANE/DRAM energy model";
}

PowerReadingConfidence readingConfidence(PowerReadingKind kind) {
  return kind == PowerReadingKind::ioReportSiliconPower ? PowerReadingConfidence::ioReport
                                                        : PowerReadingConfidence::batteryTerminal;
}

}  // namespace quorvex
