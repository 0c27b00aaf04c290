#pragma once

#include <cstdint>
#include <string>

namespace quorvex {

/// How a byte count is scaled. The unit letters are the same in both styles: "KB" stands for 1000
/// in `si` and for 1024 in `binary`.
enum class ByteFormatStyle { si, binary };

/// The scales of a style, in bytes.
[[nodiscard]] double kb(ByteFormatStyle style);
[[nodiscard]] double mb(ByteFormatStyle style);
[[nodiscard]] double gb(ByteFormatStyle style);

/// A byte count in words: "512 B", "1.0 KB". The scale is chosen before rounding.
[[nodiscard]] std::string formatBytes(std::uint64_t bytes, ByteFormatStyle style);

/// A rate in words: "999 B/s", "1.5 MB/s". The scale is chosen before rounding, so that 999.6 in
/// `si` reads "1000 B/s".
[[nodiscard]] std::string formatBytesPerSec(double bytesPerSecond, ByteFormatStyle style);

}  // namespace quorvex
