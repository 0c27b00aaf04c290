#include "ByteFormat.h"

#include <fmt/format.h>

namespace quorvex {

double kb(ByteFormatStyle style) {
  return style == ByteFormatStyle::si ? 1000.0 : 1024.0;
}

double mb(ByteFormatStyle style) {
  return kb(style) * kb(style);
}

double gb(ByteFormatStyle style) {
  return mb(style) * kb(style);
}

std::string formatBytes(std::uint64_t bytes, ByteFormatStyle style) {
  const auto value = static_cast<double>(bytes);
  if (bytes >= static_cast<std::uint64_t>(gb(style))) {
    return fmt::format("{:.1f} GB", value / gb(style));
  }
  if (bytes >= static_cast<std::uint64_t>(mb(style))) {
    return fmt::format("{:.1f} MB", value / mb(style));
  }
  if (bytes >= static_cast<std::uint64_t>(kb(style))) {
    return fmt::format("{:.1f} KB", value / kb(style));
  }
  return fmt::format("{} B", bytes);
}

std::string formatBytesPerSec(double bytesPerSecond, ByteFormatStyle style) {
  if (bytesPerSecond >= gb(style)) {
    return fmt::format("{:.1f} GB/s", bytesPerSecond / gb(style));
  }
  if (bytesPerSecond >= mb(style)) {
    return fmt::format("{:.1f} MB/s", bytesPerSecond / mb(style));
  }
  if (bytesPerSecond >= kb(style)) {
    return fmt::format("{:.1f} KB/s", bytesPerSecond / kb(style));
  }
  return fmt::format("{:.0f} B/s", bytesPerSecond);
}

}  // namespace quorvex
