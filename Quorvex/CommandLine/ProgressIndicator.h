#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "Clock.h"
#include "Output.h"

namespace quorvex {

/// Shows on a terminal how far a long piece of work has come: a bar and a percentage, on standard
/// error. Short work shows nothing. One thread.
class ProgressIndicator {
 public:
  /// Seconds of work before anything is shown, and between two pictures of it.
  static constexpr std::chrono::milliseconds patience{500};
  static constexpr std::chrono::milliseconds refresh{100};

  /// The work begins now. `title` is what is being done, such as "Reading sessions". Both outlive
  /// the indicator.
  ProgressIndicator(Clock& clock, Output& output, std::string title);
  ProgressIndicator(const ProgressIndicator&) = delete;
  ProgressIndicator& operator=(const ProgressIndicator&) = delete;
  /// Takes the picture away.
  ~ProgressIndicator();

  /// The work has `count` parts, and part `index` of them, counted from 0, begins. One part unless
  /// told.
  void beginPart(std::size_t index, std::size_t count);
  /// Of the part, `done` of `total` steps are done.
  void update(std::size_t done, std::size_t total);

 private:
  [[nodiscard]] std::string picture(std::size_t done, std::size_t total) const;

  Clock* clock_;
  Output* output_;
  std::string title_;
  std::chrono::nanoseconds nextPicture_;
  std::size_t part_ = 0;
  std::size_t partCount_ = 1;
  bool isShown_ = false;
};

}  // namespace quorvex
