#include <ostream>

#include "CommandTesting.h"

namespace quorvex::testing {
namespace {

/// One run whose whole outcome is kept as text, in golden/{name}.txt.
struct GoldenRun {
  std::string name;
  std::string machine;
  std::vector<std::string> arguments;
};

std::ostream& operator<<(std::ostream& stream, const GoldenRun& run) {
  return stream << run.name;
}

class GoldenTest : public ::testing::TestWithParam<GoldenRun> {};

TEST_P(GoldenTest, ShowsExactlyThis) {
  const GoldenRun& run = GetParam();
  expectGolden(run.name, programOn(run.machine).run(run.arguments));
}

/// The same on a machine file that ships with the program.
class ShippedGoldenTest : public ::testing::TestWithParam<GoldenRun> {};

TEST_P(ShippedGoldenTest, ShowsExactlyThis) {
  const GoldenRun& run = GetParam();
  const std::string file = std::string{QUORVEX_MACHINES_FOLDER} + "/" + run.machine + ".json";
  expectGolden(run.name, program()
                             .environment("QUORVEX_MACHINE", file)
                             .environment("QUORVEX_PACE", "instant")
                             .run(run.arguments));
}

std::string nameOf(const ::testing::TestParamInfo<GoldenRun>& info) {
  std::string name = info.param.name;
  std::erase(name, '-');
  return name;
}

INSTANTIATE_TEST_SUITE_P(
    Machines, GoldenTest,
    ::testing::Values(GoldenRun{"unplugged-status", "unplugged", {"status"}},
                      GoldenRun{"unplugged-status-json", "unplugged", {"status", "--json"}},
                      GoldenRun{"unplugged-battery", "unplugged", {"battery"}},
                      GoldenRun{"unplugged-battery-json", "unplugged", {"battery", "--json"}},
                      GoldenRun{"unplugged-monitor", "unplugged", {"monitor", "--no-color"}},
                      GoldenRun{"unplugged-monitor-json", "unplugged", {"monitor", "--json"}},
                      GoldenRun{"draining-on-ac-status", "draining-on-ac", {"status"}},
                      GoldenRun{"draining-on-ac-status-json", "draining-on-ac", {"--json"}},
                      GoldenRun{"draining-on-ac-battery", "draining-on-ac", {"battery"}},
                      GoldenRun{"desktop-status", "desktop", {"status", "--no-color"}},
                      GoldenRun{"desktop-status-json", "desktop", {"status", "--json"}},
                      GoldenRun{"desktop-battery", "desktop", {"battery"}},
                      GoldenRun{"full-on-ac-status", "full-on-ac", {"--no-color"}},
                      GoldenRun{"full-on-ac-battery-json", "full-on-ac", {"battery", "--json"}},
                      GoldenRun{"nothing-status", "nothing", {"status"}},
                      GoldenRun{"nothing-status-json", "nothing", {"status", "--json"}},
                      GoldenRun{"nothing-monitor", "nothing", {"monitor", "--interval", "5"}},
                      GoldenRun{"unknown-command", "nothing", {"foo"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Machines, ShippedGoldenTest,
    ::testing::Values(
        GoldenRun{"shipped-charging", "laptop-charging", {"status", "--no-color"}},
        GoldenRun{"shipped-full-on-ac", "laptop-full-on-ac", {"status", "--no-color"}},
        GoldenRun{"shipped-draining-on-ac", "laptop-draining-on-ac", {"status"}},
        GoldenRun{"shipped-fanless-hid", "laptop-fanless-hid", {"status"}},
        GoldenRun{"shipped-desktop-fans", "desktop-fans", {"status"}},
        GoldenRun{"shipped-helper", "helper-installed", {"status", "--no-color"}},
        GoldenRun{"shipped-hot", "laptop-hot", {"status"}},
        GoldenRun{"shipped-no-energy-library", "no-energy-library", {"status", "--json"}},
        GoldenRun{"shipped-silicon-incomplete", "silicon-incomplete", {"status", "--json"}}),
    nameOf);

}  // namespace
}  // namespace quorvex::testing
