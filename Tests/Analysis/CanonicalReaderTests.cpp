#include <rapidcheck.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "AnyRecord.h"
#include "CanonicalReader.h"
#include "PowerSessionCoders.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {

/// One value of each kind, to be read and judged alone.
struct NumberRecord {
  double value = 0.0;
};
struct WholeRecord {
  std::int64_t value = 0;
};
struct SmallRecord {
  std::int32_t value = 0;
};
struct UnsignedRecord {
  std::uint64_t value = 0;
};
struct FlagRecord {
  bool value = false;
};
struct TextRecord {
  std::string value;
};
struct DateRecord {
  Date value{};
};
struct OptionalRecord {
  std::optional<double> a;
  std::optional<double> b;
};
struct DefaultedRecord {
  double value = 0.0;
};

template <>
struct RecordFields<NumberRecord> {
  static constexpr std::tuple values{RecordField{"value", &NumberRecord::value}};
};
template <>
struct RecordFields<WholeRecord> {
  static constexpr std::tuple values{RecordField{"value", &WholeRecord::value}};
};
template <>
struct RecordFields<SmallRecord> {
  static constexpr std::tuple values{RecordField{"value", &SmallRecord::value}};
};
template <>
struct RecordFields<UnsignedRecord> {
  static constexpr std::tuple values{RecordField{"value", &UnsignedRecord::value}};
};
template <>
struct RecordFields<FlagRecord> {
  static constexpr std::tuple values{RecordField{"value", &FlagRecord::value}};
};
template <>
struct RecordFields<TextRecord> {
  static constexpr std::tuple values{RecordField{"value", &TextRecord::value}};
};
template <>
struct RecordFields<DateRecord> {
  static constexpr std::tuple values{RecordField{"value", &DateRecord::value}};
};
template <>
struct RecordFields<OptionalRecord> {
  static constexpr std::tuple values{RecordField{"a", &OptionalRecord::a},
                                     RecordField{"b", &OptionalRecord::b}};
};
template <>
struct RecordFields<DefaultedRecord> {
  static constexpr std::tuple values{
      RecordField{"value", &DefaultedRecord::value, MissingKey::keepsDefault}};
};

