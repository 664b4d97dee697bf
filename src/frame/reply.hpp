/// @file
/// Replies, for the catalogue and for hosts.

#ifndef KOVRA_FRAME_REPLY_HPP
#define KOVRA_FRAME_REPLY_HPP

#include "frame/typed/reply.hpp"

namespace Kovra::frame {
using namespace typed;
}  // namespace Kovra::frame

#endif
