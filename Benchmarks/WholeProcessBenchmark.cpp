#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "WholeProcess.h"

namespace {

using namespace quorvex::benchmarks;

/// Runs the command and the empty program in turns, so that both see the same machine, and prints
/// the medians and the median of the pairs' ratios.
void compare(const Command& command, const Command& empty, int rounds) {
  std::vector<Run> commandRuns;
  std::vector<Run> emptyRuns;
  std::vector<double> ratios;
  run(command);
  run(empty);
  for (int i = 0; i < rounds; ++i) {
    emptyRuns.push_back(run(empty));
    commandRuns.push_back(run(command));
    ratios.push_back(commandRuns.back().wallSeconds / emptyRuns.back().wallSeconds);
  }
  fmt::print("{:<28} {:8.3f} ms wall {:8.3f} ms CPU {:7.1f} MB peak {:7.2f} x empty program\n",
             command.name, medianOf(commandRuns, &Run::wallSeconds) * 1e3,
             medianOf(commandRuns, &Run::cpuSeconds) * 1e3,
             medianOf(commandRuns, &Run::peakMegabytes), median(ratios));
}

}  // namespace

/// Times whole runs of the program beside an empty one. An optional argument gives the rounds.
int main(int argumentCount, char** arguments) {
  const int rounds = argumentCount > 1 ? std::max(1, std::atoi(arguments[1])) : 200;
  const std::string executable = QUORVEX_EXECUTABLE;
  const Command empty{"empty program", {QUORVEX_EMPTY_PROGRAM}, {}};
  const auto recorded = [&](const std::string& machine, std::vector<std::string> words) {
    Command command{words[0] + " on " + machine, {executable}, {}};
    command.words.insert(command.words.end(), words.begin(), words.end());
    command.environment = {"QUORVEX_MACHINE=" QUORVEX_MACHINES_FOLDER "/" + machine + ".json",
                           "QUORVEX_PACE=instant"};
    return command;
  };
  compare({"--version", {executable, "--version"}, {}}, empty, rounds);
  compare({"--help", {executable, "--help"}, {}}, empty, rounds);
  compare(recorded("laptop-unplugged", {"status"}), empty, rounds);
  compare(recorded("desktop-fans", {"status", "--json"}), empty, rounds);
  compare(recorded("laptop-charging", {"battery"}), empty, rounds);
  return EXIT_SUCCESS;
}
