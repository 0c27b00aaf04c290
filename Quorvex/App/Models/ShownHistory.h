#pragma once

#include <tuple>

#include "SessionHistory.h"
#include "Shown.h"
#include "ShownControls.h"

namespace quorvex {

// The list of sessions, as its view sees it.

template <>
struct ShownFields<EmptyState> {
  static constexpr std::tuple values{RecordField{"symbol", &EmptyState::symbol},
                                     RecordField{"title", &EmptyState::title},
                                     RecordField{"message", &EmptyState::message}};
};

template <>
struct ShownFields<MiniValue> {
  static constexpr std::tuple values{RecordField{"value", &MiniValue::value},
                                     RecordField{"label", &MiniValue::label}};
};

template <>
struct ShownFields<SessionListRow> {
  static constexpr std::tuple values{
      RecordField{"id", &SessionListRow::id},
      RecordField{"title", &SessionListRow::title},
      RecordField{"status", &SessionListRow::status},
      RecordField{"values", &SessionListRow::values},
      RecordField{"isSelected", &SessionListRow::isSelected},
      RecordField{"accessibilityText", &SessionListRow::accessibilityText}};
};

template <>
struct ShownFields<SessionHistory> {
  static constexpr std::tuple values{RecordField{"searchPrompt", &SessionHistory::searchPrompt},
                                     RecordField{"refreshButton", &SessionHistory::refreshButton},
                                     RecordField{"countText", &SessionHistory::countText},
                                     RecordField{"emptyList", &SessionHistory::emptyList},
                                     RecordField{"emptyDetail", &SessionHistory::emptyDetail}};
};

}  // namespace quorvex
