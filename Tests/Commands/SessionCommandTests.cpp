#include <gmock/gmock.h>
#include <signal.h>

#include <algorithm>
#include <filesystem>

#include "CommandTesting.h"
#include "TemporaryFolder.h"

// `quorvex session` from outside, each test with a store of its own.

namespace quorvex::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace fs = std::filesystem;

class SessionProgram : public ::testing::Test {
 protected:
  /// The program with this test's store, on a machine of these tests.
  [[nodiscard]] ProcessRunner on(const std::string& machine) const {
    return programOn(machine)
        .environment("XDG_DATA_HOME", folder_.path().string())
        .environment("TZ", "UTC")
        .environment("LC_ALL", "en_US.UTF-8");
  }
  [[nodiscard]] ProcessRunner here() const { return on("nothing"); }
  /// Runs a subcommand that succeeds; its standard output.
  [[nodiscard]] std::string output(std::vector<std::string> words) const {
    words.insert(words.begin(), "session");
    const ProcessResult result = here().run(words);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.exitStatus, 0);
    return result.output;
  }
  /// Runs a subcommand that is refused; what it says of it.
  [[nodiscard]] std::string error(std::vector<std::string> words) const {
    words.insert(words.begin(), "session");
    const ProcessResult result = here().run(words);
    EXPECT_EQ(result.exitStatus, 0);
    return result.error;
  }
  /// Records the laptop that works for 6 s; the session's id.
  [[nodiscard]] std::string recorded(const std::string& title = "My run") const {
    const ProcessResult result = on("unplugged").run({"session", "record", title});
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.exitStatus, 0);
    return newestID();
  }
  [[nodiscard]] std::string newestID() const { return output({"list"}).substr(0, 36); }
  [[nodiscard]] std::string path(const char* name) const {
    return (folder_.path() / name).string();
  }
  static std::string content(const std::string& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
  }
  /// With the id, which is random, replaced.
  static std::string withoutID(std::string text, const std::string& id) {
    for (std::size_t at = text.find(id); at != std::string::npos; at = text.find(id)) {
      text.replace(at, id.size(), "{id}");
    }
    return text;
  }
  static std::size_t count(const std::string& text, std::string_view part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++found;
    }
    return found;
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(SessionProgram, ARecordingOnAMachineFileEndsByItsInterrupt) {
  const ProcessResult result = on("unplugged").run({"session", "record", "My run"});
  expectGolden("session-record", result);
}

TEST_F(SessionProgram, ShowWithItsStory) {
  const std::string id = recorded();
  ProcessResult result = here().run({"session", "show", id, "--story"});
  result.output = withoutID(result.output, id);
  expectGolden("session-show-story", result);
}

TEST_F(SessionProgram, ShowWithItsStoryAsJSON) {
  const std::string id = recorded();
  ProcessResult result = here().run({"session", "show", id, "--story", "--json"});
  result.output = withoutID(result.output, id);
  expectGolden("session-show-story-json", result);
}

TEST_F(SessionProgram, ShowWithoutAStoryHasNone) {
  EXPECT_THAT(output({"show", recorded()}), Not(HasSubstr("Story")));
}

TEST_F(SessionProgram, ListIsTheDefaultAndSaysWhenThereIsNothing) {
  EXPECT_EQ(output({}), "No sessions recorded.\n");
  EXPECT_EQ(output({"list"}), "No sessions recorded.\n");
  EXPECT_EQ(output({"--json"}), "{\n  \"sessions\" : []\n}\n");
}

TEST_F(SessionProgram, ListAsJSONWorksInBothOrders) {
  const std::string id = recorded();
  const std::string expected = output({"list", "--json"});
  EXPECT_EQ(output({"--json"}), expected);
  EXPECT_THAT(expected, AllOf(StartsWith("{\n  \"sessions\" : [\n    {\n      \"endedAt\" : \""),
                              HasSubstr("\"id\" : \"" + id + "\"")));
}

