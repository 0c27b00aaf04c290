#include "ObservationDecoder.h"

#include <algorithm>
#include <utility>

#include "CompactReader.h"
#include "ObservationMemory.h"
#include "PowerSessionCoders.h"
#include "PowerSessionMetrics.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "RecordDecoder.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {

namespace {

constexpr std::string_view nettopText = rawValue(NetworkAttributionSource::nettop);

template <typename Value>
void raise(std::optional<Value>& largest, Value value) {
  largest = largest ? std::max(*largest, value) : value;
}

ObservedBattery observed(const BatteryInfoDTO& battery) {
  return {.chargePercent = battery.chargePercent,
          .maxCapacity = battery.maxCapacity,
          .designCapacity = battery.designCapacity,
          .healthPercent = battery.healthPercent,
          .voltage = battery.voltage,
          .wattage = battery.wattage,
          .isCharging = battery.isCharging,
          .acConnected = battery.acConnected};
}

}  // namespace

StoredSampleBatch::Blob StoredSampleBatch::copy(std::string_view blob) {
  if (blob.empty()) {
    return {};
  }
  const std::size_t offset = bytes_.size();
  bytes_.append(blob).append(CompactReader::padding, '\0');
  return {offset, blob.size()};
}

void StoredSampleBatch::add(const StoredSample& sample) {
  samples_.push_back({.columns = sample.columns,
                      .snapshot = copy(sample.snapshotData),
                      .processActivity = copy(sample.processActivityData.value_or("")),
                      .proTelemetry = copy(sample.proTelemetryData.value_or(""))});
}

void StoredSampleBatch::clear() {
  samples_.clear();
  bytes_.clear();
}

class ObservationDecoder::State {
 public:
  void decode(const StoredSampleBatch::Sample& sample, const StoredSampleBatch& batch,
              Observation& observation);

  [[nodiscard]] std::unique_ptr<ObservationMemory> takeMemory() {
    for (std::string_view& text : latest_) {
      text = {};
    }
    return std::exchange(memory_, std::make_unique<ObservationMemory>());
  }

 private:
  /// Texts that are mostly the same from one sample to the next.
  enum class Recurring : std::size_t { thermalState, kind, label, attribution };
  static constexpr std::size_t recurringCount = 4;

  [[nodiscard]] std::string_view keepRecurring(std::string_view text, Recurring place) {
    std::string_view& latest = latest_[static_cast<std::size_t>(place)];
    if (latest != text) {
      latest = memory_->keep(text);
    }
    return latest;
  }
  [[nodiscard]] bool readRecurring(CompactReader& reader, std::string_view& kept, Recurring place) {
    std::string_view text;
    if (!reader.read(text)) {
      return false;
    }
    kept = keepRecurring(text, place);
    return true;
  }

  void decodeSnapshot(std::string_view json, std::optional<ObservedSnapshot>& snapshot);
  [[nodiscard]] bool decodeProTelemetry(std::string_view json, Date& sampledAt);
  [[nodiscard]] bool decodeActivities(std::string_view json);

  // Each reads the form that this program writes and says false for any other.
  [[nodiscard]] bool readSnapshot(CompactReader& reader, ObservedSnapshot& snapshot);
  [[nodiscard]] bool readBattery(CompactReader& reader, ObservedBattery& battery);
  [[nodiscard]] bool readNetwork(CompactReader& reader, ObservedNetwork& network);
  [[nodiscard]] bool readNetworkProcess(CompactReader& reader);
  [[nodiscard]] bool readPrivilegedProcess(CompactReader& reader);
  [[nodiscard]] bool readActivity(CompactReader& reader);

  [[nodiscard]] ObservedSnapshot observed(const SystemPowerStateDTO& dto);
  [[nodiscard]] ObservedNetwork observed(const NetworkSnapshotDTO& dto);

  void addProcess(std::string_view name, std::optional<double> score, bool isAggregate);

  std::unique_ptr<ObservationMemory> memory_ = std::make_unique<ObservationMemory>();
  std::array<std::string_view, recurringCount> latest_;
  std::vector<ObservedProcess> processes_;
  std::vector<ObservedNetworkProcess> networkProcesses_;
  std::string name_;
  RecordDecoder decoder_ = PowerSessionCoders::decoder();
  SystemPowerStateDTO snapshotRecord_;
  ProTelemetrySnapshot proTelemetryRecord_;
  std::vector<ProcessActivityDTO> activityRecords_;
};

