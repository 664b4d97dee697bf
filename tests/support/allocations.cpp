#include "support/allocations.hpp"

#include <malloc.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

using Kovra::test::Lasting;

namespace {

/// The watch of a thread. It uses no heap itself.
struct Watch {
  bool on = false;
  std::size_t failing = 0;
  Lasting lasting = Lasting::once;
  std::size_t made = 0;
  std::size_t alive = 0;
  std::array<void*, 16384> blocks{};
};
thread_local Watch watch;

/// The text that a thread looks for in what it gives back.
struct Search {
  std::string_view text;
  std::size_t found = 0;
};
thread_local Search search;

}  // namespace

#if KOVRA_TESTS_WATCH_HEAP

// Who makes blocks: the C library behind a malloc of our own, the linker's name for a malloc that
// another one stands in for, or malloc itself.
#if KOVRA_TESTS_REPLACE_MALLOC
extern "C" void* __libc_malloc(std::size_t size) noexcept;
extern "C" void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
extern "C" void* __libc_realloc(void* block, std::size_t size) noexcept;
extern "C" void __libc_free(void* block) noexcept;
#define KOVRA_TESTS_MAKER(function) __libc_##function
#define KOVRA_TESTS_MALLOC(function) function
#elif KOVRA_TESTS_WRAP_MALLOC
extern "C" void* __real_malloc(std::size_t size) noexcept;
extern "C" void* __real_calloc(std::size_t count, std::size_t size) noexcept;
extern "C" void* __real_realloc(void* block, std::size_t size) noexcept;
extern "C" void __real_free(void* block) noexcept;
#define KOVRA_TESTS_MAKER(function) __real_##function
#define KOVRA_TESTS_MALLOC(function) __wrap_##function
#else
#define KOVRA_TESTS_MAKER(function) std::function
#endif

namespace {

/// Counts an allocation; is it one that fails?
bool fails() noexcept {
  if (!watch.on) return false;
  ++watch.made;
  if (watch.failing == 0) return false;
  return watch.lasting == Lasting::once ? watch.made == watch.failing : watch.made >= watch.failing;
}

void* known(void* block) noexcept {
  if (watch.on && block != nullptr) {
    if (watch.alive == watch.blocks.size()) std::abort();  // no test comes near
    watch.blocks[watch.alive++] = block;
  }
  return block;
}

void* allocate(std::size_t size) noexcept {
  if (fails()) return nullptr;
  void* const block = KOVRA_TESTS_MAKER(malloc)(size != 0 ? size : 1);
  // What an earlier owner left in it is not looked for.
  if (!search.text.empty() && block != nullptr) std::memset(block, 0, ::malloc_usable_size(block));
  return known(block);
}

void* allocateOrThrow(std::size_t size) {
  if (void* const block = allocate(size)) return block;
  throw std::bad_alloc();
}

void look(void* block) noexcept {
  if (search.text.empty() || block == nullptr) return;
  void const* const place =
      ::memmem(block, ::malloc_usable_size(block), search.text.data(), search.text.size());
  if (place != nullptr) ++search.found;
}

/// The last ones mostly go first.
void forget(void* block) noexcept {
  if (!watch.on) return;
  for (std::size_t i = watch.alive; i > 0; --i) {
    if (watch.blocks[i - 1] != block) continue;
    watch.blocks[i - 1] = watch.blocks[--watch.alive];
    return;
  }
}

void release(void* block) noexcept {
  look(block);
  forget(block);
  KOVRA_TESTS_MAKER(free)(block);
}

}  // namespace

#ifdef KOVRA_TESTS_MALLOC
extern "C" {

void* KOVRA_TESTS_MALLOC(malloc)(std::size_t size) noexcept {
  return allocate(size);
}
void* KOVRA_TESTS_MALLOC(calloc)(std::size_t count, std::size_t size) noexcept {
  return fails() ? nullptr : known(KOVRA_TESTS_MAKER(calloc)(count, size));
}
void* KOVRA_TESTS_MALLOC(realloc)(void* block, std::size_t size) noexcept {
  if (fails()) return nullptr;
  void* const moved = KOVRA_TESTS_MAKER(realloc)(block, size);
  if (moved == nullptr) return nullptr;
  forget(block);
  return known(moved);
}
void KOVRA_TESTS_MALLOC(free)(void* block) noexcept {
  release(block);
}

}  // extern "C"
#endif

// All forms, so that no block is taken from one allocator and given to another.
void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return allocate(size);
}
void operator delete(void* block) noexcept {
  release(block);
}
void operator delete[](void* block) noexcept {
  release(block);
}
void operator delete(void* block, std::size_t) noexcept {
  release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  release(block);
}
void operator delete(void* block, std::nothrow_t const&) noexcept {
  release(block);
}
void operator delete[](void* block, std::nothrow_t const&) noexcept {
  release(block);
}

#endif

namespace Kovra::test {

Allocations::Allocations(std::size_t failing, Lasting lasting) {
  watch.made = 0;
  watch.alive = 0;
  watch.failing = failing;
  watch.lasting = lasting;
  watch.on = true;
}

Allocations::~Allocations() {
  watch.on = false;
}

std::size_t Allocations::made() const {
  return watch.made;
}

std::size_t Allocations::alive() const {
  return watch.alive;
}

void Allocations::failNoMore() {
  watch.failing = never;
}

std::size_t Allocations::reclaim() {
  std::size_t const lost = watch.alive;
  watch.on = false;
  for (; watch.alive > 0; --watch.alive) std::free(watch.blocks[watch.alive - 1]);
  watch.on = true;
  return lost;
}

Unwatched::Unwatched() : before_(watch.on) {
  watch.on = false;
}

Unwatched::~Unwatched() {
  watch.on = before_;
}

Released::Released(std::string_view searched) {
  search = {searched, 0};
}

Released::~Released() {
  search = {};
}

std::size_t Released::found() const {
  return search.found;
}

}  // namespace Kovra::test
