#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RulesSamples.h"
#include "SessionHistory.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

SessionList threeSessions() {
  return {samples::session(3, "foo run"), samples::session(2, "Café"),
          samples::session(1, "Another FOO")};
}

std::vector<std::string> titles(const SessionList& sessions) {
  std::vector<std::string> result;
  for (const auto& session : sessions) {
    result.push_back(session->title());
  }
  return result;
}

std::vector<std::string> found(std::string_view searchText, const std::string& locale = "en_US") {
  return titles(filteredSessions(threeSessions(), searchText, locale));
}

TEST(FilteredSessions, AnEmptySearchKeepsAllInTheirOrder) {
  EXPECT_THAT(found(""), ElementsAre("foo run", "Café", "Another FOO"));
}

TEST(FilteredSessions, TheSearchIgnoresCase) {
  EXPECT_THAT(found("FOO"), ElementsAre("foo run", "Another FOO"));
  EXPECT_THAT(found("foo RUN"), ElementsAre("foo run"));
}

TEST(FilteredSessions, AccentsFollowTheRulesOfTheLocale) {
  EXPECT_THAT(found("CAFÉ"), ElementsAre("Café"));
  EXPECT_THAT(found("cafe\u0301"), ElementsAre("Café")) << "the accent as a scalar of its own";
  EXPECT_THAT(found("cafe"), IsEmpty());
  const SessionList turkish{samples::session(1, "Ilık"), samples::session(2, "İyi")};
  EXPECT_THAT(titles(filteredSessions(turkish, "ıl", "tr_TR")), ElementsAre("Ilık"));
  EXPECT_THAT(titles(filteredSessions(turkish, "iy", "tr_TR")), ElementsAre("İyi"));
  EXPECT_THAT(titles(filteredSessions(turkish, "il", "en_US")), ElementsAre("Ilık"));
}

TEST(FilteredSessions, OnlyTitlesAreSearched) {
  EXPECT_THAT(found("completed"), IsEmpty());
}

TEST(SessionCountText, CountsSessionsWithoutASearch) {
  EXPECT_EQ(sessionCountText("", 0, 0), "0 sessions");
  EXPECT_EQ(sessionCountText("", 1, 1), "1 session");
  EXPECT_EQ(sessionCountText("", 12, 12), "12 sessions");
}

TEST(SessionCountText, CountsMatchesDuringASearch) {
  EXPECT_EQ(sessionCountText("foo", 12, 0), "0 matches");
  EXPECT_EQ(sessionCountText("foo", 12, 1), "1 match");
  EXPECT_EQ(sessionCountText("foo", 12, 2), "2 matches");
}

TEST(SessionHistory, OffersSearchAndRefresh) {
  const SessionHistory history = sessionHistory("", 2, 2, samples::session(1, "")->id());
  EXPECT_EQ(history.searchPrompt, "Search sessions");
  EXPECT_EQ(history.refreshButton.title, "Refresh");
  EXPECT_EQ(history.countText, "2 sessions");
  EXPECT_FALSE(history.emptyList);
  EXPECT_FALSE(history.emptyDetail);
}

TEST(SessionHistory, WithoutSessionsSaysWhereTheyWillAppear) {
  const SessionHistory history = sessionHistory("foo", 0, 0, std::nullopt);
  EXPECT_EQ(history.emptyList, (EmptyState{"clock.badge.questionmark", "No Sessions",
                                           "Recorded sessions will appear here."}));
}

TEST(SessionHistory, ASearchWithoutResultSaysSo) {
  const SessionHistory history = sessionHistory("foo", 3, 0, std::nullopt);
  EXPECT_EQ(history.emptyList, (EmptyState{"", "", "No sessions match that search."}));
}

TEST(SessionHistory, WithoutASelectionAsksForOne) {
  const SessionHistory history = sessionHistory("", 3, 3, std::nullopt);
  EXPECT_EQ(history.emptyDetail, (EmptyState{"chart.line.uptrend.xyaxis", "Select a Session",
                                             "Choose a recorded benchmark to inspect."}));
}

TEST(SessionHistory, AReportThatCannotBeReadSaysWhy) {
  EXPECT_EQ(unreadableReport(),
            (EmptyState{.symbol = "exclamationmark.triangle.fill",
                        .title = "Session Unavailable",
                        .message = "It was deleted, or the session store cannot be read."}));
}

