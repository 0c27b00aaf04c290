// A child with one task, named by its first argument. It ends with status 2 when it knows no such
// task.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

void tellDescriptors() {
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) {
      std::cout << descriptor << ' ';
    }
  }
}

void tellSignals() {
  sigset_t mask;
  sigprocmask(SIG_BLOCK, nullptr, &mask);
  for (int number = 1; number < NSIG; ++number) {
    if (sigismember(&mask, number) == 1) {
      std::cout << "blocked " << number << ' ';
    }
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
      std::cout << "ignored " << number << ' ';
    }
  }
  std::cout << "end";
}

void waitForever() {
  while (true) {
    pause();
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const std::string_view task = argumentCount > 1 ? arguments[1] : "";
  const char* parameter = argumentCount > 2 ? arguments[2] : "0";
  if (task == "arguments") {
    for (int index = 0; index < argumentCount; ++index) {
      std::cout << '[' << arguments[index] << ']';
    }
  } else if (task == "descriptors") {
    tellDescriptors();
  } else if (task == "signals") {
    tellSignals();
  } else if (task == "input") {
    std::cout << std::string{std::istreambuf_iterator<char>{std::cin}, {}};
  } else if (task == "streams") {
    std::cout << "to output";
    std::cerr << "to error";
  } else if (task == "flood") {
    // Alternates between the streams, so that a reader of one alone would leave it stalled.
    const std::string block(4096, 'x');
    for (int count = std::atoi(parameter); count > 0; --count) {
      std::cout << block << std::flush;
      std::cerr << block << std::flush;
    }
  } else if (task == "exit") {
    return std::atoi(parameter);
  } else if (task == "kill") {
    return std::raise(std::atoi(parameter));
  } else if (task == "wait") {
    waitForever();
  } else {
    return 2;
  }
  return 0;
}
