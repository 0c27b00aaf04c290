#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "JSONWriter.h"

namespace quorvex {
namespace {

std::string compactNumber(double number) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.value(number);
  return writer.takeText();
}

std::string compactDecimal(double number, int decimals) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.decimal(number, decimals);
  return writer.takeText();
}

std::string compactString(std::string_view text) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.value(text);
  return writer.takeText();
}

TEST(JSONWriter, CompactStyleHasNoWhiteSpace) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.beginObject();
  writer.field("a", 1);
  writer.key("b");
  writer.beginArray();
  writer.value(true);
  writer.value("x y");
  writer.endArray();
  writer.endObject();
  EXPECT_EQ(writer.text(), R"({"a":1,"b":[true,"x y"]})");
}

TEST(JSONWriter, PrettyStyleIndentsByTwoBlanksALevel) {
  JSONWriter writer{JSONWriter::Style::pretty};
  writer.beginObject();
  writer.key("list");
  writer.beginArray();
  writer.value(1);
  writer.value(2);
  writer.endArray();
  writer.field("name", "n");
  writer.endObject();
  EXPECT_EQ(writer.text(),
            "{\n"
            "  \"list\" : [\n"
            "    1,\n"
            "    2\n"
            "  ],\n"
            "  \"name\" : \"n\"\n"
            "}");
}

TEST(JSONWriter, EmptyContainersStayOnOneLine) {
  JSONWriter writer{JSONWriter::Style::pretty};
  writer.beginObject();
  writer.key("array");
  writer.beginArray();
  writer.endArray();
  writer.key("object");
  writer.beginObject();
  writer.endObject();
  writer.endObject();
  EXPECT_EQ(writer.text(), "{\n  \"array\" : [],\n  \"object\" : {}\n}");
}

TEST(JSONWriter, FloatsTakeTheirShortestRoundTripForm) {
  EXPECT_EQ(compactNumber(5.0), "5");
  EXPECT_EQ(compactNumber(0.1), "0.1");
  EXPECT_EQ(compactNumber(-12.34), "-12.34");
  EXPECT_EQ(compactNumber(1e21), "1e+21");
  EXPECT_EQ(std::stod(compactNumber(0.1 + 0.2)), 0.1 + 0.2);
}

TEST(JSONWriter, IntegersKeepAllTheirDigits) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.beginArray();
  writer.value(std::numeric_limits<std::int64_t>::min());
  writer.value(std::numeric_limits<std::uint64_t>::max());
  writer.endArray();
  EXPECT_EQ(writer.text(), "[-9223372036854775808,18446744073709551615]");
}

TEST(JSONWriter, DecimalsDropTrailingZeros) {
  EXPECT_EQ(compactDecimal(12.3, 2), "12.3");
  EXPECT_EQ(compactDecimal(5.0, 2), "5");
  EXPECT_EQ(compactDecimal(100.0, 2), "100");
  EXPECT_EQ(compactDecimal(0.005, 1), "0");
}

TEST(JSONWriter, DecimalsRoundTheExactBinaryValue) {
  // 0.125 is a tie in binary and goes to the even digit; 2.675 lies below its decimal form.
  EXPECT_EQ(compactDecimal(0.125, 2), "0.12");
  EXPECT_EQ(compactDecimal(0.375, 2), "0.38");
  EXPECT_EQ(compactDecimal(2.675, 2), "2.67");
}

TEST(JSONWriter, NegativeZeroDecimalIsZero) {
  EXPECT_EQ(compactDecimal(-0.001, 2), "0");
  EXPECT_EQ(compactDecimal(-0.0, 2), "0");
}

TEST(JSONWriter, LargestDecimalFits) {
  const std::string text = compactDecimal(std::numeric_limits<double>::max(), 9);
  EXPECT_EQ(text.size(), 309U);
  EXPECT_EQ(std::stod(text), std::numeric_limits<double>::max());
}

TEST(JSONWriter, StringsEscapeQuotesBackslashesSlashesAndControls) {
  EXPECT_EQ(compactString("a\"b\\c/d"), R"("a\"b\\c\/d")");
  EXPECT_EQ(compactString("\b\t\n\f\r"), R"("\b\t\n\f\r")");
  EXPECT_EQ(compactString(std::string_view{"\0\x1f", 2}), R"("\u0000\u001f")");
}

TEST(JSONWriter, TextBeyondASCIIStandsAsItIs) {
  EXPECT_EQ(compactString("Gerät 電力 \u2028"), "\"Gerät 電力 \u2028\"");
}

TEST(JSONWriter, NonFiniteNumbersMakeTheDocumentInvalid) {
  for (const double number :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity()}) {
    JSONWriter plain{JSONWriter::Style::compact};
    plain.value(number);
    EXPECT_FALSE(plain.isValid());
    JSONWriter rounded{JSONWriter::Style::compact};
    rounded.decimal(number, 2);
    EXPECT_FALSE(rounded.isValid());
  }
  JSONWriter finite{JSONWriter::Style::compact};
  finite.value(1.0);
  EXPECT_TRUE(finite.isValid());
}

TEST(JSONWriterDeathTest, KeysOutOfOrderAreFatal) {
  JSONWriter writer{JSONWriter::Style::compact};
  writer.beginObject();
  writer.field("b", 1);
  EXPECT_DEATH(writer.key("a"), "Fatal error: JSON keys out of order");
  EXPECT_DEATH(writer.key("b"), "Fatal error: JSON keys out of order");
}

TEST(JSONWriterDeathTest, BrokenStructureIsFatal) {
  JSONWriter writer{JSONWriter::Style::compact};
  EXPECT_DEATH(writer.key("a"), "JSON key outside an object");
  writer.beginObject();
  EXPECT_DEATH(writer.value(1), "JSON value without a key");
  EXPECT_DEATH(writer.endArray(), "JSON structure closed out of order");
  writer.endObject();
  EXPECT_DEATH(writer.value(1), "more than one JSON value");
}

}  // namespace
}  // namespace quorvex
