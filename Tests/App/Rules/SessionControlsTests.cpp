#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SessionControls.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Date start = *parseISO8601("2026-01-31T09:30:05Z");

SessionControls controlsOf(const PowerSessionSummary& summary, double elapsedSeconds = 65.0) {
  return activeSessionControls(start, summary, dateByAdding(start, elapsedSeconds));
}

TEST(SessionControlsTests, WithoutSessionOneCanBeStarted) {
  const SessionControls controls = idleSessionControls();
  EXPECT_FALSE(controls.isRecording);
  EXPECT_EQ(controls.label, "Session");
  EXPECT_EQ(controls.labelSymbol, "record.circle");
  EXPECT_EQ(controls.button.title, "Start");
  EXPECT_EQ(controls.button.symbol, "play.fill");
  EXPECT_EQ(controls.button.help,
            "Quick-start a named benchmark from the dashboard, or start now with an automatic "
            "title.");
  EXPECT_EQ(controls.elapsed, "");
  EXPECT_THAT(controls.figures, IsEmpty());
}

TEST(SessionControlsTests, RecordingShowsElapsedTimeAverageAndEnergy) {
  PowerSessionSummary summary;
  summary.averageWatts = 12.34;
  summary.totalWattHours = 0.2228;  // 12.34 W for 65 s
  const SessionControls controls = controlsOf(summary);
  EXPECT_TRUE(controls.isRecording);
  EXPECT_EQ(controls.label, "");
  EXPECT_EQ(controls.labelSymbol, "record.circle");
  EXPECT_EQ(controls.elapsed, "1m 5s");
  EXPECT_THAT(controls.figures, ElementsAre("12.3W avg", "0.223Wh"));
  EXPECT_EQ(controls.button.title, "Stop");
  EXPECT_EQ(controls.button.symbol, "stop.fill");
  EXPECT_EQ(controls.accessibilityText, "Recording: 1m 5s, 12.3W avg, 0.223Wh");
}

TEST(SessionControlsTests, MissingFiguresAreDashes) {
  PowerSessionSummary summary;
  EXPECT_THAT(controlsOf(summary).figures, ElementsAre("avg --", "Wh --"));
  summary.averageWatts = 5.0;
  EXPECT_THAT(controlsOf(summary).figures, ElementsAre("5.0W avg", "Wh --"));
  summary.averageWatts.reset();
  summary.totalWattHours = 1.0;
  EXPECT_THAT(controlsOf(summary).figures, ElementsAre("avg --", "1.000Wh"));
}

TEST(SessionControlsTests, TwoPowerSegmentsHaveNoCommonAverage) {
  PowerSessionSummary summary;
  summary.averageWatts = 5.0;
  summary.powerSegments.resize(1);
  EXPECT_THAT(controlsOf(summary).figures, ElementsAre("5.0W avg", "Wh --"));
  summary.powerSegments.resize(2);
  EXPECT_THAT(controlsOf(summary).figures, ElementsAre("segmented"));
}

TEST(SessionControlsTests, ElapsedTimeIsNeverNegative) {
  EXPECT_EQ(controlsOf({}, -10.0).elapsed, "0s");
}

}  // namespace
}  // namespace quorvex
