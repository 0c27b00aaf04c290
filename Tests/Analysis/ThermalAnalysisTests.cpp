#include <vector>

#include "ObservationBuilder.h"
#include "ThermalAnalysis.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::bare;
using observations::desktop;
using testing::ElementsAre;
using testing::IsEmpty;
using Samples = std::vector<Observation>;

constexpr const char* warmNote =
    "Warm sensor readings are not treated as throttling without macOS pressure evidence.";

Observation hot(double celsius, std::int64_t pressure = 0) {
  Observation observation = bare(0);
  observation.columns.maxTemperature = celsius;
  observation.columns.thermalPressure = pressure;
  return observation;
}

Samples hotSamples(std::initializer_list<double> temperatures) {
  Samples samples;
  for (const double celsius : temperatures) {
    samples.push_back(hot(celsius));
  }
  return samples;
}

TEST(ThermalSummary, WithoutObservationsIsCoolAndSaysWhatWarmMeans) {
  const auto summary = thermalSummary({});
  EXPECT_EQ(summary.maxTemperatureCelsius, std::nullopt);
  EXPECT_EQ(summary.medianMaxSensorTemperatureCelsius, std::nullopt);
  EXPECT_EQ(summary.p95MaxSensorTemperatureCelsius, std::nullopt);
  EXPECT_EQ(summary.maxFanRPM, std::nullopt);
  EXPECT_EQ(summary.maxThermalPressure, 0);
  EXPECT_THAT(summary.pressureStates, IsEmpty());
  EXPECT_FALSE(summary.thermalPressureWasTriggered);
  EXPECT_EQ(summary.verdict, "cool");
  EXPECT_EQ(summary.note, warmNote);
}

TEST(ThermalSummary, OfASummaryWithoutSamplesHasItsOwnNote) {
  const auto empty = PowerSessionThermalSummary::empty();
  EXPECT_EQ(empty.verdict, "cool");
  EXPECT_EQ(empty.note, "No thermal samples were captured.");
  PowerSessionThermalSummary analysed = thermalSummary({});
  EXPECT_NE(analysed, empty);
  analysed.note = empty.note;
  EXPECT_EQ(analysed, empty);
}

TEST(ThermalSummary, OfHotSensorsUnderPressureOneIsWarmAndTriggered) {
  const Samples samples{hot(95.0, 1)};
  const auto summary = thermalSummary(samples);
  EXPECT_EQ(summary.verdict, "warm-not-constrained");
  EXPECT_TRUE(summary.thermalPressureWasTriggered);
  EXPECT_EQ(summary.note, warmNote);
}

TEST(ThermalSummary, OfMildSensorsUnderPressureTwoIsConstrained) {
  const Samples samples{hot(60.0, 0), hot(60.0, 2), hot(60.0, 1)};
  const auto summary = thermalSummary(samples);
  EXPECT_EQ(summary.maxThermalPressure, 2);
  EXPECT_EQ(summary.verdict, "thermally-constrained");
  EXPECT_TRUE(summary.thermalPressureWasTriggered);
  EXPECT_EQ(summary.note, "macOS thermal pressure reported constraint.");
}

TEST(ThermalSummary, IsWarmFromExactlyEightyDegrees) {
  EXPECT_EQ(thermalSummary(hotSamples({20.0, 80.0})).verdict, "warm-not-constrained");
  EXPECT_EQ(thermalSummary(hotSamples({20.0, 79.99})).verdict, "cool");
}

TEST(ThermalSummary, OfCoolSensorsUnderPressureOneIsCoolAndTriggered) {
  const Samples samples{hot(40.0, 1)};
  EXPECT_EQ(thermalSummary(samples).verdict, "cool");
  EXPECT_TRUE(thermalSummary(samples).thermalPressureWasTriggered);
  EXPECT_EQ(thermalSummary(samples).note, warmNote);
}

TEST(ThermalSummary, HasMaximumMedianAndPercentileOfTheSamplesMaxima) {
  const auto summary =
      thermalSummary(hotSamples({50.0, 41.0, 42.0, 43.0, 44.0, 45.0, 46.0, 47.0, 48.0, 49.0}));
  EXPECT_EQ(summary.maxTemperatureCelsius, 50.0);
  EXPECT_EQ(summary.medianMaxSensorTemperatureCelsius, (45.0 + 46.0) / 2.0);
  // Rank ceil(0.95 * 9) = 9: the largest of ten.
  EXPECT_EQ(summary.p95MaxSensorTemperatureCelsius, 50.0);
}

TEST(ThermalSummary, TakesTheTemperatureColumnBeforeTheSensors) {
  Samples samples{desktop(0)};
  samples[0].columns.maxTemperature = 50.0;
  samples[0].snapshot->maxSensorTemperature = 70.0;
  EXPECT_EQ(thermalSummary(samples).maxTemperatureCelsius, 50.0);
  samples[0].columns.maxTemperature.reset();
  EXPECT_EQ(thermalSummary(samples).maxTemperatureCelsius, 70.0);
  samples[0].snapshot->maxSensorTemperature.reset();
  EXPECT_EQ(thermalSummary(samples).maxTemperatureCelsius, std::nullopt);
}

TEST(ThermalSummary, AddsNothingForASampleWithoutTemperature) {
  const Samples samples{hot(40.0), bare(2), hot(60.0), desktop(4)};
  EXPECT_EQ(thermalSummary(samples).medianMaxSensorTemperatureCelsius, (40.0 + 60.0) / 2.0);
}

TEST(ThermalSummary, TakesTheFanColumnBeforeTheFans) {
  Samples samples{desktop(0), desktop(2)};
  samples[0].columns.maxFanRPM = 1200;
  samples[0].snapshot->maxFanRPM = 5000;
  EXPECT_EQ(thermalSummary(samples).maxFanRPM, 1200);
  samples[1].snapshot->maxFanRPM = 2400;
  EXPECT_EQ(thermalSummary(samples).maxFanRPM, 2400);
}

TEST(ThermalSummary, KeepsAFanThatStandsStillApartFromNoFan) {
  Samples samples{bare(0)};
  EXPECT_EQ(thermalSummary(samples).maxFanRPM, std::nullopt);
  samples[0].columns.maxFanRPM = 0;
  EXPECT_EQ(thermalSummary(samples).maxFanRPM, 0);
}

TEST(ThermalSummary, CountsTheStatesOfDecodedSamplesInByteOrder) {
  Samples samples{desktop(0), desktop(2), bare(4), desktop(6), desktop(8)};
  samples[1].snapshot->thermalState = "serious";
  samples[4].snapshot->thermalState = "fair";
  EXPECT_THAT(thermalSummary(samples).pressureStates,
              ElementsAre(PowerSessionThermalPressureState{.state = "fair", .sampleCount = 1},
                          PowerSessionThermalPressureState{.state = "nominal", .sampleCount = 2},
                          PowerSessionThermalPressureState{.state = "serious", .sampleCount = 1}));
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