namespace {

template <typename Value>
bool isCanonical(std::string text) {
  const std::size_t size = text.size();
  text.append(CanonicalReader::padding, '\0');
  return CanonicalReader::isCanonical<Value>(std::string_view{text}.substr(0, size));
}

template <typename Record>
bool isCanonicalValue(const std::string& value) {
  std::string text = "{\"value\":";
  text.append(value).append("}");
  return isCanonical<Record>(std::move(text));
}

/// What is written for the number that stands in a text; empty if there is none.
std::string rewritten(const std::string& number) {
  auto decoder = PowerSessionCoders::decoder();
  const auto rows = decoder.decode<std::vector<ProcessActivityDTO>>(
      R"([{"confidence":"","cpuPercent":)" + number +
      R"(,"diskBytesPerSecond":0,"impactScore":0,"name":"","pid":0,"wakeupsPerSecond":0}])");
  return rows ? *PowerSessionCoders::encoder().encode(rows->at(0).cpuPercent) : "";
}

TEST(CanonicalReader, NumbersAreInTheirShortestForm) {
  for (const char* number : {"0",
                             "-0",
                             "5",
                             "-5",
                             "10",
                             "12.5",
                             "-0.5",
                             "0.001",
                             "1e-04",
                             "0.00012",
                             "0.000123",
                             "1e+05",
                             "100",
                             "10000",
                             "120000",
                             "1200000",
                             "1.2e+07",
                             "123456789012345",
                             "1e+300",
                             "0.30000000000000004",
                             "0.1",
                             "179.76931348623157",
                             "5e-324",
                             "1.7976931348623157e+308",
                             "9007199254740993.0"}) {
    EXPECT_EQ(isCanonicalValue<NumberRecord>(number), rewritten(number) == number) << number;
  }
  EXPECT_TRUE(isCanonicalValue<NumberRecord>("12.5"));
  EXPECT_TRUE(isCanonicalValue<NumberRecord>("0.30000000000000004"));
  EXPECT_TRUE(isCanonicalValue<NumberRecord>("1e+05"));
}

TEST(CanonicalReader, OtherFormsOfNumbersAreNotTheirs) {
  for (const char* number : {"5.0",
                             "5.",
                             ".5",
                             "05",
                             "+5",
                             "00",
                             "0.0",
                             "-0.0",
                             "12.50",
                             "100000",
                             "1e5",
                             "1E+05",
                             "1e+5",
                             "0.0001",
                             "0.1000000000000000055",
                             "12345678901234567890",
                             "0.10000000000000001",
                             "1e999",
                             "-1e999",
                             "NaN",
                             "inf",
                             "",
                             "-",
                             "1.5.3",
                             "1-2",
                             "0x10",
                             "true",
                             "null",
                             "\"5\"",
                             "1e+05e",
                             "99999999999999999999"}) {
    EXPECT_FALSE(isCanonicalValue<NumberRecord>(number)) << number;
  }
}

TEST(CanonicalReader, ANumberIsCanonicalExactlyWhenItIsWrittenLikeThat) {
  EXPECT_TRUE(rc::check([] {
    std::string number = *rc::gen::arbitrary<bool>() ? "-" : "";
    const auto digits = [](int most) {
      return *rc::gen::container<std::string>(static_cast<std::size_t>(*rc::gen::inRange(0, most)),
                                              rc::gen::elementOf(std::string{"00001923456789"}));
    };
    number.push_back(*rc::gen::elementOf(std::string{"0123456789"}));
    number.append(digits(18));
    if (*rc::gen::arbitrary<bool>()) {
      number.append(".").append(digits(18));
    }
    if (*rc::gen::inRange(0, 4) == 0) {
      number.append(*rc::gen::element("e+0", "e-0", "e", "e-", "e+")).append(digits(3));
    }
    RC_ASSERT(isCanonicalValue<NumberRecord>(number) == (rewritten(number) == number));
  }));
}

TEST(CanonicalReader, EveryNumberThatIsWrittenIsCanonical) {
  EXPECT_TRUE(rc::check([] {
    const auto mantissa =
        static_cast<double>(*rc::gen::inRange<std::int64_t>(-1'000'000, 1'000'000));
    const double scale = std::pow(10.0, *rc::gen::inRange(-12, 12));
    for (const double number : {*samples::anyNumber(), mantissa / scale, mantissa * scale / 7.0}) {
      RC_ASSERT(
          isCanonical<NumberRecord>(*PowerSessionCoders::encoder().encode(NumberRecord{number})));
    }
  }));
}

TEST(CanonicalReader, WholeNumbersFitTheirType) {
  EXPECT_TRUE(isCanonicalValue<WholeRecord>("0"));
  EXPECT_TRUE(isCanonicalValue<WholeRecord>("100000"));
  EXPECT_TRUE(isCanonicalValue<WholeRecord>("9223372036854775807"));
  EXPECT_TRUE(isCanonicalValue<WholeRecord>("-9223372036854775808"));
  EXPECT_TRUE(isCanonicalValue<SmallRecord>("-2147483648"));
  EXPECT_TRUE(isCanonicalValue<UnsignedRecord>("18446744073709551615"));
  EXPECT_FALSE(isCanonicalValue<WholeRecord>("9223372036854775808"));
  EXPECT_FALSE(isCanonicalValue<SmallRecord>("2147483648"));
  EXPECT_FALSE(isCanonicalValue<UnsignedRecord>("18446744073709551616"));
  EXPECT_FALSE(isCanonicalValue<UnsignedRecord>("-1"));
}

TEST(CanonicalReader, OtherFormsOfWholeNumbersAreNotTheirs) {
  for (const char* number :
       {"-0", "00", "01", "-01", "+1", "1.0", "1e3", "", "-", "null", "true", "\"1\""}) {
    EXPECT_FALSE(isCanonicalValue<WholeRecord>(number)) << number;
  }
  EXPECT_FALSE(isCanonicalValue<UnsignedRecord>("-0"));
}

TEST(CanonicalReader, FlagsAreWords) {
  EXPECT_TRUE(isCanonicalValue<FlagRecord>("true"));
  EXPECT_TRUE(isCanonicalValue<FlagRecord>("false"));
  for (const char* flag : {"True", "tru", "1", "0", "null", "\"true\"", ""}) {
    EXPECT_FALSE(isCanonicalValue<FlagRecord>(flag)) << flag;
  }
}

TEST(CanonicalReader, TextsHaveExactlyTheEscapesThatTheyNeed) {
  for (const char* text :
       {R"("")", R"("abc")", R"("CPU\/GPU")", R"("\"\\\/\b\f\n\r\t")", R"("\u0000\u0001\u000b")",
        R"("\u000e\u000f\u001f")", "\"\x7F\"", "\"Caf\xC3\xA9 \xF0\x9F\x94\x8B\"",
        R"("a text of more than eight characters, with a \/ at an odd place")"}) {
    EXPECT_TRUE(isCanonicalValue<TextRecord>(text)) << text;
  }
  for (const char* text : {R"("CPU/GPU")",
                           R"("\u0041")",
                           R"("\u00e9")",
                           R"("\u0008")",
                           R"("\u0009")",
                           R"("\u000a")",
                           R"("\u000c")",
                           R"("\u000d")",
                           R"("\u000B")",
                           R"("\u001F")",
                           R"("\u0020")",
                           R"("\u002f")",
                           R"("\u2028")",
                           R"("\ud83d\udd0b")",
                           R"("\q")",
                           R"("\u00")",
                           R"("\)",
                           R"("abc)",
                           "\"a\nb\"",
                           "\"\x01\"",
                           "\"\xFF\"",
                           "\"Caf\xC3\"",
                           "\"\xED\xA0\x80\"",
                           "abc",
                           "5",
                           "null"}) {
    EXPECT_FALSE(isCanonicalValue<TextRecord>(text)) << text;
  }
}

