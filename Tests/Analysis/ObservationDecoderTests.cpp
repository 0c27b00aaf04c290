#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "AnyRecord.h"
#include "ObservationDecoder.h"
#include "ObservationMemory.h"
#include "ObservationSet.h"
#include "PowerSessionCoders.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "SampleRecords.h"
#include "SystemPowerStateDTO.h"

// The session decoder, which reads whole records, is the judge of what a blob holds; what is
// expected here is taken from its records.

namespace quorvex {
namespace {

using samples::any;

/// The observation of one sample, with what it refers to.
class Decoded {
 public:
  explicit Decoded(const StoredSample& sample) : set_(ObservationSet::decoding({&sample, 1})) {}
  const Observation& operator*() const { return set_.observations().front(); }
  const Observation* operator->() const { return &**this; }

 private:
  ObservationSet set_;
};

Decoded decodedSnapshot(std::string_view json) {
  return Decoded{StoredSample{.columns = {}, .snapshotData = json}};
}

template <typename Record>
std::string encoded(const Record& record) {
  return *PowerSessionCoders::encoder().encode(record);
}

template <typename Record>
std::optional<Record> judged(std::string_view json) {
  auto result = PowerSessionCoders::decoder().decode<Record>(json);
  return result ? std::optional{*std::move(result)} : std::nullopt;
}

template <typename Value, typename Items, typename Field>
std::optional<Value> largest(const Items& items, Field field) {
  std::optional<Value> result;
  for (const auto& item : items) {
    result = std::max(result.value_or(item.*field), item.*field);
  }
  return result;
}

bool shows(const ObservedNetwork& network, const NetworkSnapshotDTO& dto) {
  return network.totalBytesInPerSec == dto.totalBytesInPerSec &&
         network.totalBytesOutPerSec == dto.totalBytesOutPerSec &&
         network.attributionSource == dto.attributionSource &&
         std::equal(network.processes.begin(), network.processes.end(), dto.processes.begin(),
                    dto.processes.end(), [](const auto& row, const auto& rowDTO) {
                      return row.pid == rowDTO.pid && row.name == rowDTO.name &&
                             row.isFromNettop == (rowDTO.attributionSource == "nettop") &&
                             row.bytesIn == rowDTO.bytesIn && row.bytesOut == rowDTO.bytesOut &&
                             row.bytesInPerSec == rowDTO.bytesInPerSec &&
                             row.bytesOutPerSec == rowDTO.bytesOutPerSec;
                    });
}

bool shows(const ObservedBattery& battery, const BatteryInfoDTO& dto) {
  return battery.chargePercent == dto.chargePercent && battery.maxCapacity == dto.maxCapacity &&
         battery.designCapacity == dto.designCapacity &&
         battery.healthPercent == dto.healthPercent && battery.voltage == dto.voltage &&
         battery.wattage == dto.wattage && battery.isCharging == dto.isCharging &&
         battery.acConnected == dto.acConnected;
}

bool shows(const ObservedSnapshot& snapshot, const SystemPowerStateDTO& dto);

template <typename Observed, typename DTO>
bool shows(const std::optional<Observed>& observed, const std::optional<DTO>& dto) {
  return observed.has_value() == dto.has_value() && (!observed || shows(*observed, *dto));
}

bool shows(const ObservedSnapshot& snapshot, const SystemPowerStateDTO& dto) {
  return shows(snapshot.battery, dto.battery) && shows(snapshot.network, dto.network) &&
         snapshot.systemPower.has_value() == dto.power.has_value() &&
         (!dto.power || (snapshot.systemPower == dto.power->systemPower &&
                         snapshot.siliconChannelsComplete == dto.power->siliconChannelsComplete)) &&
         snapshot.thermalState == dto.thermal.state &&
         snapshot.maxFanRPM == largest<std::int64_t>(dto.fans, &FanInfoDTO::currentRPM) &&
         snapshot.maxSensorTemperature ==
             largest<double>(dto.sensors, &TemperatureSensor::temperature) &&
         snapshot.unattributedPower == dto.unattributedPower &&
         snapshot.displayAndOtherPower == dto.displayAndOtherPower &&
         snapshot.batteryDischargeWatts == dto.batteryDischargeWatts &&
         snapshot.batteryChargeInputWatts == dto.batteryChargeInputWatts &&
         snapshot.siliconWatts == dto.siliconWatts &&
         snapshot.powerSourceKind == dto.powerSourceKind &&
         snapshot.powerSourceLabel == dto.powerSourceLabel && snapshot.totalWatts == dto.totalWatts;
}

struct Row {
  std::string name;
  double score;
  bool isAggregate;
  bool operator==(const Row&) const = default;
};

std::vector<Row> rows(const Observation& observation) {
  std::vector<Row> result;
  for (const ObservedProcess& process : observation.processes) {
    result.push_back({std::string{process.name}, process.score, process.isAggregate});
  }
  return result;
}

bool isGroup(const std::string& name) {
  return name == "ALL_TASKS" || name == "DEAD_TASKS";
}

std::vector<Row> rows(const std::vector<ProcessActivityDTO>& records) {
  std::vector<Row> result;
  for (const ProcessActivityDTO& record : records) {
    if (record.impactScore > 0.0) {
      result.push_back({record.name, record.impactScore, isGroup(record.name)});
    }
  }
  return result;
}

std::vector<Row> rows(const ProTelemetrySnapshot& snapshot) {
  std::vector<Row> result;
  for (const ProProcessEnergy& record : snapshot.processes) {
    const double score = record.energyImpact.value_or(
        record.cpuTimePercent.value_or(record.wakeupsPerSecond.value_or(0.0)));
    if (score > 0.0) {
      result.push_back({record.name, score, record.isAggregate || isGroup(record.name)});
    }
  }
  return result;
}

/// A text with a few bytes changed, left out or doubled. Only within a property.
std::string mutated(std::string text) {
  const auto count = *rc::gen::inRange(0, 4);
  for (int i = 0; i < count && !text.empty(); ++i) {
    const auto at = *rc::gen::inRange<std::size_t>(0, text.size());
    const auto length = *rc::gen::inRange<std::size_t>(1, 12);
    switch (*rc::gen::inRange(0, 5)) {
      case 0:
        text[at] = *rc::gen::elementOf(std::string{"{}[]\",:0159.-+eE \\/tn\x01\xC3\xA9"});
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(at, length));
        break;
      case 3:
        text.insert(at, 1, *rc::gen::elementOf(std::string{"{}[]\",:0159.-+eE \\/tn\x01\xC3\xA9"}));
        break;
      default: {
        // A digit for another one: stays JSON, and mostly in the form that is written.
        const auto digit = text.find_first_of("0123456789", at);
        if (digit != std::string::npos) {
          text[digit] = *rc::gen::elementOf(std::string{"0123456789"});
        }
      }
    }
  }
  return text;
}

/// Sometimes with white space between tokens, which only the general reader takes.
template <typename Record>
std::string anyJSON() {
  const auto record = any<Record>();
  return *rc::gen::weightedElement<bool>({{7, true}, {1, false}})
             ? encoded(record)
             : *PowerSessionCoders::prettyEncoder().encode(record);
}

TEST(ObservationDecoder, SnapshotsDecodeExactlyWhenTheirRecordsDoAndToTheSameValues) {
  EXPECT_TRUE(rc::check([] {
    const std::string json = mutated(anyJSON<SystemPowerStateDTO>());
    const auto record = judged<SystemPowerStateDTO>(json);
    const Decoded observation = decodedSnapshot(json);
    RC_CLASSIFY(record.has_value());
    RC_ASSERT(shows(observation->snapshot, record));
  }));
}

TEST(ObservationDecoder, ProcessRowsDecodeExactlyWhenTheirRecordsDoAndToTheSameValues) {
  EXPECT_TRUE(rc::check([] {
    const std::string json = mutated(anyJSON<std::vector<ProcessActivityDTO>>());
    const auto record = judged<std::vector<ProcessActivityDTO>>(json);
    const Decoded observation{
        StoredSample{.columns = {}, .snapshotData = "", .processActivityData = json}};
    RC_ASSERT(!observation->hasProTelemetry);
    RC_ASSERT(rows(*observation) == (record ? rows(*record) : std::vector<Row>{}));
  }));
}

TEST(ObservationDecoder, PrivilegedRowsDecodeExactlyWhenTheirRecordsDoAndToTheSameValues) {
  EXPECT_TRUE(rc::check([] {
    const std::string json = mutated(anyJSON<ProTelemetrySnapshot>());
    const auto record = judged<ProTelemetrySnapshot>(json);
    const Decoded observation{
        StoredSample{.columns = {}, .snapshotData = "", .proTelemetryData = json}};
    RC_ASSERT(observation->hasProTelemetry == record.has_value());
    RC_ASSERT(!record || observation->proTelemetrySampledAt == record->sampledAt);
    RC_ASSERT(rows(*observation) == (record ? rows(*record) : std::vector<Row>{}));
  }));
}

/// Texts of a value in the place of another one, most of them near to numbers.
std::string anyToken() {
  const std::string characters = "0123456789012345678901234567890123456789..--+eE\"";
  return *rc::gen::weightedOneOf<std::string>(
      {{4, rc::gen::container<std::string>(rc::gen::elementOf(characters))},
       {2, rc::gen::map(rc::gen::arbitrary<std::int64_t>(),
                        [](std::int64_t number) { return std::to_string(number); })},
       {2, rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                        [](std::uint64_t number) { return std::to_string(number); })},
       {1, rc::gen::elementOf(std::vector<std::string>{"-0",
                                                       "0",
                                                       "-0.0",
                                                       "1e5",
                                                       "1E+5",
                                                       "1e-400",
                                                       "1e400",
                                                       "0e999",
                                                       "1.5",
                                                       "1000.0",
                                                       "null",
                                                       "true",
                                                       "\"1\"",
                                                       "18446744073709551615",
                                                       "18446744073709551616",
                                                       "9223372036854775808",
                                                       "-9223372036854775809",
                                                       "9007199254740993.0",
                                                       "[]",
                                                       "{}",
                                                       "100000000000000000000000000000000000000000",
                                                       "0.00000000000000000000000000001",
                                                       "1.00000000000000011102230246251565",
                                                       "12345678901234567890.5"})}});
}

