#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BatteryCommand.h"
#include "FakeMachine.h"
#include "FakeOutput.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(BatteryCommand, WithoutABatteryTellsAnErrorAndPrintsNothing) {
  testing::FakeMachine machine;
  testing::FakeOutput output;
  BatteryCommand{machine, output, {}}.run();
  EXPECT_THAT(output.errors(), ElementsAre("No battery found."));
  EXPECT_THAT(output.texts(), IsEmpty());
}

TEST(BatteryCommand, WithoutABatteryPrintsNothingWithJSONEither) {
  testing::FakeMachine machine;
  testing::FakeOutput output;
  BatteryCommand{machine, output, {.json = true}}.run();
  EXPECT_THAT(output.errors(), ElementsAre("No battery found."));
  EXPECT_THAT(output.texts(), IsEmpty());
}

TEST(BatteryCommand, PrintsTheDetailsInOneTextWithANewline) {
  testing::FakeMachine machine;
  machine.battery.registryAnswer = Dictionary{{"CurrentCapacity", 80}};
  testing::FakeOutput output;
  BatteryCommand{machine, output, {}}.run();
  ASSERT_EQ(output.texts().size(), 1U);
  EXPECT_THAT(output.printed(), ::testing::StartsWith("╭─ Battery Detail ─"));
  EXPECT_THAT(output.printed(), ::testing::EndsWith("╯\n"));
  EXPECT_THAT(output.printed(), Not(HasSubstr("\x1b")));
}

TEST(BatteryCommand, PrintsJSONInOneTextWithANewline) {
  testing::FakeMachine machine;
  machine.battery.registryAnswer = Dictionary{{"CurrentCapacity", 80}};
  testing::FakeOutput output;
  BatteryCommand{machine, output, {.json = true}}.run();
  ASSERT_EQ(output.texts().size(), 1U);
  EXPECT_THAT(output.printed(), ::testing::StartsWith("{\n  \"acConnected\" : false,\n"));
  EXPECT_THAT(output.printed(), ::testing::EndsWith("}\n"));
}

TEST(BatteryCommand, ReadsTheBatteryAndNothingElse) {
  testing::FakeMachine machine;
  testing::FakeOutput output;
  BatteryCommand{machine, output, {}}.run();
  EXPECT_THAT(machine.asked(), ElementsAre("batteryDictionaries"));
}

TEST(BatteryCommand, ATextThatIsNoUTF8MakesTheReportEmpty) {
  testing::FakeMachine machine;
  machine.battery.powerSourceAnswer = Dictionary{{"BatteryHealth", "Good\xff"}};
  testing::FakeOutput output;
  BatteryCommand{machine, output, {.json = true}}.run();
  EXPECT_EQ(output.printed(), "{}\n");
}

}  // namespace
}  // namespace quorvex