TEST_F(SessionProgram, AnOptionBeforeSessionHidesTheSubcommand) {
  const ProcessResult result = here().run({"--json", "session", "list"});
  EXPECT_EQ(result.error, "Error: Unknown session command: session\n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(SessionProgram, AnUnknownSubcommandShowsTheUsage) {
  expectGolden("session-unknown", here().run({"session", "foo"}));
}

TEST_F(SessionProgram, StorySwallowsTheIdBehindIt) {
  EXPECT_EQ(error({"show", "--story", recorded()}), "Error: Missing session id\n");
}

TEST_F(SessionProgram, MissingAndUnknownIdsAreTold) {
  const std::string unknown = "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0";
  for (const char* word : {"show", "export", "delete"}) {
    EXPECT_EQ(error({word}), "Error: Missing session id\n") << word;
    EXPECT_EQ(error({word, "x"}), "Error: Missing session id\n") << word;
    EXPECT_EQ(error({word, unknown, "--output", path("f")}),
              "Error: Session not found: " + unknown + "\n")
        << word;
  }
  EXPECT_EQ(error({"export", unknown}), "Error: Missing --output <path>\n");
}

TEST_F(SessionProgram, AnExportHasTheEnvelopeAndALineForEachSample) {
  const std::string id = recorded();
  EXPECT_EQ(output({"export", id, "--output", path("f.jsonl")}),
            "Exported My run to " + path("f.jsonl") + "\n");
  const std::string text = content(path("f.jsonl"));
  EXPECT_EQ(count(text, "\n"), 4U);
  EXPECT_EQ(count(text, "\"recordType\":\"session\""), 1U);
  EXPECT_EQ(count(text, "\"recordType\":\"sample\""), 3U);
}

TEST_F(SessionProgram, AnExportThatFailsLeavesNothingBehind) {
  const std::string id = recorded();
  fs::create_directory(path("folder"));
  EXPECT_EQ(error({"export", id, "--output", path("folder")}),
            "Error: " + path("folder") + ": Is a directory\n");
  EXPECT_EQ(error({"export", id, "--output", path("none/f")}),
            "Error: " + path("none/f") + ": No such file or directory\n");
  EXPECT_TRUE(fs::is_empty(path("folder")));
  // The store's own folder and the one made here.
  EXPECT_EQ(std::distance(fs::directory_iterator{path("")}, fs::directory_iterator{}), 2);
}

TEST_F(SessionProgram, DeleteRemovesTheSession) {
  const std::string id = recorded();
  EXPECT_EQ(output({"delete", id}), "Deleted My run\n");
  EXPECT_EQ(output({"list"}), "No sessions recorded.\n");
}

TEST_F(SessionProgram, ASecondRecorderIsRefusedAndTheFirstGoesOn) {
  RunningProcess first =
      on("waiting").start({"session", "record", "One", "--json", "--interval", "0"});
  first.readUntil("\"sample\"");
  const ProcessResult second = on("unplugged").run({"session", "record", "Two"});
  EXPECT_EQ(second.output, "");
  EXPECT_EQ(second.error, "Error: A session is already active: One (" + newestID() +
                              "). Stop it before starting a CLI recording.\n");
  EXPECT_EQ(second.exitStatus, 0);
  first.sendSignal(SIGINT);
  const ProcessResult ended = first.finish();
  EXPECT_THAT(ended.output, HasSubstr("\"completed\""));
  EXPECT_EQ(ended.exitStatus, 0);
  EXPECT_THAT(output({"list"}), HasSubstr("  completed  One  "));
}

TEST_F(SessionProgram, AKilledRecorderLeavesEveryAnnouncedSampleAndAnActiveSession) {
  RunningProcess recorder =
      on("waiting").start({"session", "record", "Run", "--json", "--interval", "0"});
  recorder.readUntil("\"sample\"");
  recorder.sendSignal(SIGKILL);
  const ProcessResult killed = recorder.finish();
  EXPECT_EQ(killed.exitStatus, 128 + SIGKILL);
  const std::size_t announced = count(killed.output, "\"sample\"");
  EXPECT_GE(announced, 1U);
  EXPECT_THAT(output({"list"}), HasSubstr("  active  Run  "));
  static_cast<void>(output({"export", newestID(), "--output", path("f")}));
  const std::size_t stored = count(content(path("f")), "\"recordType\":\"sample\"");
  EXPECT_GE(stored, announced);
  EXPECT_LE(stored, announced + 1);
  EXPECT_THAT(error({"record"}), StartsWith("Error: A session is already active: Run ("));
}

TEST_F(SessionProgram, CtrlCOnATerminalEndsTheRecordingInOrder) {
  RunningProcess recorder = on("waiting").start(
      {"session", "record", "Run", "--json", "--interval", "0"}, OutputKind::terminal);
  recorder.readUntil("\"sample\"");
  recorder.type("\x03");
  const ProcessResult result = recorder.finish();
  EXPECT_THAT(result.output, HasSubstr("\"completed\""));
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(output({"list"}), HasSubstr("  completed  Run  "));
}

TEST_F(SessionProgram, AReaderThatHasGoneEndsTheRecordingQuietly) {
  const ProcessResult result = on("waiting").run({"session", "record", "Run"}, OutputKind::nobody);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(output({"list"}), HasSubstr("  completed  Run  "));
}

TEST_F(SessionProgram, ADayOfWorkIsRecordedOnItsVirtualClock) {
  const ProcessResult result =
      here()
          .environment("QUORVEX_MACHINE",
                       std::string{QUORVEX_MACHINES_FOLDER} + "/day-of-work.json")
          .environment("QUORVEX_PACE", "instant")
          .run({"session", "record", "Day", "--interval", "300"});
  EXPECT_EQ(result.exitStatus, 0);
  // The day's 86400 s end within the last sleep of 300 s.
  EXPECT_THAT(result.output, HasSubstr("\nCompleted Day: 86"));
  EXPECT_THAT(output({"show", newestID()}),
              AllOf(HasSubstr("\nStarted: 2026-03-10 07:00:00 +0000\n"),
                    HasSubstr("\nEnded: 2026-03-11 07:0")));
}

}  // namespace
}  // namespace quorvex::testing
