#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <filesystem>
#include <limits>

#include "AppVersion.h"
#include "FakeMachine.h"
#include "FakeOutput.h"
#include "SessionCommand.h"
#include "SessionRecording.h"
#include "TemporaryFolder.h"

namespace quorvex {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace fs = std::filesystem;

/// A laptop that draws 12 V * 1 A = 12 W, with a store of its own. Nothing ever sleeps for real.
class SessionCommandTest : public ::testing::Test {
 protected:
  SessionCommandTest() {
    setenv("XDG_DATA_HOME", folder_.path().c_str(), 1);
    machine.energy.setFails(testing::FakeEnergyLibrary::Step::open);
    machine.battery.registryAnswer = Dictionary{{"CurrentCapacity", 80},
                                                {"Voltage", 12000},
                                                {"Amperage", -1000},
                                                {"ExternalConnected", false}};
  }
  void TearDown() override { unsetenv("XDG_DATA_HOME"); }

  void run(std::vector<std::string> words, CommandLineOptions options = {}) {
    words.insert(words.begin(), "session");
    SessionCommand{machine, output, std::move(words), options}.run();
  }
  /// Records until the n-th sleep is interrupted. Only the sleeps between samples are counted: on
  /// this machine nothing else sleeps.
  void record(std::vector<std::string> words, int samples, CommandLineOptions options = {}) {
    int sleeps = 0;
    machine.time.duringSleep([&sleeps, samples] {
      if (++sleeps == samples) {
        raise(SIGINT);
      }
    });
    words.insert(words.begin(), "record");
    run(std::move(words), options);
    machine.time.duringSleep({});
  }
  std::unique_ptr<PowerSessionStore> store() {
    auto opened = PowerSessionStore::open({.appVersion = "0"}, machine.time);
    EXPECT_TRUE(opened);
    return opened ? *std::move(opened) : nullptr;
  }
  std::shared_ptr<PowerSession> onlySession(PowerSessionStore& from) {
    const auto all = *from.sessions();
    EXPECT_THAT(all, SizeIs(1));
    return all.empty() ? nullptr : all.front();
  }
  [[nodiscard]] fs::path inFolder(const char* name) const { return folder_.path() / name; }

  testing::FakeMachine machine;
  testing::FakeOutput output;

