#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "Text.h"
#include "TextBox.h"

namespace quorvex {
namespace {

using Lines = std::vector<std::string>;

TEST(TextBox, WithoutLinesIsOneEdgeOverTheOther) {
  EXPECT_EQ(box("Fans", Lines{}),
            "╭─ Fans ────────────────────────────────╮\n"
            "╰────────────────────────────────────────╯");
}

TEST(TextBox, IsFortyColumnsWideInside) {
  const std::string text = box("Fans", Lines{});
  const std::string_view top = std::string_view{text}.substr(0, text.find('\n'));
  const std::string_view bottom = std::string_view{text}.substr(text.find('\n') + 1);
  // Top: two corners around "─ Fans " (7) and 40 - 4 - 4 = 32 lines; bottom: corners around 40.
  EXPECT_EQ(text::characterCount(top), 2U + 7U + 32U);
  EXPECT_EQ(text::characterCount(bottom), 2U + 40U);
}

TEST(TextBox, TheBottomEdgeIsOneColumnLongerThanTopAndBody) {
  const std::string text = box("T", Lines{" abc"});
  std::vector<std::size_t> lengths;
  for (const auto line : text::nonEmptyLines(text)) {
    lengths.push_back(text::characterCount(line));
  }
  EXPECT_THAT(lengths, ::testing::ElementsAre(41U, 41U, 42U));
}

TEST(TextBox, ATitleOfThirtySixCharactersStillFits) {
  const std::string title(36, 't');
  EXPECT_EQ(box(title, Lines{}), fmt::format("╭─ {} ╮\n╰{}╯", title, repeated("─", 40)));
}

TEST(TextBox, ALongerTitleWidensTheBox) {
  const std::string title(37, 't');
  EXPECT_EQ(box(title, Lines{" x"}),
            fmt::format("╭─ {} ╮\n│ x{}│\n╰{}╯", title, std::string(38, ' '), repeated("─", 41)));
}

TEST(TextBox, ALongLineWidensTheBoxAndKeepsABlankBeforeTheEdge) {
  const std::string line = fmt::format(" {:x>40}", "");
  // 41 characters and 2 make 43; 43 - 41 - 1 = 1 blank.
  EXPECT_EQ(box("T", Lines{line}),
            fmt::format("╭─ T {}╮\n│{} │\n╰{}╯", repeated("─", 38), line, repeated("─", 43)));
}

TEST(TextBox, ColouredLinesArePaddedByWhatIsSeen) {
  const std::string plain = box("T", Lines{" abc", " defgh"});
  std::string coloured = box("T", Lines{" \x1b[31mabc\x1b[0m", " d\x1b[1;32mef\x1b[mgh"});
  for (const std::string_view sequence : {"\x1b[31m", "\x1b[0m", "\x1b[1;32m", "\x1b[m"}) {
    coloured.erase(coloured.find(sequence), sequence.size());
  }
  EXPECT_EQ(coloured, plain);
}

TEST(VisibleLength, CountsCharactersAsPeopleDo) {
  EXPECT_EQ(visibleLength(""), 0U);
  EXPECT_EQ(visibleLength("↓12 °C"), 6U);
  EXPECT_EQ(visibleLength("e\xCC\x81"), 1U);
}

TEST(VisibleLength, LeavesColourSequencesOut) {
  EXPECT_EQ(visibleLength("\x1b[31mabc\x1b[0m"), 3U);
  EXPECT_EQ(visibleLength("\x1b[m\x1b[;m\x1b[0;1;31m"), 0U);
}

TEST(VisibleLength, CountsWhatIsNoColourSequence) {
  EXPECT_EQ(visibleLength("\x1b[2K"), 4U);
  EXPECT_EQ(visibleLength("\x1b[31"), 4U);
  EXPECT_EQ(visibleLength("\x1b["), 2U);
  EXPECT_EQ(visibleLength("\x1b"), 1U);
}

TEST(Colored, SurroundsWithTheSequenceAndTheReset) {
  EXPECT_EQ(colored("a", ANSIColor::green, true), "\x1b[32ma\x1b[0m");
  EXPECT_EQ(colored("a", ANSIColor::yellow, true), "\x1b[33ma\x1b[0m");
  EXPECT_EQ(colored("a", ANSIColor::red, true), "\x1b[31ma\x1b[0m");
}

TEST(Colored, IsTheTextAloneWithoutColour) {
  EXPECT_EQ(colored("a", ANSIColor::red, false), "a");
}

TEST(HorizontalBar, CutsToWholeCells) {
  EXPECT_EQ(horizontalBar(0.0, 10.0, 4), "░░░░");
  EXPECT_EQ(horizontalBar(4.9, 10.0, 4), "█░░░");  // 1.96 cells
  EXPECT_EQ(horizontalBar(5.0, 10.0, 4), "██░░");
  EXPECT_EQ(horizontalBar(10.0, 10.0, 4), "████");
}

TEST(HorizontalBar, StaysWithinItsWidth) {
  EXPECT_EQ(horizontalBar(1e300, 10.0, 4), "████");
  EXPECT_EQ(horizontalBar(-5.0, 10.0, 4), "░░░░");
}

TEST(HorizontalBar, IsEmptyWithoutAScale) {
  EXPECT_EQ(horizontalBar(5.0, 0.0, 4), "░░░░");
  EXPECT_EQ(horizontalBar(5.0, -1.0, 4), "░░░░");
}

TEST(HorizontalBar, IsEmptyForWhatIsNoNumber) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(horizontalBar(std::numeric_limits<double>::quiet_NaN(), 10.0, 4), "░░░░");
  EXPECT_EQ(horizontalBar(infinity, infinity, 4), "░░░░");
}

}  // namespace
}  // namespace quorvex
