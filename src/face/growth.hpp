/// @file
/// Room to grow: what results hold may become more in later versions, and no host notices.

#ifndef KOVRA_FACE_GROWTH_HPP
#define KOVRA_FACE_GROWTH_HPP

namespace Kovra::detail {

/// What stands first in all that results hold. A test makes it something, as a later version might,
/// and runs a host that was built before.
struct Growth {
#ifdef KOVRA_GROWTH
  char more[KOVRA_GROWTH] = {};
#endif
};

}  // namespace Kovra::detail

#endif
