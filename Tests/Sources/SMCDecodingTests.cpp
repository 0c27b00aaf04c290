#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "FakeSMC.h"
#include "SMCDecoding.h"

namespace quorvex::smc {
namespace {

using testing::FakeSMC;

using Bytes = std::vector<std::uint8_t>;

SMCValue value(std::string_view type, Bytes bytes) {
  return {.bytes = std::move(bytes), .dataType = fourCharCode(type)};
}

SMCValue floatValue(float number, std::string_view type = "flt ") {
  return value(type, FakeSMC::littleEndian(number));
}

// Codes

TEST(SMCDecodingTests, ACodeReadsAsTheKeyInBigEndianOrder) {
  EXPECT_EQ(fourCharCode("FNum"), 0x464E756DU);
}

TEST(SMCDecodingTests, AShortKeyLeavesTheLowBytesZero) {
  EXPECT_EQ(fourCharCode("F"), 0x46000000U);
  EXPECT_EQ(fourCharCode("flt"), 0x666C7400U);
  EXPECT_EQ(fourCharCode(""), 0U);
}

TEST(SMCDecodingTests, OnlyTheFirstFourBytesOfAKeyCount) {
  EXPECT_EQ(fourCharCode("F10Ac"), fourCharCode("F10A"));
  // "é" is the two bytes 0xC3 0xA9.
  EXPECT_EQ(fourCharCode("Té0P"), 0x54C3A930U);
}

TEST(SMCDecodingTests, ATypeIsTheCodesBytesFromTheTop) {
  EXPECT_EQ(dataTypeString(0x66706532U), "fpe2");
  EXPECT_EQ(dataTypeString(0U), std::string(4, '\0'));
}

TEST(SMCDecodingTests, ATypeIsReadAsMacOSRoman) {
  EXPECT_EQ(dataTypeString(0x8EA96120U), "é©a ");
}

TEST(SMCDecodingTests, ATypeIsTrimmedOfBlanksAndNulAtBothEnds) {
  EXPECT_EQ(trimmedDataType(fourCharCode("flt ")), "flt");
  EXPECT_EQ(trimmedDataType(fourCharCode("flt")), "flt");
  EXPECT_EQ(trimmedDataType(fourCharCode(" a b")), "a b");
  EXPECT_EQ(trimmedDataType(fourCharCode({"\0u \0", 4})), "u");
  EXPECT_EQ(trimmedDataType(0U), "");
  EXPECT_EQ(trimmedDataType(fourCharCode("    ")), "");
  EXPECT_EQ(trimmedDataType(fourCharCode("\tui\n")), "\tui\n");
}

// Fan speeds

TEST(SMCDecodingTests, AFloatSpeedIsRounded) {
  EXPECT_EQ(decodeRPM(floatValue(2300.6F)), 2301);
  EXPECT_EQ(decodeRPM(floatValue(2300.4F)), 2300);
}

TEST(SMCDecodingTests, AFloatSpeedRoundsTiesAwayFromZero) {
  EXPECT_EQ(decodeRPM(floatValue(2300.5F)), 2301);
  EXPECT_EQ(decodeRPM(floatValue(-0.5F)), -1);
}

TEST(SMCDecodingTests, AFixedPointSpeedDropsItsTwoFractionBits) {
  EXPECT_EQ(decodeRPM(value("fpe2", {0x23, 0xF4})), 0x23F4 / 4);
  EXPECT_EQ(decodeRPM(value("fpe2", {0x23, 0xF4})), 2301);
  EXPECT_EQ(decodeRPM(value("fpe2", {0x00, 0x07})), 1);
  EXPECT_EQ(decodeRPM(value("fpe2", {0xFF, 0xFF})), 16383);
}

TEST(SMCDecodingTests, BytesBehindTheNumberAreIgnored) {
  Bytes bytes = FakeSMC::littleEndian(1200.0F);
  bytes.push_back(0xFF);
  EXPECT_EQ(decodeRPM(value("flt ", bytes)), 1200);
  EXPECT_EQ(decodeRPM(value("fpe2", {0x12, 0xC0, 0xFF})), 0x12C0 / 4);
}

TEST(SMCDecodingTests, APaddedTypeComparesEqualAfterTrimming) {
  EXPECT_EQ(decodeRPM(floatValue(1200.0F, "flt ")), 1200);
  EXPECT_EQ(decodeRPM(floatValue(1200.0F, "flt")), 1200);
  EXPECT_EQ(decodeRPM(floatValue(1200.0F, " flt")), 1200);
  EXPECT_DOUBLE_EQ(decodeTemperature(floatValue(42.5F, "flt ")).value(), 42.5);
  EXPECT_DOUBLE_EQ(decodeTemperature(floatValue(42.5F, "flt")).value(), 42.5);
}

TEST(SMCDecodingTests, ASpeedOfAnyOtherTypeIsNone) {
  EXPECT_EQ(decodeRPM(value("ui16", {0x12, 0xC0})), std::nullopt);
  EXPECT_EQ(decodeRPM(value("sp78", {0x12, 0xC0})), std::nullopt);
  EXPECT_EQ(decodeRPM(floatValue(1200.0F, "fltx")), std::nullopt);
  EXPECT_EQ(decodeRPM(floatValue(1200.0F, "FLT ")), std::nullopt);
}

TEST(SMCDecodingTests, ASpeedOfTooFewBytesIsNone) {
  EXPECT_EQ(decodeRPM(value("flt ", {0x00, 0x00})), std::nullopt);
  EXPECT_EQ(decodeRPM(value("flt ", {0x00, 0x00, 0x00})), std::nullopt);
  EXPECT_EQ(decodeRPM(value("fpe2", {0x23})), std::nullopt);
  EXPECT_EQ(decodeRPM(value("fpe2", {})), std::nullopt);
}

TEST(SMCDecodingDeathTests, AFloatSpeedThatIsNoIntegerIsFatal) {
  const std::string message =
      "Fatal error: a floating-point value does not fit a signed 64-bit integer";
  for (const float number :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1e20F}) {
    EXPECT_DEATH(static_cast<void>(decodeRPM(floatValue(number))), message);
  }
}

// Temperatures

TEST(SMCDecodingTests, AFloatTemperatureIsTakenAsItIs) {
  EXPECT_EQ(decodeTemperature(floatValue(36.6F)), static_cast<double>(36.6F));
}

TEST(SMCDecodingTests, AnyTypeThatBeginsWithSpIsFixedPointSevenEight) {
  for (const char* type : {"sp78", "sp5a", "sp", "sp  "}) {
    // 0x32 whole degrees and 0x80 / 256 of one.
    EXPECT_EQ(decodeTemperature(value(type, {0x32, 0x80})), 50.5) << type;
  }
}

TEST(SMCDecodingTests, AFixedPointTemperatureIsSigned) {
  // 0xFF00 is -1 degree, 0x7FFF 127.996 degrees.
  EXPECT_EQ(decodeTemperature(value("sp78", {0xFF, 0x00})), std::nullopt);
  EXPECT_EQ(decodeTemperature(value("sp78", {0x7F, 0xFF})), 32767.0 / 256.0);
}

TEST(SMCDecodingTests, OnlyTemperaturesStrictlyBetweenZeroAndAHundredAndFiftyCount) {
  EXPECT_EQ(decodeTemperature(floatValue(0.0F)), std::nullopt);
  EXPECT_EQ(decodeTemperature(floatValue(150.0F)), std::nullopt);
  EXPECT_EQ(decodeTemperature(floatValue(-5.0F)), std::nullopt);
  EXPECT_EQ(decodeTemperature(floatValue(std::numeric_limits<float>::quiet_NaN())), std::nullopt);
  EXPECT_EQ(decodeTemperature(floatValue(0.5F)), 0.5);
  EXPECT_EQ(decodeTemperature(floatValue(149.5F)), 149.5);
  EXPECT_EQ(decodeTemperature(value("sp78", {0x00, 0x00})), std::nullopt);
  EXPECT_EQ(decodeTemperature(value("sp78", {0x00, 0x01})), 1.0 / 256.0);
}

TEST(SMCDecodingTests, ATemperatureOfAnyOtherTypeIsNone) {
  EXPECT_EQ(decodeTemperature(value("ui16", {0x32, 0x80})), std::nullopt);
  EXPECT_EQ(decodeTemperature(value("fpe2", {0x00, 0xC8})), std::nullopt);
  EXPECT_EQ(decodeTemperature(value("SP78", {0x32, 0x80})), std::nullopt);
}

TEST(SMCDecodingTests, ATemperatureOfTooFewBytesIsNone) {
  EXPECT_EQ(decodeTemperature(value("flt ", {0x32, 0x80})), std::nullopt);
  EXPECT_EQ(decodeTemperature(value("sp78", {0x32})), std::nullopt);
}

}  // namespace
}  // namespace quorvex::smc
