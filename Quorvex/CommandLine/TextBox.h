#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quorvex {

/// Colours of the terminal output.
enum class ANSIColor { green, yellow, red };

/// The text between a colour's escape sequence and the reset; the text alone without `useColor`.
[[nodiscard]] std::string colored(std::string_view text, ANSIColor color, bool useColor);

/// Number of characters that a terminal shows of a line: its colour sequences count nothing.
[[nodiscard]] std::size_t visibleLength(std::string_view line);

/// The lines in a frame of rounded corners, with the title in the top edge, at least 40 columns
/// inside. The bottom edge is deliberately one column longer than the rest. No newline at the end.
[[nodiscard]] std::string box(std::string_view title, std::span<const std::string> lines);

/// A bar of `width` cells, `filled` of them full; fewer than none and more than all are cut.
[[nodiscard]] std::string cells(double filled, std::size_t width);

/// A bar of `width` cells filled to `value / max`, cut to whole cells; empty unless `max` is above
/// 0.
[[nodiscard]] std::string horizontalBar(double value, double max, std::size_t width);

/// The piece of text `count` times.
[[nodiscard]] std::string repeated(std::string_view piece, std::size_t count);

}  // namespace quorvex
