/// @file
/// The status family's lines of the catalogue.

#ifndef KOVRA_STATUS_STATUS_MESSAGES_HPP
#define KOVRA_STATUS_STATUS_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> statusMessages();

}  // namespace Kovra

#endif
