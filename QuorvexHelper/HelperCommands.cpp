#include "HelperCommands.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "HelperStatus.h"
#include "PowermetricsParser.h"
#include "PrivilegedSMCHelperService.h"
#include "RecordEncoder.h"
#include "SMCKeyReading.h"

namespace quorvex {

namespace {

constexpr std::array commandWords{
    std::pair{std::string_view{"status-json"}, HelperCommand::status},
    std::pair{std::string_view{"read-pro-telemetry-json"}, HelperCommand::telemetry},
    std::pair{std::string_view{"read-temperatures-json"}, HelperCommand::temperatures},
};

HelperAnswer failure(std::string words) {
  words.push_back('\n');
  return {.exitStatus = failureStatus, .output = {}, .error = std::move(words)};
}

template <typename Value>
HelperAnswer answer(const Value& value) {
  auto json = RecordEncoder{JSONWriter::Style::compact}.encode(value);
  if (!json) {
    return failure(json.error().description);
  }
  json->push_back('\n');
  return {.exitStatus = 0, .output = *std::move(json), .error = {}};
}

/// How much a row matters: the figure by which reports rank it.
double activity(const ProProcessEnergy& row) {
  return row.energyImpact.value_or(row.cpuTimePercent.value_or(row.wakeupsPerSecond.value_or(0.0)));
}

}  // namespace

std::optional<HelperCommand> helperCommand(int argumentCount, const char* const* arguments) {
  if (argumentCount != 2 || arguments[1] == nullptr) {
    return std::nullopt;
  }
  const auto found = std::ranges::find(commandWords, std::string_view{arguments[1]},
                                       [](const auto& entry) { return entry.first; });
  return found != commandWords.end() ? std::optional{found->second} : std::nullopt;
}

HelperAnswer answerUsage() {
  return {
      .exitStatus = usageStatus,
      .output = {},
      .error =
          "usage: QuorvexHelper status-json | read-pro-telemetry-json | read-temperatures-json\n"};
}

HelperAnswer answerStatus(const InstalledFile& file) {
  const FileAttributeRecord attributes = file.attributes.value_or(FileAttributeRecord{});
  HelperStatus status;
  status.isInstalled = file.attributes.has_value();
  status.isExecutable = file.isExecutable;
  status.ownerUserID = attributes.ownerID.value_or(-1);
  status.groupID = attributes.groupID.value_or(-1);
  status.isSetuidRoot =
      status.ownerUserID == 0 && (attributes.permissions.value_or(0) & 04000U) != 0;
  status.installedVersion = QUORVEX_VERSION;
  status.supportsProTelemetry = true;
  status.path = PrivilegedSMCHelperService::defaultHelperPath;
  return answer(status);
}

BoundedCommand powermetricsCommand() {
  return {.path = "/usr/bin/powermetrics",
          .arguments = {"--format", "plist", "--sample-count", "1", "--sample-rate", "1000",
                        "--samplers", "tasks,cpu_power,gpu_power,ane_power",
                        "--show-process-energy", "--show-process-io"},
          .timeLimit = std::chrono::seconds{15},
          .outputLimit = std::size_t{8} * 1024 * 1024};
}

HelperAnswer answerTelemetry(const Result<std::string, CommandFailure>& powermetricsOutput,
                             Date now) {
  if (!powermetricsOutput) {
    return failure(powermetricsOutput.error().description);
  }
  auto sample = parsePowermetrics(*powermetricsOutput, now);
  if (!sample) {
    return failure("powermetrics: " + sample.error().description);
  }
  auto& rows = sample->processes;
  std::ranges::stable_sort(rows, [](const ProProcessEnergy& left, const ProProcessEnergy& right) {
    return std::pair{!left.isAggregate, -activity(left)} <
           std::pair{!right.isAggregate, -activity(right)};
  });
  const std::string keys = sample->rawSampleSummary.value_or("none");
  const std::size_t rowCount = rows.size();
  HelperAnswer result = answer(*sample);
  while (result.output.size() > longestTelemetryReply && !rows.empty()) {
    // By a tenth, so that a few rounds do.
    rows.resize(rows.size() - std::max<std::size_t>(rows.size() / 10, 1));
    sample->rawSampleSummary = keys + "; " + std::to_string(rows.size()) + " of " +
                               std::to_string(rowCount) + " process rows";
    result = answer(*sample);
  }
  return result;
}

HelperAnswer answerTemperatures(SMCPort* smc) {
  const auto connection = smc != nullptr ? smc->open() : std::nullopt;
  if (!connection) {
    return failure("no system management controller");
  }
  const auto sensors = smc::collectTemperatures(*smc, *connection);
  smc->close(*connection);
  return answer(sensors);
}

}  // namespace quorvex
