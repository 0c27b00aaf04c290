#pragma once

#include <tuple>

#include "SettingsRules.h"
#include "Shown.h"
#include "ShownControls.h"

namespace quorvex {

// The settings window, as its view sees it.

template <>
struct ShownFields<SettingsContent::RefreshSection> {
  static constexpr std::tuple values{
      RecordField{"title", &SettingsContent::RefreshSection::title},
      RecordField{"stepper", &SettingsContent::RefreshSection::stepper},
      RecordField{"footer", &SettingsContent::RefreshSection::footer}};
};

template <>
struct ShownFields<SettingsContent::SamplingSection> {
  static constexpr std::tuple values{
      RecordField{"title", &SettingsContent::SamplingSection::title},
      RecordField{"lowImpactMode", &SettingsContent::SamplingSection::lowImpactMode},
      RecordField{"warning", &SettingsContent::SamplingSection::warning}};
};

template <>
struct ShownFields<SettingsContent::LaunchSection> {
  static constexpr std::tuple values{RecordField{"title", &SettingsContent::LaunchSection::title}};
};

template <>
struct ShownFields<SettingsContent::ToggleSection> {
  static constexpr std::tuple values{RecordField{"title", &SettingsContent::ToggleSection::title}};
};

template <>
struct ShownFields<SettingsContent> {
  static constexpr std::tuple values{
      RecordField{"refresh", &SettingsContent::refresh},
      RecordField{"sampling", &SettingsContent::sampling},
      RecordField{"launch", &SettingsContent::launch},
      RecordField{"dashboardSections", &SettingsContent::dashboardSections},
      RecordField{"display", &SettingsContent::display}};
};

}  // namespace quorvex
