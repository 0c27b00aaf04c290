#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace quorvex::benchmarks {

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

inline double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

inline std::vector<char*> pointers(const std::vector<std::string>& words) {
  std::vector<char*> result;
  for (const std::string& word : words) {
    result.push_back(const_cast<char*>(word.c_str()));
  }
  result.push_back(nullptr);
  return result;
}

/// Runs a command to its end with its output thrown away.
inline Run run(const Command& command) {
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

inline double median(std::vector<double> values) {
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

}  // namespace quorvex::benchmarks
