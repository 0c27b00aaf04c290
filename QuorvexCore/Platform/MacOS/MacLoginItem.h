#pragma once

#include "DynamicLoader.h"
#include "LoginItem.h"

namespace quorvex {

/// The service of the main application among the system's login items. Its framework is loaded at
/// the first use, so that only the app pays for it. Main thread.
class MacLoginItem final : public LoginItem {
 public:
  /// The loader must outlive this object.
  explicit MacLoginItem(DynamicLoader& loader) : loader_(&loader) {}

  [[nodiscard]] LoginItemStatus status() override;
  [[nodiscard]] std::optional<std::string> registerItem() override;
  [[nodiscard]] std::optional<std::string> unregisterItem() override;

 private:
  /// The service; null when the system has none. Borrowed from the caller's pool.
  [[nodiscard]] void* service();
  [[nodiscard]] std::optional<std::string> change(const char* message);

  DynamicLoader* loader_;
  bool isLoaded_ = false;
};

}  // namespace quorvex
