#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ArgumentParser.h"
#include "JSONWriter.h"
#include "Machine.h"
#include "Output.h"
#include "PowerSessionStore.h"
#include "ProgressIndicator.h"
#include "Result.h"
#include "UUID.h"

namespace quorvex {

/// `quorvex session`: records, lists, shows, exports and deletes the sessions of the store that the
/// menu-bar app uses too, also on a recorded machine. Errors are told and count as success. Main
/// thread.
class SessionCommand {
 public:
  /// `arguments`: the command line without the program's name.
  SessionCommand(Machine& machine, Output& output, std::vector<std::string> arguments,
                 CommandLineOptions options)
      : arguments_(std::move(arguments)), options_(options), machine_(&machine), output_(&output) {}

  /// Runs to the command's end. "record" ends with the interrupt signal or with its output.
  void run();

 private:
  /// The error of a subcommand, in words; none on success.
  using Outcome = std::optional<std::string>;

  [[nodiscard]] Outcome record(PowerSessionStore& store);
  [[nodiscard]] Outcome list(PowerSessionStore& store);
  [[nodiscard]] Outcome show(PowerSessionStore& store);
  [[nodiscard]] Outcome exportSession(PowerSessionStore& store);
  [[nodiscard]] Outcome deleteSession(PowerSessionStore& store);

  [[nodiscard]] std::optional<UUID> idBehind(std::string_view word) const;
  /// The session, or why there is none to work on.
  [[nodiscard]] Result<std::shared_ptr<PowerSession>, std::string> sessionBehind(
      std::string_view word, PowerSessionStore& store) const;
  /// Shows how far the store's reading is, as long as what it gives is held.
  [[nodiscard]] std::shared_ptr<ProgressIndicator> progressOf(PowerSessionStore& store,
                                                              std::string title);
  /// Prints the line, or with "--json" the fields.
  /// Gives whether there is any use in writing more.
  bool tell(const std::function<void(JSONWriter&)>& fields, std::string_view line);

  std::vector<std::string> arguments_;
  CommandLineOptions options_;
  Machine* machine_;
  Output* output_;
};

/// What is printed after an unknown subcommand, ending in one newline.
[[nodiscard]] std::string sessionUsageText();

}  // namespace quorvex
