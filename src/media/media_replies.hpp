/// @file
/// The media family's lines of the catalogue.

#ifndef KOVRA_MEDIA_MEDIA_REPLIES_HPP
#define KOVRA_MEDIA_MEDIA_REPLIES_HPP

#include <span>

#include "frame/typed/reader.hpp"

namespace Kovra {

std::span<frame::ReplyReader const> mediaReplies();

}  // namespace Kovra

#endif
