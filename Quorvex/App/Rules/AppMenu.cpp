#include "AppMenu.h"

namespace quorvex {

CommandRow commandRow() {
  const auto named = [](const char* title, const char* symbol) {
    return CommandButton{.title = title, .symbol = symbol, .accessibilityLabel = title};
  };
  return {.openDashboard = named("Open Dashboard", ""),
          .copyJSONReport = named("Copy JSON Report", "doc.on.doc"),
          .settings = {.symbol = "gearshape", .help = "Settings", .accessibilityLabel = "Settings"},
          .quit = named("Quit Quorvex", "")};
}

}  // namespace quorvex
