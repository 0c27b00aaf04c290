#include <gtest/gtest.h>

#include "AppMenu.h"

namespace quorvex {
namespace {

TEST(AppMenuTests, CommandsHaveTheirTitles) {
  const CommandRow row = commandRow();
  EXPECT_EQ(row.openDashboard.title, "Open Dashboard");
  EXPECT_EQ(row.copyJSONReport.title, "Copy JSON Report");
  EXPECT_EQ(row.copyJSONReport.symbol, "doc.on.doc");
  EXPECT_EQ(row.quit.title, "Quit Quorvex");
}

TEST(AppMenuTests, SettingsIsAGearWithAName) {
  const CommandRow row = commandRow();
  EXPECT_EQ(row.settings.title, "");
  EXPECT_EQ(row.settings.symbol, "gearshape");
  EXPECT_EQ(row.settings.accessibilityLabel, "Settings");
}

TEST(AppMenuTests, EveryCommandHasAnAccessibleName) {
  const CommandRow row = commandRow();
  for (const CommandButton& button :
       {row.openDashboard, row.copyJSONReport, row.settings, row.quit}) {
    EXPECT_FALSE(button.accessibilityLabel.empty());
  }
}

}  // namespace
}  // namespace quorvex
