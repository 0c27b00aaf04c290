#include "HelperFlow.h"

#include <utility>

#include "SafeFilename.h"

namespace quorvex::HelperFlow {

HelperControlsState statusRead(HelperControlsState state, HelperStatus status) {
  state.status = std::move(status);
  state.proTelemetryEnabled = state.proTelemetryEnabled && isHelperReady(state.status);
  return state;
}

HelperControlsState bundledHelperMissing(HelperControlsState state) {
  state.message =
      "Bundled helper is missing from this app build. Rebuild Quorvex.app before installing.";
  return state;
}

HelperControlsState installing(HelperControlsState state) {
  state.isInstalling = true;
  state.message = "macOS will ask for an administrator password.";
  return state;
}

HelperControlsState installed(HelperControlsState state, const HelperInstallResult& result,
                              HelperStatus status) {
  state.isInstalling = false;
  state.message = result.message;
  state.status = std::move(status);
  state.proTelemetryEnabled = result.succeeded;
  return state;
}

HelperControlsState sampled(HelperControlsState state,
                            const std::optional<ProTelemetrySnapshot>& snapshot) {
  if (snapshot && snapshot->error) {
    state.message = snapshot->error;
  }
  return state;
}

HelperControlsState exportFailed(HelperControlsState state, std::string_view error) {
  state.message = SessionExportPanel::failureMessage(error);
  return state;
}

}  // namespace quorvex::HelperFlow
