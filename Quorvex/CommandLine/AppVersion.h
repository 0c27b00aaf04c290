#pragma once

namespace quorvex {

/// The program's version.
struct AppVersion {
  static constexpr int major = 0;
  static constexpr int minor = 14;
  static constexpr int patch = 0;
  /// "{major}.{minor}.{patch}"; shown by --version and stored with each recorded session.
  static constexpr const char* shortText = "0.14.0";
};

}  // namespace quorvex
