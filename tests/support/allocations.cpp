#include "support/allocations.hpp"

#include <malloc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

namespace {

/// The watch of a thread. It uses no heap itself.
struct Watch {
  bool on = false;
  std::size_t failing = 0;
  std::size_t made = 0;
  std::size_t alive = 0;
  std::array<void*, 4096> blocks{};
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

namespace {

void* allocate(std::size_t size) noexcept {
  if (watch.on && ++watch.made == watch.failing) return nullptr;
  void* const block = std::malloc(size != 0 ? size : 1);
  // What an earlier owner left in it is not looked for.
  if (!search.text.empty() && block != nullptr) std::memset(block, 0, ::malloc_usable_size(block));
  if (watch.on && block != nullptr) {
    if (watch.alive == watch.blocks.size()) std::abort();  // no test comes near
    watch.blocks[watch.alive++] = block;
  }
  return block;
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

void release(void* block) noexcept {
  look(block);
  if (watch.on) {
    auto const end = watch.blocks.begin() + static_cast<std::ptrdiff_t>(watch.alive);
    auto const known = std::find(watch.blocks.begin(), end, block);
    if (known != end) *known = watch.blocks[--watch.alive];
  }
  std::free(block);
}

}  // namespace

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

Allocations::Allocations(std::size_t failing) {
  watch.made = 0;
  watch.alive = 0;
  watch.failing = failing;
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

std::size_t Allocations::reclaim() {
  std::size_t const lost = watch.alive;
  for (; watch.alive > 0; --watch.alive) std::free(watch.blocks[watch.alive - 1]);
  return lost;
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
