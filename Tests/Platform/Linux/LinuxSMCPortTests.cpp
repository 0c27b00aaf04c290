#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <string>
#include <string_view>

#include "FakeTree.h"
#include "LinuxSMCPort.h"

namespace quorvex {
namespace {

std::uint32_t code(std::string_view text) {
  return static_cast<std::uint32_t>(text[0]) << 24U | static_cast<std::uint32_t>(text[1]) << 16U |
         static_cast<std::uint32_t>(text[2]) << 8U | static_cast<std::uint32_t>(text[3]);
}

class LinuxSMCPortTests : public ::testing::Test {
 protected:
  void set(const std::string& file, const std::string& text) {
    tree.file("class/hwmon/" + file, text + "\n");
  }
  SMCPort::Connection open() {
    const auto connection = port.open();
    EXPECT_TRUE(connection);
    return connection.value_or(0);
  }
  /// The answer to one call; none on its failure.
  std::optional<SMCKeyRecord> call(SMCPort::Connection connection, std::string_view key,
                                   std::uint8_t command, std::uint32_t dataSize = 0) {
    SMCKeyRecord input;
    input.key = code(key);
    input.command = command;
    input.dataSize = dataSize;
    SMCKeyRecord output;
    return port.call(connection, input, output) == 0 ? std::optional{output} : std::nullopt;
  }
  /// A float key's value through both calls; none when the key does not answer.
  std::optional<float> speed(SMCPort::Connection connection, std::string_view key) {
    const auto info = call(connection, key, SMCKeyRecord::readKeyInfoCommand);
    if (!info) {
      return std::nullopt;
    }
    EXPECT_EQ(info->dataSize, 4U);
    EXPECT_EQ(info->dataType, code("flt "));
    const auto value = call(connection, key, SMCKeyRecord::readBytesCommand, info->dataSize);
    float number = 0.0F;
    if (value) {
      std::memcpy(&number, value->bytes.data(), sizeof number);
    }
    return value ? std::optional{number} : std::nullopt;
  }
  std::optional<std::uint8_t> fanCount(SMCPort::Connection connection) {
    const auto info = call(connection, "FNum", SMCKeyRecord::readKeyInfoCommand);
    if (!info) {
      return std::nullopt;
    }
    EXPECT_EQ(info->dataSize, 1U);
    EXPECT_EQ(info->dataType, code("ui8 "));
    const auto value = call(connection, "FNum", SMCKeyRecord::readBytesCommand, info->dataSize);
    return value ? std::optional{value->bytes[0]} : std::nullopt;
  }
  void twoFans() {
    set("hwmon3/fan1_input", "2300");
    set("hwmon3/fan1_min", "1200");
    set("hwmon3/fan1_max", "6000");
    set("hwmon3/fan2_input", "2100");
    set("hwmon3/fan2_min", "1100");
    set("hwmon3/fan2_max", "5500");
  }

