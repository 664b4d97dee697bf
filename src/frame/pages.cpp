#include "frame/pages.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace Kovra::frame {

// The block begins behind what the C library keeps in front of it, so in the middle of a page.
void useLargePages(void* block, std::size_t size) {
  if (size < leastOfLargeBlocks) return;
  int const error = errno;
  auto const page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
  auto const begin = reinterpret_cast<std::uintptr_t>(block);
  auto const firstPage = (begin + page - 1) & ~(page - 1);
  auto const length = (begin + size - firstPage) & ~(page - 1);
  static_cast<void>(::madvise(reinterpret_cast<void*>(firstPage), length, MADV_HUGEPAGE));
  errno = error;
}

}  // namespace Kovra::frame