 private:
  testing::TemporaryFolder folder_;
};

TEST_F(SessionCommandTest, RecordAnnouncesReportsAndCompletes) {
  record({"My run"}, 3, {.interval = 30.0});
  EXPECT_THAT(output.errors(), IsEmpty());
  // 12 W for 30 s are 0.1 Wh. The session ends with the third sleep, after 90 s: 0.2 Wh over 90 s.
  EXPECT_THAT(
      output.texts(),
      ElementsAre("Recording session \"My run\". Press Ctrl-C to stop.\n",
                  "\r12.0W avg 12.0W 0.000Wh samples 1", "\r12.0W avg 12.0W 0.100Wh samples 2",
                  "\r12.0W avg 12.0W 0.200Wh samples 3",
                  "\nCompleted My run: 90s, 8.0W avg, 0.200Wh, 0% battery, 3 samples\n"));
}

TEST_F(SessionCommandTest, ARecordedSessionIsStoredWithItsSourceIntervalAndVersion) {
  record({}, 2, {.interval = 0.5});
  const auto opened = store();
  const auto session = onlySession(*opened);
  EXPECT_EQ(session->status(), PowerSessionStatus::completed);
  EXPECT_EQ(session->source(), PowerSessionSource::cli);
  EXPECT_EQ(session->appVersion(), AppVersion::shortText);
  EXPECT_EQ(session->sampleInterval(), 0.5);
  EXPECT_THAT(session->title(), StartsWith("Power Session "));
  EXPECT_EQ(secondsBetween(session->startedAt(), *session->endedAt()), 1.0);
  const auto samples = opened->samples(*session);
  ASSERT_THAT(samples, SizeIs(2));
  EXPECT_EQ(samples[1]->elapsedSeconds(), 0.5);
  EXPECT_EQ(samples[1]->totalWatts(), 12.0);
}

TEST_F(SessionCommandTest, IntervalHalfASecondIsStored) {
  record({"--interval", "0.5"}, 1, {.interval = 0.5});
  EXPECT_EQ(onlySession(*store())->sampleInterval(), 0.5);
}

TEST_F(SessionCommandTest, TheNameIsTheFirstPositionalArgument) {
  record({"My run", "other"}, 1);
  EXPECT_EQ(onlySession(*store())->title(), "My run");
}

TEST_F(SessionCommandTest, ANameMayBeginWithASingleDash) {
  record({"-x"}, 1);
  EXPECT_EQ(onlySession(*store())->title(), "-x");
}

TEST_F(SessionCommandTest, AnInterruptDuringTheFirstSampleLetsItBeStoredAndTheSleepRunOut) {
  // The two walks of the process table are part of taking the sample.
  machine.processes.setProcess(7, "busy", {});
  machine.time.duringSleep([first = true]() mutable {
    if (std::exchange(first, false)) {
      raise(SIGINT);
    }
  });
  run({"record"}, {.interval = 5.0});
  machine.time.duringSleep({});
  EXPECT_EQ(machine.time.sleeps().back(), 5.0);
  EXPECT_GE(machine.time.sleeps().size(), 2U);
  EXPECT_THAT(store()->samples(*onlySession(*store())), SizeIs(1));
  EXPECT_THAT(output.texts().back(), HasSubstr(", 1 samples\n"));
}

TEST_F(SessionCommandTest, AfterTheCommandTheInterruptSignalIsAsItWas) {
  struct sigaction before {};
  sigaction(SIGINT, nullptr, &before);
  record({}, 1);
  struct sigaction after {};
  sigaction(SIGINT, nullptr, &after);
  EXPECT_EQ(after.sa_handler, before.sa_handler);
}

TEST_F(SessionCommandTest, WithoutAPrimaryReadingThereIsNoProgress) {
  machine.battery.registryAnswer.reset();
  record({"Run"}, 2);
  EXPECT_THAT(output.texts(), SizeIs(2));
  EXPECT_THAT(output.printed(), Not(HasSubstr("\r")));
  EXPECT_THAT(output.printed(), HasSubstr(", 2 samples\n"));
}

TEST_F(SessionCommandTest, RecordAsJSONIsOneDocumentAnEvent) {
  record({"Run"}, 1, {.json = true});
  const std::string id = onlySession(*store())->id().text();
  ASSERT_THAT(output.texts(), SizeIs(3));
  EXPECT_EQ(output.texts()[0], "{\n  \"event\" : \"started\",\n  \"id\" : \"" + id +
                                   "\",\n  \"title\" : \"Run\"\n}\n");
  EXPECT_EQ(output.texts()[1],
            "{\n  \"event\" : \"sample\",\n  \"id\" : \"" + id +
                "\",\n  \"timestamp\" : \"2023-11-14T22:13:20Z\",\n  \"watts\" : 12\n}\n");
  EXPECT_THAT(output.texts()[2],
              StartsWith("{\n  \"event\" : \"completed\",\n  \"id\" : \"" + id +
                         "\",\n  \"summary\" : {\n    \"averageWatts\" : 12,\n"));
}

TEST_F(SessionCommandTest, AJSONSampleWithoutAPrimaryReadingHasNoWatts) {
  machine.battery.registryAnswer.reset();
  record({}, 1, {.json = true});
  EXPECT_THAT(output.texts()[1], AllOf(HasSubstr("\"sample\""), Not(HasSubstr("watts"))));
}

TEST_F(SessionCommandTest, NettopRunsOnEverySample) {
  record({}, 3);
  EXPECT_EQ(machine.children.launches().size(), 3U);
}

TEST_F(SessionCommandTest, ProcessesAreSampledEveryTenSeconds) {
  machine.processes.setProcess(7, "busy", {});
  // Samples 4 s apart, the sleep of the process walk included where there is one: at 0, 4.35,
  // 8.35 and 12.35 s.
  int betweenSamples = 0;
  machine.time.duringSleep([&] {
    if (machine.time.sleeps().back() == 4.0 && ++betweenSamples == 4) {
      raise(SIGINT);
    }
  });
  run({"record"}, {.interval = 4.0});
  machine.time.duringSleep({});
  EXPECT_THAT(machine.time.sleeps(), ElementsAre(0.35, 4.0, 4.0, 4.0, 0.35, 4.0));
}

TEST_F(SessionCommandTest, ASecondRecorderIsRefused) {
  const auto opened = store();
  const auto active =
      *opened->startSession("First", PowerSessionSource::app, 2.0, machine.time.now());
  run({"record", "Second"});
  EXPECT_THAT(output.errors(),
              ElementsAre("A session is already active: First (" + active->id().text() +
                          "). Stop it before starting a CLI recording."));
  EXPECT_THAT(output.texts(), IsEmpty());
  EXPECT_THAT(*opened->sessions(), SizeIs(1));
}

TEST_F(SessionCommandTest, ASampleThatCannotBeStoredEndsTheCommandAndLeavesTheSessionActive) {
  machine.time.duringSleep([&] {
    // Another process deletes the session meanwhile.
    const auto other = store();
    ASSERT_TRUE(other->deleteSession(**other->activeSession()));
  });
  run({"record", "Run"});
  machine.time.duringSleep({});
  EXPECT_THAT(output.errors(), ElementsAre("The session is no longer in the store"));
  EXPECT_THAT(output.printed(), Not(HasSubstr("Completed")));
}

TEST_F(SessionCommandTest, AReaderThatGoesAwayEndsTheRecordingInOrder) {
  output.closeAtText(3);
  run({"record", "Run"});
  EXPECT_EQ(onlySession(*store())->status(), PowerSessionStatus::completed);
  EXPECT_THAT(store()->samples(*onlySession(*store())), SizeIs(2));
}

TEST_F(SessionCommandTest, TemperaturesComeFromTheFirstSourceThatHasAnyAndFansAfterThem) {
  machine.smcFake.set("FNum", "ui8 ", {0});
  machine.hid.setServices(std::vector<HIDTemperatureService>{{"PMU tdie1", 44.0}});
  const auto opened = store();
  SessionRecording recording{
      machine, output, *opened, {}, *opened->startSession("R", PowerSessionSource::cli, 2.0, {})};
  const SystemPowerState state = recording.readState(Date{std::chrono::seconds{5}}, {});
  ASSERT_THAT(state.sensors, SizeIs(1));
  EXPECT_EQ(state.sensors.front().temperature, 44.0);
  EXPECT_EQ(state.timestamp, Date{std::chrono::seconds{5}});
  machine.smcFake.setFloat("TB1T", 31.5F);
  EXPECT_EQ(recording.readState({}, {}).sensors.front().temperature, 31.5);
}

TEST_F(SessionCommandTest, AnEmptyStoreListsNothing) {
  run({});
  run({"list"}, {.json = true});
  EXPECT_THAT(output.texts(),
              ElementsAre("No sessions recorded.\n", "{\n  \"sessions\" : []\n}\n"));
}

TEST_F(SessionCommandTest, ListNamesEverySessionNewestFirst) {
  record({"Old"}, 1);
  record({"New"}, 1);
  const auto all = *store()->sessions();
  testing::FakeOutput listed;
  SessionCommand{machine, listed, {"session", "list"}, {}}.run();
  EXPECT_THAT(
      listed.texts(),
      ElementsAre(all[0]->id().text() +
                      "  completed  New  2s, 12.0W avg, Wh unavailable, 0% battery, 1 samples\n",
                  all[1]->id().text() +
                      "  completed  Old  2s, 12.0W avg, Wh unavailable, 0% battery, 1 samples\n"));
}

TEST_F(SessionCommandTest, ShowHasItsTextAndWithStoryItsStory) {
  record({"Run"}, 2);
  const std::string id = onlySession(*store())->id().text();
  run({"show", id});
  EXPECT_THAT(output.texts().back(), AllOf(StartsWith("Run\nID: " + id + "\nStatus: completed\n"),
                                           Not(HasSubstr("Story: "))));
  run({"show", id, "--story"});
  EXPECT_THAT(output.texts().back(), HasSubstr("\nStory: "));
  run({"show", id, "--story"}, {.json = true});
  EXPECT_THAT(output.texts().back(),
              AllOf(HasSubstr("\n  \"story\" : {\n"), HasSubstr("\n  \"thermalDigest\" : {\n")));
  run({"show", id}, {.json = true});
  EXPECT_THAT(output.texts().back(),
              AllOf(Not(HasSubstr("\"story\"")), HasSubstr("\n  \"thermalDigest\" : {\n")));
}

TEST_F(SessionCommandTest, StorySwallowsTheIdBehindIt) {
  record({"Run"}, 1);
  run({"show", "--story", onlySession(*store())->id().text()});
  EXPECT_THAT(output.errors(), ElementsAre("Missing session id"));
}

TEST_F(SessionCommandTest, JSONBeforeTheIdOfAnExportSwallowsIt) {
  record({"Run"}, 1);
  run({"export", "--json", onlySession(*store())->id().text(), "--output", inFolder("f")},
      {.json = true});
  EXPECT_THAT(output.errors(), ElementsAre("Missing session id"));
  EXPECT_FALSE(fs::exists(inFolder("f")));
}

TEST_F(SessionCommandTest, AMissingOrBadIdIsTold) {
  for (const char* word : {"show", "export", "delete"}) {
    run({word});
    run({word, "no-id"});
  }
  EXPECT_THAT(output.errors(), AllOf(SizeIs(6), Each("Missing session id")));
  EXPECT_THAT(output.texts(), IsEmpty());
}

TEST_F(SessionCommandTest, AnUnknownIdIsToldInUpperCase) {
  const std::string id = "0f1e2d3c-4b5a-4978-8796-a5b4c3d2e1f0";
  run({"show", id});
  run({"export", id, "--output", inFolder("f")});
  run({"delete", id});
  EXPECT_THAT(output.errors(),
              AllOf(SizeIs(3), Each("Session not found: 0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0")));
}

TEST_F(SessionCommandTest, AnExportWithoutAPathIsToldBeforeTheSessionIsLookedFor) {
  run({"export", "0f1e2d3c-4b5a-4978-8796-a5b4c3d2e1f0"});
  run({"export", "0f1e2d3c-4b5a-4978-8796-a5b4c3d2e1f0", "--output"});
  EXPECT_THAT(output.errors(), ElementsAre("Missing --output <path>", "Missing --output <path>"));
}

TEST_F(SessionCommandTest, ExportWritesTheFileAndSaysSo) {
  record({"Run"}, 2);
  const std::string id = onlySession(*store())->id().text();
  const std::string path = inFolder("out.jsonl");
  run({"export", id, "--output", path});
  EXPECT_EQ(output.texts().back(), "Exported Run to " + path + "\n");
  EXPECT_GT(fs::file_size(path), 0U);
  run({"export", id, "--output", path}, {.json = true});
  EXPECT_THAT(output.texts().back(),
              AllOf(StartsWith("{\n  \"event\" : \"exported\",\n  \"id\" : \"" + id + "\",\n"),
                    EndsWith("out.jsonl\"\n}\n")));
}

TEST_F(SessionCommandTest, AnExportThatCannotBeWrittenIsTold) {
  record({"Run"}, 1);
  run({"export", onlySession(*store())->id().text(), "--output", inFolder("none/f")});
  EXPECT_THAT(output.errors(),
              ElementsAre(inFolder("none/f").string() + ": No such file or directory"));
}

TEST_F(SessionCommandTest, DeleteRemovesTheSessionAndSaysSo) {
  record({"Run"}, 1);
  const std::string id = onlySession(*store())->id().text();
  run({"delete", id});
  EXPECT_EQ(output.texts().back(), "Deleted Run\n");
  EXPECT_THAT(*store()->sessions(), IsEmpty());
}

TEST_F(SessionCommandTest, DeleteAsJSON) {
  record({"Run"}, 1);
  const std::string id = onlySession(*store())->id().text();
  run({"delete", id}, {.json = true});
  EXPECT_EQ(output.texts().back(), "{\n  \"event\" : \"deleted\",\n  \"id\" : \"" + id + "\"\n}\n");
}

TEST_F(SessionCommandTest, AnUnknownSubcommandIsToldWithTheUsage) {
  run({"foo"});
  EXPECT_THAT(output.errors(), ElementsAre("Unknown session command: foo"));
  EXPECT_THAT(output.texts(), ElementsAre(sessionUsageText()));
}

TEST_F(SessionCommandTest, AStoreThatCannotBeOpenedIsTold) {
  fs::create_directories(inFolder("Quorvex/QuorvexSessions.store"));
  run({"list"});
  EXPECT_THAT(output.errors(), SizeIs(1));
  EXPECT_THAT(output.texts(), IsEmpty());
}

}  // namespace
}  // namespace quorvex
