#include "MacSMCPort.h"
#include "SystemSMC.h"

namespace quorvex {

std::unique_ptr<SMCPort> systemSMC() {
  return std::make_unique<MacSMCPort>();
}

}  // namespace quorvex
