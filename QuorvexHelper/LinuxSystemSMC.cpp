#include "SystemSMC.h"

namespace quorvex {

std::unique_ptr<SMCPort> systemSMC() {
  return nullptr;
}

}  // namespace quorvex