void ObservationDecoder::State::decode(const StoredSampleBatch::Sample& sample,
                                       const StoredSampleBatch& batch, Observation& observation) {
  observation.columns = sample.columns;
  if (sample.snapshot.length > 0) {
    decodeSnapshot(batch.text(sample.snapshot), observation.snapshot);
  }
  processes_.clear();
  observation.hasProTelemetry =
      sample.proTelemetry.length > 0 &&
      decodeProTelemetry(batch.text(sample.proTelemetry), observation.proTelemetrySampledAt);
  if (!observation.hasProTelemetry && sample.processActivity.length > 0 &&
      !decodeActivities(batch.text(sample.processActivity))) {
    processes_.clear();
  }
  observation.processes = memory_->keep(processes_);
}

void ObservationDecoder::State::decodeSnapshot(std::string_view json,
                                               std::optional<ObservedSnapshot>& snapshot) {
  CompactReader reader{json};
  if (readSnapshot(reader, snapshot.emplace()) && reader.isAtEnd()) {
    return;
  }
  snapshot.reset();
  if (decoder_.decodeInto(snapshotRecord_, json, CompactReader::padding)) {
    snapshot = observed(snapshotRecord_);
  }
}

bool ObservationDecoder::State::decodeProTelemetry(std::string_view json, Date& sampledAt) {
  CompactReader reader{json};
  const auto readProcesses = [this](CompactReader& at) {
    return at.readArray([&] { return readPrivilegedProcess(at); });
  };
  if (reader.readRecord<ProTelemetrySnapshot>(
          readBy<&ProTelemetrySnapshot::processes>(readProcesses),
          keep<&ProTelemetrySnapshot::sampledAt>(sampledAt)) &&
      reader.isAtEnd()) {
    return true;
  }
  processes_.clear();
  if (!decoder_.decodeInto(proTelemetryRecord_, json, CompactReader::padding)) {
    return false;
  }
  sampledAt = proTelemetryRecord_.sampledAt;
  for (const ProProcessEnergy& process : proTelemetryRecord_.processes) {
    addProcess(process.name, PowerSessionMetrics::contributorScore(process), process.isAggregate);
  }
  return true;
}

bool ObservationDecoder::State::decodeActivities(std::string_view json) {
  processes_.clear();
  CompactReader reader{json};
  if (reader.readArray([&] { return readActivity(reader); }) && reader.isAtEnd()) {
    return true;
  }
  processes_.clear();
  if (!decoder_.decodeInto(activityRecords_, json, CompactReader::padding)) {
    return false;
  }
  for (const ProcessActivityDTO& process : activityRecords_) {
    addProcess(process.name, process.impactScore, false);
  }
  return true;
}

bool ObservationDecoder::State::readSnapshot(CompactReader& reader, ObservedSnapshot& snapshot) {
  using DTO = SystemPowerStateDTO;
  return reader.readRecord<DTO>(
      readBy<&DTO::battery>(
          [&](CompactReader& at) { return readBattery(at, snapshot.battery.emplace()); }),
      readBy<&DTO::power>([&](CompactReader& at) {
        return at.readRecord<PowerMetricsDTO>(
            keep<&PowerMetricsDTO::systemPower>(snapshot.systemPower),
            keep<&PowerMetricsDTO::siliconChannelsComplete>(snapshot.siliconChannelsComplete));
      }),
      readBy<&DTO::thermal>([&](CompactReader& at) {
        return at.readRecord<ThermalInfoDTO>(readBy<&ThermalInfoDTO::state>([&](CompactReader& in) {
          return readRecurring(in, snapshot.thermalState, Recurring::thermalState);
        }));
      }),
      readBy<&DTO::fans>([&](CompactReader& at) {
        return at.readArray([&] {
          std::int64_t currentRPM = 0;
          if (!at.readRecord<FanInfoDTO>(keep<&FanInfoDTO::currentRPM>(currentRPM))) {
            return false;
          }
          raise(snapshot.maxFanRPM, currentRPM);
          return true;
        });
      }),
      readBy<&DTO::sensors>([&](CompactReader& at) {
        return at.readArray([&] {
          return at.readRecord<TemperatureSensor>(readBy<&TemperatureSensor::temperature>(
              [&](CompactReader& in) { return in.raise(snapshot.maxSensorTemperature); }));
        });
      }),
      keep<&DTO::unattributedPower>(snapshot.unattributedPower),
      keep<&DTO::displayAndOtherPower>(snapshot.displayAndOtherPower),
      keep<&DTO::batteryDischargeWatts>(snapshot.batteryDischargeWatts),
      keep<&DTO::batteryChargeInputWatts>(snapshot.batteryChargeInputWatts),
      keep<&DTO::siliconWatts>(snapshot.siliconWatts),
      readBy<&DTO::powerSourceKind>([&](CompactReader& at) {
        return readRecurring(at, snapshot.powerSourceKind.emplace(), Recurring::kind);
      }),
      readBy<&DTO::powerSourceLabel>([&](CompactReader& at) {
        return readRecurring(at, snapshot.powerSourceLabel.emplace(), Recurring::label);
      }),
      keep<&DTO::totalWatts>(snapshot.totalWatts), readBy<&DTO::network>([&](CompactReader& at) {
        return readNetwork(at, snapshot.network.emplace());
      }));
}

