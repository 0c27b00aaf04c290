#include "SessionHistory.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "LocalizedSearch.h"
#include "SessionFormat.h"

namespace quorvex {

namespace {

MiniValue miniValue(std::string label, std::string value) {
  std::string words = fmt::format("{} {}", label, value);
  return {
      .value = std::move(value), .label = std::move(label), .accessibilityText = std::move(words)};
}

std::optional<EmptyState> emptyListState(std::size_t sessionCount, std::size_t filteredCount) {
  if (sessionCount == 0) {
    return EmptyState{.symbol = "clock.badge.questionmark",
                      .title = "No Sessions",
                      .message = "Recorded sessions will appear here."};
  }
  if (filteredCount == 0) {
    return EmptyState{.message = "No sessions match that search."};
  }
  return std::nullopt;
}

}  // namespace

SessionListRow pendingSessionListRow(const PowerSession& session, bool isSelected) {
  const PowerSessionStatus status = session.status();
  SessionListRow row{.id = session.id(),
                     .title = session.title(),
                     .status = {std::string{rawValue(status)},
                                status == PowerSessionStatus::completed ? ColorName::secondary
                                                                        : ColorName::orange},
                     .isSelected = isSelected};
  row.accessibilityText = fmt::format("{}, {}", row.title, row.status.text);
  return row;
}

SessionListRow sessionListRow(const PowerSession& session, const PowerSessionSummary& summary,
                              bool isSelected) {
  SessionListRow row = pendingSessionListRow(session, isSelected);
  row.values = {miniValue("Duration", formatSessionDuration(summary.durationSeconds)),
                miniValue("Battery", SessionFormat::percentDeltaText(summary.batteryPercentDelta)),
                miniValue("Power", SessionFormat::primaryPowerText(summary))};
  for (const MiniValue& value : row.values) {
    row.accessibilityText += ", " + value.accessibilityText;
  }
  return row;
}

bool showsRunningSummary(const PowerSession& session, const std::optional<UUID>& activeSessionID) {
  return activeSessionID == session.id();
}

SessionHistory sessionHistory(std::string_view searchText, std::size_t sessionCount,
                              std::size_t filteredCount, const std::optional<UUID>& selected) {
  SessionHistory history{.searchPrompt = "Search sessions",
                         .refreshButton = {.title = "Refresh",
                                           .symbol = "arrow.clockwise",
                                           .accessibilityLabel = "Refresh"},
                         .countText = sessionCountText(searchText, sessionCount, filteredCount),
                         .emptyList = emptyListState(sessionCount, filteredCount)};
  if (!selected) {
    history.emptyDetail = EmptyState{.symbol = "chart.line.uptrend.xyaxis",
                                     .title = "Select a Session",
                                     .message = "Choose a recorded benchmark to inspect."};
  }
  return history;
}

EmptyState unreadableReport() {
  return {.symbol = "exclamationmark.triangle.fill",
          .title = "Session Unavailable",
          .message = "It was deleted, or the session store cannot be read."};
}

SessionList filteredSessions(std::span<const std::shared_ptr<PowerSession>> sessions,
                             std::string_view searchText, const std::string& locale) {
  if (searchText.empty()) {
    return {sessions.begin(), sessions.end()};
  }
  const LocalizedSearch search{searchText, locale};
  SessionList filtered;
  std::ranges::copy_if(sessions, std::back_inserter(filtered),
                       [&search](const std::shared_ptr<PowerSession>& session) {
                         return search.isIn(session->title());
                       });
  return filtered;
}

std::string sessionCountText(std::string_view searchText, std::size_t sessionCount,
                             std::size_t filteredCount) {
  if (searchText.empty()) {
    return sessionCount == 1 ? "1 session" : fmt::format("{} sessions", sessionCount);
  }
  return filteredCount == 1 ? "1 match" : fmt::format("{} matches", filteredCount);
}

std::optional<UUID> selectDefaultSession(std::span<const std::shared_ptr<PowerSession>> sessions,
                                         const std::optional<UUID>& selected) {
  if (sessions.empty()) {
    return std::nullopt;
  }
  const bool isListed =
      std::ranges::any_of(sessions, [&selected](const std::shared_ptr<PowerSession>& session) {
        return selected == session->id();
      });
  return isListed ? selected : sessions.front()->id();
}

}  // namespace quorvex
