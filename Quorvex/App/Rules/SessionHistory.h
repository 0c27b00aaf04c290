#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Appearance.h"
#include "Controls.h"
#include "PowerSession.h"
#include "PowerSessionSummary.h"
#include "UUID.h"

namespace quorvex {

/// The sessions as the recorder gives them, newest first.
using SessionList = std::vector<std::shared_ptr<PowerSession>>;

/// What stands where there is nothing to show.
struct EmptyState {
  std::string symbol;  ///< empty for none
  std::string title;   ///< empty for none
  std::string message;

  bool operator==(const EmptyState&) const = default;
};

/// A small figure over its name.
struct MiniValue {
  std::string value;
  std::string label;
  std::string accessibilityText;

  bool operator==(const MiniValue&) const = default;
};

/// One session in the list.
struct SessionListRow {
  UUID id;
  std::string title;
  ColoredText status;             ///< its word
  std::vector<MiniValue> values;  ///< duration, battery, power
  bool isSelected = false;
  std::string accessibilityText;  ///< the row in one sentence

  bool operator==(const SessionListRow&) const = default;
};

/// `summary` is the session's, see `showsRunningSummary`.
[[nodiscard]] SessionListRow sessionListRow(const PowerSession& session,
                                            const PowerSessionSummary& summary, bool isSelected);

/// The row of a session whose figures are not read yet: without figures, for those would read as
/// absent ones.
[[nodiscard]] SessionListRow pendingSessionListRow(const PowerSession& session, bool isSelected);

/// Whether the row takes the recorder's running summary and not the store's.
[[nodiscard]] bool showsRunningSummary(const PowerSession& session,
                                       const std::optional<UUID>& activeSessionID);

/// The history tab apart from its rows and from the report of the selected session.
struct SessionHistory {
  std::string searchPrompt;
  CommandButton refreshButton;
  std::string countText;
  std::optional<EmptyState> emptyList;    ///< in place of the rows
  std::optional<EmptyState> emptyDetail;  ///< in place of the report

  bool operator==(const SessionHistory&) const = default;
};

/// `sessionCount` counts all sessions, `filteredCount` those that the search leaves.
[[nodiscard]] SessionHistory sessionHistory(std::string_view searchText, std::size_t sessionCount,
                                            std::size_t filteredCount,
                                            const std::optional<UUID>& selected);

/// What stands in place of a report that could not be read.
[[nodiscard]] EmptyState unreadableReport();

/// The sessions whose title contains the text, without regard to case as the user's language has
/// it, in their order; all of them for an empty text. `locale`: see `userLocaleForSearching`.
[[nodiscard]] SessionList filteredSessions(std::span<const std::shared_ptr<PowerSession>> sessions,
                                           std::string_view searchText, const std::string& locale);

/// "3 sessions", or "2 matches" during a search.
[[nodiscard]] std::string sessionCountText(std::string_view searchText, std::size_t sessionCount,
                                           std::size_t filteredCount);

/// What is selected once the list is this one: what was, if it is still there, else the first;
/// nothing without sessions. For the filtered list in the history as well as for the whole list
/// whenever it was read anew.
[[nodiscard]] std::optional<UUID> selectDefaultSession(
    std::span<const std::shared_ptr<PowerSession>> sessions, const std::optional<UUID>& selected);

}  // namespace quorvex
