#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "DropdownGraph.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using History = std::vector<SystemPowerState>;

SystemPowerState drawing(double watts) {
  return {.battery = samples::batteryAt(-watts)};
}

SystemPowerState cpuAt(double celsius) {
  return {.sensors = {{"TC0P", "CPU Proximity", celsius}}};
}

SystemPowerState rates(double inPerSec, double outPerSec) {
  return {.network = NetworkSnapshot{
              .interfaces = {samples::interface(4, "en0", 1, 1, inPerSec, outPerSec)}}};
}

DropdownGraph graphOf(GraphMode mode, const History& history, bool useFahrenheit = false) {
  return dropdownGraph(mode, history.empty() ? SystemPowerState{} : history.back(), history,
                       useFahrenheit);
}

TEST(DropdownGraphTests, SelectorHasThreeButtons) {
  const GraphSelector selector = graphSelector(GraphMode::temperature);
  EXPECT_EQ(selector.accessibilityLabel, "Graph mode");
  ASSERT_THAT(selector.buttons, SizeIs(3));
  EXPECT_EQ(selector.buttons[0].mode, GraphMode::power);
  EXPECT_EQ(selector.buttons[0].title, "Energy");
  EXPECT_EQ(selector.buttons[0].symbol, "bolt.fill");
  EXPECT_EQ(selector.buttons[0].help, "Show energy graph");
  EXPECT_EQ(selector.buttons[1].mode, GraphMode::temperature);
  EXPECT_EQ(selector.buttons[1].title, "Temp");
  EXPECT_EQ(selector.buttons[1].symbol, "thermometer.medium");
  EXPECT_EQ(selector.buttons[1].help, "Show temperature graph");
  EXPECT_EQ(selector.buttons[2].mode, GraphMode::network);
  EXPECT_EQ(selector.buttons[2].title, "");
  EXPECT_EQ(selector.buttons[2].symbol, "network");
  EXPECT_EQ(selector.buttons[2].help, "Show network graph");
}

TEST(DropdownGraphTests, SelectorMarksTheChosenModeOnly) {
  for (const GraphMode mode : {GraphMode::power, GraphMode::temperature, GraphMode::network}) {
    for (const GraphModeButton& button : graphSelector(mode).buttons) {
      EXPECT_EQ(button.isSelected, button.mode == mode);
      EXPECT_FALSE(button.accessibilityLabel.empty());
    }
  }
}

TEST(DropdownGraphTests, PowerGraphShowsTheTotalAndItsPeak) {
  const DropdownGraph graph = graphOf(GraphMode::power, {drawing(5.0), drawing(12.34)});
  EXPECT_EQ(graph.label, "Total");
  EXPECT_EQ(graph.caption, "12.3W peak");
  ASSERT_THAT(graph.sparkline.lines, SizeIs(1));
  EXPECT_EQ(graph.sparkline.lines[0].label, "Total");
  EXPECT_EQ(graph.sparkline.lines[0].color, ColorName::green);
  EXPECT_THAT(graph.sparkline.lines[0].points, SizeIs(2));
  EXPECT_EQ(graph.sparkline.accessibilityLabel, "Total graph, 12.3W peak");
}

TEST(DropdownGraphTests, PowerGraphLeavesOutReadingsWithoutPower) {
  const DropdownGraph graph = graphOf(GraphMode::power, {drawing(5.0), {}, drawing(6.0)});
  EXPECT_THAT(graph.sparkline.lines.at(0).points, SizeIs(2));
}

TEST(DropdownGraphTests, PowerGraphOfZerosHasNoCaption) {
  const SystemPowerState idle{.power = samples::silicon(0.0)};
  const DropdownGraph graph = graphOf(GraphMode::power, {idle, idle});
  EXPECT_EQ(graph.caption, std::nullopt);
  EXPECT_THAT(graph.sparkline.lines, SizeIs(1));
}

TEST(DropdownGraphTests, EmptyGraphsSayWhatIsCollected) {
  const History nothing{SystemPowerState{}};
  const auto emptyText = [&](GraphMode mode) {
    const DropdownGraph graph = graphOf(mode, nothing);
    EXPECT_THAT(graph.sparkline.lines, IsEmpty());
    EXPECT_EQ(graph.caption, std::nullopt);
    return graph.sparkline.emptyText;
  };
  EXPECT_EQ(emptyText(GraphMode::power), "Collecting data…");
  EXPECT_EQ(emptyText(GraphMode::temperature), "Collecting temperature data…");
  EXPECT_EQ(emptyText(GraphMode::network), "Collecting network data…");
}

