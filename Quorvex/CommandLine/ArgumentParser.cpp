#include "ArgumentParser.h"

#include <algorithm>
#include <cstdlib>

namespace quorvex {

namespace {

/// Takes the decimal digits off the front of `text`; gives how many there were.
std::size_t takeDigits(std::string_view& text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto end = std::ranges::find_if_not(text, isDigit);
  const auto count = static_cast<std::size_t>(end - text.begin());
  text.remove_prefix(count);
  return count;
}

/// Takes one of the characters off the front of `text`; gives whether one was there.
bool takeAnyOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

bool isDecimalNumber(std::string_view text) {
  takeAnyOf(text, "+-");
  std::size_t digits = takeDigits(text);
  if (takeAnyOf(text, ".")) {
    digits += takeDigits(text);
  }
  if (digits == 0) {
    return false;
  }
  if (takeAnyOf(text, "eE")) {
    takeAnyOf(text, "+-");
    if (takeDigits(text) == 0) {
      return false;
    }
  }
  return text.empty();
}

bool contains(std::span<const std::string> arguments, std::string_view wanted) {
  return std::ranges::find(arguments, wanted) != arguments.end();
}

}  // namespace

std::optional<double> parseDecimalNumber(std::string_view text) {
  if (!isDecimalNumber(text)) {
    return std::nullopt;
  }
  // The program stays in the "C" locale, whose decimal separator is the point.
  return std::strtod(std::string{text}.c_str(), nullptr);
}

ParsedArguments parseArguments(std::span<const std::string> arguments) {
  ParsedArguments parsed;
  parsed.options.json = contains(arguments, "--json");
  parsed.options.noColor = contains(arguments, "--no-color");
  const auto name = std::ranges::find(arguments, "--interval");
  if (name != arguments.end() && name + 1 != arguments.end()) {
    parsed.options.interval = parseDecimalNumber(*(name + 1)).value_or(parsed.options.interval);
  }
  const auto command = std::ranges::find_if_not(
      arguments, [](const std::string& argument) { return argument.starts_with('-'); });
  parsed.command = command != arguments.end() ? *command : "status";
  return parsed;
}

}  // namespace quorvex
