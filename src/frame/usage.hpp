/// @file
/// Which nodes and attributes of a tree a reading used, so that nothing of a reply is lost without
/// a word.

#ifndef KOVRA_FRAME_USAGE_HPP
#define KOVRA_FRAME_USAGE_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>

namespace Kovra::frame {

class Usage {
 public:
  enum State : std::uint8_t {
    unused,
    used,
    hidden,  ///< used, and nothing of it is told: it is a secret
    told,    ///< something else tells of the node and of all below it
  };

  Usage(std::size_t nodes, std::size_t attributes) : nodes_(nodes), attributes_(attributes) {
    std::size_t const needed = nodes + attributes;
    if (needed > near_.size()) far_ = std::make_unique<State[]>(needed);
    states_ = far_ != nullptr ? far_.get() : near_.data();
    static_assert(sizeof(State) == 1 && unused == 0);
    std::memset(states_, 0, needed);
  }
  Usage(Usage const&) = delete;
  Usage& operator=(Usage const&) = delete;

  void useNode(std::uint32_t index) {
    if (states_[index] == unused) states_[index] = used;
  }
  void hideNode(std::uint32_t index) { states_[index] = hidden; }
  void useAttribute(std::uint32_t index) { states_[nodes_ + index] = used; }
  void tell(std::uint32_t node) { states_[node] = told; }

  std::span<State const> nodes() const { return {states_, nodes_}; }
  std::span<State const> attributes() const { return {states_ + nodes_, attributes_}; }

 private:
  std::size_t nodes_;
  std::size_t attributes_;
  State* states_;
  std::unique_ptr<State[]> far_;
  std::array<State, 1024> near_;  // not cleared
};

}  // namespace Kovra::frame

#endif