  testing::FakeTree tree;
  LinuxSMCPort port{tree.root()};
};

TEST_F(LinuxSMCPortTests, WithoutTheClassOrAFanThereIsNoService) {
  EXPECT_EQ(port.open(), std::nullopt);
  set("hwmon0/temp1_input", "40000");
  EXPECT_EQ(port.open(), std::nullopt);
}

TEST_F(LinuxSMCPortTests, FansAnswerWithSpeedMinimumAndMaximum) {
  twoFans();
  const auto connection = open();
  EXPECT_EQ(fanCount(connection), 2);
  EXPECT_EQ(speed(connection, "F0Ac"), 2300.0F);
  EXPECT_EQ(speed(connection, "F0Mn"), 1200.0F);
  EXPECT_EQ(speed(connection, "F0Mx"), 6000.0F);
  EXPECT_EQ(speed(connection, "F1Ac"), 2100.0F);
  EXPECT_EQ(speed(connection, "F1Mn"), 1100.0F);
  EXPECT_EQ(speed(connection, "F1Mx"), 5500.0F);
}

TEST_F(LinuxSMCPortTests, FansAreCountedAcrossDevicesInTheOrderOfTheirNumbers) {
  set("hwmon10/fan1_input", "1010");
  set("hwmon2/fan10_input", "210");
  set("hwmon2/fan9_input", "209");
  const auto connection = open();
  EXPECT_EQ(fanCount(connection), 3);
  EXPECT_EQ(speed(connection, "F0Ac"), 209.0F);
  EXPECT_EQ(speed(connection, "F1Ac"), 210.0F);
  EXPECT_EQ(speed(connection, "F2Ac"), 1010.0F);
}

TEST_F(LinuxSMCPortTests, EachMissingOrBrokenFileTakesOnlyItsKeyAway) {
  for (const char* file : {"input", "min", "max"}) {
    for (const char* text : {"", "fast", "-1", "2147483648", "9223372036854775807"}) {
      twoFans();
      const auto connection = open();
      set(std::string{"hwmon3/fan1_"} + file, text);
      const std::string_view name = file;
      EXPECT_EQ(speed(connection, "F0Ac").has_value(), name != "input") << file << text;
      EXPECT_EQ(speed(connection, "F0Mn").has_value(), name != "min") << file << text;
      EXPECT_EQ(speed(connection, "F0Mx").has_value(), name != "max") << file << text;
      EXPECT_EQ(speed(connection, "F1Ac"), 2100.0F);
      EXPECT_EQ(fanCount(connection), 2);
    }
  }
}

TEST_F(LinuxSMCPortTests, AFanWithoutLimitsHasOnlyItsSpeed) {
  set("hwmon0/fan1_input", "0");
  const auto connection = open();
  EXPECT_EQ(speed(connection, "F0Ac"), 0.0F);
  EXPECT_EQ(speed(connection, "F0Mn"), std::nullopt);
  EXPECT_EQ(speed(connection, "F0Mx"), std::nullopt);
}

TEST_F(LinuxSMCPortTests, AnUnreadableSpeedKeepsTheFanInTheCount) {
  tree.unreadable("class/hwmon/hwmon0/fan1_input");
  const auto connection = open();
  EXPECT_EQ(fanCount(connection), 1);
  EXPECT_EQ(speed(connection, "F0Ac"), std::nullopt);
}

TEST_F(LinuxSMCPortTests, UnknownKeysFail) {
  twoFans();
  const auto connection = open();
  for (const char* key : {"F2Ac", "F0Tg", "TC0P", "fnum", "\0\0\0\0"}) {
    EXPECT_EQ(call(connection, std::string_view{key, 4}, SMCKeyRecord::readKeyInfoCommand),
              std::nullopt);
  }
}

TEST_F(LinuxSMCPortTests, UnknownCommandsAndWrongSizesFail) {
  twoFans();
  const auto connection = open();
  EXPECT_EQ(call(connection, "F0Ac", 0), std::nullopt);
  EXPECT_EQ(call(connection, "F0Ac", 6, 4), std::nullopt);
  EXPECT_EQ(call(connection, "F0Ac", SMCKeyRecord::readBytesCommand, 0), std::nullopt);
  EXPECT_EQ(call(connection, "F0Ac", SMCKeyRecord::readBytesCommand, 5), std::nullopt);
  EXPECT_EQ(call(connection, "FNum", SMCKeyRecord::readBytesCommand, 4), std::nullopt);
}

TEST_F(LinuxSMCPortTests, SpeedsAreReadAtEachCall) {
  twoFans();
  const auto connection = open();
  EXPECT_EQ(speed(connection, "F0Ac"), 2300.0F);
  set("hwmon3/fan1_input", "4600");
  EXPECT_EQ(speed(connection, "F0Ac"), 4600.0F);
}

TEST_F(LinuxSMCPortTests, AClosedOrUnknownConnectionAnswersNothing) {
  twoFans();
  const auto first = open();
  const auto second = open();
  EXPECT_NE(first, second);
  port.close(first);
  EXPECT_EQ(fanCount(first), std::nullopt);
  EXPECT_EQ(fanCount(second), 2);
  EXPECT_EQ(fanCount(second + 1), std::nullopt);
  port.close(first);
  EXPECT_EQ(fanCount(second), 2);
}

TEST_F(LinuxSMCPortTests, ANewConnectionSeesNewFans) {
  set("hwmon0/fan1_input", "1000");
  const auto before = open();
  set("hwmon0/fan2_input", "1000");
  EXPECT_EQ(fanCount(before), 1);
  EXPECT_EQ(fanCount(open()), 2);
}

TEST_F(LinuxSMCPortTests, FromTheTenthFanOnOnlyTheSpeedHasAKey) {
  for (int fan = 1; fan <= 12; ++fan) {
    const std::string path = "hwmon0/fan" + std::to_string(fan);
    set(path + "_input", std::to_string(1000 + fan));
    set(path + "_min", "100");
  }
  const auto connection = open();
  EXPECT_EQ(fanCount(connection), 12);
  EXPECT_EQ(speed(connection, "F9Ac"), 1010.0F);
  EXPECT_EQ(speed(connection, "F9Mn"), 100.0F);
  EXPECT_EQ(speed(connection, "F10A"), 1011.0F);
  EXPECT_EQ(speed(connection, "F11A"), 1012.0F);
  EXPECT_EQ(speed(connection, "F10M"), std::nullopt);
}

TEST_F(LinuxSMCPortTests, TheCountStaysWithinItsByte) {
  for (int fan = 1; fan <= 256; ++fan) {
    set("hwmon0/fan" + std::to_string(fan) + "_input", "1000");
  }
  EXPECT_EQ(fanCount(open()), 255);
}

}  // namespace
}  // namespace quorvex
