#include <gtest/gtest.h>

#include "AppScenes.h"

namespace quorvex {
namespace {

TEST(AppScenesTests, MenuBarItemIsFixed) {
  EXPECT_EQ(AppScenes::menuBarTitle, "Quorvex");
  EXPECT_EQ(AppScenes::menuBarSymbol, "bolt.fill");
}

TEST(AppScenesTests, DashboardWindowHasTitleIDAndSize) {
  EXPECT_EQ(AppScenes::dashboardTitle, "Quorvex Dashboard");
  EXPECT_EQ(AppScenes::dashboardID, "dashboard");
  EXPECT_EQ(AppScenes::dashboardDefaultWidth, 480);
  EXPECT_EQ(AppScenes::dashboardDefaultHeight, 700);
}

TEST(AppScenesTests, StoreFailureCarriesTheError) {
  EXPECT_EQ(AppScenes::storeFailureMessage("out of memory"),
            "Unable to initialize Quorvex session store: out of memory");
}

}  // namespace
}  // namespace quorvex
