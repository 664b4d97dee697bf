/// @file
/// The status family's lines of the catalogue.

#ifndef KOVRA_STATUS_STATUS_REPLIES_HPP
#define KOVRA_STATUS_STATUS_REPLIES_HPP

#include <span>

#include "frame/typed/reader.hpp"

namespace Kovra {

std::span<frame::ReplyReader const> statusReplies();
std::span<frame::ReplyReader const> jobReplies();
std::span<frame::ReplyReader const> mediaStatusReplies();
std::span<frame::ReplyReader const> sensorStatusReplies();
std::span<frame::ReplyReader const> counterReplies();
std::span<frame::ReplyReader const> wirelessReplies();
std::span<frame::ReplyReader const> sensorReplies();

}  // namespace Kovra

#endif
