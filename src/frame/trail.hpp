/// @file
/// Which members were read, for those who look at the record itself: the reply's words for them,
/// without their values.

#ifndef KOVRA_FRAME_TRAIL_HPP
#define KOVRA_FRAME_TRAIL_HPP

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/few.hpp"

namespace Kovra::frame {

/// The members that a reply said, by their paths. Adding one costs next to nothing, as a reading
/// adds all of them and most hosts ask for few: whoever asks first has them sorted.
class Trail {
 public:
  static constexpr std::uint32_t root = std::numeric_limits<std::uint32_t>::max();

  Trail() = default;
  ~Trail() { delete order_.load(std::memory_order_relaxed); }
  Trail(Trail const&) = delete;
  Trail& operator=(Trail const&) = delete;

  /// Adds a member, a word of the tables, to what was added before; tells them apart.
  std::uint32_t member(std::uint32_t within, std::string_view name) {
    return add({name.data(), static_cast<std::uint32_t>(name.size()), within});
  }
  /// Adds an entry to a list. No text has so many that their numbers would not fit.
  std::uint32_t entry(std::uint32_t list, std::size_t index) {
    return add({nullptr, static_cast<std::uint32_t>(index), list});
  }
  /// Takes back what was added last and holds nothing.
  void dropIfEmpty(std::uint32_t step) {
    if (step + 1 == steps_.size()) steps_.pop_back();
  }

  /// Forgets an entry of a list of that name, with all that it holds: the one added last. False
  /// where there is none.
  bool forget(std::uint32_t within, std::string_view list, std::size_t index);

  /// Is there a member or an entry with that path? "jobs[2].uuid". To be asked when all are added,
  /// by as many threads as like; the time is that of a search among sorted ones.
  bool has(std::string_view path) const;

 private:
  static constexpr std::uint32_t forgotten = std::numeric_limits<std::uint32_t>::max();

  struct Step {
    char const* name;      ///< not terminated; of an entry nothing
    std::uint32_t number;  ///< how long the name is, or which entry it is
    std::uint32_t within;

    bool isEntry() const { return name == nullptr; }
    std::string_view text() const { return {name, number}; }
    bool isCalled(std::string_view other) const { return !isEntry() && text() == other; }
  };
  static_assert(sizeof(Step) == 16, "a reply that is short is to be one small block");

  /// A step by its path's hash.
  using Hashed = std::pair<std::uint64_t, std::uint32_t>;
  using Order = std::vector<Hashed>;

  std::uint32_t add(Step const& step) {
    steps_.push_back(step);
    return static_cast<std::uint32_t>(steps_.size() - 1);
  }
  /// The first step that may stand within another.
  static std::size_t firstWithin(std::uint32_t within) {
    return within == root ? 0 : std::size_t{within} + 1;
  }
  bool isAt(Step const& last, std::string_view path) const;
  Order sorted() const;
  Order const& order() const;

  Few<Step, 48> steps_;  // so many members an ordinary reply has
  mutable std::atomic<Order const*> order_ = nullptr;
};

}  // namespace Kovra::frame

#endif
