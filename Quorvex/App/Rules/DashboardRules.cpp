#include "DashboardRules.h"

#include <fmt/format.h>

#include "AppScenes.h"

namespace quorvex {

namespace {

SegmentedPicker tabPicker(DashboardTab selected) {
  SegmentedPicker picker{.label = "Dashboard View", .accessibilityLabel = "Dashboard View"};
  for (const auto& [tab, title] : RawTexts<DashboardTab>::values) {
    if (tab == selected) {
      picker.selected = picker.options.size();
    }
    picker.options.emplace_back(title);
  }
  return picker;
}

SegmentedPicker unitPicker(bool useFahrenheit) {
  return {.label = "Temperature",
          .accessibilityLabel = "Temperature Units",
          .options = {"°C", "°F"},
          .selected = useFahrenheit ? std::size_t{1} : std::size_t{0}};
}

CommandButton startStopButton(bool isRecording) {
  if (isRecording) {
    return {.title = "Stop", .symbol = "stop.fill", .accessibilityLabel = "Stop session"};
  }
  return {.title = "Start", .symbol = "play.fill", .accessibilityLabel = "Start session"};
}

}  // namespace

DashboardHeader dashboardHeader(const SystemPowerState& state, DashboardTab tab,
                                const AppSettings& settings, const ShortTimeFormat& times) {
  return {
      .title = std::string{AppScenes::dashboardTitle},
      .timeText = times.text(state.timestamp),
      .tabs = tabPicker(tab),
      .temperatureUnits = unitPicker(settings.useFahrenheit),
      .temperatureHighlights = {.key = SettingsKey::showTemperatureHighlights,
                                .title = "3 Temps",
                                .isOn = settings.showTemperatureHighlights},
      .advancedMetrics = {.key = SettingsKey::showAdvancedMetrics,
                          .title = "Show Advanced Metrics",
                          .isOn = settings.showAdvancedMetrics},
      .copyReport = {
          .title = "Copy as JSON", .symbol = "doc.on.doc", .accessibilityLabel = "Copy as JSON"}};
}

std::vector<LiveSection> liveSections(const SystemPowerState& state, const AppSettings& settings) {
  std::vector<LiveSection> sections{LiveSection::proTelemetry, LiveSection::measurementSessions};
  if (state.battery) {
    sections.push_back(LiveSection::battery);
  }
  sections.push_back(LiveSection::powerBreakdown);
  if (settings.showNetwork && state.network && !state.network->activeInterfaces().empty()) {
    sections.push_back(LiveSection::network);
  }
  sections.push_back(LiveSection::thermal);
  return sections;
}

SessionSection sessionSection(std::optional<SessionCard> card, std::size_t sessionCount,
                              const std::optional<std::string>& lastError) {
  const bool isRecording = card.has_value();
  const std::string historyTitle = historyButtonTitle(sessionCount);
  SessionSection section{
      .title = "Measurement Sessions",
      .card = std::move(card),
      .namePrompt = "Optional session name",
      .isRecording = isRecording,
      .startStopButton = startStopButton(isRecording),
      .historyButton = {.title = historyTitle, .accessibilityLabel = historyTitle},
      .note =
          "Total discharge/charge watts are measured from the battery controller when "
          "available. Component and process attribution is derived or estimated."};
  if (!isRecording) {
    section.caption =
        "Start a benchmark here or quick-start one from the menu bar. Empty names become "
        "timestamped session titles.";
  }
  if (lastError) {
    section.error = ColoredText{*lastError, ColorName::orange};
  }
  return section;
}

std::string historyButtonTitle(std::size_t sessionCount) {
  return sessionCount == 0 ? "View History" : fmt::format("View History ({})", sessionCount);
}

}  // namespace quorvex
