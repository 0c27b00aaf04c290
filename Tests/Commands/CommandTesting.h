#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ProcessRunner.h"

namespace quorvex::testing {

/// A machine file of these tests.
inline std::string machineFile(const std::string& name) {
  std::string path{QUORVEX_TEST_MACHINES_FOLDER "/"};
  return path.append(name).append(".json");
}

/// The real program, on the computer that it runs on.
inline ProcessRunner program() {
  return ProcessRunner{QUORVEX_EXECUTABLE};
}

/// The real program on one of these tests' machines.
inline ProcessRunner programOn(const std::string& machine) {
  return program().environment("QUORVEX_MACHINE", machineFile(machine));
}

/// The text as people can read it in a file: ESC as "\e".
inline std::string readable(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\x1b') {
      result += "\\e";
    } else {
      result += c;
    }
  }
  return result;
}

/// Everything that a run shows, in one text.
inline std::string transcript(const ProcessResult& result) {
  const auto section = [](const std::string& title, const std::string& text) {
    const bool endsInside = !text.empty() && text.back() != '\n';
    return "--- " + title + "\n" + readable(text) +
           (endsInside ? "\n--- (no newline at the end)\n" : "");
  };
  return section("standard output", result.output) + section("standard error", result.error) +
         "--- exit status " + std::to_string(result.exitStatus) + "\n";
}

/// Compares a run with the golden file of this name. With QUORVEX_UPDATE_GOLDEN=1 in the
/// environment it writes that file instead, to be read and judged before it is kept.
inline void expectGolden(const std::string& name, const ProcessResult& result) {
  const std::string path = std::string{QUORVEX_GOLDEN_FOLDER} + "/" + name + ".txt";
  const std::string actual = transcript(result);
  const char* update = std::getenv("QUORVEX_UPDATE_GOLDEN");
  if (update != nullptr && std::string_view{update} == "1") {
    std::ofstream{path, std::ios::binary} << actual;
  }
  std::ifstream file{path, std::ios::binary};
  ASSERT_TRUE(file) << "no golden file " << path;
  const std::string expected{std::istreambuf_iterator<char>{file}, {}};
  EXPECT_EQ(actual, expected);
}

}  // namespace quorvex::testing
