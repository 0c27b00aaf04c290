#include "SafeFilename.h"

#include <fmt/format.h>

#include "Text.h"

namespace quorvex {

std::string SessionExportPanel::proposedName(std::string_view sessionTitle) {
  return fmt::format("{}.{}", safeFilename(sessionTitle), fileExtension);
}

std::string SessionExportPanel::failureMessage(std::string_view error) {
  return fmt::format("Session export failed: {}", error);
}

std::string safeFilename(std::string_view title) {
  const std::string safe = text::replacingNonAlphanumerics(title, "-_ ", '-');
  const std::string_view trimmed = text::trimmed(safe);
  return trimmed.empty() ? "Quorvex Session" : std::string{trimmed};
}

}  // namespace quorvex
