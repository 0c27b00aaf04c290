#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "FakeSMC.h"
#include "KnownSensors.h"
#include "SMCService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeSMC;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SMCServiceTests : public ::testing::Test {
 protected:
  void setFan(const std::string& index, float current, float lowest, float highest) {
    port.setFloat("F" + index + "Ac", current);
    port.setFloat("F" + index + "Mn", lowest);
    port.setFloat("F" + index + "Mx", highest);
  }
  void setFanCount(std::uint8_t count) { port.set("FNum", "ui8 ", {count}); }

  FakeSMC port;
  SMCService service{port};
};

// Fans

TEST_F(SMCServiceTests, ReadsEveryFanWithItsSpeeds) {
  setFanCount(2);
  setFan("0", 2300.6F, 1200.0F, 5900.0F);
  setFan("1", 2400.4F, 1300.0F, 6000.0F);
  EXPECT_THAT(service.readFans(), ElementsAre(FanInfo{0, "Fan 0", 2301, 1200, 5900},
                                              FanInfo{1, "Fan 1", 2400, 1300, 6000}));
}

TEST_F(SMCServiceTests, ReadsFixedPointSpeeds) {
  setFanCount(1);
  port.set("F0Ac", "fpe2", {0x23, 0xF4});
  port.set("F0Mn", "fpe2", {0x12, 0xC0});
  port.set("F0Mx", "fpe2", {0x5D, 0xC0});
  EXPECT_THAT(service.readFans(),
              ElementsAre(FanInfo{0, "Fan 0", 0x23F4 / 4, 0x12C0 / 4, 0x5DC0 / 4}));
}

TEST_F(SMCServiceTests, AskingForAFanTakesTwoCallsAKey) {
  setFanCount(1);
  setFan("0", 2300.0F, 1200.0F, 5900.0F);
  static_cast<void>(service.readFans());
  EXPECT_THAT(port.log(), ElementsAre("open", "info FNum", "bytes FNum", "info F0Ac", "bytes F0Ac",
                                      "info F0Mn", "bytes F0Mn", "info F0Mx", "bytes F0Mx"));
}

TEST_F(SMCServiceTests, TheFirstByteOfTheFanCountAloneCounts) {
  setFan("0", 2300.0F, 1200.0F, 5900.0F);
  port.set("FNum", "ui8 ", {1});
  EXPECT_THAT(service.readFans(), SizeIs(1));
  port.set("FNum", "flt ", {1, 0xFF, 0xFF, 0x7F});
  EXPECT_THAT(service.readFans(), SizeIs(1));
  port.set("FNum", "ch8*", {1, 9, 9, 9, 9, 9});
  EXPECT_THAT(service.readFans(), SizeIs(1));
}

TEST_F(SMCServiceTests, SixteenFansOrMoreGiveAnEmptyListWithoutAReconnect) {
  for (const std::uint8_t count : std::vector<std::uint8_t>{16, 200, 255}) {
    setFanCount(count);
    EXPECT_THAT(service.readFans(), IsEmpty());
  }
  EXPECT_EQ(port.count("open"), 1);
}

TEST_F(SMCServiceTests, FifteenFansAreRead) {
  setFanCount(15);
  const auto fans = service.readFans();
  ASSERT_THAT(fans, SizeIs(15));
  EXPECT_EQ(fans.back().id, 14);
  EXPECT_EQ(fans.back().name, "Fan 14");
}

TEST_F(SMCServiceTests, KeysOfFansFromTenOnAreCutToFourCharacters) {
  setFanCount(11);
  port.setFloat("F10A", 1000.0F);
  port.setFloat("F10M", 900.0F);
  const auto fans = service.readFans();
  ASSERT_THAT(fans, SizeIs(11));
  EXPECT_EQ(fans[10], (FanInfo{10, "Fan 10", 1000, 900, 900}));
}

TEST_F(SMCServiceTests, ACountOfZeroIsAnAnswerAndCausesNoReconnect) {
  setFanCount(0);
  EXPECT_THAT(service.readFans(), IsEmpty());
  EXPECT_THAT(port.log(), ElementsAre("open", "info FNum", "bytes FNum"));
}

