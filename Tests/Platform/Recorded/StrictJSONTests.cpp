#include "RecordedTesting.h"

namespace quorvex {
namespace {

std::string refusalOfRegistry(const std::string& registry) {
  return refusalOf(fileWithFrame("\"registry\": " + registry));
}

TEST(StrictJSON, TextThatIsNoJSONNamesTheInnermostPlace) {
  EXPECT_EQ(refusalOf(""), "$: not valid JSON");
  EXPECT_EQ(refusalOf("   \n"), "$: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name": "x)"), "$: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name": "x"]})"), "$: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name" "x"})"), "$: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name": "x",})"), "$: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name": bare})"), "$.name: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"name": "bad \q escape"})"), "$.name: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0} {"at": 1}]})"), "$.frames: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0},]})"), "$.frames[1]: not valid JSON");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0)"), "$: not valid JSON");
}

TEST(StrictJSON, TopLevelThatIsNoObjectIsRefused) {
  EXPECT_EQ(refusalOf("[]"), "$: must be an object");
  EXPECT_EQ(refusalOf("5"), "$: must be an object");
  EXPECT_EQ(refusalOf("\"text\""), "$: must be an object");
  EXPECT_EQ(refusalOf("null"), "$: must be an object");
}

TEST(StrictJSON, TextAfterTheDocumentIsRefused) {
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0}]} {})"),
            "$: not valid JSON: text after the end of the object");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0}]} x)"), "$: not valid JSON");
  EXPECT_EQ(refusalOf("{\"frames\": [{\"at\": 0}]} \n\t\r "), "(accepted)");
}

TEST(StrictJSON, BytesThatAreNoUTF8AreRefused) {
  EXPECT_EQ(refusalOf("{\"name\": \"\xFF\", \"frames\": [{\"at\": 0}]}"), "$: not valid JSON");
}

TEST(StrictJSON, RawControlCharacterInAStringIsRefused) {
  EXPECT_EQ(refusalOf("{\"name\": \"a\nb\", \"frames\": [{\"at\": 0}]}"), "$: not valid JSON");
}

TEST(StrictJSON, LoneSurrogateIsRefused) {
  EXPECT_EQ(refusalOf(R"({"name": "\ud800"})"), "$.name: not valid JSON");
}

TEST(StrictJSON, WordsThatOnlyBeginLikeALiteralAreRefused) {
  EXPECT_EQ(refusalOfRegistry(R"({"A": truely})"), "$.frames[0].registry.A: not valid JSON");
  EXPECT_EQ(refusalOfRegistry(R"({"A": fals})"), "$.frames[0].registry.A: not valid JSON");
  EXPECT_EQ(refusalOfRegistry(R"({"A": nul})"), "$.frames[0].registry.A: not valid JSON");
  EXPECT_EQ(refusalOfRegistry("nothing"), "$.frames[0].registry: not valid JSON");
}

TEST(StrictJSON, MalformedNumbersAreRefused) {
  for (const char* number : {"01", "1.", "-", "1e", "1x", "0x10", "--1", "1.5.2", "-01"}) {
    EXPECT_EQ(refusalOfRegistry(std::string{"{\"A\": "} + number + "}"),
              "$.frames[0].registry.A: not a valid number")
        << number;
  }
}

TEST(StrictJSON, NumberBeyondTheFloatsIsRefused) {
  EXPECT_EQ(refusalOfRegistry(R"({"A": 1e999})"), "$.frames[0].registry.A: not a valid number");
  EXPECT_EQ(refusalOfRegistry(R"({"A": -1e999})"), "$.frames[0].registry.A: not a valid number");
}

TEST(StrictJSON, ArraysThatAreNotKeptAreCheckedAllTheSame) {
  EXPECT_EQ(refusalOfRegistry(R"({"A": [1, bare]})"), "$.frames[0].registry.A[1]: not valid JSON");
  EXPECT_EQ(refusalOfRegistry(R"({"A": [[{"B": 01}]]})"),
            "$.frames[0].registry.A[0][0].B: not a valid number");
}

TEST(StrictJSON, DuplicateKeyIsRefusedWithItsPlace) {
  EXPECT_EQ(refusalOf(R"({"name": "a", "name": "b"})"), "$.name: duplicate key");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0, "at": 0}]})"), "$.frames[0].at: duplicate key");
  EXPECT_EQ(refusalOfRegistry(R"({"A": {"B": 1, "B": 2}})"),
            "$.frames[0].registry.A.B: duplicate key");
  EXPECT_EQ(refusalOfRegistry(R"({"A": [{"B": 1, "B": 2}]})"),
            "$.frames[0].registry.A[0].B: duplicate key");
}

TEST(StrictJSON, DuplicateKeyIsFoundHoweverItIsEscaped) {
  EXPECT_EQ(refusalOfRegistry(R"({"A": 1, "\u0041": 2})"), "$.frames[0].registry.A: duplicate key");
}

TEST(StrictJSON, DuplicateKeyIsFoundAmongManyKeys) {
  std::string keys;
  for (int i = 0; i < 40; ++i) {
    keys += "\"K" + std::to_string(i) + "\": 1, ";
  }
  EXPECT_EQ(refusalOfRegistry("{" + keys + "\"K3\": 2}"), "$.frames[0].registry.K3: duplicate key");
  EXPECT_EQ(refusalOfRegistry("{" + keys + "\"K39\": 2}"),
            "$.frames[0].registry.K39: duplicate key");
  EXPECT_EQ(refusalOfRegistry("{" + keys + "\"L\": 2}"), "(accepted)");
}

TEST(StrictJSON, KeyThatIsNoIdentifierIsQuotedInThePath) {
  EXPECT_EQ(refusalOfRegistry(R"({"Time to Empty": 01})"),
            R"($.frames[0].registry["Time to Empty"]: not a valid number)");
  EXPECT_EQ(refusalOfRegistry(R"({"a\"b\\\n": 01})"),
            R"($.frames[0].registry["a\"b\\\u000a"]: not a valid number)");
  EXPECT_EQ(refusalOfRegistry(R"({"": 01})"), R"($.frames[0].registry[""]: not a valid number)");
  EXPECT_EQ(refusalOfRegistry(R"({"0a": 01})"),
            R"($.frames[0].registry["0a"]: not a valid number)");
}

TEST(StrictJSON, NestingHasALimit) {
  const auto nested = [](std::size_t levels) {
    return R"({"A": )" + std::string(levels, '[') + std::string(levels, ']') + "}";
  };
  EXPECT_EQ(refusalOfRegistry(nested(90)), "(accepted)");
  EXPECT_NE(refusalOfRegistry(nested(101)).find("nested too deeply"), std::string::npos);
  EXPECT_NE(refusalOfRegistry(nested(5000)).find("nested too deeply"), std::string::npos);
}

}  // namespace
}  // namespace quorvex