TEST(SelectDefaultSession, ASelectionThatIsFilteredOutMovesToTheFirstMatch) {
  const SessionList matches = filteredSessions(threeSessions(), "foo", "en_US");
  EXPECT_EQ(selectDefaultSession(matches, samples::session(2, "Café")->id()),
            samples::session(3, "")->id());
}

TEST(SelectDefaultSession, AnEmptyResultClearsTheSelection) {
  EXPECT_EQ(selectDefaultSession({}, samples::session(2, "Café")->id()), std::nullopt);
}

TEST(SelectDefaultSession, ASelectionThatIsStillListedStays) {
  const SessionList matches = filteredSessions(threeSessions(), "foo", "en_US");
  EXPECT_EQ(selectDefaultSession(matches, matches.back()->id()), matches.back()->id());
}

TEST(SelectDefaultSession, WithoutASelectionTheFirstIsChosen) {
  const SessionList sessions = threeSessions();
  EXPECT_EQ(selectDefaultSession(sessions, std::nullopt), sessions.front()->id());
}

TEST(SessionListRow, TellsStatusAndFigures) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.batteryPercentDelta = -3;
  const auto session = samples::session(1, "Idle test");
  const SessionListRow row = sessionListRow(*session, summary, true);
  EXPECT_EQ(row.id, session->id());
  EXPECT_EQ(row.title, "Idle test");
  EXPECT_EQ(row.status, (ColoredText{"completed", ColorName::secondary}));
  EXPECT_THAT(row.values, ElementsAre(MiniValue{"1m 0s", "Duration", "Duration 1m 0s"},
                                      MiniValue{"-3%", "Battery", "Battery -3%"},
                                      MiniValue{"12.0W", "Power", "Power 12.0W"}));
  EXPECT_TRUE(row.isSelected);
  EXPECT_EQ(row.accessibilityText,
            "Idle test, completed, Duration 1m 0s, Battery -3%, Power 12.0W");
}

TEST(SessionListRow, BeforeItsFiguresAreReadItTellsTitleAndStatus) {
  const auto session = samples::session(1, "Idle test", PowerSessionStatus::interrupted);
  const SessionListRow row = pendingSessionListRow(*session, true);
  EXPECT_EQ(row.id, session->id());
  EXPECT_EQ(row.title, "Idle test");
  EXPECT_EQ(row.status, (ColoredText{"interrupted", ColorName::orange}));
  EXPECT_THAT(row.values, IsEmpty());
  EXPECT_TRUE(row.isSelected);
  EXPECT_EQ(row.accessibilityText, "Idle test, interrupted");
}

TEST(SessionListRow, EveryOtherStatusIsOrange) {
  const auto statusOf = [](PowerSessionStatus status) {
    return sessionListRow(*samples::session(1, "", status), samples::steadySummary(), false).status;
  };
  EXPECT_EQ(statusOf(PowerSessionStatus::active), (ColoredText{"active", ColorName::orange}));
  EXPECT_EQ(statusOf(PowerSessionStatus::interrupted),
            (ColoredText{"interrupted", ColorName::orange}));
}

TEST(SessionListRow, AbsentFiguresReadAsTwoHyphens) {
  const SessionListRow row =
      sessionListRow(*samples::session(1, ""), PowerSessionSummary::empty(), false);
  EXPECT_EQ(row.values[0].value, "0s");
  EXPECT_EQ(row.values[1].value, "--");
  EXPECT_EQ(row.values[2].value, "--");
}

TEST(SessionListRow, ASparseSessionReadsSparse) {
  EXPECT_EQ(
      sessionListRow(*samples::session(1, ""), samples::sparseSummary(), false).values[2].value,
      "Sparse");
}

TEST(SessionListRow, AMixedSessionCountsItsPhases) {
  EXPECT_EQ(
      sessionListRow(*samples::session(1, ""), samples::mixedSummary(), false).values[2].value,
      "2 phases");
}

TEST(SessionListRow, OnlyTheSessionThatIsBeingRecordedShowsTheRunningSummary) {
  const auto session = samples::session(1, "");
  EXPECT_TRUE(showsRunningSummary(*session, session->id()));
  EXPECT_FALSE(showsRunningSummary(*session, samples::session(2, "")->id()));
  EXPECT_FALSE(showsRunningSummary(*session, std::nullopt));
}

}  // namespace
}  // namespace quorvex
