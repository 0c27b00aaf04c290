#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>

#include "AnyRecord.h"
#include "CompactReader.h"
#include "NetworkSnapshotDTO.h"
#include "PowerSessionCoders.h"
#include "ProcessActivityDTO.h"
#include "SampleRecords.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {
namespace {

/// A text with the zero bytes that the reader wants behind it.
class Padded {
 public:
  explicit Padded(std::string text) : length_(text.size()), text_(std::move(text)) {
    text_.append(CompactReader::padding, '\0');
  }
  [[nodiscard]] std::string_view view() const { return {text_.data(), length_}; }

 private:
  std::size_t length_;
  std::string text_;
};

template <typename Value>
bool isInCompactForm(const std::string& json) {
  const Padded text{json};
  CompactReader reader{text.view()};
  return reader.check<Value>() && reader.isAtEnd();
}

/// The only item of an array: a number is never a whole text.
template <typename Value>
std::optional<Value> readItem(const std::string& json) {
  const Padded text{fmt::format("[{}]", json)};
  CompactReader reader{text.view()};
  Value value{};
  return reader.readArray([&] { return reader.read(value); }) && reader.isAtEnd()
             ? std::optional{value}
             : std::nullopt;
}

std::optional<std::string> readText(const std::string& json) {
  const Padded text{json};
  CompactReader reader{text.view()};
  std::string_view value;
  return reader.read(value) && reader.isAtEnd() ? std::optional{std::string{value}} : std::nullopt;
}

SystemPowerState fullState() {
  SystemPowerState state;
  state.battery = samples::batteryAt(-12.5);
  state.battery->timeRemaining = 90;
  state.battery->timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  state.power = samples::silicon(4.0);
  state.fans = {{0, "Left", 2000, 1200, 6000}};
  state.sensors = {{"TC0P", "CPU/Proximity \"A\"", 51.25}, {"Tp", "Caf\xC3\xA9", 48.0}};
  state.network.emplace().interfaces = {samples::interface(4, "en0", 100, 50, 10.5, 1e-7)};
  state.timestamp = Date{std::chrono::seconds{1'772'352'000}};
  return state;
}

TEST(CompactReader, ReadsWhatTheEncoderWritesWithoutHelp) {
  EXPECT_TRUE(isInCompactForm<SystemPowerStateDTO>(
      *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{fullState()})));
  EXPECT_TRUE(isInCompactForm<SystemPowerStateDTO>(
      *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{SystemPowerState{}})));
  EXPECT_TRUE(isInCompactForm<std::vector<ProcessActivityDTO>>(
      *PowerSessionCoders::encoder().encode(std::vector<ProcessActivityDTO>(3))));
}

TEST(CompactReader, LeavesAnyOtherFormToTheGeneralReader) {
  const std::string json =
      *PowerSessionCoders::encoder().encode(FanInfoDTO{FanInfo{0, "L", 1, 2, 3}});
  ASSERT_TRUE(isInCompactForm<FanInfoDTO>(json));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(" " + json));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(json + "\n"));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(json + json));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(json.substr(0, json.size() - 1)));
  EXPECT_FALSE(
      isInCompactForm<FanInfoDTO>(R"({"id":0,"currentRPM":1,"maxRPM":3,"minRPM":2,"name":"L"})"));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(
      R"({"currentRPM":1,"id":0,"maxRPM":3,"minRPM":2,"name":"L","new":1})"));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(R"({"currentRPM":1,"id":0,"maxRPM":3,"minRPM":2})"));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>("{}"));
  EXPECT_FALSE(isInCompactForm<FanInfoDTO>(""));
}

