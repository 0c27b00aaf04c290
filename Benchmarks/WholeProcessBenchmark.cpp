#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

/// What one run of a program cost.
struct Run {
  double wallSeconds = 0.0;
  double cpuSeconds = 0.0;  ///< user and system time
  double peakMegabytes = 0.0;
};

struct Command {
  std::string name;
  std::vector<std::string> words;        ///< executable and arguments
  std::vector<std::string> environment;  ///< "NAME=value"
};

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

std::vector<char*> pointers(const std::vector<std::string>& words) {
  std::vector<char*> result;
  for (const std::string& word : words) {
    result.push_back(const_cast<char*>(word.c_str()));
  }
  result.push_back(nullptr);
  return result;
}

/// Runs a command to its end with its output thrown away.
Run run(const Command& command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const auto words = pointers(command.words);
  const auto environment = pointers(command.environment);
  pid_t child = 0;
  const auto begin = std::chrono::steady_clock::now();
  const int failure =
      posix_spawn(&child, words.front(), &actions, nullptr, words.data(), environment.data());
  int status = 0;
  rusage usage{};
  if (failure != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    static_cast<void>(std::fprintf(stderr, "%s did not run\n", command.name.c_str()));
    std::exit(EXIT_FAILURE);
  }
  const auto end = std::chrono::steady_clock::now();
  posix_spawn_file_actions_destroy(&actions);
  return {.wallSeconds = std::chrono::duration<double>(end - begin).count(),
          .cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime),
          .peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024.0};
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

template <typename Field>
double medianOf(const std::vector<Run>& runs, Field field) {
  std::vector<double> values;
  for (const Run& one : runs) {
    values.push_back(one.*field);
  }
  return median(std::move(values));
}

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