TEST(CanonicalReader, DatesAreWholeSecondsInUTC) {
  EXPECT_TRUE(isCanonicalValue<DateRecord>(R"("2026-01-31T09:30:05Z")"));
  for (const char* date :
       {R"("2026-01-31T09:30:05.5Z")", R"("2026-01-31T09:30:05.000Z")",
        R"("2026-01-31T10:30:05+01:00")", R"("2026-01-31T09:30:05+00:00")",
        R"("2026-02-30T09:30:05Z")", R"("2026-01-31T09:30:60Z")", R"("2026-01-31t09:30:05z")",
        R"("9999-01-31T09:30:05Z")", R"("2026-01-31")", R"("")", "5", "null"}) {
    EXPECT_FALSE(isCanonicalValue<DateRecord>(date)) << date;
  }
}

TEST(CanonicalReader, OptionalFieldsMayBeLeftOutButNeverNull) {
  for (const char* text : {"{}", R"({"a":1})", R"({"b":2})", R"({"a":1,"b":2})"}) {
    EXPECT_TRUE(isCanonical<OptionalRecord>(text)) << text;
  }
  for (const char* text : {R"({"a":null})", R"({"a":1,"b":null})"}) {
    EXPECT_FALSE(isCanonical<OptionalRecord>(text)) << text;
  }
}

TEST(CanonicalReader, FieldsThatAReaderWouldDoWithoutMustBeThere) {
  EXPECT_TRUE(isCanonical<DefaultedRecord>(R"({"value":0})"));
  EXPECT_FALSE(isCanonical<DefaultedRecord>("{}"));
  EXPECT_FALSE(isCanonical<NumberRecord>("{}"));
}