TEST(ObservationDecoder, EveryNumberIsJudgedAsInTheRecords) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-12.0);
  state.fans = {{0, "Left", 7777, 1200, 6000}};
  state.sensors = {{"a", "A", 11.5}, {"b", "B", 33.5}};
  state.network.emplace().processes = {{.id = 88, .name = "curl", .bytesIn = 66, .bytesOut = 2}};
  const std::string json = encoded(SystemPowerStateDTO{state});
  for (const std::string field :
       {"\"wattage\":-12", "\"currentRPM\":7777", "\"temperature\":33.5", "\"temperature\":11.5",
        "\"pid\":88", "\"bytesIn\":66", "\"bytesOutPerSec\":0", "\"amperage\":-1",
        "\"cycleCount\":120", "\"totalBytesInPerSec\":0"}) {
    const auto at = json.find(field);
    ASSERT_NE(at, std::string::npos) << field;
    const auto value = field.find(':') + 1;
    EXPECT_TRUE(rc::check([&] {
      std::string changed = json;
      changed.replace(at + value, field.size() - value, anyToken());
      RC_ASSERT(shows(decodedSnapshot(changed)->snapshot, judged<SystemPowerStateDTO>(changed)));
    })) << field;
  }
}

TEST(ObservationDecoder, EveryTextIsJudgedAsInTheRecords) {
  SystemPowerState state;
  state.sensors = {{"key", "Sensor", 30.0}};
  state.network.emplace().processes = {{.id = 1, .name = "process"}};
  const std::string json = encoded(SystemPowerStateDTO{state});
  for (const std::string text : {"Sensor", "process", "nominal", "unavailable", "none"}) {
    const auto at = json.find(text);
    ASSERT_NE(at, std::string::npos) << text;
    EXPECT_TRUE(rc::check([&] {
      std::string changed = json;
      changed.replace(
          at, text.size(),
          *rc::gen::container<std::string>(rc::gen::oneOf(
              rc::gen::elementOf(std::string{"abc \\\\\\/\"nrtu0041\n\x1F\x7F"}),
              rc::gen::elementOf(std::string{"\xC3\xA9\xE2\x82\xAC\xED\xA0\x80\xFF"}))));
      RC_ASSERT(shows(decodedSnapshot(changed)->snapshot, judged<SystemPowerStateDTO>(changed)));
    })) << text;
  }
}

