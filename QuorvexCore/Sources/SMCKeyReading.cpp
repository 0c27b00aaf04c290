#include "SMCKeyReading.h"

#include "KnownSensors.h"

namespace quorvex::smc {

std::optional<SMCValue> readSMCKeyTyped(SMCPort& port, SMCPort::Connection connection,
                                        std::string_view key) {
  SMCKeyRecord input;
  input.key = fourCharCode(key);
  input.command = SMCKeyRecord::readKeyInfoCommand;
  SMCKeyRecord info;
  if (port.call(connection, input, info) != 0) {
    return std::nullopt;
  }
  if (info.dataSize < 1 || info.dataSize > info.bytes.size()) {
    return std::nullopt;
  }

  input.command = SMCKeyRecord::readBytesCommand;
  input.dataSize = info.dataSize;
  SMCKeyRecord output;
  if (port.call(connection, input, output) != 0) {
    return std::nullopt;
  }
  return SMCValue{.bytes = {output.bytes.begin(), output.bytes.begin() + info.dataSize},
                  .dataType = info.dataType};
}

std::vector<TemperatureSensor> collectTemperatures(SMCPort& port, SMCPort::Connection connection) {
  std::vector<TemperatureSensor> sensors;
  for (const KnownSensor& known : knownSensors()) {
    const auto value = readSMCKeyTyped(port, connection, known.key);
    if (!value) {
      continue;
    }
    if (const auto temperature = decodeTemperature(*value)) {
      sensors.push_back({std::string{known.key}, std::string{known.label}, *temperature});
    }
  }
  return sensors;
}

}  // namespace quorvex::smc
