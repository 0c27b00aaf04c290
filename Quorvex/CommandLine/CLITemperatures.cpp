#include "CLITemperatures.h"

#include "HIDSensorService.h"
#include "PrivilegedSMCHelperService.h"

namespace quorvex {

std::vector<TemperatureSensor> readTemperaturesWithFallbacks(SMCService& smcService,
                                                             Machine& machine) {
  std::vector<TemperatureSensor> sensors = smcService.readTemperatures();
  if (sensors.empty()) {
    sensors = PrivilegedSMCHelperService{machine.fileAttributes(), machine.childProcesses()}
                  .readTemperatures();
  }
  if (sensors.empty()) {
    HIDSensorService hidSensorService{machine.hidTemperatures()};
    sensors = hidSensorService.readTemperatures();
  }
  return sensors;
}

}  // namespace quorvex
