#pragma once

#include <span>
#include <string>

#include "PowerSession.h"
#include "PowerSessionReport.h"

/// A session as lines of text. Without colour; absent values drop their line or part, or are named.
/// Pure functions; any thread.
namespace quorvex {

/// All that `session show` prints, each line with a newline behind it. `story`: null for none.
[[nodiscard]] std::string formatSession(const PowerSessionReport& report,
                                        const PowerSessionStory* story);
/// One line of `session list`, with a newline behind it.
[[nodiscard]] std::string formatListLine(const PowerSession& session,
                                         const PowerSessionSummary& summary);

// One line each, without a newline.
[[nodiscard]] std::string formatSummary(const PowerSessionSummary& summary);
[[nodiscard]] std::string formatSamplingConfidence(
    const PowerSessionSamplingConfidence& confidence);
[[nodiscard]] std::string formatBatteryInsights(const PowerSessionBatteryCycleInsights& insights);
[[nodiscard]] std::string formatChargeBehavior(
    std::span<const PowerSessionChargeRun> runs,
    std::span<const PowerSessionChargeMilestone> milestones);
[[nodiscard]] std::string formatThermalDigest(const PowerSessionThermalDigest& digest);
[[nodiscard]] std::string formatThermalSummary(const PowerSessionThermalSummary& summary);

/// The headline, then a line for each episode and one for each of its highlights, each with a
/// newline behind it.
[[nodiscard]] std::string formatStory(const PowerSessionStory& story);

}  // namespace quorvex
