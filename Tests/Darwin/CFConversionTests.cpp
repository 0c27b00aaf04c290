#include <limits>

#include "CFConversion.h"
#include "DarwinTest.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

class CFConversionTests : public DarwinTest {
 protected:
  /// What a single object is converted to.
  static DictionaryValue converted(const Make& make) {
    const CFReference<CFTypeRef> object{make()};
    return cf::value(object.get());
  }
  static std::optional<Dictionary> convertedDictionary(const Make& make) {
    const CFReference<CFTypeRef> object{make()};
    return cf::dictionary(object.get());
  }
  static std::optional<std::string> convertedText(const Make& make) {
    const CFReference<CFTypeRef> object{make()};
    return cf::text(object.get());
  }
};

TEST_F(CFConversionTests, SignedNumbersAreIntegers) {
  EXPECT_EQ(converted(number(std::int64_t{-950})), DictionaryValue{-950});
  constexpr auto least = std::numeric_limits<std::int64_t>::min();
  constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(converted(number(least)), DictionaryValue{least});
  EXPECT_EQ(converted(number(greatest)), DictionaryValue{greatest});
}

TEST_F(CFConversionTests, UnsignedNumbersThatFitAreIntegers) {
  EXPECT_EQ(converted(number(std::uint64_t{65535})), DictionaryValue{65535});
  constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(converted(number(static_cast<std::uint64_t>(greatest))), DictionaryValue{greatest});
}

TEST_F(CFConversionTests, UnsignedNumberBeyondTheSignedOnesIsAFloatAndNoInteger) {
  const DictionaryValue value = converted(number(std::uint64_t{1} << 63U));
  ASSERT_NE(value.ifFloat(), nullptr);
  EXPECT_EQ(*value.ifFloat(), 9223372036854775808.0);
  EXPECT_EQ(value.integer(), std::nullopt);
}

TEST_F(CFConversionTests, FloatsStayFloatsEvenWhenTheyAreWhole) {
  const DictionaryValue whole = converted(number(12000.0));
  EXPECT_EQ(whole.ifInteger(), nullptr);
  ASSERT_NE(whole.ifFloat(), nullptr);
  EXPECT_EQ(whole.integer(), 12000);
  EXPECT_EQ(converted(number(0.5)), DictionaryValue{0.5});
}

TEST_F(CFConversionTests, BooleansAreNoNumbersAndNumbersNoBooleans) {
  EXPECT_EQ(converted(boolean(true)), DictionaryValue{true});
  EXPECT_EQ(converted(boolean(false)), DictionaryValue{false});
  EXPECT_EQ(converted(boolean(true)).integer(), std::nullopt);
  EXPECT_EQ(converted(number(std::int64_t{1})).boolean(), std::nullopt);
}

TEST_F(CFConversionTests, StringsOfEveryEncodingBecomeUTF8) {
  EXPECT_EQ(converted(text(u"Good")), DictionaryValue{"Good"});
  EXPECT_EQ(converted(text(u"")), DictionaryValue{""});
  EXPECT_EQ(converted(text(u"Größe µ")), DictionaryValue{"Gr\u00f6\u00dfe \u00b5"});
  EXPECT_EQ(converted(text(u"電池")), DictionaryValue{"\u96fb\u6c60"});
  EXPECT_EQ(converted(text(u"🔋")), DictionaryValue{"\U0001f50b"});
  EXPECT_EQ(converted(text(std::u16string{u"a\0b", 3})), DictionaryValue{std::string("a\0b", 3)});
}

TEST_F(CFConversionTests, HalfACharacterBecomesAQuestionMark) {
  EXPECT_EQ(converted(text(std::u16string{u'a', char16_t{0xD83D}, u'b'})), DictionaryValue{"a?b"});
}

