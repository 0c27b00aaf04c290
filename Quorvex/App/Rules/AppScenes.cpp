#include "AppScenes.h"

#include <fmt/format.h>

namespace quorvex::AppScenes {

std::string storeFailureMessage(std::string_view error) {
  return fmt::format("Unable to initialize Quorvex session store: {}", error);
}

}  // namespace quorvex::AppScenes
