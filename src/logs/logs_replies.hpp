/// @file
/// The lines of the catalogue for logs and auxiliary replies.

#ifndef KOVRA_LOGS_LOGS_REPLIES_HPP
#define KOVRA_LOGS_LOGS_REPLIES_HPP

#include <span>

#include "frame/typed/reader.hpp"

namespace Kovra {

std::span<frame::ReplyReader const> logReplies();
std::span<frame::ReplyReader const> magneticTrackReplies();
std::span<frame::ReplyReader const> laminatorReplies();

}  // namespace Kovra

#endif
