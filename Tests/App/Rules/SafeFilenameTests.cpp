#include <gtest/gtest.h>

#include "SafeFilename.h"

namespace quorvex {
namespace {

TEST(SafeFilename, LettersNumbersHyphensUnderscoresAndBlanksStay) {
  EXPECT_EQ(safeFilename("Idle test_2 - night"), "Idle test_2 - night");
}

TEST(SafeFilename, LettersOfEveryScriptStay) {
  EXPECT_EQ(safeFilename("Größe 測試 ٣"), "Größe 測試 ٣");
  EXPECT_EQ(safeFilename("Cafe\u0301"), "Cafe\u0301") << "an accent of its own is a mark";
}

TEST(SafeFilename, EveryOtherScalarBecomesOneHyphen) {
  EXPECT_EQ(safeFilename("a/b:c.d"), "a-b-c-d");
  EXPECT_EQ(safeFilename("run 🔋"), "run -");
  EXPECT_EQ(safeFilename("a\tb\nc"), "a-b-c");
}

TEST(SafeFilename, ATitleOfOnlySymbolsGivesHyphens) {
  EXPECT_EQ(safeFilename("***"), "---");
  EXPECT_EQ(SessionExportPanel::proposedName("?!"), "--.jsonl");
}

TEST(SafeFilename, BlanksAtTheEndsGo) {
  EXPECT_EQ(safeFilename("  idle  "), "idle");
}

TEST(SafeFilename, ABlankTitleGetsTheNameOfTheProgram) {
  EXPECT_EQ(SessionExportPanel::proposedName("   "), "Quorvex Session.jsonl");
  EXPECT_EQ(SessionExportPanel::proposedName(""), "Quorvex Session.jsonl");
}

TEST(SafeFilename, ABrokenSequenceIsOneScalar) {
  EXPECT_EQ(safeFilename("a\xff"
                         "b"),
            "a-b");
}

TEST(SessionExportPanel, AFailureIsToldWithItsReason) {
  EXPECT_EQ(SessionExportPanel::failureMessage("disk full"), "Session export failed: disk full");
}

TEST(SessionExportPanel, OnlyJSONLinesAreAllowed) {
  EXPECT_EQ(SessionExportPanel::fileExtension, "jsonl");
}

}  // namespace
}  // namespace quorvex
