#include <gtest/gtest.h>

#include "HelperStatus.h"

namespace quorvex {
namespace {

HelperStatus usableStatus() {
  return {.isInstalled = true,
          .isExecutable = true,
          .isSetuidRoot = true,
          .ownerUserID = 0,
          .groupID = 0,
          .installedVersion = "0.14.0",
          .supportsProTelemetry = true,
          .path = "/x",
          .error = std::nullopt};
}

TEST(HelperStatus, UsableWhenEverythingHolds) {
  EXPECT_TRUE(usableStatus().isUsable());
}

TEST(HelperStatus, UsableNeedsEachConditionAlone) {
  for (bool HelperStatus::*flag :
       {&HelperStatus::isInstalled, &HelperStatus::isExecutable, &HelperStatus::isSetuidRoot,
        &HelperStatus::supportsProTelemetry}) {
    HelperStatus status = usableStatus();
    status.*flag = false;
    EXPECT_FALSE(status.isUsable());
  }
  for (const std::int64_t owner : {-1, 1, 501}) {
    HelperStatus status = usableStatus();
    status.ownerUserID = owner;
    EXPECT_FALSE(status.isUsable()) << owner;
  }
}

TEST(HelperStatus, GroupVersionAndErrorPlayNoPart) {
  HelperStatus status = usableStatus();
  status.groupID = 501;
  status.installedVersion.reset();
  status.error = "something";
  EXPECT_TRUE(status.isUsable());
}

TEST(HelperStatus, DefaultKnowsNoOwnerAndIsNotUsable) {
  EXPECT_EQ(HelperStatus{}.ownerUserID, -1);
  EXPECT_EQ(HelperStatus{}.groupID, -1);
  EXPECT_FALSE(HelperStatus{}.isUsable());
}

}  // namespace
}  // namespace quorvex
