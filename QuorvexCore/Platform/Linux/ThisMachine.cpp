#include "ThisMachine.h"

#include "LinuxMachine.h"

namespace quorvex {

std::unique_ptr<Machine> thisMachine() {
  return std::make_unique<LinuxMachine>();
}

}  // namespace quorvex
