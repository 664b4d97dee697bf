/// @file
/// Large blocks of memory. The system gives a fresh block its pages one by one, as each is first
/// touched, which for the text and the tree of a long reply takes longer than reading them.

#ifndef KOVRA_FRAME_PAGES_HPP
#define KOVRA_FRAME_PAGES_HPP

#include <cstddef>

namespace Kovra::frame {

/// From this size on, the C library gives every block a mapping of its own, so what is asked for
/// one concerns no other memory of the process.
inline constexpr std::size_t leastOfLargeBlocks = std::size_t{32} << 20U;

/// Asks the system to give a large block large pages. Nothing for a smaller one; where the system
/// has none, the block is as good as before.
void useLargePages(void* block, std::size_t size);

}  // namespace Kovra::frame

#endif
