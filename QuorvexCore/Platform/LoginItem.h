#pragma once

#include <optional>
#include <string>

namespace quorvex {

/// Whether the system starts the program when the user logs in.
enum class LoginItemStatus {
  notRegistered,
  enabled,
  requiresApproval,  ///< registered, and switched off by the user in the system's own settings
  notFound,          ///< there is no program that could be registered
  unknown,           ///< the system gives no answer, or one that the program does not know
};

/// The program's own entry among what starts at login. Main thread.
class LoginItem {
 public:
  LoginItem() = default;
  LoginItem(const LoginItem&) = delete;
  LoginItem& operator=(const LoginItem&) = delete;
  virtual ~LoginItem() = default;

  [[nodiscard]] virtual LoginItemStatus status() = 0;
  /// None on success, else why not, in the system's words.
  [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;
  /// The same for taking the entry back.
  [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace quorvex
