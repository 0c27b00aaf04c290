#include "TextBox.h"

#include <algorithm>

#include "Text.h"

namespace quorvex {

namespace {

constexpr std::string_view resetSequence = "\x1b[0m";
constexpr std::size_t leastBoxWidth = 40;

std::string_view sequence(ANSIColor color) {
  switch (color) {
    case ANSIColor::green:
      return "\x1b[32m";
    case ANSIColor::yellow:
      return "\x1b[33m";
    case ANSIColor::red:
      break;
  }
  return "\x1b[31m";
}

/// Length of the colour sequence (ESC, "[", digits and semicolons, "m") that `text` begins with; 0
/// when it begins with none.
std::size_t colorSequenceLength(std::string_view text) {
  if (!text.starts_with("\x1b[")) {
    return 0;
  }
  const std::size_t end = text.find_first_not_of("0123456789;", 2);
  return end != std::string_view::npos && text[end] == 'm' ? end + 1 : 0;
}

}  // namespace

std::string colored(std::string_view text, ANSIColor color, bool useColor) {
  std::string result;
  if (useColor) {
    result.append(sequence(color)).append(text).append(resetSequence);
  } else {
    result.append(text);
  }
  return result;
}

std::size_t visibleLength(std::string_view line) {
  std::string visible;
  visible.reserve(line.size());
  while (!line.empty()) {
    if (const std::size_t length = colorSequenceLength(line); length > 0) {
      line.remove_prefix(length);
    } else {
      visible.push_back(line.front());
      line.remove_prefix(1);
    }
  }
  return text::characterCount(visible);
}

std::string box(std::string_view title, std::span<const std::string> lines) {
  const std::size_t titleLength = text::characterCount(title);
  std::size_t width = std::max(titleLength + 4, leastBoxWidth);
  std::vector<std::size_t> lengths;
  lengths.reserve(lines.size());
  for (const auto& line : lines) {
    lengths.push_back(visibleLength(line));
    width = std::max(width, lengths.back() + 2);
  }
  std::string result{"╭─ "};
  result.append(title).append(" ").append(repeated("─", width - titleLength - 4)).append("╮\n");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    result.append("│").append(lines[i]).append(width - lengths[i] - 1, ' ').append("│\n");
  }
  return result.append("╰").append(repeated("─", width)).append("╯");
}

std::string cells(double filled, std::size_t width) {
  const auto limit = static_cast<double>(width);
  // A value that is not a number compares false and leaves the bar empty.
  const std::size_t full = filled >= limit ? width
                           : filled > 0.0  ? static_cast<std::size_t>(filled)
                                           : 0;
  return repeated("█", full) + repeated("░", width - full);
}

std::string horizontalBar(double value, double max, std::size_t width) {
  return cells(max > 0.0 ? value / max * static_cast<double>(width) : 0.0, width);
}

std::string repeated(std::string_view piece, std::size_t count) {
  std::string result;
  result.reserve(piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) {
    result.append(piece);
  }
  return result;
}

}  // namespace quorvex
