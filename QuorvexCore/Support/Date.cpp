#include "Date.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace quorvex {

namespace {

using std::chrono::nanoseconds;

/// Consumes exactly `digits` decimal digits from the front of `text`.
std::optional<int> takeNumber(std::string_view& text, std::size_t digits) {
  if (text.size() < digits) {
    return std::nullopt;
  }
  int value = 0;
  for (std::size_t i = 0; i < digits; ++i) {
    const char c = text[i];
    if (c < '0' || c > '9') {
      return std::nullopt;
    }
    value = value * 10 + (c - '0');
  }
  text.remove_prefix(digits);
  return value;
}

bool takeCharacter(std::string_view& text, char wanted) {
  if (text.empty() || text.front() != wanted) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

/// The fraction behind a decimal point as nanoseconds; digits past the ninth are dropped.
std::optional<nanoseconds> takeFraction(std::string_view& text) {
  if (!takeCharacter(text, '.')) {
    return nanoseconds{0};
  }
  std::int64_t value = 0;
  std::size_t digits = 0;
  while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
    if (digits < 9) {
      value = value * 10 + (text.front() - '0');
    }
    ++digits;
    text.remove_prefix(1);
  }
  if (digits == 0) {
    return std::nullopt;
  }
  for (; digits < 9; ++digits) {
    value *= 10;
  }
  return nanoseconds{value};
}

/// The distance from UTC that the designator at the front of `text` names.
std::optional<std::chrono::minutes> takeZone(std::string_view& text) {
  if (takeCharacter(text, 'Z')) {
    return std::chrono::minutes{0};
  }
  const bool west = !text.empty() && text.front() == '-';
  if (!west && (text.empty() || text.front() != '+')) {
    return std::nullopt;
  }
  text.remove_prefix(1);
  const auto hours = takeNumber(text, 2);
  if (!hours || !takeCharacter(text, ':')) {
    return std::nullopt;
  }
  const auto minutes = takeNumber(text, 2);
  if (!minutes || *hours > 23 || *minutes > 59) {
    return std::nullopt;
  }
  const std::chrono::minutes distance{*hours * 60 + *minutes};
  return west ? -distance : distance;
}

}  // namespace

double secondsBetween(Date earlier, Date later) {
  const std::int64_t from = earlier.time_since_epoch().count();
  const std::int64_t to = later.time_since_epoch().count();
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(to, from, &difference)) {
    // Centuries apart: nanoseconds no longer matter.
    return (static_cast<double>(to) - static_cast<double>(from)) / 1e9;
  }
  return static_cast<double>(difference) / 1e9;
}

nanoseconds nanosecondsFromSeconds(double seconds) {
  const double scaled = std::round(seconds * 1e9);
  if (std::isnan(scaled)) {
    return nanoseconds{0};
  }
  constexpr double limit = 9223372036854775808.0;
  if (scaled >= limit) {
    return nanoseconds::max();
  }
  if (scaled <= -limit) {
    return nanoseconds::min();
  }
  return nanoseconds{static_cast<std::int64_t>(scaled)};
}

Date dateByAdding(Date date, double seconds) {
  const nanoseconds step = nanosecondsFromSeconds(seconds);
  std::int64_t sum = 0;
  if (__builtin_add_overflow(date.time_since_epoch().count(), step.count(), &sum)) {
    sum = step.count() < 0 ? std::numeric_limits<std::int64_t>::min()
                           : std::numeric_limits<std::int64_t>::max();
  }
  return Date{nanoseconds{sum}};
}

std::string iso8601(Date date) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day calendar{day};
  const std::chrono::hh_mm_ss clock{seconds - day};
  std::array<char, 40> buffer{};
  const int length = std::snprintf(
      buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
      static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
      static_cast<unsigned>(calendar.day()), static_cast<int>(clock.hours().count()),
      static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
  return {buffer.data(), static_cast<std::size_t>(length)};
}

std::optional<Date> parseISO8601(std::string_view text) {
  const auto year = takeNumber(text, 4);
  if (!year || !takeCharacter(text, '-')) {
    return std::nullopt;
  }
  const auto month = takeNumber(text, 2);
  if (!month || !takeCharacter(text, '-')) {
    return std::nullopt;
  }
  const auto day = takeNumber(text, 2);
  if (!day || !takeCharacter(text, 'T')) {
    return std::nullopt;
  }
  const auto hour = takeNumber(text, 2);
  if (!hour || !takeCharacter(text, ':')) {
    return std::nullopt;
  }
  const auto minute = takeNumber(text, 2);
  if (!minute || !takeCharacter(text, ':')) {
    return std::nullopt;
  }
  const auto second = takeNumber(text, 2);
  if (!second) {
    return std::nullopt;
  }
  const auto fraction = takeFraction(text);
  const auto zone = fraction ? takeZone(text) : std::nullopt;
  if (!zone || !text.empty() || *hour > 23 || *minute > 59 || *second > 59) {
    return std::nullopt;
  }
  const std::chrono::year_month_day calendar{std::chrono::year{*year},
                                             std::chrono::month{static_cast<unsigned>(*month)},
                                             std::chrono::day{static_cast<unsigned>(*day)}};
  if (!calendar.ok()) {
    return std::nullopt;
  }
  const std::chrono::sys_seconds seconds =
      std::chrono::sys_days{calendar} + std::chrono::hours{*hour} + std::chrono::minutes{*minute} +
      std::chrono::seconds{*second} - *zone;
  // Instants that nanoseconds since 1970 cannot hold, from 1677 to 2262.
  constexpr std::chrono::seconds limit{9'223'372'035};
  if (seconds.time_since_epoch() < -limit || seconds.time_since_epoch() > limit) {
    return std::nullopt;
  }
  return Date{seconds} + *fraction;
}

}  // namespace quorvex
