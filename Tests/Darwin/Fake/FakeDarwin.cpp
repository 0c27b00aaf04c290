#include "FakeDarwin.h"

#include <memory>

namespace quorvex::darwin {

namespace {

std::unique_ptr<FakeDarwin>& instance() {
  static std::unique_ptr<FakeDarwin> value = std::make_unique<FakeDarwin>();
  return value;
}

}  // namespace

FakeDarwin::FakeDarwin() {
  constexpr std::uint64_t wallClockAtStart = 1'769'851'805'000'000'123;
  constexpr std::uint64_t continuousClockAtStart = 5'000'000'000;
  wallClock = [this] { return wallClockAtStart + elapsed; };
  continuousClock = [this] { return continuousClockAtStart + elapsed; };
  sleep = [this](std::uint64_t nanoseconds) { elapsed += nanoseconds; };
}

void FakeDarwin::note(const std::string& call) {
  if (isLogging) {
    calls.push_back(call);
  }
}

void FakeDarwin::fault(const std::string& what) {
  faults.push_back(what);
}

FakeDarwin& fake() {
  return *instance();
}

void reset() {
  instance() = std::make_unique<FakeDarwin>();
}

}  // namespace quorvex::darwin
