#pragma once

#include <string>
#include <string_view>

/// The app's scenes: the menu-bar item, the dashboard window and the settings window.
namespace quorvex::AppScenes {

/// The menu-bar item: its icon is fixed and shows no live figures.
inline constexpr std::string_view menuBarTitle = "Quorvex";
inline constexpr std::string_view menuBarSymbol = "bolt.fill";

inline constexpr std::string_view dashboardTitle = "Quorvex Dashboard";
inline constexpr std::string_view dashboardID = "dashboard";
inline constexpr int dashboardDefaultWidth = 480;
inline constexpr int dashboardDefaultHeight = 700;

inline constexpr std::string_view settingsTitle = "Quorvex Settings";

/// The message with which the process ends when not even a session store in memory can be made.
[[nodiscard]] std::string storeFailureMessage(std::string_view error);

}  // namespace quorvex::AppScenes
