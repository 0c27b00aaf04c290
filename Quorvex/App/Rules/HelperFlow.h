#pragma once

#include <optional>
#include <string_view>

#include "HelperControls.h"
#include "HelperStatus.h"
#include "ProTelemetryService.h"
#include "ProTelemetrySnapshot.h"

/// What becomes of the helper tool's controls with each event. `proTelemetryEnabled` of the result
/// is to be written back to the setting.
namespace quorvex::HelperFlow {

/// Seconds between two privileged samples while the dashboard is open and the setting is on.
inline constexpr double sampleSeconds = 10.0;

/// The status was read. The setting cannot stay on with a tool that cannot be used.
[[nodiscard]] HelperControlsState statusRead(HelperControlsState state, HelperStatus status);

/// The app's resources lack the tool `ProTelemetryService::bundledHelperName`: nothing is
/// installed.
[[nodiscard]] HelperControlsState bundledHelperMissing(HelperControlsState state);

/// The installation begins.
[[nodiscard]] HelperControlsState installing(HelperControlsState state);

/// The installation ended, and the status was read after it. A success turns the setting on, a
/// failure turns it off.
[[nodiscard]] HelperControlsState installed(HelperControlsState state,
                                            const HelperInstallResult& result, HelperStatus status);

/// A privileged sample was asked for. Its failure is told; a success changes nothing.
[[nodiscard]] HelperControlsState sampled(HelperControlsState state,
                                          const std::optional<ProTelemetrySnapshot>& snapshot);

/// The export of a session failed, which is told in the same place.
[[nodiscard]] HelperControlsState exportFailed(HelperControlsState state, std::string_view error);

}  // namespace quorvex::HelperFlow
