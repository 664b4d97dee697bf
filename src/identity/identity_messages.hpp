/// @file
/// The identity's line of the catalogue.

#ifndef KOVRA_IDENTITY_IDENTITY_MESSAGES_HPP
#define KOVRA_IDENTITY_IDENTITY_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> identityMessages();

}  // namespace Kovra

#endif
