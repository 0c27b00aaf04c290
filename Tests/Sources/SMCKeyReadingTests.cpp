#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "FakeSMC.h"
#include "SMCKeyReading.h"

namespace quorvex::smc {
namespace {

using ::testing::ElementsAre;
using testing::FakeSMC;
using ::testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

class SMCKeyReadingTests : public ::testing::Test {
 protected:
  [[nodiscard]] std::optional<SMCValue> read(std::string_view key) {
    return readSMCKeyTyped(port, connection, key);
  }

  FakeSMC port;
  SMCPort::Connection connection = port.open().value();
};

TEST_F(SMCKeyReadingTests, AValueComesWithItsType) {
  port.set("TC0P", "sp78", {0x32, 0x80});
  const auto value = read("TC0P");
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(value->bytes, (Bytes{0x32, 0x80}));
  EXPECT_EQ(value->dataType, fourCharCode("sp78"));
}

TEST_F(SMCKeyReadingTests, RecordsCarryOnlyKeyCommandAndSize) {
  port.set("FNum", "ui8 ", {2});
  static_cast<void>(read("FNum"));
  SMCKeyRecord info;
  info.key = fourCharCode("FNum");
  info.command = 9;
  SMCKeyRecord bytes;
  bytes.key = fourCharCode("FNum");
  bytes.command = 5;
  bytes.dataSize = 1;
  EXPECT_THAT(port.inputs(), ElementsAre(info, bytes));
}

TEST_F(SMCKeyReadingTests, AKeyOfNoBytesOrMoreThanThirtyTwoIsNoneWithoutASecondCall) {
  for (const std::uint32_t size : {0U, 33U, 0xFFFFFFFFU}) {
    port.set("FNum", "ui8 ", {1}, size);
    EXPECT_FALSE(read("FNum").has_value()) << size;
    EXPECT_EQ(port.count("bytes FNum"), 0) << size;
  }
}

TEST_F(SMCKeyReadingTests, AKeyOfThirtyTwoBytesIsReadWhole) {
  Bytes bytes(32, 0x11);
  bytes.back() = 0x22;
  port.set("FNum", "ch8*", bytes);
  EXPECT_EQ(read("FNum").value().bytes, bytes);
}

TEST_F(SMCKeyReadingTests, OnlyAsManyBytesAsTheKeyHasAreGiven) {
  port.set("FNum", "ch8*", {1, 2, 3, 4}, 3);
  EXPECT_EQ(read("FNum").value().bytes, (Bytes{1, 2, 3}));
}

TEST_F(SMCKeyReadingTests, AMissingKeyIsNone) {
  EXPECT_FALSE(read("FNum").has_value());
  EXPECT_EQ(port.count("bytes FNum"), 0);
}

TEST_F(SMCKeyReadingTests, BytesThatCannotBeReadAreNone) {
  port.set("FNum", "ui8 ", {2});
  port.failBytes("FNum");
  EXPECT_FALSE(read("FNum").has_value());
  EXPECT_EQ(port.count("bytes FNum"), 1);
}

TEST_F(SMCKeyReadingTests, TemperaturesAreThoseOfTheKnownKeysByName) {
  port.setFloat("TW0P", 41.5F);
  port.setFloat("TA0P", 25.5F);
  port.setFloat("TZZZ", 60.0F);
  port.setFloat("TC0P", 45.0F);
  port.failBytes("TC0P");
  EXPECT_THAT(collectTemperatures(port, connection),
              ElementsAre(TemperatureSensor{"TA0P", "Ambient", 25.5},
                          TemperatureSensor{"TW0P", "Wireless Module", 41.5}));
}

TEST_F(SMCKeyReadingTests, AClosedConnectionGivesNoTemperature) {
  port.setFloat("TA0P", 25.5F);
  port.close(connection);
  EXPECT_THAT(collectTemperatures(port, connection), IsEmpty());
}

}  // namespace
}  // namespace quorvex::smc
