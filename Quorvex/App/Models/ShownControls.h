#pragma once

#include <tuple>

#include "Appearance.h"
#include "Controls.h"
#include "LaunchAtLoginRules.h"
#include "RefreshInterval.h"
#include "SamplingWarning.h"
#include "Shown.h"

namespace quorvex {

// The controls that several windows share, as views see them.

template <>
struct ShownFields<ColoredText> {
  static constexpr std::tuple values{RecordField{"text", &ColoredText::text},
                                     RecordField{"color", &ColoredText::color}};
};

template <>
struct ShownFields<LabelledValue> {
  static constexpr std::tuple values{RecordField{"label", &LabelledValue::label},
                                     RecordField{"value", &LabelledValue::value},
                                     RecordField{"color", &LabelledValue::color}};
};

template <>
struct ShownFields<CommandButton> {
  static constexpr std::tuple values{
      RecordField{"title", &CommandButton::title}, RecordField{"symbol", &CommandButton::symbol},
      RecordField{"help", &CommandButton::help},
      RecordField{"accessibilityLabel", &CommandButton::accessibilityLabel}};
};

template <>
struct ShownFields<ToggleControl> {
  static constexpr std::tuple values{
      RecordField{"key", &ToggleControl::key}, RecordField{"title", &ToggleControl::title},
      RecordField{"symbol", &ToggleControl::symbol},
      RecordField{"caption", &ToggleControl::caption}, RecordField{"isOn", &ToggleControl::isOn}};
};

template <>
struct ShownFields<Badge> {
  static constexpr std::tuple values{
      RecordField{"text", &Badge::text}, RecordField{"symbol", &Badge::symbol},
      RecordField{"color", &Badge::color}, RecordField{"help", &Badge::help}};
};

template <>
struct ShownFields<RefreshIntervalStepper> {
  static constexpr std::tuple values{
      RecordField{"label", &RefreshIntervalStepper::label},
      RecordField{"value", &RefreshIntervalStepper::value},
      RecordField{"valueText", &RefreshIntervalStepper::valueText},
      RecordField{"lowest", &RefreshIntervalStepper::lowest},
      RecordField{"highest", &RefreshIntervalStepper::highest},
      RecordField{"step", &RefreshIntervalStepper::step},
      RecordField{"decreased", &RefreshIntervalStepper::decreased},
      RecordField{"increased", &RefreshIntervalStepper::increased},
      RecordField{"canDecrease", &RefreshIntervalStepper::canDecrease},
      RecordField{"canIncrease", &RefreshIntervalStepper::canIncrease},
      RecordField{"accessibilityLabel", &RefreshIntervalStepper::accessibilityLabel},
      RecordField{"decreaseSymbol", &RefreshIntervalStepper::decreaseSymbol},
      RecordField{"decreaseLabel", &RefreshIntervalStepper::decreaseLabel},
      RecordField{"increaseSymbol", &RefreshIntervalStepper::increaseSymbol},
      RecordField{"increaseLabel", &RefreshIntervalStepper::increaseLabel}};
};

template <>
struct ShownFields<SamplingWarning> {
  static constexpr std::tuple values{RecordField{"text", &SamplingWarning::text},
                                     RecordField{"symbol", &SamplingWarning::symbol},
                                     RecordField{"color", &SamplingWarning::color}};
};

template <>
struct ShownFields<LaunchAtLoginToggle> {
  static constexpr std::tuple values{
      RecordField{"title", &LaunchAtLoginToggle::title},
      RecordField{"symbol", &LaunchAtLoginToggle::symbol},
      RecordField{"isEnabled", &LaunchAtLoginToggle::isEnabled},
      RecordField{"help", &LaunchAtLoginToggle::help},
      RecordField{"caption", &LaunchAtLoginToggle::caption},
      RecordField{"errorMessage", &LaunchAtLoginToggle::errorMessage}};
};

}  // namespace quorvex
