#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "RecordDecoder.h"
#include "RecordDecoding.h"
#include "RecordEncoder.h"

// What the tables of the program's own records do not show: tolerant fields, partial readers,
// identifiers and enums.

namespace quorvex {

namespace {

enum class Colour { red, green };

struct Tolerant {
  std::int64_t always = 0;
  std::vector<std::string> names{"unnamed"};
  std::optional<UUID> id;
  Colour colour = Colour::green;
  bool operator==(const Tolerant&) const = default;
};

struct Whole {
  Tolerant inner;
  std::string text;
  std::vector<double> numbers;
};

/// Reads `Whole` for its numbers alone.
struct Partial {
  std::vector<double> numbers;
};

}  // namespace

template <>
struct RawTexts<Colour> {
  static constexpr std::array values{std::pair{Colour::red, std::string_view{"red"}},
                                     std::pair{Colour::green, std::string_view{"green"}}};
};

template <>
struct RecordFields<Tolerant> {
  static constexpr std::tuple values{
      RecordField{"always", &Tolerant::always},
      RecordField{"colour", &Tolerant::colour, MissingKey::keepsDefault},
      RecordField{"id", &Tolerant::id},
      RecordField{"names", &Tolerant::names, MissingKey::keepsDefault},
  };
};

template <>
struct RecordFields<Whole> {
  static constexpr std::tuple values{
      RecordField{"inner", &Whole::inner},
      RecordField{"numbers", &Whole::numbers},
      RecordField{"text", &Whole::text},
  };
};

template <>
struct RecordFields<Partial> {
  static constexpr std::tuple values{
      CheckedField<Tolerant>{"inner"},
      RecordField{"numbers", &Partial::numbers},
      CheckedField<std::string>{"text"},
  };
};

template bool RecordDecoder::decodeInto(Tolerant&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(Whole&, std::string_view, std::size_t);
template bool RecordDecoder::decodeInto(Partial&, std::string_view, std::size_t);

namespace {

using ::testing::ElementsAre;

constexpr const char* idText = "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0";

template <typename Record>
std::string problem(std::string_view json) {
  const auto result = RecordDecoder{}.decode<Record>(json);
  return result ? "no problem" : result.error().description;
}

TEST(RecordFieldsTests, OrderOfKeysIsChecked) {
  EXPECT_TRUE(recordKeysAscend<Whole>());
  EXPECT_THAT(recordKeys<Tolerant>(), ElementsAre("always", "colour", "id", "names"));
}

TEST(RecordDecoderTests, ATolerantFieldThatIsMissingOrNullKeepsItsDefault) {
  for (const char* json : {R"({"always":1})", R"({"always":1,"colour":null,"names":null})"}) {
    EXPECT_EQ(*RecordDecoder{}.decode<Tolerant>(json), (Tolerant{.always = 1})) << json;
  }
}

TEST(RecordDecoderTests, ATolerantFieldInAUsedRecordGoesBackToItsDefault) {
  RecordDecoder decoder;
  Tolerant record;
  ASSERT_TRUE(decoder.decodeInto(record, R"({"always":1,"colour":"red","names":["a","b"]})"));
  EXPECT_EQ(record.colour, Colour::red);
  ASSERT_TRUE(decoder.decodeInto(record, R"({"always":2})"));
  EXPECT_EQ(record, (Tolerant{.always = 2}));
}

TEST(RecordDecoderTests, ATolerantFieldOfAWrongTypeIsStillWrong) {
  EXPECT_EQ(problem<Tolerant>(R"({"always":1,"names":5})"), "$.names: not an array");
  EXPECT_EQ(problem<Tolerant>(R"({"always":1,"names":["a",5]})"), "$.names[1]: not a string");
}

TEST(RecordDecoderTests, IdentifiersAndEnumsAreTexts) {
  const std::string json =
      std::string{R"({"always":1,"colour":"red","id":")"} + idText + R"(","names":[]})";
  const auto record = RecordDecoder{}.decode<Tolerant>(json);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->id, UUID::fromText(idText));
  EXPECT_EQ(record->colour, Colour::red);
  EXPECT_EQ(*RecordEncoder{JSONWriter::Style::compact}.encode(*record), json);
  EXPECT_EQ(problem<Tolerant>(R"({"always":1,"colour":"blue"})"),
            "$.colour: not one of the known words");
  EXPECT_EQ(problem<Tolerant>(R"({"always":1,"id":"1"})"), "$.id: not a UUID");
}

TEST(RecordDecoderTests, APartialReaderTakesWhatItWants) {
  const auto partial = RecordDecoder{}.decode<Partial>(
      R"({"inner":{"always":1},"numbers":[1,2.5],"text":"a\u00e9"})");
  ASSERT_TRUE(partial);
  EXPECT_THAT(partial->numbers, ElementsAre(1.0, 2.5));
}

TEST(RecordDecoderTests, APartialReaderRefusesExactlyWhatTheWholeOneRefuses) {
  for (const char* json :
       {R"({"inner":{"always":1},"numbers":[],"text":"a"})", R"({"numbers":[],"text":"a"})",
        R"({"inner":{},"numbers":[],"text":"a"})",
        R"({"inner":{"always":1},"numbers":[],"text":5})",
        R"({"inner":{"always":1,"names":[5]},"numbers":[],"text":"a"})",
        R"({"inner":{"always":1},"numbers":[],"text":"\ud83d"})",
        R"({"inner":{"always":1},"numbers":[]})", R"({"inner":null,"numbers":[],"text":"a"})"}) {
    EXPECT_EQ(problem<Partial>(json), problem<Whole>(json)) << json;
  }
}

}  // namespace
}  // namespace quorvex
