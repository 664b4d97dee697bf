#include "frame/trail.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>

namespace Kovra::frame {

namespace {

/// The number of an entry as it stands in a path: "[2]".
class EntryText {
 public:
  explicit EntryText(std::uint32_t number) {
    text_[0] = '[';
    char* const end = std::to_chars(text_.data() + 1, text_.data() + text_.size() - 1, number).ptr;
    *end = ']';
    length_ = static_cast<std::size_t>(end + 1 - text_.data());
  }
  operator std::string_view() const { return {text_.data(), length_}; }

 private:
  std::array<char, 16> text_;
  std::size_t length_;
};

/// A path's hash, piece by piece: that of FNV-1a.
constexpr std::uint64_t hashOfNothing = 0xCBF29CE484222325U;

std::uint64_t hashed(std::uint64_t hash, std::string_view piece) {
  for (char const byte : piece) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  }
  return hash;
}

/// Takes a piece off the end of a path; false where it does not end so.
bool dropEnd(std::string_view& path, std::string_view piece) {
  if (!path.ends_with(piece)) return false;
  path.remove_suffix(piece.size());
  return true;
}

}  // namespace

/// From the end, so that forgetting one entry again and again is not to look at all of them.
bool Trail::forget(std::uint32_t within, std::string_view list, std::size_t index) {
  for (std::size_t i = steps_.size(); i-- > firstWithin(within);) {
    Step& step = steps_[i];
    if (!step.isEntry() || step.number != index) continue;
    Step const& parent = steps_[step.within];
    if (parent.within != within || !parent.isCalled(list)) continue;
    step.number = forgotten;
    return true;
  }
  return false;
}

/// Compares from the end of the path, of which the step is to be the last part.
bool Trail::isAt(Step const& last, std::string_view path) const {
  for (Step const* step = &last;; step = &steps_[step->within]) {
    if (step->isEntry()) {
      if (step->number == forgotten || !dropEnd(path, EntryText(step->number))) return false;
    } else {
      if (!dropEnd(path, step->text())) return false;
      if (step->within == root) return path.empty();
      if (!dropEnd(path, ".")) return false;
    }
  }
}

/// A step's path is that of the step around it, which was added before, and some more.
Trail::Order Trail::sorted() const {
  Order order(steps_.size());
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    Step const& step = steps_[i];
    std::uint64_t hash = step.within == root ? hashOfNothing : order[step.within].first;
    if (step.isEntry()) {
      hash = hashed(hash, EntryText(step.number));
    } else {
      if (step.within != root) hash = hashed(hash, ".");
      hash = hashed(hash, step.text());
    }
    order[i] = {hash, static_cast<std::uint32_t>(i)};
  }
  std::sort(order.begin(), order.end());
  return order;
}

/// Of several threads that ask first, each sorts, and one of them for all.
Trail::Order const& Trail::order() const {
  if (Order const* const there = order_.load(std::memory_order_acquire)) return *there;
  auto own = std::make_unique<Order const>(sorted());
  Order const* first = nullptr;
  bool const isFirst = order_.compare_exchange_strong(first, own.get(), std::memory_order_acq_rel);
  return isFirst ? *own.release() : *first;
}

/// Steps of one hash are of one path, but for those that were forgotten.
bool Trail::has(std::string_view path) const {
  std::uint64_t const hash = hashed(hashOfNothing, path);
  Order const& all = order();
  auto step = std::lower_bound(all.begin(), all.end(), Hashed(hash, 0));
  for (; step != all.end() && step->first == hash; ++step) {
    if (isAt(steps_[step->second], path)) return true;
  }
  return false;
}

}  // namespace Kovra::frame
