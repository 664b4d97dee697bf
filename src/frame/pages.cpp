#include "frame/pages.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace Kovra::frame {

// The block begins behind what the C library keeps in front of it, so in the middle of a page.
void useLargePages(void* block, std::size_t size) {
  if (size < leastOfLargeBlocks) return;
  int const error = errno;
  auto const page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  if (std::align(page, page, block, size) != nullptr) {
    static_cast<void>(::madvise(block, size & ~(page - 1), MADV_HUGEPAGE));
  }
  errno = error;
}

}  // namespace Kovra::frame