TEST(DropdownGraphTests, GraphWithDataHasNoEmptyText) {
  EXPECT_EQ(graphOf(GraphMode::power, {drawing(5.0)}).sparkline.emptyText, "");
}

TEST(DropdownGraphTests, TemperatureGraphShowsTheRepresentativeReadings) {
  const History history{cpuAt(50.0), {}, cpuAt(61.6)};
  EXPECT_THAT(representativeTemperatureHistory(history), ElementsAre(50.0, 61.6));
  const DropdownGraph graph = graphOf(GraphMode::temperature, history);
  EXPECT_EQ(graph.label, "CPU Avg");
  EXPECT_EQ(graph.caption, "62°C peak");
  EXPECT_EQ(graphOf(GraphMode::temperature, {cpuAt(100.0)}, true).caption, "212°F peak");
}

TEST(DropdownGraphTests, TemperatureGraphIsCaptionedBelowZeroToo) {
  EXPECT_EQ(graphOf(GraphMode::temperature, {cpuAt(-5.0)}).caption, "-5°C peak");
}

TEST(DropdownGraphTests, TemperatureLabelFallsBackToTheLatestThatHasOne) {
  const SystemPowerState battery{.battery = samples::battery()};
  EXPECT_EQ(temperatureGraphLabel(cpuAt(50.0), History{battery}), "CPU Avg");
  EXPECT_EQ(temperatureGraphLabel({}, History{cpuAt(50.0), battery, {}}), "Battery");
  EXPECT_EQ(temperatureGraphLabel({}, History{{}}), "Thermal");
  EXPECT_EQ(temperatureGraphLabel({}, {}), "Thermal");
}

TEST(DropdownGraphTests, NetworkGraphShowsTheThroughputOfBothDirections) {
  // 1.0 + 0.5 MB/s at the peak.
  const DropdownGraph graph = graphOf(GraphMode::network, {rates(1e6, 0.5e6), {}, rates(1e3, 0.0)});
  EXPECT_EQ(graph.label, "Throughput");
  EXPECT_EQ(graph.caption, "1.5 MB/s peak");
  ASSERT_THAT(graph.sparkline.lines, SizeIs(1));
  EXPECT_EQ(graph.sparkline.lines[0].label, "Throughput");
  EXPECT_EQ(graph.sparkline.lines[0].color, ColorName::blue);
  EXPECT_THAT(graph.sparkline.lines[0].points, SizeIs(2));
}

TEST(DropdownGraphTests, NetworkGraphOfZerosHasNoCaption) {
  EXPECT_EQ(graphOf(GraphMode::network, {rates(0.0, 0.0)}).caption, std::nullopt);
}

TEST(DropdownGraphTests, PeakLeavesOutWhatIsNoNumber) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(graphOf(GraphMode::temperature, {cpuAt(50.0), cpuAt(nan)}).caption, "50°C peak");
  EXPECT_EQ(graphOf(GraphMode::temperature, {cpuAt(nan)}).caption, std::nullopt);
}

TEST(DropdownGraphTests, DataRowShowsTheTotalsSinceTheStart) {
  const std::optional<DataUsedRow> row = dataUsedRow({}, 1'500'000, 512);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->in.symbol, "arrow.down.circle.fill");
  EXPECT_EQ(row->in.color, ColorName::green);
  EXPECT_EQ(row->in.text, "1.5 MB");
  EXPECT_EQ(row->out.symbol, "arrow.up.circle.fill");
  EXPECT_EQ(row->out.color, ColorName::blue);
  EXPECT_EQ(row->out.text, "512 B");
  EXPECT_EQ(row->help, "Since monitoring started");
}

TEST(DropdownGraphTests, DataRowStandsWithASnapshotOrAnyTotal) {
  const SystemPowerState withNetwork{.network = NetworkSnapshot{}};
  EXPECT_EQ(dataUsedRow({}, 0, 0), std::nullopt);
  EXPECT_TRUE(dataUsedRow(withNetwork, 0, 0));
  EXPECT_TRUE(dataUsedRow({}, 1, 0));
  EXPECT_TRUE(dataUsedRow({}, 0, 1));
}

}  // namespace
}  // namespace quorvex
