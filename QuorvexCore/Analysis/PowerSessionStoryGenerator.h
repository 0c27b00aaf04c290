#pragma once

#include <string>

#include "LocalizedDate.h"
#include "PowerSessionReport.h"
#include "PowerSessionStory.h"

/// Tells a report in plain language. Pure functions but for the user's time zone; any thread.
namespace quorvex::PowerSessionStoryGenerator {

/// One headline, and one episode for each phase. What is absent drops a line or picks a shorter
/// form. Times are in the short style of `locale`, an ICU name.
[[nodiscard]] PowerSessionStory story(const PowerSessionReport& report,
                                      const std::string& locale = userLocaleForDates());

}  // namespace quorvex::PowerSessionStoryGenerator