TEST(ObservationDecoder, TheOrderOfKeysDoesNotMatter) {
  const auto observation = decodedSnapshot(
      R"({"totalWattsConfidence":"ioReport","timestamp":"2026-03-01T08:00:00Z","totalWatts":4,)"
      R"("thermal":{"state":"fair","pressure":1,"isLowPowerMode":false},"sensors":[],"fans":[]})");
  ASSERT_TRUE(observation->snapshot);
  EXPECT_EQ(observation->snapshot->thermalState, "fair");
  EXPECT_EQ(observation->snapshot->totalWatts, 4.0);
}

TEST(ObservationDecoder, ASampleWithoutBlobsKeepsItsColumns) {
  const StoredSample sample{.columns = {.timestamp = Date{std::chrono::seconds{5}},
                                        .elapsedSeconds = 5.0,
                                        .totalWatts = 7.5,
                                        .batteryPercent = 80,
                                        .acConnected = false,
                                        .thermalPressure = 2,
                                        .maxFanRPM = 2000,
                                        .maxTemperature = 61.5},
                            .snapshotData = ""};
  const Decoded observation{sample};
  EXPECT_EQ(observation->columns, sample.columns);
  EXPECT_FALSE(observation->snapshot);
  EXPECT_FALSE(observation->hasProTelemetry);
  EXPECT_TRUE(observation->processes.empty());
}

