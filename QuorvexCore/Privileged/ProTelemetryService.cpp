#include "ProTelemetryService.h"

#include <array>
#include <memory>
#include <utility>
#include <variant>

#include "HelperReplies.h"
#include "InstallScript.h"
#include "Text.h"

namespace quorvex {

namespace {

constexpr double statusTimeout = 2.0;
constexpr double snapshotTimeout = 20.0;
constexpr double installTimeout = 120.0;
constexpr double pollInterval = 0.05;
constexpr std::uint32_t setuidBit = 04000;

std::optional<std::string> ifNotEmpty(std::string bytes) {
  return bytes.empty() ? std::nullopt : std::optional{std::move(bytes)};
}

std::optional<std::string> trimmedText(std::string_view bytes) {
  return text::isValidUTF8(bytes) ? std::optional{std::string{text::trimmed(bytes)}} : std::nullopt;
}

ProTelemetrySnapshot failedSnapshot(Date now, std::optional<std::string> summary,
                                    std::string error) {
  return {.isAvailable = false,
          .source = "powermetrics",
          .sampledAt = now,
          .sampleIntervalMilliseconds = 1000,
          .processes = {},
          .cpuPowerWatts = std::nullopt,
          .gpuPowerWatts = std::nullopt,
          .anePowerWatts = std::nullopt,
          .rawSampleSummary = std::move(summary),
          .error = std::move(error)};
}

}  // namespace

ProTelemetryService::ProTelemetryService(FileAttributes& fileAttributes,
                                         ChildProcesses& childProcesses, Clock& clock,
                                         std::string helperPath)
    : fileAttributes_(&fileAttributes),
      childProcesses_(&childProcesses),
      clock_(&clock),
      helperPath_(std::move(helperPath)) {}

HelperStatus ProTelemetryService::helperStatus() const {
  HelperStatus status;
  status.path = helperPath_;
  if (!fileAttributes_->fileExists(helperPath_)) {
    status.error = "Helper is not installed";
    return status;
  }
  status.isInstalled = true;
  const FileAttributeRecord attributes =
      fileAttributes_->attributes(helperPath_).value_or(FileAttributeRecord{});
  status.ownerUserID = attributes.ownerID.value_or(-1);
  status.groupID = attributes.groupID.value_or(-1);
  const bool isSetuid = (attributes.permissions.value_or(0) & setuidBit) != 0;
  status.isSetuidRoot = status.ownerUserID == 0 && isSetuid;
  status.isExecutable = fileAttributes_->isExecutable(helperPath_);

  auto [reply, error] = invokeHelper(std::array<std::string, 1>{"status-json"}, statusTimeout);
  status.error = std::move(error);
  if (reply) {
    if (const auto told = decodeHelperStatus(*reply)) {
      status.installedVersion = told->installedVersion;
      status.supportsProTelemetry = told->supportsProTelemetry;
    }
  }
  return status;
}

ProTelemetrySnapshot ProTelemetryService::readSnapshot() const {
  auto [reply, error] =
      invokeHelper(std::array<std::string, 1>{"read-pro-telemetry-json"}, snapshotTimeout);
  if (!reply) {
    return failedSnapshot(clock_->now(), std::nullopt,
                          error.value_or("Helper did not return telemetry"));
  }
  auto decoded = decodeProTelemetrySnapshot(*reply);
  if (decoded) {
    return *std::move(decoded);
  }
  auto summary = text::isValidUTF8(*reply) ? std::move(reply) : std::nullopt;
  return failedSnapshot(clock_->now(), std::move(summary),
                        "Failed to decode helper telemetry: " + decoded.error().description);
}

HelperInstallResult ProTelemetryService::installBundledHelper(const std::string& sourcePath) const {
  const std::array<std::string, 2> arguments{"-e", helperInstallScript(sourcePath, helperPath_)};
  const ProcessRunResult result = runProcess("/usr/bin/osascript", arguments, installTimeout);
  if (result.terminationStatus != 0) {
    return {.succeeded = false,
            .message = result.error.value_or(result.output.value_or("Helper installation failed"))};
  }
  const HelperStatus status = helperStatus();
  if (!status.isUsable()) {
    return {.succeeded = false,
            .message = "Helper copied, but status check failed: " +
                       status.error.value_or("unknown error")};
  }
  return {.succeeded = true, .message = "Pro Telemetry helper installed"};
}

std::pair<std::optional<std::string>, std::optional<std::string>> ProTelemetryService::invokeHelper(
    std::span<const std::string> arguments, double timeout) const {
  ProcessRunResult result = runProcess(helperPath_, arguments, timeout);
  if (result.terminationStatus == 0 && result.outputData) {
    return {std::move(result.outputData), std::nullopt};
  }
  if (result.error) {
    return {std::nullopt, std::move(result.error)};
  }
  if (result.output) {
    return {std::nullopt, std::move(result.output)};
  }
  return {std::nullopt, "Helper exited with status " + std::to_string(result.terminationStatus)};
}

ProcessRunResult ProTelemetryService::runProcess(const std::string& executablePath,
                                                 std::span<const std::string> arguments,
                                                 double timeout) const {
  ProcessRunResult result;
  LaunchResult launched = childProcesses_->launch(executablePath, arguments);
  if (auto* failure = std::get_if<LaunchFailure>(&launched)) {
    result.error = std::move(failure->description);
    return result;
  }
  ChildProcess& child = *std::get<std::unique_ptr<ChildProcess>>(launched);

  // On the monotonic clock: setting the wall clock must not make a child immortal.
  const std::chrono::nanoseconds start = clock_->monotonic();
  const std::chrono::nanoseconds limit = nanosecondsFromSeconds(timeout);
  while (child.isRunning() && clock_->monotonic() - start < limit) {
    clock_->sleep(pollInterval);
  }
  if (child.isRunning()) {
    child.terminate();
    child.waitForExit(std::nullopt);
  }
  std::string output = child.readOutputToEnd();
  std::string error = child.readErrorToEnd();
  child.waitForExit(std::nullopt);

  result.terminationStatus = child.exitStatus();
  result.output = trimmedText(output);
  result.error = trimmedText(error);
  result.outputData = ifNotEmpty(std::move(output));
  result.errorData = ifNotEmpty(std::move(error));
  return result;
}

}  // namespace quorvex
