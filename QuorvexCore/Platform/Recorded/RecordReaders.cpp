#include "RecordReaders.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

#include "Date.h"
#include "InterfaceMessage.h"
#include "ReaderParts.h"

namespace quorvex::record_readers {

namespace {

DictionaryValue readDictionaryValue(StrictJSON& json) {
  switch (json.type()) {
    case StrictJSON::Type::object:
      return readDictionary(json);
    case StrictJSON::Type::array:
      json.forEachElement([](std::size_t, StrictJSON& element) {
        static_cast<void>(readDictionaryValue(element));
      });
      return {};
    case StrictJSON::Type::string:
      return json.string();
    case StrictJSON::Type::number:
      if (const auto integer = json.integerIfWritten()) {
        return *integer;
      }
      return json.number();
    case StrictJSON::Type::boolean:
      return json.boolean();
    case StrictJSON::Type::null:
      break;
  }
  static_cast<void>(json.isNull());
  return {};
}

RecordedCounter readCounter(StrictJSON& json) {
  if (json.type() != StrictJSON::Type::object) {
    return {.start = json.wholeNumber()};
  }
  std::optional<std::uint64_t> start;
  std::optional<double> perSecond;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key == "start") {
      start = child.wholeNumber();
    } else if (key == "perSecond") {
      perSecond = child.number();
    } else {
      child.fail("unknown key");
    }
  });
  return {.start = required(json, "start", start),
          .perSecond = required(json, "perSecond", perSecond)};
}

}  // namespace

std::chrono::nanoseconds readSeconds(StrictJSON& json) {
  const double seconds = json.number();
  if (seconds < 0) {
    json.fail("must not be negative");
  }
  return nanosecondsFromSeconds(seconds);
}

Dictionary readDictionary(StrictJSON& json) {
  Dictionary dictionary;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    dictionary.emplace(key, readDictionaryValue(child));
  });
  return dictionary;
}

std::vector<std::optional<Dictionary>> readPowerSources(StrictJSON& json) {
  return readList(json, [](StrictJSON& element) { return orNull(element, readDictionary); });
}

std::vector<RecordedEnergyChannel> readEnergyChannels(StrictJSON& json) {
  return readList(json, [](StrictJSON& element) {
    RecordedEnergyChannel channel;
    std::optional<std::int64_t> delta;
    element.forEachField([&](std::string_view key, StrictJSON& child) {
      if (key == "name") {
        channel.name = orNull(child, readText);
      } else if (key == "value") {
        delta = readInteger<std::int64_t>(child);
      } else {
        child.fail("unknown key");
      }
    });
    channel.delta = required(element, "value", delta);
    return channel;
  });
}

std::vector<HIDTemperatureService> readHIDServices(StrictJSON& json) {
  return readList(json, [](StrictJSON& element) {
    HIDTemperatureService service;
    element.forEachField([&](std::string_view key, StrictJSON& child) {
      if (key == "product") {
        service.product = readDictionaryValue(child).string();
      } else if (key == "value") {
        service.value = orNull(child, [](StrictJSON& value) { return value.number(); });
      } else {
        child.fail("unknown key");
      }
    });
    return service;
  });
}

RecordedThermal readThermal(StrictJSON& json) {
  RecordedThermal thermal;
  std::optional<std::int64_t> state;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key == "state") {
      state = readInteger<std::int64_t>(child);
    } else if (key == "pressure") {
      thermal.pressure = orNull(child, [](StrictJSON& value) { return value.wholeNumber(); });
    } else if (key == "lowPowerMode") {
      thermal.isLowPowerMode = child.boolean();
    } else {
      child.fail("unknown key");
    }
  });
  thermal.state = required(json, "state", state);
  return thermal;
}

std::vector<RecordedInterface> readInterfaces(StrictJSON& json) {
  return readList(json, [](StrictJSON& element) {
    RecordedInterface interface { .messageType = interface_message::interfaceType };
    std::optional<std::uint16_t> index;
    element.forEachField([&](std::string_view key, StrictJSON& child) {
      if (key == "index") {
        index = readInteger<std::uint16_t>(child);
      } else if (key == "name") {
        interface.name = orNull(child, readText);
      } else if (key == "bytesIn") {
        interface.bytesIn = readCounter(child);
      } else if (key == "bytesOut") {
        interface.bytesOut = readCounter(child);
      } else if (key == "type") {
        interface.messageType = readInteger<std::uint8_t>(child);
      } else {
        child.fail("unknown key");
      }
    });
    interface.index = required(element, "index", index);
    return interface;
  });
}

RecordedProcessList readProcesses(StrictJSON& json) {
  static constexpr std::array<std::pair<std::string_view, RecordedCounter RecordedProcess::*>, 7>
      counters{{{"userTime", &RecordedProcess::userTime},
                {"systemTime", &RecordedProcess::systemTime},
                {"idleWakeups", &RecordedProcess::idleWakeups},
                {"interruptWakeups", &RecordedProcess::interruptWakeups},
                {"bytesRead", &RecordedProcess::bytesRead},
                {"bytesWritten", &RecordedProcess::bytesWritten},
                {"energy", &RecordedProcess::energy}}};
  RecordedProcessList list;
  list.processes = readList(json, [](StrictJSON& element) {
    RecordedProcess process;
    std::optional<std::int32_t> pid;
    element.forEachField([&](std::string_view key, StrictJSON& child) {
      const auto* counter = std::find_if(counters.begin(), counters.end(),
                                         [&](const auto& entry) { return entry.first == key; });
      if (counter != counters.end()) {
        process.*(counter->second) = readCounter(child);
      } else if (key == "pid") {
        pid = readInteger<std::int32_t>(child);
      } else if (key == "name") {
        process.name = orNull(child, readText);
      } else if (key == "accessible") {
        process.isAccessible = child.boolean();
      } else {
        child.fail("unknown key");
      }
    });
    process.pid = required(element, "pid", pid);
    return process;
  });
  list.byPID.resize(list.processes.size());
  std::iota(list.byPID.begin(), list.byPID.end(), std::size_t{0});
  std::stable_sort(list.byPID.begin(), list.byPID.end(), [&](std::size_t left, std::size_t right) {
    return list.processes[left].pid < list.processes[right].pid;
  });
  return list;
}

}  // namespace quorvex::record_readers
