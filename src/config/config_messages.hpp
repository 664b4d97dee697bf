/// @file
/// The configuration's line of the catalogue.

#ifndef KOVRA_CONFIG_CONFIG_MESSAGES_HPP
#define KOVRA_CONFIG_CONFIG_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> configMessages();

}  // namespace Kovra

#endif
