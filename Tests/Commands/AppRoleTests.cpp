#include <gmock/gmock.h>

#include "CommandTesting.h"

// The app role from outside, as far as it needs no display.

namespace quorvex::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(AppRole, ChecksTheMachineFileFirst) {
  const ProcessResult result = programOn("misspelt").run({});
  EXPECT_THAT(result.error, HasSubstr("$.frames[0].registery"));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.exitStatus, 1);
}

TEST(AppRole, AnyArgumentEvenOneThatIsNotUnderstoodMakesItTheCommandLine) {
  const ProcessRunner runner = programOn("unplugged");
  for (const char* argument : {"--no-such-option", "no-such-command", "-psn_0_12345", " ", ""}) {
    const ProcessResult result = runner.run({argument});
    EXPECT_EQ(result.exitStatus, 0) << argument;
    EXPECT_FALSE(result.output.empty() && result.error.empty()) << argument;
    EXPECT_THAT(result.error, Not(HasSubstr("display"))) << argument;
  }
}

TEST(AppRole, WithoutAnArgumentTheProcessIsTheApp) {
  // Which has nothing to show itself on.
  const ProcessResult result = program()
                                   .environment("DISPLAY", "")
                                   .environment("WAYLAND_DISPLAY", "")
                                   .environment("QT_QPA_PLATFORM", "")
                                   .run({});
  EXPECT_THAT(result.error, HasSubstr("There is no display to show the app on."));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.exitStatus, 1);
}

}  // namespace
}  // namespace quorvex::testing
