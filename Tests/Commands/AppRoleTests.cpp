#include <gmock/gmock.h>

#include "CommandTesting.h"

// The app role from outside, as far as it needs no display.

namespace quorvex::testing {
namespace {

using ::testing::HasSubstr;

TEST(AppRole, ChecksTheMachineFileFirst) {
  const ProcessResult result = programOn("misspelt").run({});
  EXPECT_THAT(result.error, HasSubstr("$.frames[0].registery"));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.exitStatus, 1);
}

}  // namespace
}  // namespace quorvex::testing
