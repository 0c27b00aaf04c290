#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <variant>

#include "MachineSelection.h"

namespace quorvex {
namespace {

/// Each test starts without the two variables and leaves none behind.
class MachineSelection : public testing::Test {
 public:
  MachineSelection() { clear(); }
  ~MachineSelection() override {
    clear();
    std::filesystem::remove(path_);
  }
  MachineSelection(const MachineSelection&) = delete;
  MachineSelection& operator=(const MachineSelection&) = delete;

 protected:
  /// Writes a machine file and selects it.
  void selectFile(const std::string& content) {
    std::ofstream{path_} << content;
    set("QUORVEX_MACHINE", path_.string());
  }

  static void set(const char* name, const std::string& value) {
    ASSERT_EQ(::setenv(name, value.c_str(), 1), 0);
  }

  /// The selected machine; null with a failed test when there is none.
  static std::unique_ptr<Machine> selected(PacePolicy policy) {
    auto result = selectMachine(policy);
    if (auto* error = std::get_if<MachineSelectionError>(&result)) {
      ADD_FAILURE() << error->message;
      return nullptr;
    }
    return std::get<std::unique_ptr<Machine>>(std::move(result));
  }

  static std::string refusal(PacePolicy policy = PacePolicy::asRecorded) {
    auto result = selectMachine(policy);
    const auto* error = std::get_if<MachineSelectionError>(&result);
    return error != nullptr ? error->message : "(accepted)";
  }

  /// Whether the clock moves by sleeps alone: then a sleep moves it by exactly its length.
  static bool isInstant(Machine& machine) {
    const auto before = machine.clock().monotonic();
    machine.clock().sleep(0.001);
    return machine.clock().monotonic() - before == std::chrono::milliseconds{1};
  }

  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  static void clear() {
    ASSERT_EQ(::unsetenv("QUORVEX_MACHINE"), 0);
    ASSERT_EQ(::unsetenv("QUORVEX_PACE"), 0);
  }

  std::filesystem::path path_ =
      std::filesystem::path{testing::TempDir()} /
      ("machine-selection-" +
       std::string{testing::UnitTest::GetInstance()->current_test_info()->name()} + ".json");
};

constexpr const char* instantFile =
    R"({"pace": "instant", "frames": [{"at": 0, "registry": {"Voltage": 11900}}]})";
constexpr const char* realFile = R"({"frames": [{"at": 0, "registry": {"Voltage": 11900}}]})";

TEST_F(MachineSelection, WithoutAFileTheRealMachineIsRead) {
  EXPECT_FALSE(isRecordedMachineSelected());
  const auto machine = selected(PacePolicy::asRecorded);
  EXPECT_FALSE(isInstant(*machine));
}

TEST_F(MachineSelection, EmptyNameCountsAsNotSet) {
  set("QUORVEX_MACHINE", "");
  EXPECT_FALSE(isRecordedMachineSelected());
  EXPECT_NE(selected(PacePolicy::asRecorded), nullptr);
}

TEST_F(MachineSelection, PaceIsNotLookedAtWithoutAFile) {
  set("QUORVEX_PACE", "sideways");
  EXPECT_NE(selected(PacePolicy::asRecorded), nullptr);
}

TEST_F(MachineSelection, NamedFileIsTheMachine) {
  selectFile(instantFile);
  EXPECT_TRUE(isRecordedMachineSelected());
  const auto machine = selected(PacePolicy::asRecorded);
  EXPECT_EQ(machine->batteryDictionaries().registry(), (Dictionary{{"Voltage", 11900}}));
  EXPECT_TRUE(isInstant(*machine));
}

TEST_F(MachineSelection, EnvironmentsPaceGoesBeforeTheFiles) {
  selectFile(realFile);
  set("QUORVEX_PACE", "instant");
  EXPECT_TRUE(isInstant(*selected(PacePolicy::asRecorded)));
  selectFile(instantFile);
  set("QUORVEX_PACE", "real");
  EXPECT_FALSE(isInstant(*selected(PacePolicy::asRecorded)));
}

TEST_F(MachineSelection, EmptyPaceCountsAsNotSet) {
  selectFile(instantFile);
  set("QUORVEX_PACE", "");
  EXPECT_TRUE(isInstant(*selected(PacePolicy::asRecorded)));
}

TEST_F(MachineSelection, InstantCountsAsRealWhereOnlyRealWillDo) {
  selectFile(instantFile);
  EXPECT_FALSE(isInstant(*selected(PacePolicy::realOnly)));
  set("QUORVEX_PACE", "instant");
  EXPECT_FALSE(isInstant(*selected(PacePolicy::realOnly)));
}

TEST_F(MachineSelection, AnotherPaceIsRefused) {
  selectFile(instantFile);
  set("QUORVEX_PACE", "fast");
  EXPECT_EQ(refusal(), R"(QUORVEX_PACE: must be "real" or "instant", not "fast")");
  EXPECT_EQ(refusal(PacePolicy::realOnly),
            R"(QUORVEX_PACE: must be "real" or "instant", not "fast")");
}

TEST_F(MachineSelection, FileThatCannotBeReadIsRefused) {
  set("QUORVEX_MACHINE", "/nowhere/machine.json");
  EXPECT_EQ(refusal(), "/nowhere/machine.json: cannot be read: No such file or directory");
}

TEST_F(MachineSelection, FileThatIsNoMachineIsRefusedWithItsPlace) {
  selectFile(R"({"frames": [{"at": 0}, {"at": 1}, {"at": "x"}]})");
  EXPECT_EQ(refusal(), path() + ": $.frames[2].at: must be a number");
}

}  // namespace
}  // namespace quorvex
