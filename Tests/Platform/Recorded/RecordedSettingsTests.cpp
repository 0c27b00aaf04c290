#include "RecordedTesting.h"

namespace quorvex {
namespace {

constexpr const char* machineText = R"({"pace": "instant", "frames": [{"at": 0}]})";

TEST(RecordedUserDefaults, MachineBeginsWithoutSettingsAndKeepsThoseThatAreMade) {
  const auto machine = machineOf(machineText);
  UserDefaults& defaults = machine->userDefaults();
  EXPECT_EQ(defaults.value("refreshInterval"), std::nullopt);
  defaults.setValue("refreshInterval", 2.0);
  EXPECT_EQ(defaults.value("refreshInterval"), UserDefaultsValue{2.0}) << "its type too";
  defaults.removeValue("refreshInterval");
  EXPECT_EQ(defaults.value("refreshInterval"), std::nullopt);
}

TEST(RecordedUserDefaults, EveryMachineHasItsOwn) {
  const auto first = machineOf(machineText);
  const auto second = machineOf(machineText);
  first->userDefaults().setValue("key", true);
  EXPECT_TRUE(first->userDefaults().boolean("key", false));
  EXPECT_FALSE(second->userDefaults().boolean("key", false));
}

TEST(RecordedLoginItem, IsRegisteredAndUnregisteredInEachMachineByItself) {
  const auto first = machineOf(machineText);
  const auto second = machineOf(machineText);
  EXPECT_EQ(first->loginItem().status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(first->loginItem().registerItem(), std::nullopt);
  EXPECT_EQ(first->loginItem().status(), LoginItemStatus::enabled);
  EXPECT_EQ(second->loginItem().status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(first->loginItem().unregisterItem(), std::nullopt);
  EXPECT_EQ(first->loginItem().status(), LoginItemStatus::notRegistered);
}

}  // namespace
}  // namespace quorvex
