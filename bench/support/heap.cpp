#include "support/heap.hpp"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

/// Only while something is counted, so that measured work pays one comparison for a call.
bool counting = false;
unsigned long calls = 0;
std::ptrdiff_t held = 0;
std::ptrdiff_t peak = 0;

void* counted(void* block) {
  if (!counting || block == nullptr) return block;
  ++calls;
  held += static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
  peak = std::max(peak, held);
  return block;
}

void giveBack(void* block) {
  if (counting && block != nullptr)
    held -= static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
}

long maxResident() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

// glibc's own functions, under the names that it keeps for those who replace them.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
  return counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
  giveBack(block);
  return counted(__libc_realloc(block, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return counted(__libc_memalign(alignment, size));
}

void* memalign(std::size_t alignment, std::size_t size) {
  return aligned_alloc(alignment, size);
}

int posix_memalign(void** out, std::size_t alignment, std::size_t size) {
  *out = aligned_alloc(alignment, size);
  return *out != nullptr ? 0 : ENOMEM;
}

void free(void* block) {
  giveBack(block);
  __libc_free(block);
}
}

namespace kovra_bench {

HeapUse heapUseOf(std::function<void()> const& work) {
  calls = 0;
  held = peak = 0;
  counting = true;
  work();
  counting = false;
  return {calls, static_cast<std::size_t>(peak)};
}

std::size_t residentGrowthOf(std::function<void()> const& work) {
  ::malloc_trim(0);
  int ends[2];
  if (::pipe(ends) != 0) std::abort();
  pid_t const child = ::fork();
  if (child == 0) {
    long const before = maxResident();
    work();
    long const growth = maxResident() - before;
    bool const told = ::write(ends[1], &growth, sizeof growth) == sizeof growth;
    ::_exit(told ? 0 : 1);
  }
  ::close(ends[1]);
  long growth = 0;
  bool const heard = ::read(ends[0], &growth, sizeof growth) == sizeof growth;
  ::close(ends[0]);
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0 || !heard) {
    std::fputs("the process that measures resident memory failed\n", stderr);
    std::exit(1);
  }
  return static_cast<std::size_t>(growth) * 1024;
}

}  // namespace kovra_bench
