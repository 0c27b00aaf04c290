#pragma once

#include <unistd.h>

#include <fstream>

namespace quorvex::benchmarks {

/// The process's resident memory in kB of 1,024 bytes; 0 where the system does not tell.
[[nodiscard]] inline double residentKilobytes() {
  std::ifstream file{"/proc/self/statm"};
  double totalPages = 0.0;
  double residentPages = 0.0;
  file >> totalPages >> residentPages;
  return residentPages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024.0;
}

}  // namespace quorvex::benchmarks
