/// @file
/// The device commands' lines of the catalogue.

#ifndef KOVRA_CONTROL_CONTROL_MESSAGES_HPP
#define KOVRA_CONTROL_CONTROL_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> controlMessages();

}  // namespace Kovra

#endif
