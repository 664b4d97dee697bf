/// @file
/// The media catalogue's line of the catalogue.

#ifndef KOVRA_MEDIA_MEDIA_MESSAGES_HPP
#define KOVRA_MEDIA_MEDIA_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> mediaMessages();

}  // namespace Kovra

#endif
