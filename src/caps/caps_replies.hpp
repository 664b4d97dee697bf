/// @file
/// The capabilities family's lines of the catalogue.

#ifndef KOVRA_CAPS_CAPS_REPLIES_HPP
#define KOVRA_CAPS_CAPS_REPLIES_HPP

#include <span>

#include "frame/typed/reader.hpp"

namespace Kovra {

std::span<frame::ReplyReader const> capabilitiesReplies();

}  // namespace Kovra

#endif
