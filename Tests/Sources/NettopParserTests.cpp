#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "NettopParser.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

NetworkProcessInfo process(std::int32_t pid, std::string name, std::uint64_t bytesIn,
                           std::uint64_t bytesOut) {
  return {.id = pid,
          .name = std::move(name),
          .bytesIn = bytesIn,
          .bytesOut = bytesOut,
          .attributionSource = NetworkAttributionSource::nettop};
}

// Lines

TEST(NettopParserTests, ALineGivesNamePidAndCounters) {
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242,100,200,"),
              ElementsAre(process(4242, "Safari", 100, 200)));
}

TEST(NettopParserTests, ANameKeepsItsDots) {
  EXPECT_THAT(parseNettopProcessCounters("a.b.c.42,1,2,"), ElementsAre(process(42, "a.b.c", 1, 2)));
}

TEST(NettopParserTests, TheHeaderLineIsSkipped) {
  EXPECT_THAT(parseNettopProcessCounters(",bytes_in,bytes_out,\nSafari.4242,100,200,\n"),
              ElementsAre(process(4242, "Safari", 100, 200)));
}

TEST(NettopParserTests, ALineWithEmptyCountersIsSkipped) {
  EXPECT_THAT(parseNettopProcessCounters("launchd.1,,"), IsEmpty());
  EXPECT_THAT(parseNettopProcessCounters("launchd.1,5,"), IsEmpty());
  EXPECT_THAT(parseNettopProcessCounters("launchd.1,,5"), IsEmpty());
}

TEST(NettopParserTests, ALineWithANonNumericPidIsSkipped) {
  EXPECT_THAT(parseNettopProcessCounters("foo.bar,1,2"), IsEmpty());
}

TEST(NettopParserTests, ALineOfFewerThanThreeFieldsIsSkipped) {
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242,100"), IsEmpty());
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242"), IsEmpty());
}

TEST(NettopParserTests, FieldsAfterTheThirdAreIgnored) {
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242,100,200"),
              ElementsAre(process(4242, "Safari", 100, 200)));
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242,100,200,x,,9"),
              ElementsAre(process(4242, "Safari", 100, 200)));
}

TEST(NettopParserTests, FieldsAreTrimmed) {
  EXPECT_THAT(parseNettopProcessCounters(" Safari .4242\t, 100 ,\u00A0200 ,"),
              ElementsAre(process(4242, "Safari", 100, 200)));
}

TEST(NettopParserTests, CountersMustBeUnsignedDecimalNumbersOfSixtyFourBits) {
  for (const char* counter : {"-1", "1.5", "0x10", "12a", "18446744073709551616"}) {
    EXPECT_THAT(parseNettopProcessCounters(std::string{"Safari.4242,"} + counter + ",1"), IsEmpty())
        << counter;
    EXPECT_THAT(parseNettopProcessCounters(std::string{"Safari.4242,1,"} + counter), IsEmpty())
        << counter;
  }
  EXPECT_THAT(parseNettopProcessCounters("Safari.4242,18446744073709551615,0"),
              ElementsAre(process(4242, "Safari", std::numeric_limits<std::uint64_t>::max(), 0)));
}

TEST(NettopParserTests, LinesEndAtAnyNewlineAndEmptyOnesAreDropped) {
  EXPECT_THAT(parseNettopProcessCounters("a.1,1,1\r\nb.2,2,2\n\n\u2028c.3,3,3\rd.4,4,4"),
              ElementsAre(process(1, "a", 1, 1), process(2, "b", 2, 2), process(3, "c", 3, 3),
                          process(4, "d", 4, 4)));
}

TEST(NettopParserTests, RecordsKeepTheOrderOfTheLinesAndZeroTraffic) {
  EXPECT_THAT(parseNettopProcessCounters("b.2,0,0\na.1,9,9\n"),
              ElementsAre(process(2, "b", 0, 0), process(1, "a", 9, 9)));
}

TEST(NettopParserTests, EmptyOutputGivesNoProcess) {
  EXPECT_THAT(parseNettopProcessCounters(""), IsEmpty());
}

// Identities

TEST(NettopParserTests, TheLastDotSeparatesThePid) {
  EXPECT_EQ(parseNettopIdentity("com.apple.WebKit.77"),
            (NettopIdentity{.name = "com.apple.WebKit", .pid = 77}));
}

TEST(NettopParserTests, ANameMayHoldBlanks) {
  EXPECT_EQ(parseNettopIdentity("Google Chrome H.512"),
            (NettopIdentity{.name = "Google Chrome H", .pid = 512}));
  EXPECT_EQ(parseNettopIdentity(" Mail .9"), (NettopIdentity{.name = "Mail", .pid = 9}));
}

TEST(NettopParserTests, AFieldWithoutBothHalvesHasNoIdentity) {
  for (const char* field : {"", "Safari", "Safari.", ".42", "  .42", "."}) {
    EXPECT_EQ(parseNettopIdentity(field), std::nullopt) << field;
  }
}

TEST(NettopParserTests, APidMustBeASignedThirtyTwoBitNumber) {
  EXPECT_EQ(parseNettopIdentity("a.2147483647")->pid, 2147483647);
  EXPECT_EQ(parseNettopIdentity("a.2147483648"), std::nullopt);
  EXPECT_EQ(parseNettopIdentity("a.-1")->pid, -1);
  EXPECT_EQ(parseNettopIdentity("a.12b"), std::nullopt);
  EXPECT_EQ(parseNettopIdentity("a. 12"), std::nullopt);
}

}  // namespace
}  // namespace quorvex
