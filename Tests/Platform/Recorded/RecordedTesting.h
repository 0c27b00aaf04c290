#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "MachineFile.h"
#include "RecordedMachine.h"

namespace quorvex {

inline constexpr const char* machineFilePath = "machine.json";

/// The content of a machine file that must be valid.
inline MachineFile parsedFile(std::string_view text) {
  auto result = parseMachineFile(text, machineFilePath);
  if (auto* error = std::get_if<MachineFileError>(&result)) {
    ADD_FAILURE() << error->message;
    return {};
  }
  return std::get<MachineFile>(std::move(result));
}

/// What is wrong with a machine file that must be refused, without the file's path.
inline std::string refusalOf(std::string_view text) {
  auto result = parseMachineFile(text, machineFilePath);
  const auto* error = std::get_if<MachineFileError>(&result);
  const std::string prefix = std::string{machineFilePath} + ": ";
  if (error == nullptr || !error->message.starts_with(prefix)) {
    return "(accepted)";
  }
  return error->message.substr(prefix.size());
}

/// A machine whose first frame has the given keys besides `at`: `"smc": {}, "hid": []`.
inline std::string fileWithFrame(const std::string& keys) {
  return R"({"pace": "instant", "frames": [{"at": 0, )" + keys + "}]}";
}

inline std::unique_ptr<RecordedMachine> machineOf(std::string_view text) {
  return std::make_unique<RecordedMachine>(parsedFile(text));
}

inline std::unique_ptr<RecordedMachine> machineWithFrame(const std::string& keys) {
  return machineOf(fileWithFrame(keys));
}

}  // namespace quorvex
