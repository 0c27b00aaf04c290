#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "RawEnum.h"

namespace quorvex {

/// The coarse families into which process names are sorted, in the order in which they are tried.
enum class ProcessFamily {
  monitoringOverhead,
  developmentAssistants,
  developmentTools,
  browser,
  windowing,
  securityAndIndexing,
  mediaAndNetwork,
  database,
  other,
};

template <>
struct RawTexts<ProcessFamily> {
  static constexpr std::array values{
      std::pair{ProcessFamily::monitoringOverhead, std::string_view{"monitoring overhead"}},
      std::pair{ProcessFamily::developmentAssistants, std::string_view{"AI/dev assistants"}},
      std::pair{ProcessFamily::developmentTools, std::string_view{"dev/runtime/build"}},
      std::pair{ProcessFamily::browser, std::string_view{"browser/WebKit"}},
      std::pair{ProcessFamily::windowing, std::string_view{"UI/windowing"}},
      std::pair{ProcessFamily::securityAndIndexing, std::string_view{"macOS security/indexing"}},
      std::pair{ProcessFamily::mediaAndNetwork, std::string_view{"media/network"}},
      std::pair{ProcessFamily::database, std::string_view{"database"}},
      std::pair{ProcessFamily::other, std::string_view{"other"}},
  };
};

namespace PowerSessionAnalysis {

/// The first family of which any keyword occurs anywhere in the lower-cased name, else `other`. As
/// loose as it sounds: "search" has "arc" in it and counts as a browser. Pure; any thread.
[[nodiscard]] ProcessFamily processFamily(std::string_view name);

}  // namespace PowerSessionAnalysis

}  // namespace quorvex
