#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <regex>

#include "BatteryCommand.h"
#include "DarwinTest.h"
#include "FakeOutput.h"
#include "MacMachine.h"
#include "MonitorCommand.h"
#include "NetworkService.h"
#include "ProcessActivityService.h"
#include "RecordedDarwin.h"
#include "StatusCommand.h"

namespace quorvex::darwin {
namespace {

using quorvex::testing::FakeOutput;

/// The content of a machine file that ships, without the time that its tools take: real children
/// would need it on a real clock. It ends without an interrupt, which would end the tests.
MachineFile shippedFile(const std::string& name) {
  std::ifstream stream{std::filesystem::path{QUORVEX_MACHINES_FOLDER} / name};
  const std::string text{std::istreambuf_iterator<char>{stream}, {}};
  const std::string quick =
      std::regex_replace(text, std::regex{R"("seconds": *[0-9.]+)"}, R"("seconds": 0)");
  MachineFile file = std::get<MachineFile>(parseMachineFile(quick, name));
  if (file.atEnd == MachineFile::AtEnd::interrupt) {
    file.atEnd = MachineFile::AtEnd::hold;
  }
  if (!file.startedAt) {
    file.startedAt = Date{std::chrono::seconds{1'769'851'805}};
  }
  return file;
}

std::vector<std::string> shippedNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator{QUORVEX_MACHINES_FOLDER}) {
    if (entry.path().extension() == ".json") {
      names.push_back(entry.path().filename().string());
    }
  }
  std::ranges::sort(names);
  return names;
}

/// Everything that a run printed, on both streams.
struct Printed {
  std::vector<std::string> texts;
  std::vector<std::string> errors;
  bool operator==(const Printed&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Printed& printed) {
  for (const std::string& text : printed.texts) {
    stream << text;
  }
  for (const std::string& error : printed.errors) {
    stream << "Error: " << error << '\n';
  }
  return stream;
}

/// The same work on a recorded machine and on a Mac that answers the same: whatever comes out must
/// be the same to the letter.
class RecordedOnDarwinTests : public DarwinTest, public ::testing::WithParamInterface<std::string> {
 protected:
  /// The Mac's frameworks stay loaded, which is checked elsewhere.
  ~RecordedOnDarwinTests() override { librariesThatStay = fake().openCount("library"); }

  template <typename Work>
  void expectSame(const Work& work) {
    RecordedMachine expected{shippedFile(GetParam()), RecordedMachine::Pace::instant};
    RecordedMachine recorded{shippedFile(GetParam()), RecordedMachine::Pace::instant};
    fake().isLogging = false;
    const RecordedDarwin darwin{recorded};
    MacMachine mac{loader, darwin.root()};
    EXPECT_EQ(work(static_cast<Machine&>(mac)), work(static_cast<Machine&>(expected)));
  }

  template <typename Command>
  static Printed printed(Machine& machine, CommandLineOptions options) {
    FakeOutput output;
    Command{machine, output, options}.run();
    return {output.texts(), output.errors()};
  }

  [[nodiscard]] static double recordingSeconds() {
    return std::chrono::duration<double>(shippedFile(GetParam()).duration).count();
  }
};

TEST_P(RecordedOnDarwinTests, StatusIsTheSame) {
  expectSame([](Machine& machine) { return printed<StatusCommand>(machine, {}); });
  expectSame([](Machine& machine) { return printed<StatusCommand>(machine, {.json = true}); });
}

TEST_P(RecordedOnDarwinTests, StatusIsTheSameAtEveryMoment) {
  constexpr int moments = 30;
  const double step = recordingSeconds() / moments;
  expectSame([&](Machine& machine) {
    std::vector<SystemPowerState> states;
    FakeOutput output;
    for (int i = 0; i < moments; ++i) {
      states.push_back(StatusCommand{machine, output, {}}.readState());
      machine.clock().sleep(step);
    }
    return states;
  });
}

TEST_P(RecordedOnDarwinTests, BatteryIsTheSame) {
  expectSame([](Machine& machine) { return printed<BatteryCommand>(machine, {}); });
  expectSame([](Machine& machine) { return printed<BatteryCommand>(machine, {.json = true}); });
}

TEST_P(RecordedOnDarwinTests, MonitorIsTheSameOverTheWholeRecording) {
  constexpr std::size_t ticks = 60;
  for (const bool isJSON : {false, true}) {
    const CommandLineOptions options{.json = isJSON,
                                     .interval = recordingSeconds() / static_cast<double>(ticks)};
    expectSame([&](Machine& machine) {
      FakeOutput output;
      output.closeAtText(ticks);
      MonitorCommand{machine, output, options}.run();
      return Printed{output.texts(), output.errors()};
    });
  }
}

TEST_P(RecordedOnDarwinTests, ProcessesAndTheirTrafficAreTheSame) {
  expectSame([](Machine& machine) {
    return ProcessActivityService{machine.processTable(), machine.clock()}.sampleTopProcesses(5,
                                                                                              0.35);
  });
  expectSame([](Machine& machine) {
    return NetworkService{machine.interfaceTable(), machine.childProcesses(),
                          NetworkProcessAttributionMode::nettop}
        .snapshotProcessActivity();
  });
}

std::string testName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path{info.param}.stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Machines, RecordedOnDarwinTests, ::testing::ValuesIn(shippedNames()),
                         testName);

}  // namespace
}  // namespace quorvex::darwin
