#include "ProcessFamily.h"

#include <algorithm>
#include <span>
#include <string>

#include "Text.h"

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr std::array<std::string_view, 5> monitoringKeywords{"quorvex", "powermetrics", "sysmond",
                                                             "activity monitor", "activitymonitor"};
constexpr std::array<std::string_view, 5> assistantKeywords{"codex", "claude", "cursor", "copilot",
                                                            "chatgpt"};
constexpr std::array<std::string_view, 10> toolKeywords{
    "xcode", "swift", "clang", "node", "npm", "python", "ruby", "java", "cargo", "make"};
constexpr std::array<std::string_view, 6> browserKeywords{"safari", "chrome", "firefox",
                                                          "arc",    "webkit", "browser"};
constexpr std::array<std::string_view, 3> windowingKeywords{"windowserver", "dock",
                                                            "systemuiserver"};
constexpr std::array<std::string_view, 5> securityKeywords{"mds", "spotlight", "trustd",
                                                           "syspolicyd", "securityd"};
constexpr std::array<std::string_view, 7> mediaKeywords{"music", "coreaudiod", "av",      "zoom",
                                                        "slack", "discord",    "networkd"};
constexpr std::array<std::string_view, 5> databaseKeywords{"postgres", "mysql", "redis", "sqlite",
                                                           "mongo"};

struct FamilyKeywords {
  ProcessFamily family;
  std::span<const std::string_view> keywords;
};

constexpr std::array families{
    FamilyKeywords{ProcessFamily::monitoringOverhead, monitoringKeywords},
    FamilyKeywords{ProcessFamily::developmentAssistants, assistantKeywords},
    FamilyKeywords{ProcessFamily::developmentTools, toolKeywords},
    FamilyKeywords{ProcessFamily::browser, browserKeywords},
    FamilyKeywords{ProcessFamily::windowing, windowingKeywords},
    FamilyKeywords{ProcessFamily::securityAndIndexing, securityKeywords},
    FamilyKeywords{ProcessFamily::mediaAndNetwork, mediaKeywords},
    FamilyKeywords{ProcessFamily::database, databaseKeywords},
};

}  // namespace

ProcessFamily processFamily(std::string_view name) {
  const std::string lowered = text::lowercased(name);
  const auto occurs = [&lowered](std::string_view keyword) {
    return lowered.find(keyword) != std::string::npos;
  };
  const auto* const found =
      std::find_if(families.begin(), families.end(), [&occurs](const FamilyKeywords& candidate) {
        return std::any_of(candidate.keywords.begin(), candidate.keywords.end(), occurs);
      });
  return found == families.end() ? ProcessFamily::other : found->family;
}

}  // namespace quorvex::PowerSessionAnalysis