TEST_F(CFConversionTests, NestedDictionariesAreConvertedToTheirDepth) {
  const Make adapter =
      dictionary(Entries{{"Watts", number(std::int64_t{96})},
                         {"Deeper", dictionary(Entries{{"Flag", boolean(true)}})}});
  EXPECT_EQ(convertedDictionary(dictionary(Entries{{"AdapterDetails", adapter}})),
            (Dictionary{{"AdapterDetails",
                         Dictionary{{"Watts", 96}, {"Deeper", Dictionary{{"Flag", true}}}}}}));
}

TEST_F(CFConversionTests, ArraysDataAndDatesAreOfSomeOtherType) {
  EXPECT_EQ(converted(array({number(std::int64_t{1})})), DictionaryValue{});
  EXPECT_EQ(converted(other()), DictionaryValue{});
  EXPECT_EQ(cf::value(nullptr), DictionaryValue{});
}

TEST_F(CFConversionTests, OfOneTypeThereIsNoOther) {
  const Make whole = dictionary(Entries{{"A", array({})}, {"B", text(u"b")}});
  const auto values = convertedDictionary(whole);
  ASSERT_TRUE(values);
  EXPECT_NE(find(*values, "A"), nullptr) << "present, whatever it is";
  EXPECT_EQ(find(*values, "A")->string(), std::nullopt);
}

TEST_F(CFConversionTests, DictionaryWithAKeyThatIsNoStringIsNone) {
  const std::vector<std::pair<Make, Make>> entries{{text(u"Voltage"), number(std::int64_t{12000})},
                                                   {number(std::int64_t{1}), text(u"one")}};
  EXPECT_EQ(convertedDictionary(dictionary(entries)), std::nullopt);
}

TEST_F(CFConversionTests, NestedDictionaryWithAKeyThatIsNoStringIsOfSomeOtherType) {
  const std::vector<std::pair<Make, Make>> entries{{number(std::int64_t{1}), text(u"one")}};
  EXPECT_EQ(convertedDictionary(dictionary(Entries{{"AdapterDetails", dictionary(entries)},
                                                   {"Voltage", number(std::int64_t{12000})}})),
            (Dictionary{{"AdapterDetails", {}}, {"Voltage", 12000}}));
}

TEST_F(CFConversionTests, WhatIsNoDictionaryIsNone) {
  EXPECT_EQ(convertedDictionary(array({})), std::nullopt);
  EXPECT_EQ(convertedDictionary(text(u"a")), std::nullopt);
  EXPECT_EQ(cf::dictionary(nullptr), std::nullopt);
}

TEST_F(CFConversionTests, EmptyDictionaryIsPresent) {
  EXPECT_EQ(convertedDictionary(dictionary(Entries{})), Dictionary{});
}

TEST_F(CFConversionTests, OnlyStringsHaveText) {
  EXPECT_EQ(convertedText(text(u"text")), "text");
  EXPECT_EQ(convertedText(number(std::int64_t{1})), std::nullopt);
  EXPECT_EQ(cf::text(nullptr), std::nullopt);
}

TEST_F(CFConversionTests, MadeStringsKeepTheirText) {
  const auto made = cf::makeString("Gr\u00f6\u00dfe");
  EXPECT_EQ(cf::text(made.get()), "Gr\u00f6\u00dfe");
  EXPECT_FALSE(cf::makeString("\xC0\x80")) << "no UTF-8";
}

TEST_F(CFConversionTests, ReferenceReleasesOnceAndGivesAwayWhenAsked) {
  const Make make = text(u"kept");
  CFReference<CFTypeRef> first{make()};
  CFReference<CFTypeRef> second{std::move(first)};
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): what is left of it is tested
  first = std::move(second);
  EXPECT_TRUE(first);
  CFTypeRef taken = first.take();
  EXPECT_FALSE(first);
  CFRelease(taken);
}

TEST_F(CFConversionTests, FakeSeesWhatIsReleasedTwice) {
  CFTypeRef object = text(u"gone")();
  CFRelease(object);
  CFRelease(object);
  EXPECT_THAT(fake().faults, ElementsAre("dead object in CFRelease"));
  fake().faults.clear();
}

}  // namespace
}  // namespace quorvex::darwin
