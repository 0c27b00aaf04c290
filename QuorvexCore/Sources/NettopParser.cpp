#include "NettopParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <concepts>

#include "Text.h"

namespace quorvex {

namespace {

template <std::integral Integer>
std::optional<Integer> parsedDecimal(std::string_view text) {
  Integer number{};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc{} && rest == end ? std::optional{number} : std::nullopt;
}

/// The first three comma-separated fields, trimmed; none when the line has fewer.
std::optional<std::array<std::string_view, 3>> leadingFields(std::string_view line) {
  constexpr auto none = std::string_view::npos;
  const std::size_t first = line.find(',');
  const std::size_t second = first != none ? line.find(',', first + 1) : none;
  if (second == none) {
    return std::nullopt;
  }
  const std::size_t third = std::min(line.find(',', second + 1), line.size());
  return std::array{text::trimmed(line.substr(0, first)),
                    text::trimmed(line.substr(first + 1, second - first - 1)),
                    text::trimmed(line.substr(second + 1, third - second - 1))};
}

}  // namespace

std::optional<NettopIdentity> parseNettopIdentity(std::string_view field) {
  const std::size_t dot = field.rfind('.');
  if (dot == std::string_view::npos) {
    return std::nullopt;
  }
  const auto pid = parsedDecimal<std::int32_t>(field.substr(dot + 1));
  const std::string_view name = text::trimmed(field.substr(0, dot));
  if (!pid || name.empty()) {
    return std::nullopt;
  }
  return NettopIdentity{std::string{name}, *pid};
}

std::vector<NetworkProcessInfo> parseNettopProcessCounters(std::string_view text) {
  std::vector<NetworkProcessInfo> processes;
  for (const std::string_view line : text::nonEmptyLines(text)) {
    const auto fields = leadingFields(line);
    if (!fields) {
      continue;
    }
    auto identity = parseNettopIdentity((*fields)[0]);
    const auto bytesIn = parsedDecimal<std::uint64_t>((*fields)[1]);
    const auto bytesOut = parsedDecimal<std::uint64_t>((*fields)[2]);
    if (!identity || !bytesIn || !bytesOut) {
      continue;
    }
    NetworkProcessInfo& process = processes.emplace_back();
    process.id = identity->pid;
    process.name = std::move(identity->name);
    process.bytesIn = *bytesIn;
    process.bytesOut = *bytesOut;
    process.attributionSource = NetworkAttributionSource::nettop;
  }
  return processes;
}

}  // namespace quorvex
