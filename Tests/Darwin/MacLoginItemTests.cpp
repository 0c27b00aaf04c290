#include "DarwinTest.h"
#include "MacLoginItem.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

constexpr const char* framework =
    "/System/Library/Frameworks/ServiceManagement.framework/ServiceManagement";

class MacLoginItemTests : public DarwinTest {
 protected:
  MacLoginItemTests() {
    fake().libraries = {framework};
    librariesThatStay = 1;
  }

  MacLoginItem port{loader};
};

TEST_F(MacLoginItemTests, StatusIsTheServicesOwn) {
  const std::vector<std::pair<std::int64_t, LoginItemStatus>> all{
      {0, LoginItemStatus::notRegistered},    {1, LoginItemStatus::enabled},
      {2, LoginItemStatus::requiresApproval}, {3, LoginItemStatus::notFound},
      {4, LoginItemStatus::unknown},          {-1, LoginItemStatus::unknown}};
  for (const auto& [number, status] : all) {
    fake().loginItemStatus = number;
    EXPECT_EQ(port.status(), status) << number;
  }
}

TEST_F(MacLoginItemTests, FrameworkIsLoadedOnceAtTheFirstUse) {
  static_cast<void>(port.status());
  EXPECT_THAT(calls(),
              ElementsAre(std::string{"open "} + framework + " lazy", "objc_getClass SMAppService",
                          "objc_msgSend mainAppService", "objc_msgSend status"));
  static_cast<void>(port.status());
  EXPECT_EQ(calls().front(), "objc_getClass SMAppService");
}

TEST_F(MacLoginItemTests, RegisteringAndUnregisteringChangeTheStatus) {
  EXPECT_EQ(port.registerItem(), std::nullopt);
  EXPECT_EQ(port.status(), LoginItemStatus::enabled);
  EXPECT_EQ(port.unregisterItem(), std::nullopt);
  EXPECT_EQ(port.status(), LoginItemStatus::notRegistered);
}

TEST_F(MacLoginItemTests, FailureIsToldInTheSystemsWords) {
  fake().loginItemError = "Operation not permitted";
  EXPECT_EQ(port.registerItem(), "Operation not permitted");
  EXPECT_EQ(port.unregisterItem(), "Operation not permitted");
  EXPECT_EQ(port.status(), LoginItemStatus::notRegistered);
}

TEST_F(MacLoginItemTests, FailureWithoutWordsIsStillAFailure) {
  fake().loginItemError = "";
  fake().isErrorDescribed = false;
  EXPECT_EQ(port.registerItem(), "Unknown error");
}

TEST_F(MacLoginItemTests, SystemWithoutLoginItemsHasNoStatusAndSaysSo) {
  fake().libraries = {};
  fake().hasLoginItems = false;
  librariesThatStay = 0;
  EXPECT_EQ(port.status(), LoginItemStatus::unknown);
  EXPECT_EQ(port.registerItem(), "This system has no login items.");
  EXPECT_EQ(port.unregisterItem(), "This system has no login items.");
}

}  // namespace
}  // namespace quorvex::darwin