bool ObservationDecoder::State::readBattery(CompactReader& reader, ObservedBattery& battery) {
  using DTO = BatteryInfoDTO;
  return reader.readRecord<DTO>(
      keep<&DTO::chargePercent>(battery.chargePercent),
      keep<&DTO::maxCapacity>(battery.maxCapacity),
      keep<&DTO::designCapacity>(battery.designCapacity),
      keep<&DTO::healthPercent>(battery.healthPercent), keep<&DTO::voltage>(battery.voltage),
      keep<&DTO::wattage>(battery.wattage), keep<&DTO::isCharging>(battery.isCharging),
      keep<&DTO::acConnected>(battery.acConnected));
}

bool ObservationDecoder::State::readNetwork(CompactReader& reader, ObservedNetwork& network) {
  using DTO = NetworkSnapshotDTO;
  networkProcesses_.clear();
  const bool isRead = reader.readRecord<DTO>(
      keep<&DTO::totalBytesInPerSec>(network.totalBytesInPerSec),
      keep<&DTO::totalBytesOutPerSec>(network.totalBytesOutPerSec),
      readBy<&DTO::attributionSource>([&](CompactReader& at) {
        return readRecurring(at, network.attributionSource, Recurring::attribution);
      }),
      readBy<&DTO::processes>(
          [&](CompactReader& at) { return at.readArray([&] { return readNetworkProcess(at); }); }));
  if (isRead) {
    network.processes = memory_->keep(networkProcesses_);
  }
  return isRead;
}

bool ObservationDecoder::State::readNetworkProcess(CompactReader& reader) {
  using DTO = NetworkProcessInfoDTO;
  ObservedNetworkProcess& row = networkProcesses_.emplace_back();
  return reader.readRecord<DTO>(
      keep<&DTO::pid>(row.pid), keep<&DTO::bytesIn>(row.bytesIn),
      keep<&DTO::bytesOut>(row.bytesOut), keep<&DTO::bytesInPerSec>(row.bytesInPerSec),
      keep<&DTO::bytesOutPerSec>(row.bytesOutPerSec), readBy<&DTO::name>([&](CompactReader& at) {
        std::string_view name;
        if (!at.read(name)) {
          return false;
        }
        row.name = memory_->keep(name);
        return true;
      }),
      readBy<&DTO::attributionSource>([&](CompactReader& at) {
        std::string_view source;
        if (!at.read(source)) {
          return false;
        }
        row.isFromNettop = source == nettopText;
        return true;
      }));
}

bool ObservationDecoder::State::readPrivilegedProcess(CompactReader& reader) {
  using Row = ProProcessEnergy;
  Row row;
  const bool isRead = reader.readRecord<Row>(
      keep<&Row::energyImpact>(row.energyImpact), keep<&Row::cpuTimePercent>(row.cpuTimePercent),
      keep<&Row::wakeupsPerSecond>(row.wakeupsPerSecond), keep<&Row::isAggregate>(row.isAggregate),
      readBy<&Row::name>([&](CompactReader& at) {
        std::string_view name;
        if (!at.read(name)) {
          return false;
        }
        name_.assign(name);
        return true;
      }));
  if (isRead) {
    addProcess(name_, PowerSessionMetrics::contributorScore(row), row.isAggregate);
  }
  return isRead;
}