TEST(ObservationDecoder, APrivilegedSnapshotStandsBeforeTheProcessActivity) {
  std::vector<ProcessActivityDTO> activities(1);
  activities[0].name = "estimated";
  activities[0].impactScore = 3.0;
  ProTelemetrySnapshot snapshot;
  const std::string activityJSON = encoded(activities);
  const std::string emptyJSON = encoded(snapshot);
  snapshot.processes = {{.pid = 1, .name = "measured", .cpuTimePercent = 4.0},
                        {.pid = 2, .name = "idle", .energyImpact = 0.0, .cpuTimePercent = 9.0},
                        {.pid = 3, .name = "ALL_TASKS", .wakeupsPerSecond = 5.0},
                        {.pid = 4, .name = "Group", .energyImpact = 1.0, .isAggregate = true},
                        {.pid = 5, .name = "unknown"}};
  const std::string fullJSON = encoded(snapshot);
  StoredSample sample{.columns = {},
                      .snapshotData = "",
                      .processActivityData = activityJSON,
                      .proTelemetryData = fullJSON};
  EXPECT_EQ(
      rows(*Decoded{sample}),
      (std::vector<Row>{{"measured", 4.0, false}, {"ALL_TASKS", 5.0, true}, {"Group", 1.0, true}}));
  sample.proTelemetryData = emptyJSON;
  EXPECT_TRUE(Decoded { sample } -> hasProTelemetry);
  EXPECT_TRUE(Decoded { sample } -> processes.empty());
  for (const std::optional<std::string_view> none :
       {std::optional<std::string_view>{}, {""}, {"{"}}) {
    sample.proTelemetryData = none;
    const Decoded observation{sample};
    EXPECT_FALSE(observation->hasProTelemetry);
    EXPECT_EQ(rows(*observation), (std::vector<Row>{{"estimated", 3.0, false}}));
  }
}

TEST(ObservationDecoder, TextsOutliveTheBlobsAndTheDecoder) {
  std::vector<ProcessActivityDTO> activities(1);
  activities[0].name = "a name that is longer than any small string";
  activities[0].impactScore = 1.0;
  std::vector<Observation> observations(1);
  std::unique_ptr<ObservationMemory> memory;
  {
    const std::string json = encoded(activities);
    StoredSampleBatch batch;
    batch.add({.columns = {}, .snapshotData = "", .processActivityData = json});
    ObservationDecoder decoder;
    decoder.decode(batch, observations.data());
    memory = decoder.takeMemory();
  }
  EXPECT_EQ(observations[0].processes[0].name, activities[0].name);
}

TEST(ObservationDecoder, ADecoderIsUsedAgainAfterItsMemoryWasTaken) {
  const std::string json = encoded(SystemPowerStateDTO{SystemPowerState{}});
  StoredSampleBatch batch;
  batch.add({.columns = {}, .snapshotData = json});
  ObservationDecoder decoder;
  std::vector<Observation> first(1);
  std::vector<Observation> second(1);
  decoder.decode(batch, first.data());
  decoder.takeMemory().reset();
  decoder.decode(batch, second.data());
  const auto memory = decoder.takeMemory();
  EXPECT_EQ(second[0].snapshot->thermalState, "nominal");
}

TEST(StoredSampleBatch, KnowsWhatItHolds) {
  StoredSampleBatch batch;
  EXPECT_TRUE(batch.isEmpty());
  batch.add({.columns = {}, .snapshotData = "{}"});
  EXPECT_EQ(batch.sampleCount(), 1U);
  EXPECT_GE(batch.byteCount(), 2U);
  batch.clear();
  EXPECT_TRUE(batch.isEmpty());
  EXPECT_EQ(batch.byteCount(), 0U);
}

}  // namespace
}  // namespace quorvex
