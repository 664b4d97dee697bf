/// @file
/// The lines of the catalogue for logs and auxiliary replies.

#ifndef KOVRA_LOGS_LOGS_MESSAGES_HPP
#define KOVRA_LOGS_LOGS_MESSAGES_HPP

#include <span>

#include "frame/message.hpp"

namespace Kovra {

std::span<frame::MessageRow const> logsMessages();

}  // namespace Kovra

#endif
