#include "FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace quorvex {

void fatalError(std::string_view message) {
  static_cast<void>(std::fprintf(stderr, "Fatal error: %.*s\n", static_cast<int>(message.size()),
                                 message.data()));
  std::abort();
}

}  // namespace quorvex
