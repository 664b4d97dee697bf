/// @file
/// The security family's lines of the catalogue.

#ifndef KOVRA_SECURITY_SECURITY_REPLIES_HPP
#define KOVRA_SECURITY_SECURITY_REPLIES_HPP

#include <span>

#include "frame/typed/reader.hpp"

namespace Kovra {

std::span<frame::ReplyReader const> securityReplies();

}  // namespace Kovra

#endif
