#include "support/own_stack.hpp"

#include <pthread.h>
#include <sys/mman.h>

#include <cstdlib>
#include <cstring>

namespace Kovra::test {

namespace {

// Sanitizers need several times what the calls need by themselves.
constexpr std::size_t size = std::size_t{1} << 20U;
constexpr std::size_t pieceLength = 8;

void* entry(void* call) {
  (*static_cast<std::function<void()> const*>(call))();
  return nullptr;
}

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

OwnStack::OwnStack()
    : memory_(::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
  require(memory_ != MAP_FAILED);
}

OwnStack::~OwnStack() {
  ::munmap(memory_, size);
}

void OwnStack::run(std::function<void()> const& call) {
  std::memset(memory_, 0, size);
  pthread_attr_t attributes;
  pthread_t thread{};
  require(::pthread_attr_init(&attributes) == 0);
  require(::pthread_attr_setstack(&attributes, memory_, size) == 0);
  require(::pthread_create(&thread, &attributes, entry,
                           const_cast<std::function<void()>*>(&call)) == 0);
  require(::pthread_join(thread, nullptr) == 0);
  ::pthread_attr_destroy(&attributes);
}

std::size_t OwnStack::found(std::string_view text) const {
  std::size_t pieces = 0;
  for (std::size_t at = 0; at + pieceLength <= text.size(); ++at) {
    if (::memmem(memory_, size, text.data() + at, pieceLength) != nullptr) ++pieces;
  }
  return pieces;
}

}  // namespace Kovra::test