TEST(CanonicalReader, KeysAreKnownAndInOrderAndNothingStandsBetweenTokens) {
  for (const char* text :
       {R"({"b":2,"a":1})", R"({"a":1,"a":1})", R"({"a":1,"c":3})", R"({"c":3})", R"({"a":1,})",
        R"({,"a":1})", R"({"a" :1})", R"({"a": 1})", R"({"a":1} )", R"( {"a":1})", R"({"a":1 })",
        R"({"a":1,"b":2)", R"({"a":1}{"a":1})", R"({"\u0061":1})", "{", "", "[]", "null",
        "{\"a\":1}\n"}) {
    EXPECT_FALSE(isCanonical<OptionalRecord>(text)) << text;
  }
}

TEST(CanonicalReader, ArraysHaveTheirItemsSideBySide) {
  using Records = std::vector<OptionalRecord>;
  for (const char* text : {"[]", "[{}]", R"([{},{"a":1}])"}) {
    EXPECT_TRUE(isCanonical<Records>(text)) << text;
  }
  for (const char* text : {"[ ]", "[{},]", "[,{}]", "[{} ,{}]", "[{}", "[{}]]", "[null]", "{}"}) {
    EXPECT_FALSE(isCanonical<Records>(text)) << text;
  }
}

TEST(CanonicalReader, ATextThatEndsEarlyIsNotReadPastItsEnd) {
  const std::string whole = *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(isCanonical<SystemPowerStateDTO>(whole.substr(0, size))) << size;
  }
  EXPECT_TRUE(isCanonical<SystemPowerStateDTO>(whole));
}

template <typename Value>
void checkAllThatIsWrittenIsCanonical() {
  EXPECT_TRUE(rc::check([] {
    RC_ASSERT(isCanonical<Value>(*PowerSessionCoders::encoder().encode(samples::any<Value>())));
  }));
}

TEST(CanonicalReader, EverySnapshotThatIsWrittenIsCanonical) {
  checkAllThatIsWrittenIsCanonical<SystemPowerStateDTO>();
}
TEST(CanonicalReader, AllProcessRowsThatAreWrittenAreCanonical) {
  checkAllThatIsWrittenIsCanonical<std::vector<ProcessActivityDTO>>();
}
TEST(CanonicalReader, EveryPrivilegedSnapshotThatIsWrittenIsCanonical) {
  checkAllThatIsWrittenIsCanonical<ProTelemetrySnapshot>();
}

/// Changes a few bytes at random places, in ways that leave many texts readable.
std::string changed(std::string text) {
  const auto changes = *rc::gen::inRange(1, 4);
  for (int i = 0; i < changes; ++i) {
    const auto at = *rc::gen::inRange<std::size_t>(0, text.size());
    const auto with = *rc::gen::element<std::string>(
        " ", "0", ".0", "1", "e", "-", "\\u0041", "\\/", "/", "\"", "\xC3\xA9", "\xC3", "}", ",");
    if (*rc::gen::arbitrary<bool>()) {
      text.insert(at, with);
    } else {
      text.replace(at, 1, with);
    }
  }
  return text;
}

template <typename Value>
void checkCanonicalMeansWrittenAnewTheSame() {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    const std::string text = changed(*PowerSessionCoders::encoder().encode(samples::any<Value>()));
    const auto read = decoder.template decode<Value>(text);
    const bool isWrittenTheSame = read && *PowerSessionCoders::encoder().encode(*read) == text;
    RC_ASSERT(isCanonical<Value>(text) == isWrittenTheSame);
  }));
}

TEST(CanonicalReader, OnlySnapshotsThatAreWrittenAnewTheSameAreCanonical) {
  checkCanonicalMeansWrittenAnewTheSame<SystemPowerStateDTO>();
}
TEST(CanonicalReader, OnlyProcessRowsThatAreWrittenAnewTheSameAreCanonical) {
  checkCanonicalMeansWrittenAnewTheSame<std::vector<ProcessActivityDTO>>();
}
TEST(CanonicalReader, OnlyPrivilegedSnapshotsThatAreWrittenAnewTheSameAreCanonical) {
  checkCanonicalMeansWrittenAnewTheSame<ProTelemetrySnapshot>();
}

}  // namespace
}  // namespace quorvex
