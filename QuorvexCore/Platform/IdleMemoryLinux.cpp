#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "IdleMemory.h"

namespace quorvex {

namespace {

/// Lets go of the pages of one module that are only read: whoever needs one gets it again from the
/// file.
int releaseModule(dl_phdr_info* module, std::size_t, void*) {
  const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < module->dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = module->dlpi_phdr[i];
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) {
      continue;
    }
    const std::uintptr_t first = (module->dlpi_addr + segment.p_vaddr) / pageSize * pageSize;
    const std::uintptr_t end = module->dlpi_addr + segment.p_vaddr + segment.p_memsz;
    // Only advice: a failure leaves everything as it is.
    static_cast<void>(madvise(reinterpret_cast<void*>(first), end - first, MADV_DONTNEED));
  }
  return 0;
}

}  // namespace

void releaseIdleMemory() {
  malloc_trim(0);
  dl_iterate_phdr(releaseModule, nullptr);
}

}  // namespace quorvex
