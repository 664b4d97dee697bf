/// @file
/// The replies of an input, with a say in how much of it is there at once.

#ifndef KOVRA_TESTS_SUPPORT_REPLIES_HPP
#define KOVRA_TESTS_SUPPORT_REPLIES_HPP

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "stream.hpp"
#include "support/fed_pipe.hpp"

namespace Kovra::test {

struct Reply {
  std::string text;
  std::size_t number;
  bool isTooLarge;

  friend bool operator==(Reply const& a, Reply const& b) {
    return a.text == b.text && a.number == b.number && a.isTooLarge == b.isTooLarge;
  }
  friend std::ostream& operator<<(std::ostream& out, Reply const& reply) {
    return out << reply.number << (reply.isTooLarge ? " (too large)" : "") << ": " << reply.text;
  }
};

/// More than any test has.
inline constexpr std::size_t noLimit = 1 << 30;

/// What a stream finds in an input that arrives in pieces of such sizes.
inline std::vector<Reply> repliesOf(
    std::string_view input, tool::Division division, std::size_t limit = noLimit,
    std::function<std::size_t()> const& sizeOfNext = [] { return noLimit; }) {
  FedPipe pipe(input, sizeOfNext);
  tool::ReplyStream stream(pipe.path(), division, limit, [&] { pipe.feed(); });
  std::vector<Reply> replies;
  for (tool::ReplyStream::Item item; stream.next(item);) {
    replies.push_back({std::string(item.text), item.number, item.isTooLarge});
  }
  return replies;
}

}  // namespace Kovra::test

#endif
