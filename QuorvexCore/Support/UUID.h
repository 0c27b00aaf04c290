#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

/// A universally unique identifier: 16 bytes in the order of its text form.
class UUID {
 public:
  using Bytes = std::array<std::uint8_t, 16>;

  /// All bits zero.
  UUID() = default;
  explicit UUID(const Bytes& bytes) : bytes_(bytes) {}

  /// A fresh random one (version 4). A system without randomness is a fatal error. Any thread.
  [[nodiscard]] static UUID random();

  /// Reads 8-4-4-4-12 hexadecimal digits in either case; none for any other text.
  [[nodiscard]] static std::optional<UUID> fromText(std::string_view text);

  /// Upper-case hexadecimal with hyphens: "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0".
  [[nodiscard]] std::string text() const;

  [[nodiscard]] const Bytes& bytes() const { return bytes_; }

  bool operator==(const UUID&) const = default;
  /// By bytes. Not every C++ library orders arrays in one step.
  std::strong_ordering operator<=>(const UUID& other) const {
    return std::memcmp(bytes_.data(), other.bytes_.data(), bytes_.size()) <=> 0;
  }

 private:
  Bytes bytes_{};
};

}  // namespace quorvex

template <>
struct std::hash<quorvex::UUID> {
  std::size_t operator()(const quorvex::UUID& id) const noexcept;
};
