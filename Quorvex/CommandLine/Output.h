#pragma once

#include <string_view>

namespace quorvex {

/// Where the commands print. One thread at a time.
class Output {
 public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  virtual ~Output() = default;

  /// Writes `text` on standard output, whole and at once: nothing stays in a buffer. Gives whether
  /// there is any use in writing more.
  virtual bool print(std::string_view text) = 0;

  /// Writes "Error: {message}" and a newline on standard error.
  virtual void printError(std::string_view message) = 0;

  /// Shows a line in place of the last one shown so, on standard error when that is a terminal; an
  /// empty one takes it away, as does the next text on either stream.
  virtual void showProgress(std::string_view line) = 0;
};

/// The process's own streams, written past all buffering of the language's libraries. An interrupt
/// signal that comes while a text is being written is delivered after its last byte. A reader that
/// has gone ends the output quietly; any other failure is told on standard error, once.
class StandardOutput final : public Output {
 public:
  bool print(std::string_view text) override;
  void printError(std::string_view message) override;
  void showProgress(std::string_view line) override;

 private:
  bool isOpen_ = true;
  bool showsProgress_ = false;
};

/// Makes the standard streams safe to use: a closed reader shows as a failed write instead of a
/// signal, and no file opened later can take the number of a stream that was closed at the start.
/// Main thread, before anything else.
void prepareStandardStreams();

}  // namespace quorvex
