// The JSON of the records that conclusions are told in: each by its one table, written and read.

#include <string>
#include <vector>

#include "ObservationBuilder.h"
#include "PowerSessionBatteryCycleInsights.h"
#include "PowerSessionChargeBehavior.h"
#include "PowerSessionCoders.h"
#include "PowerSessionMeasurementOverhead.h"
#include "PowerSessionProcessFamilySummary.h"
#include "PowerSessionSamplingConfidence.h"
#include "PowerSessionTelemetryChannelNote.h"
#include "PowerSessionTelemetryConsistencyCheck.h"
#include "PowerSessionThermalSummary.h"
#include "RecordDecoding.h"

namespace quorvex {

template bool RecordDecoder::decodeInto(PowerSessionSamplingConfidence&, std::string_view,
                                        std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionTelemetryChannelNote&, std::string_view,
                                        std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionBatteryCycleInsights&, std::string_view,
                                        std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionChargeBehavior&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionProcessFamilySummary&, std::string_view,
                                        std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionMeasurementOverhead&, std::string_view,
                                        std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionThermalSummary&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(PowerSessionTelemetryConsistencyCheck&, std::string_view,
                                        std::size_t);

namespace {

using observations::at;

template <typename Record>
std::string json(const Record& record) {
  return *PowerSessionCoders::encoder().encode(record);
}

template <typename Record>
Record decoded(std::string_view text) {
  auto result = PowerSessionCoders::decoder().decode<Record>(text);
  EXPECT_TRUE(result.hasValue());
  return *std::move(result);
}

template <typename Record>
std::string decodingProblem(std::string_view text) {
  auto result = PowerSessionCoders::decoder().decode<Record>(text);
  return result.hasValue() ? "none" : result.error().description;
}

TEST(PowerSessionSamplingConfidence, IsWrittenUnderItsFieldNames) {
  const PowerSessionSamplingConfidence confidence{.wallClockDurationSeconds = 600.0,
                                                  .activeSampledDurationSeconds = 500.0,
                                                  .sampleCount = 3,
                                                  .medianIntervalSeconds = 300.0,
                                                  .gapsOver60Seconds = 2,
                                                  .totalGapSeconds = 600.0,
                                                  .lowSampleWindowCount = 0,
                                                  .flags = {"long-gaps"},
                                                  .denseWindows = {{.index = 0,
                                                                    .startedAt = at(0),
                                                                    .endedAt = at(600),
                                                                    .durationSeconds = 600.0,
                                                                    .sampleCount = 3,
                                                                    .medianIntervalSeconds = 300.0,
                                                                    .batteryPercentStart = 80,
                                                                    .batteryPercentEnd = 79,
                                                                    .batteryPercentDelta = -1,
                                                                    .averageBatteryDrawWatts = 15.5,
                                                                    .totalWattHours = 2.5,
                                                                    .confidence = "dense"}}};
  const std::string text = json(confidence);
  EXPECT_EQ(
      text,
      R"({"activeSampledDurationSeconds":500,"denseWindows":[{"averageBatteryDrawWatts":15.5,)"
      R"("batteryPercentDelta":-1,"batteryPercentEnd":79,"batteryPercentStart":80,)"
      R"("confidence":"dense","durationSeconds":600,"endedAt":"2026-03-01T08:10:00Z",)"
      R"("index":0,"medianIntervalSeconds":300,"sampleCount":3,)"
      R"("startedAt":"2026-03-01T08:00:00Z","totalWattHours":2.5}],"flags":["long-gaps"],)"
      R"("gapsOver60Seconds":2,"lowSampleWindowCount":0,"medianIntervalSeconds":300,)"
      R"("sampleCount":3,"totalGapSeconds":600,"wallClockDurationSeconds":600})");
  EXPECT_EQ(decoded<PowerSessionSamplingConfidence>(text), confidence);
}

TEST(PowerSessionSamplingConfidence, LeavesOutWhatIsAbsent) {
  const std::string text = json(PowerSessionSamplingConfidence::empty());
  EXPECT_EQ(text, R"({"activeSampledDurationSeconds":0,"denseWindows":[],"flags":[],)"
                  R"("gapsOver60Seconds":0,"lowSampleWindowCount":0,"sampleCount":0,)"
                  R"("totalGapSeconds":0,"wallClockDurationSeconds":0})");
  EXPECT_EQ(decoded<PowerSessionSamplingConfidence>(text), PowerSessionSamplingConfidence::empty());
}

TEST(PowerSessionSamplingConfidence, DemandsItsFields) {
  EXPECT_EQ(decodingProblem<PowerSessionSamplingConfidence>(
                R"({"activeSampledDurationSeconds":0,"denseWindows":[],"flags":[],)"
                R"("gapsOver60Seconds":0,"lowSampleWindowCount":0,)"
                R"("totalGapSeconds":0,"wallClockDurationSeconds":0})"),
            "$.sampleCount: missing");
}

TEST(PowerSessionTelemetryChannelNote, IsWrittenUnderItsFieldNames) {
  const PowerSessionTelemetryChannelNote note{"a", "b", "c", "d"};
  const std::string text = json(note);
  EXPECT_EQ(text, R"({"caution":"d","channel":"a","meaning":"c","trustLevel":"b"})");
  EXPECT_EQ(decoded<PowerSessionTelemetryChannelNote>(text), note);
  EXPECT_EQ(decodingProblem<PowerSessionTelemetryChannelNote>(
                R"({"caution":"d","channel":"a","meaning":"c"})"),
            "$.trustLevel: missing");
}

TEST(PowerSessionBatteryCycleInsights, AreWrittenUnderTheirFieldNames) {
  const PowerSessionBatteryCycleInsights insights{
      .totalPercentGained = 2,
      .totalPercentDischarged = 12,
      .netPercent = -10,
      .lowestPercent = 90,
      .highestPercent = 100,
      .dischargeRuns = {{.index = 1,
                         .startedAt = at(0),
                         .endedAt = at(1800),
                         .durationSeconds = 1800.0,
                         .sampleCount = 180,
                         .batteryPercentStart = 100,
                         .batteryPercentEnd = 90,
                         .batteryPercentDelta = -10,
                         .averageDrawWatts = 10.0,
                         .totalWattHours = 5.0,
                         .estimatedUsableFullBatteryWattHours = 50.0,
                         .confidence = "strong"}},
      .estimatedUsableFullBatteryWattHours = 50.0,
      .reportedFullChargeCapacityWattHours = 72.0,
      .reportedDesignCapacityWattHours = 75.0,
      .reportedHealthPercent = 96,
      .confidence = "derived-from-continuous-discharge",
      .note = "n"};
  const std::string text = json(insights);
  EXPECT_EQ(text,
            R"({"confidence":"derived-from-continuous-discharge","dischargeRuns":[)"
            R"({"averageDrawWatts":10,"batteryPercentDelta":-10,"batteryPercentEnd":90,)"
            R"("batteryPercentStart":100,"confidence":"strong","durationSeconds":1800,)"
            R"("endedAt":"2026-03-01T08:30:00Z","estimatedUsableFullBatteryWattHours":50,)"
            R"("index":1,"sampleCount":180,"startedAt":"2026-03-01T08:00:00Z",)"
            R"("totalWattHours":5}],"estimatedUsableFullBatteryWattHours":50,)"
            R"("highestPercent":100,"lowestPercent":90,"netPercent":-10,"note":"n",)"
            R"("reportedDesignCapacityWattHours":75,"reportedFullChargeCapacityWattHours":72,)"
            R"("reportedHealthPercent":96,"totalPercentDischarged":12,"totalPercentGained":2})");
  EXPECT_EQ(decoded<PowerSessionBatteryCycleInsights>(text), insights);
}

TEST(PowerSessionBatteryCycleInsights, MayLackTheirOptionalFields) {
  const std::string text =
      R"({"confidence":"insufficient-continuous-discharge","dischargeRuns":[],)"
      R"("netPercent":0,"totalPercentDischarged":0,"totalPercentGained":0})";
  const PowerSessionBatteryCycleInsights insights{.confidence =
                                                      "insufficient-continuous-discharge"};
  EXPECT_EQ(json(insights), text);
  EXPECT_EQ(decoded<PowerSessionBatteryCycleInsights>(text), insights);
}

TEST(PowerSessionChargeBehavior, IsWrittenUnderItsFieldNames) {
  const PowerSessionChargeBehavior behavior{
      .chargeRuns = {{.index = 0,
                      .startedAt = at(0),
                      .endedAt = at(60),
                      .elapsedSeconds = 60.0,
                      .sampleCount = 2,
                      .batteryPercentStart = 69,
                      .batteryPercentEnd = 70,
                      .averageChargeInputWatts = 40.5,
                      .confidence = "low-sample"},
                     {.index = 1, .startedAt = at(500), .endedAt = at(500), .sampleCount = 1}},
      .taperMilestones = {{.percent = 70, .timestamp = at(60), .inputWatts = 40.0}},
      .note = "n"};
  const std::string text = json(behavior);
  EXPECT_EQ(text, R"({"chargeRuns":[{"averageChargeInputWatts":40.5,"batteryPercentEnd":70,)"
                  R"("batteryPercentStart":69,"confidence":"low-sample","elapsedSeconds":60,)"
                  R"("endedAt":"2026-03-01T08:01:00Z","index":0,"sampleCount":2,)"
                  R"("startedAt":"2026-03-01T08:00:00Z"},{"confidence":"","elapsedSeconds":0,)"
                  R"("endedAt":"2026-03-01T08:08:20Z","index":1,"sampleCount":1,)"
                  R"("startedAt":"2026-03-01T08:08:20Z"}],"note":"n","taperMilestones":[)"
                  R"({"inputWatts":40,"percent":70,"timestamp":"2026-03-01T08:01:00Z"}]})");
  EXPECT_EQ(decoded<PowerSessionChargeBehavior>(text), behavior);
}

TEST(PowerSessionChargeBehavior, DemandsItsNote) {
  EXPECT_EQ(
      decodingProblem<PowerSessionChargeBehavior>(R"({"chargeRuns":[],"taperMilestones":[]})"),
      "$.note: missing");
}

TEST(PowerSessionProcessFamilySummary, IsWrittenUnderItsFieldNames) {
  const PowerSessionProcessFamilySummary summary{
      .family = "other", .score = 1.5, .sampleCount = 4, .confidence = "c", .note = "n"};
  const std::string text = json(summary);
  EXPECT_EQ(text, R"({"confidence":"c","family":"other","note":"n","sampleCount":4,"score":1.5})");
  EXPECT_EQ(decoded<PowerSessionProcessFamilySummary>(text), summary);
}

TEST(PowerSessionMeasurementOverhead, IsWrittenUnderItsFieldNames) {
  const PowerSessionMeasurementOverhead overhead{.observed = true,
                                                 .overheadScore = 15.0,
                                                 .totalObservedProcessScore = 100.0,
                                                 .overheadFraction = 0.15,
                                                 .processNames = {"powermetrics"},
                                                 .note = "n"};
  const std::string text = json(overhead);
  EXPECT_EQ(text, R"({"note":"n","observed":true,"overheadFraction":0.15,"overheadScore":15,)"
                  R"("processNames":["powermetrics"],"totalObservedProcessScore":100})");
  EXPECT_EQ(decoded<PowerSessionMeasurementOverhead>(text), overhead);
}

TEST(PowerSessionMeasurementOverhead, LeavesOutAFractionThatIsAbsent) {
  const std::string text = json(PowerSessionMeasurementOverhead::empty());
  EXPECT_EQ(text, R"({"note":"No process impact samples were captured.","observed":false,)"
                  R"("overheadScore":0,"processNames":[],"totalObservedProcessScore":0})");
  EXPECT_EQ(decoded<PowerSessionMeasurementOverhead>(text),
            PowerSessionMeasurementOverhead::empty());
}

TEST(PowerSessionThermalSummary, IsWrittenUnderItsFieldNames) {
  const PowerSessionThermalSummary summary{
      .maxTemperatureCelsius = 95.5,
      .medianMaxSensorTemperatureCelsius = 60.0,
      .p95MaxSensorTemperatureCelsius = 90.0,
      .maxFanRPM = 2400,
      .maxThermalPressure = 2,
      .pressureStates = {{.state = "nominal", .sampleCount = 3}},
      .thermalPressureWasTriggered = true,
      .verdict = "thermally-constrained",
      .note = "n"};
  const std::string text = json(summary);
  EXPECT_EQ(text, R"({"maxFanRPM":2400,"maxTemperatureCelsius":95.5,"maxThermalPressure":2,)"
                  R"("medianMaxSensorTemperatureCelsius":60,"note":"n",)"
                  R"("p95MaxSensorTemperatureCelsius":90,"pressureStates":[{"sampleCount":3,)"
                  R"("state":"nominal"}],"thermalPressureWasTriggered":true,)"
                  R"("verdict":"thermally-constrained"})");
  EXPECT_EQ(decoded<PowerSessionThermalSummary>(text), summary);
}

TEST(PowerSessionThermalSummary, LeavesOutWhatIsAbsent) {
  const std::string text = json(PowerSessionThermalSummary::empty());
  EXPECT_EQ(text, R"({"maxThermalPressure":0,"note":"No thermal samples were captured.",)"
                  R"("pressureStates":[],"thermalPressureWasTriggered":false,"verdict":"cool"})");
  EXPECT_EQ(decoded<PowerSessionThermalSummary>(text), PowerSessionThermalSummary::empty());
}

TEST(PowerSessionTelemetryConsistencyCheck, IsWrittenUnderItsFieldNames) {
  const PowerSessionTelemetryConsistencyCheck check{
      .code = "c", .severity = "info", .message = "m", .sampleCount = 7};
  const std::string text = json(check);
  EXPECT_EQ(text, R"({"code":"c","message":"m","sampleCount":7,"severity":"info"})");
  EXPECT_EQ(decoded<PowerSessionTelemetryConsistencyCheck>(text), check);
  EXPECT_EQ(decodingProblem<PowerSessionTelemetryConsistencyCheck>(
                R"({"code":"c","message":"m","severity":"info"})"),
            "$.sampleCount: missing");
}

}  // namespace
}  // namespace quorvex
