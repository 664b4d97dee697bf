/// @file
/// Things of which there are mostly few: so many stand here, and only more ask the heap.

#ifndef KOVRA_FRAME_FEW_HPP
#define KOVRA_FRAME_FEW_HPP

#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

namespace Kovra::frame {

template <class Item, std::size_t N>
class Few {
  static_assert(std::is_trivially_copyable_v<Item> && std::is_trivially_destructible_v<Item>);

 public:
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  Item const& operator[](std::size_t index) const {
    return index < N ? near_[index] : far_[index - N];
  }

  Item& operator[](std::size_t index) { return index < N ? near_[index] : far_[index - N]; }

  void push_back(Item const& item) {
    if (size_ < N) [[likely]] {
      near_[size_] = item;
    } else {
      putFar(item);
    }
    ++size_;
  }
  void pop_back() { --size_; }

 private:
  [[gnu::noinline]] void putFar(Item const& item) {
    far_.resize(size_ - N);
    far_.push_back(item);
  }

  std::array<Item, N> near_;  // not cleared
  std::vector<Item> far_;
  std::size_t size_ = 0;
};

}  // namespace Kovra::frame

#endif
