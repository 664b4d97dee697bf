/// @file
/// Chance that is the same everywhere: the distributions of the standard library are not.

#ifndef KOVRA_TOOL_RANDOM_HPP
#define KOVRA_TOOL_RANDOM_HPP

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Kovra::tool {

/// The numbers of a seed, by the generator SplitMix64.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t mixed = state_ += 0x9e3779b97f4a7c15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31U);
  }
  /// One of 0 to `count` - 1; `count` is small and above 0.
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }
  /// True once in `count` times.
  bool once(std::size_t count) { return below(count) == 0; }

  template <class Items>
  auto const& oneOf(Items const& items) {
    return items[below(std::size(items))];
  }
  template <class Items>
  void shuffle(Items& items) {
    for (std::size_t i = std::size(items); i > 1; --i) std::swap(items[i - 1], items[below(i)]);
  }

 private:
  std::uint64_t state_;
};

}  // namespace Kovra::tool

#endif