TEST_F(SMCServiceTests, AnUnreadableSpeedIsZeroAndTheFanStays) {
  const std::vector<std::pair<std::string, FanInfo>> cases{{"F0Ac", {0, "Fan 0", 0, 1200, 5900}},
                                                           {"F0Mn", {0, "Fan 0", 2300, 0, 5900}},
                                                           {"F0Mx", {0, "Fan 0", 2300, 1200, 0}}};
  setFanCount(1);
  for (const auto& [key, expected] : cases) {
    setFan("0", 2300.0F, 1200.0F, 5900.0F);
    port.remove(key);
    EXPECT_THAT(service.readFans(), ElementsAre(expected)) << key;
  }
}

TEST_F(SMCServiceTests, ASpeedOfAnUnknownTypeOrTooFewBytesIsZero) {
  setFanCount(1);
  port.set("F0Ac", "ui16", {0x08, 0xFC});
  port.set("F0Mn", "flt ", {0x00, 0x00});
  port.set("F0Mx", "sp78", {0x32, 0x80});
  EXPECT_THAT(service.readFans(), ElementsAre(FanInfo{0, "Fan 0", 0, 0, 0}));
}

// Temperatures

TEST_F(SMCServiceTests, ReadsTheKnownTemperaturesSortedByName) {
  port.setFloat("TW0P", 41.5F);
  port.set("TC0P", "sp78", {0x32, 0x80});
  port.setFloat("TA0P", 25.5F);
  port.setFloat("TZZZ", 60.0F);
  EXPECT_THAT(service.readTemperatures(),
              ElementsAre(TemperatureSensor{"TA0P", "Ambient", 25.5},
                          TemperatureSensor{"TC0P", "CPU Proximity", 0x32 + 0x80 / 256.0},
                          TemperatureSensor{"TW0P", "Wireless Module", 41.5}));
}

TEST_F(SMCServiceTests, EveryKnownKeyIsReadAndLeavesOnlyItselfOutWhenMissing) {
  for (const KnownSensor& known : knownSensors()) {
    port.setFloat(std::string{known.key}, 40.0F);
  }
  const auto all = service.readTemperatures();
  ASSERT_THAT(all, SizeIs(37));
  for (const KnownSensor& known : knownSensors()) {
    const std::string key{known.key};
    port.remove(key);
    auto expected = all;
    std::erase(expected, TemperatureSensor{key, std::string{known.label}, 40.0});
    EXPECT_THAT(expected, SizeIs(36));
    EXPECT_EQ(service.readTemperatures(), expected);
    port.setFloat(key, 40.0F);
  }
}

TEST_F(SMCServiceTests, AFullTemperatureWalkTakesSeventyFourCalls) {
  for (const KnownSensor& known : knownSensors()) {
    port.setFloat(std::string{known.key}, 40.0F);
  }
  static_cast<void>(service.readTemperatures());
  EXPECT_THAT(port.inputs(), SizeIs(74));
}

TEST_F(SMCServiceTests, TemperaturesOutOfRangeOrOfUnknownTypeAreLeftOut) {
  port.setFloat("TC1C", 0.0F);
  port.setFloat("TC2C", 150.0F);
  port.set("TC3C", "ui8 ", {40});
  port.set("TC4C", "flt ", {0x32, 0x80});
  port.setFloat("TC5C", 149.5F);
  EXPECT_THAT(service.readTemperatures(),
              ElementsAre(TemperatureSensor{"TC5C", "CPU Core 5", 149.5}));
}

// The connection

TEST_F(SMCServiceTests, IsNotConnectedBeforeTheFirstRead) {
  EXPECT_THAT(port.log(), IsEmpty());
}

TEST_F(SMCServiceTests, TheConnectionIsSharedByAllReads) {
  setFanCount(0);
  port.setFloat("TC0P", 45.0F);
  static_cast<void>(service.readFans());
  static_cast<void>(service.readTemperatures());
  static_cast<void>(service.readFans());
  EXPECT_EQ(port.count("open"), 1);
  EXPECT_EQ(port.openConnections(), 1U);
}

