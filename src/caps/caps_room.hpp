/// @file
/// Capabilities together with arrays for their lists, as a host would make them.

#ifndef KOVRA_CAPS_CAPS_ROOM_HPP
#define KOVRA_CAPS_CAPS_ROOM_HPP

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <tuple>
#include <vector>

#include "caps/caps_tables.hpp"

namespace Kovra::caps {

template <class AllOfThem>
class RoomFor;

/// A cleared record whose arrays grow on demand.
template <class... L>
class RoomFor<Lists<L...>> {
 public:
  RoomFor() = default;
  RoomFor(RoomFor const&) = delete;
  RoomFor& operator=(RoomFor const&) = delete;

  _Capabilities& record() { return record_; }

  /// Makes room for as many entries as each count says. True when an array grew; entries that it
  /// had are gone then. Throws std::bad_alloc also for more than any printer's capabilities need.
  bool grow() {
    std::size_t const needed = (std::size_t{0} + ... + bytes<L>());
    if (needed > limit) throw std::bad_alloc();
    bool grew = false;
    ((grew = growOne<L>() || grew), ...);
    return grew;
  }

  /// Fills a cleared record with a value that whoever composes gives.
  Assigned assign(Value const& value, Problem& problem) {
    (wish<L>(value), ...);
    grow();
    return assignAll(capabilities, record_, value, problem);
  }

  /// Clears the record and all entries, and keeps the room.
  void clear() {
    record_ = {};
    (place<L>(array<L>().size()), ...);
  }

 private:
  template <class Which>
  struct Array {
    std::vector<typename Which::Entry> entries;
  };

  /// A few hundred entries are much. A reply that asks for far more is hostile.
  static constexpr std::size_t limit = std::size_t{1} << 28U;

  template <class Which>
  auto& array() {
    return std::get<Array<Which>>(arrays_).entries;
  }

  template <class Which>
  std::size_t wanted() const {
    return static_cast<std::size_t>(std::max(record_.*Which::count, 0));
  }

  template <class Which>
  void wish(Value const& value) {
    Value const* const list = value.find(std::string(Which::member));
    if (list != nullptr) record_.*Which::count = static_cast<int>(list->items.size());
  }

  template <class Which>
  std::size_t bytes() const {
    return wanted<Which>() * sizeof(typename Which::Entry);
  }

  template <class Which>
  bool growOne() {
    if (wanted<Which>() <= array<Which>().size()) return false;
    place<Which>(wanted<Which>());
    return true;
  }

  template <class Which>
  void place(std::size_t size) {
    array<Which>().assign(size, {});
    record_.*Which::array = array<Which>().data();
    record_.*Which::count = static_cast<int>(size);
  }

  _Capabilities record_{};
  std::tuple<Array<L>...> arrays_;
};

using Room = RoomFor<AllLists>;

}  // namespace Kovra::caps

#endif
