#include "StopFlag.h"

namespace quorvex {

namespace {

// A signal handler reaches nothing but what is global.
volatile sig_atomic_t interrupted = 0;

void noteInterrupt(int /*signal*/) {
  interrupted = 1;
}

}  // namespace

StopFlag::StopFlag() {
  interrupted = 0;
  struct sigaction action {};
  action.sa_handler = noteInterrupt;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &previous_);
  // A parent may have started the process with the signal held back.
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_UNBLOCK, &interrupt, nullptr);
}

StopFlag::~StopFlag() {
  sigaction(SIGINT, &previous_, nullptr);
}

bool StopFlag::shouldStop() const {
  return interrupted != 0;
}

}  // namespace quorvex
