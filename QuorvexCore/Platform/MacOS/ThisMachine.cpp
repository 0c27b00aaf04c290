#include "ThisMachine.h"

#include "MacMachine.h"

namespace quorvex {

std::unique_ptr<Machine> thisMachine() {
  return std::make_unique<MacMachine>();
}

}  // namespace quorvex