TEST_F(SMCServiceTests, AStaleConnectionIsRenewedOnceForFans) {
  setFanCount(1);
  setFan("0", 2300.0F, 1200.0F, 5900.0F);
  static_cast<void>(service.readFans());
  port.makeConnectionsStale();
  EXPECT_THAT(service.readFans(), SizeIs(1));
  EXPECT_EQ(port.count("open"), 2);
  EXPECT_EQ(port.count("close 1"), 1);
  EXPECT_EQ(port.openConnections(), 1U);
}

TEST_F(SMCServiceTests, AStaleConnectionIsRenewedOnceForTemperatures) {
  port.setFloat("TC0P", 45.0F);
  static_cast<void>(service.readTemperatures());
  port.makeConnectionsStale();
  EXPECT_THAT(service.readTemperatures(), SizeIs(1));
  EXPECT_EQ(port.count("open"), 2);
  EXPECT_EQ(port.openConnections(), 1U);
}

TEST_F(SMCServiceTests, WithoutAFanCountTheSecondTryIsTheLast) {
  EXPECT_THAT(service.readFans(), IsEmpty());
  EXPECT_THAT(port.log(), ElementsAre("open", "info FNum", "close 1", "open", "info FNum"));
}

TEST_F(SMCServiceTests, AMachineWhereNoKeyAnswersReconnectsOnEveryRead) {
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_EQ(port.count("open"), 2);
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_EQ(port.count("open"), 3);
  EXPECT_THAT(port.inputs(), SizeIs(4 * 37));
}

TEST_F(SMCServiceTests, WithoutAControllerEveryReadIsEmptyAndTriesAgain) {
  port.setAvailable(false);
  EXPECT_THAT(service.readFans(), IsEmpty());
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_THAT(port.log(), ElementsAre("open failed", "open failed"));
  port.setAvailable(true);
  port.setFloat("TC0P", 45.0F);
  EXPECT_THAT(service.readTemperatures(), SizeIs(1));
}

TEST_F(SMCServiceTests, AFailedReconnectLeavesItNotConnected) {
  setFanCount(1);
  static_cast<void>(service.readFans());
  port.makeConnectionsStale();
  port.setAvailable(false);
  EXPECT_THAT(service.readFans(), IsEmpty());
  EXPECT_EQ(port.openConnections(), 0U);
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  port.setAvailable(true);
  EXPECT_THAT(service.readFans(), SizeIs(1));
}

TEST(SMCServiceLifetimeTests, DestroyingTheServiceClosesItsConnection) {
  FakeSMC smc;
  {
    SMCService service{smc};
    static_cast<void>(service.readFans());
    EXPECT_EQ(smc.openConnections(), 1U);
  }
  EXPECT_EQ(smc.openConnections(), 0U);
}

TEST(SMCServiceLifetimeTests, AServiceThatNeverConnectedClosesNothing) {
  FakeSMC smc;
  { const SMCService service{smc}; }
  EXPECT_THAT(smc.log(), IsEmpty());
}

TEST_F(SMCServiceTests, OverlappingReadsDoNotDisturbEachOther) {
  setFanCount(2);
  setFan("0", 2300.0F, 1200.0F, 5900.0F);
  setFan("1", 2400.0F, 1300.0F, 6000.0F);
  port.setFloat("TC0P", 45.0F);
  std::vector<std::size_t> counts(8);
  {
    std::vector<std::jthread> threads;
    threads.reserve(counts.size());
    for (std::size_t index = 0; index < counts.size(); ++index) {
      threads.emplace_back([this, index, &counts] {
        counts[index] =
            index % 2 == 0 ? service.readFans().size() : service.readTemperatures().size();
      });
    }
  }
  EXPECT_THAT(counts, ElementsAre(2, 1, 2, 1, 2, 1, 2, 1));
  EXPECT_EQ(port.count("open"), 1);
}

}  // namespace
}  // namespace quorvex
