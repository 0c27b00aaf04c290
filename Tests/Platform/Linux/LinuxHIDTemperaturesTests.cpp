#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "FakeTree.h"
#include "LinuxHIDTemperatures.h"

namespace quorvex {
namespace {

using Reading = std::pair<std::optional<std::string>, std::optional<double>>;

class LinuxHIDTemperaturesTests : public ::testing::Test {
 protected:
  void set(const std::string& file, const std::string& text) {
    tree.file("class/hwmon/" + file, text + "\n");
  }

  std::vector<Reading> read() const {
    const auto client = LinuxHIDTemperatures{tree.root()}.open();
    if (!client) {
      ADD_FAILURE() << "no client";
      return {};
    }
    std::vector<Reading> readings;
    for (const auto& service :
         client->copyServices().value_or(std::vector<HIDTemperatureService>{})) {
      readings.emplace_back(service.product, service.value);
    }
    return readings;
  }

  testing::FakeTree tree;
};

TEST_F(LinuxHIDTemperaturesTests, WithoutTheClassThereIsNoClient) {
  EXPECT_EQ(LinuxHIDTemperatures{tree.root()}.open(), nullptr);
}

TEST_F(LinuxHIDTemperaturesTests, AnEmptyClassHasNoServices) {
  tree.folder("class/hwmon");
  const auto client = LinuxHIDTemperatures{tree.root()}.open();
  ASSERT_NE(client, nullptr);
  const auto services = client->copyServices();
  ASSERT_TRUE(services);
  EXPECT_TRUE(services->empty());
}

TEST_F(LinuxHIDTemperaturesTests, AClassThatVanishesCannotBeCopied) {
  tree.folder("class/hwmon");
  const auto client = LinuxHIDTemperatures{tree.root()}.open();
  ASSERT_NE(client, nullptr);
  tree.remove("class/hwmon");
  EXPECT_FALSE(client->copyServices());
}

TEST_F(LinuxHIDTemperaturesTests, ADeviceThatComesUpLaterIsSeenByTheSameClient) {
  tree.folder("class/hwmon");
  const auto client = LinuxHIDTemperatures{tree.root()}.open();
  ASSERT_NE(client, nullptr);
  set("hwmon0/temp1_input", "40000");
  const auto services = client->copyServices();
  ASSERT_TRUE(services);
  EXPECT_EQ(services->size(), 1U);
}

TEST_F(LinuxHIDTemperaturesTests, ServicesComeInTheOrderOfDevicesAndInputs) {
  set("hwmon10/name", "nvme");
  set("hwmon10/temp1_input", "38850");
  set("hwmon10/temp1_label", "Composite");
  set("hwmon2/name", "coretemp");
  set("hwmon2/temp10_input", "52000");
  set("hwmon2/temp10_label", "Core 8");
  set("hwmon2/temp2_input", "51500");
  set("hwmon2/temp2_label", "Core 0");
  const std::vector<Reading> expected{
      {"coretemp Core 0", 51.5}, {"coretemp Core 8", 52.0}, {"nvme Composite", 38.85}};
  EXPECT_EQ(read(), expected);
}

TEST_F(LinuxHIDTemperaturesTests, WithoutALabelTheDevicesNameIsTheProduct) {
  set("hwmon0/name", "acpitz");
  set("hwmon0/temp1_input", "27800");
  set("hwmon0/temp2_input", "29800");
  const std::vector<Reading> expected{{"acpitz", 27.8}, {"acpitz", 29.8}};
  EXPECT_EQ(read(), expected);
}

TEST_F(LinuxHIDTemperaturesTests, WithoutADevicesNameTheLabelIsTheProduct) {
  set("hwmon0/temp1_input", "27800");
  set("hwmon0/temp1_label", "Board");
  EXPECT_EQ(read(), (std::vector<Reading>{{"Board", 27.8}}));
}

TEST_F(LinuxHIDTemperaturesTests, WithoutNameAndLabelThereIsNoProduct) {
  set("hwmon0/temp1_input", "27800");
  EXPECT_EQ(read(), (std::vector<Reading>{{std::nullopt, 27.8}}));
}

TEST_F(LinuxHIDTemperaturesTests, AnInputThatIsGarbledOrUnreadableHasNoEvent) {
  set("hwmon0/name", "chip");
  set("hwmon0/temp1_input", "warm");
  set("hwmon0/temp2_input", "");
  tree.unreadable("class/hwmon/hwmon0/temp3_input");
  set("hwmon0/temp4_input", "30000");
  const std::vector<Reading> expected{
      {"chip", std::nullopt}, {"chip", std::nullopt}, {"chip", std::nullopt}, {"chip", 30.0}};
  EXPECT_EQ(read(), expected);
}

TEST_F(LinuxHIDTemperaturesTests, AnInputThatReportsAFaultHasNoEvent) {
  set("hwmon0/name", "chip");
  set("hwmon0/temp1_input", "30000");
  set("hwmon0/temp1_fault", "1");
  EXPECT_EQ(read(), (std::vector<Reading>{{"chip", std::nullopt}}));
  set("hwmon0/temp1_fault", "0");
  EXPECT_EQ(read(), (std::vector<Reading>{{"chip", 30.0}}));
}

TEST_F(LinuxHIDTemperaturesTests, ZeroAndNegativeTemperaturesAreValuesHere) {
  set("hwmon0/temp1_input", "0");
  set("hwmon0/temp2_input", "-5500");
  EXPECT_EQ(read(), (std::vector<Reading>{{std::nullopt, 0.0}, {std::nullopt, -5.5}}));
}

TEST_F(LinuxHIDTemperaturesTests, OtherFilesAreNoServices) {
  set("hwmon0/fan1_input", "2300");
  set("hwmon0/in0_input", "12000");
  set("hwmon0/temp1_max", "90000");
  set("hwmon0/temp1_crit", "100000");
  EXPECT_TRUE(read().empty());
}

}  // namespace
}  // namespace quorvex
