/// @file
/// The capabilities' line of the catalogue.

#ifndef KOVRA_CAPS_CAPS_MESSAGES_HPP
#define KOVRA_CAPS_CAPS_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> capsMessages();

}  // namespace Kovra

#endif
