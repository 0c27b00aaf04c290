#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LoginItem.h"

namespace quorvex::testing {

/// A login item whose status and failures are set, and what was asked of it. One thread.
class FakeLoginItem final : public LoginItem {
 public:
  LoginItemStatus current = LoginItemStatus::notRegistered;
  /// Why the next changes fail; none: they succeed and change the status.
  std::optional<std::string> failure;
  std::vector<std::string> log;

  [[nodiscard]] LoginItemStatus status() override { return current; }
  [[nodiscard]] std::optional<std::string> registerItem() override {
    return change("register", LoginItemStatus::enabled);
  }
  [[nodiscard]] std::optional<std::string> unregisterItem() override {
    return change("unregister", LoginItemStatus::notRegistered);
  }

 private:
  std::optional<std::string> change(const char* what, LoginItemStatus status) {
    log.emplace_back(what);
    if (!failure) {
      current = status;
    }
    return failure;
  }
};

}  // namespace quorvex::testing