TEST(CompactReader, NumbersAreExactAtEveryLength) {
  for (const double number :
       {0.0, -0.0, 1.0, 0.1, -12.345, 1e-7, 5e-324, 1.7976931348623157e308, 9007199254740993.0,
        123456789012345680.0, 0.30000000000000004, 45.28125, 2.2250738585072014e-308, 1e22, 1e23}) {
    JSONWriter writer{JSONWriter::Style::compact};
    writer.value(number);
    const auto read = readItem<double>(writer.text());
    ASSERT_TRUE(read) << writer.text();
    EXPECT_EQ(*read, number);
    EXPECT_EQ(std::signbit(*read), std::signbit(number));
  }
}

TEST(CompactReader, WhatIsNoNumberIsNotReadAsOne) {
  for (const char* text : {"-", "01", "-01", "1.", ".5", "1.e5", "1e", "1e+", "+1", "1e999",
                           "-1e999", "0x1", "1_0", "NaN", "null", "\"1\"", "1 "}) {
    EXPECT_EQ(readItem<double>(text), std::nullopt) << text;
    EXPECT_FALSE(isInCompactForm<std::vector<double>>(fmt::format("[1,{}]", text))) << text;
  }
}

TEST(CompactReader, WholeNumbersKeepToTheirType) {
  EXPECT_EQ(readItem<std::int64_t>("-42"), -42);
  EXPECT_EQ(readItem<std::uint64_t>("123456789012345678"), 123'456'789'012'345'678U);
  EXPECT_EQ(readItem<std::int32_t>("2147483647"), 2'147'483'647);
  EXPECT_EQ(readItem<std::int32_t>("2147483648"), std::nullopt);
  EXPECT_EQ(readItem<std::uint64_t>("-1"), std::nullopt);
  EXPECT_EQ(readItem<std::int64_t>("007"), std::nullopt);
  EXPECT_EQ(readItem<std::int64_t>("1.0"), std::nullopt);
}

TEST(CompactReader, TheLargestOfManyNumbersIsFound) {
  for (const auto& [texts, largest] : std::vector<std::pair<std::vector<std::string>, double>>{
           {{"51.25", "51.5", "50.999"}, 51.5},
           {{"-3.5", "-2.25", "-9"}, -2.25},
           {{"9.75", "10", "9.9999999999999999"}, 10.0},
           {{"1e2", "99.5", "1.5e1"}, 100.0},
           {{"0", "-0.5"}, 0.0}}) {
    std::optional<double> raised;
    const Padded padded{fmt::format("[{}]", fmt::join(texts, ","))};
    CompactReader reader{padded.view()};
    EXPECT_TRUE(reader.readArray([&] { return reader.raise(raised); }));
    EXPECT_TRUE(reader.isAtEnd());
    EXPECT_EQ(raised, largest);
  }
}

TEST(CompactReader, TextsAreUnescaped) {
  EXPECT_EQ(readText(R"("CPU\/GPU \"x\" \\ \b\f\n\r\t end")"), "CPU/GPU \"x\" \\ \b\f\n\r\t end");
  EXPECT_EQ(readText("\"\""), "");
  EXPECT_EQ(readText("\"Caf\xC3\xA9\""), "Caf\xC3\xA9");
}

TEST(CompactReader, BrokenTextsAreNotRead) {
  for (const char* text :
       {"\"", "\"abc", "\"a\\\"", "\"a\\", "\"a\\q\"", "\"\\u0041\"", "\"a\nb\"", "\"\x01\"",
        "\"\xFF\"", "\"Caf\xC3\"", "\"\xED\xA0\x80\"", "abc", "'a'"}) {
    EXPECT_EQ(readText(text), std::nullopt) << text;
  }
}

TEST(CompactReader, AnyNumberThatIsWrittenIsReadTheSame) {
  EXPECT_TRUE(rc::check([] {
    const double number = *samples::anyNumber();
    JSONWriter writer{JSONWriter::Style::compact};
    writer.value(number);
    RC_ASSERT(readItem<double>(writer.text()) == number);
    RC_ASSERT(isInCompactForm<std::vector<double>>(fmt::format("[{}]", writer.text())));
  }));
}

}  // namespace
}  // namespace quorvex
