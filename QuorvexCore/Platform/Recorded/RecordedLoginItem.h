#pragma once

#include "LoginItem.h"

namespace quorvex {

/// A recorded machine starts nothing at login until it is told to, and does so as long as it lives.
/// Main thread.
class RecordedLoginItem final : public LoginItem {
 public:
  [[nodiscard]] LoginItemStatus status() override { return status_; }
  [[nodiscard]] std::optional<std::string> registerItem() override {
    status_ = LoginItemStatus::enabled;
    return std::nullopt;
  }
  [[nodiscard]] std::optional<std::string> unregisterItem() override {
    status_ = LoginItemStatus::notRegistered;
    return std::nullopt;
  }

 private:
  LoginItemStatus status_ = LoginItemStatus::notRegistered;
};

}  // namespace quorvex
