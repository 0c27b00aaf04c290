#include <malloc/malloc.h>

#include "IdleMemory.h"

namespace quorvex {

void releaseIdleMemory() {
  malloc_zone_pressure_relief(nullptr, 0);
}

}  // namespace quorvex
