/// @file
/// The security family's lines of the catalogue.

#ifndef KOVRA_SECURITY_SECURITY_MESSAGES_HPP
#define KOVRA_SECURITY_SECURITY_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> securityMessages();

}  // namespace Kovra

#endif
