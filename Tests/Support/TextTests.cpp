#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Text.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Text, CharactersAreWhatAPersonCounts) {
  EXPECT_EQ(text::characterCount(""), 0U);
  EXPECT_EQ(text::characterCount("abc"), 3U);
  EXPECT_EQ(text::characterCount("Gerät"), 5U);
  EXPECT_EQ(text::characterCount("e\u0301"), 1U);                    // e with a combining accent
  EXPECT_EQ(text::characterCount("👩‍👩‍👧‍👦"), 1U);  // joined by zero-width joiners
  EXPECT_EQ(text::characterCount("🇩🇪🇫🇷"), 2U);    // two pairs of regional indicators
  EXPECT_EQ(text::characterCount("a\r\nb"), 3U);  // CR LF is one character
  EXPECT_EQ(text::characterCount("電力"), 2U);
}

TEST(Text, BrokenSequencesCountOneEach) {
  EXPECT_EQ(text::characterCount("a\xff"
                                 "b"),
            3U);
  EXPECT_EQ(text::characterCount("\xc3"), 1U);
}

TEST(Text, PrefixNeverSplitsACharacter) {
  EXPECT_EQ(text::prefix("Gerät", 4), "Gerä");
  EXPECT_EQ(text::prefix("e\u0301x", 1), "e\u0301");
  EXPECT_EQ(text::prefix("👩‍👩‍👧‍👦!", 1), "👩‍👩‍👧‍👦");
  EXPECT_EQ(text::prefix("ab", 5), "ab");
  EXPECT_EQ(text::prefix("ab", 0), "");
}

TEST(Text, PaddedOrCutHasExactlyTheWidth) {
  EXPECT_EQ(text::paddedOrCut("ab", 4), "ab  ");
  EXPECT_EQ(text::paddedOrCut("abcdef", 4), "abcd");
  EXPECT_EQ(text::paddedOrCut("ä", 3), "ä  ");
  EXPECT_EQ(text::paddedOrCut("", 2), "  ");
}

TEST(Text, LowerCaseFollowsUnicodeWithoutALocale) {
  EXPECT_EQ(text::lowercased("ABC xyz"), "abc xyz");
  EXPECT_EQ(text::lowercased("ÄÖÜ"), "äöü");
  EXPECT_EQ(text::lowercased("I"), "i");
  EXPECT_EQ(text::lowercased("İ"), "i\u0307");
}

TEST(Text, TrimmingTakesUnicodeWhiteSpaceAtBothEnds) {
  EXPECT_EQ(text::trimmed("  a b \n"), "a b");
  EXPECT_EQ(text::trimmed("\u00a0\u2003x\u3000"), "x");
  EXPECT_EQ(text::trimmed(" \t\r\n "), "");
  EXPECT_EQ(text::trimmed(""), "");
}

TEST(Text, TrimmingKeepsBrokenBytes) {
  EXPECT_EQ(text::trimmed(" \xff "), "\xff");
  EXPECT_EQ(text::trimmed("\x80\x80\x80\x80\x80"), "\x80\x80\x80\x80\x80");
}

TEST(Text, LinesSplitAtEveryNewlineAndDropEmptyOnes) {
  EXPECT_THAT(text::nonEmptyLines("a\nb\r\nc\rd\u2028e\u0085f"),
              ElementsAre("a", "b", "c", "d", "e", "f"));
  EXPECT_THAT(text::nonEmptyLines("\n\n a\n\n"), ElementsAre(" a"));
  EXPECT_THAT(text::nonEmptyLines(""), IsEmpty());
}

TEST(Text, WellFormedUTF8IsRecognised) {
  EXPECT_TRUE(text::isValidUTF8("Gerät 🔋"));
  EXPECT_TRUE(text::isValidUTF8(""));
  EXPECT_FALSE(text::isValidUTF8("\xc0\xaf"));          // overlong
  EXPECT_FALSE(text::isValidUTF8("\xed\xa0\x80"));      // surrogate
  EXPECT_FALSE(text::isValidUTF8("\xf4\x90\x80\x80"));  // past the last code point
  EXPECT_FALSE(text::isValidUTF8("a\xe2\x82"));         // cut
}

TEST(Text, RepairReplacesWhatIsBrokenAndNothingElse) {
  EXPECT_EQ(text::repairedUTF8("Gerät"), "Gerät");
  EXPECT_EQ(text::repairedUTF8("a\xff"
                               "b"),
            "a\uFFFDb");
  EXPECT_TRUE(text::isValidUTF8(text::repairedUTF8("\xe2\x82\xff\xc3")));
}

TEST(Text, ReplacingNonAlphanumericsKeepsLettersMarksAndNumbers) {
  EXPECT_EQ(text::replacingNonAlphanumerics("a b-c_d/é٣½\u0301€", "-_ ", '-'),
            "a b-c_d-é٣½\u0301-");
  EXPECT_EQ(text::replacingNonAlphanumerics("a b", "", '.'), "a.b");
  EXPECT_EQ(text::replacingNonAlphanumerics("", "-", '.'), "");
}

TEST(Text, ReplacingNonAlphanumericsTakesABrokenSequenceForOneCharacter) {
  EXPECT_EQ(text::replacingNonAlphanumerics("a\xe2\x82"
                                            "b\xff",
                                            "", '-'),
            "a-b-");
}

TEST(Text, MacOSRomanDecodesItsUpperHalf) {
  EXPECT_EQ(text::decodedMacOSRoman("flt "), "flt ");
  EXPECT_EQ(text::decodedMacOSRoman("\x8a\xa5\xdb"), "ä•€");
  EXPECT_EQ(text::decodedMacOSRoman(std::string_view{"\0a", 2}), (std::string_view{"\0a", 2}));
}

TEST(Text, MacOSRomanDecodesEveryByteOfItsUpperHalf) {
  std::string bytes;
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    bytes.push_back(static_cast<char>(byte));
  }
  EXPECT_EQ(text::decodedMacOSRoman(bytes),
            "ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü"
            "†°¢£§•¶ß®©™´¨≠ÆØ∞±≤≥¥µ∂∑∏π∫ªºΩæø"
            "¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ"
            "‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ\uF8FFÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ");
}

}  // namespace
}  // namespace quorvex
