#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Output.h"

namespace quorvex::testing {

/// Keeps what was printed. One thread.
class FakeOutput final : public Output {
 public:
  /// The reader goes away during the n-th text, counted from 1.
  void closeAtText(std::size_t number) { lastText_ = number; }

  /// The texts of standard output, one a call.
  [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }
  /// All of standard output.
  [[nodiscard]] std::string printed() const {
    std::string all;
    for (const std::string& text : texts_) {
      all += text;
    }
    return all;
  }
  /// The messages of standard error, without their "Error: ".
  [[nodiscard]] const std::vector<std::string>& errors() const { return errors_; }
  /// The lines that told of progress; an empty one took the last away.
  [[nodiscard]] const std::vector<std::string>& progress() const { return progress_; }

  bool print(std::string_view text) override {
    texts_.emplace_back(text);
    return !lastText_ || texts_.size() < *lastText_;
  }
  void printError(std::string_view message) override { errors_.emplace_back(message); }
  void showProgress(std::string_view line) override { progress_.emplace_back(line); }

 private:
  std::optional<std::size_t> lastText_;
  std::vector<std::string> texts_;
  std::vector<std::string> errors_;
  std::vector<std::string> progress_;
};

}  // namespace quorvex::testing