bool ObservationDecoder::State::readActivity(CompactReader& reader) {
  using DTO = ProcessActivityDTO;
  double score = 0.0;
  const bool isRead = reader.readRecord<DTO>(keep<&DTO::impactScore>(score),
                                             readBy<&DTO::name>([&](CompactReader& at) {
                                               std::string_view name;
                                               if (!at.read(name)) {
                                                 return false;
                                               }
                                               name_.assign(name);
                                               return true;
                                             }));
  if (isRead) {
    addProcess(name_, score, false);
  }
  return isRead;
}

ObservedSnapshot ObservationDecoder::State::observed(const SystemPowerStateDTO& dto) {
  ObservedSnapshot snapshot;
  if (dto.battery) {
    snapshot.battery = quorvex::observed(*dto.battery);
  }
  if (dto.power) {
    snapshot.systemPower = dto.power->systemPower;
    snapshot.siliconChannelsComplete = dto.power->siliconChannelsComplete;
  }
  snapshot.thermalState = keepRecurring(dto.thermal.state, Recurring::thermalState);
  for (const FanInfoDTO& fan : dto.fans) {
    raise(snapshot.maxFanRPM, fan.currentRPM);
  }
  for (const TemperatureSensor& sensor : dto.sensors) {
    raise(snapshot.maxSensorTemperature, sensor.temperature);
  }
  snapshot.unattributedPower = dto.unattributedPower;
  snapshot.displayAndOtherPower = dto.displayAndOtherPower;
  snapshot.batteryDischargeWatts = dto.batteryDischargeWatts;
  snapshot.batteryChargeInputWatts = dto.batteryChargeInputWatts;
  snapshot.siliconWatts = dto.siliconWatts;
  if (dto.powerSourceKind) {
    snapshot.powerSourceKind = keepRecurring(*dto.powerSourceKind, Recurring::kind);
  }
  if (dto.powerSourceLabel) {
    snapshot.powerSourceLabel = keepRecurring(*dto.powerSourceLabel, Recurring::label);
  }
  snapshot.totalWatts = dto.totalWatts;
  if (dto.network) {
    snapshot.network = observed(*dto.network);
  }
  return snapshot;
}

ObservedNetwork ObservationDecoder::State::observed(const NetworkSnapshotDTO& dto) {
  networkProcesses_.clear();
  for (const NetworkProcessInfoDTO& row : dto.processes) {
    networkProcesses_.push_back({.pid = row.pid,
                                 .name = memory_->keep(row.name),
                                 .isFromNettop = row.attributionSource == nettopText,
                                 .bytesIn = row.bytesIn,
                                 .bytesOut = row.bytesOut,
                                 .bytesInPerSec = row.bytesInPerSec,
                                 .bytesOutPerSec = row.bytesOutPerSec});
  }
  return {.totalBytesInPerSec = dto.totalBytesInPerSec,
          .totalBytesOutPerSec = dto.totalBytesOutPerSec,
          .attributionSource = keepRecurring(dto.attributionSource, Recurring::attribution),
          .processes = memory_->keep(networkProcesses_)};
}

void ObservationDecoder::State::addProcess(std::string_view name, std::optional<double> score,
                                           bool isAggregate) {
  if (score && *score > 0.0) {
    processes_.push_back(
        {.name = memory_->keep(name),
         .score = *score,
         .isAggregate = isAggregate || PowerSessionMetrics::isKnownAggregate(name)});
  }
}

ObservationDecoder::ObservationDecoder() : state_(std::make_unique<State>()) {}
ObservationDecoder::ObservationDecoder(ObservationDecoder&&) noexcept = default;
ObservationDecoder& ObservationDecoder::operator=(ObservationDecoder&&) noexcept = default;
ObservationDecoder::~ObservationDecoder() = default;

void ObservationDecoder::decode(const StoredSampleBatch& batch, Observation* place) {
  for (const StoredSampleBatch::Sample& sample : batch.samples_) {
    state_->decode(sample, batch, *std::construct_at(place));
    ++place;
  }
}

std::unique_ptr<ObservationMemory> ObservationDecoder::takeMemory() {
  return state_->takeMemory();
}

}  // namespace quorvex
