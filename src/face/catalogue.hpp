/// @file
/// The catalogue of all messages. Whatever is done with every message walks over it.

#ifndef KOVRA_FACE_CATALOGUE_HPP
#define KOVRA_FACE_CATALOGUE_HPP

#include <functional>
#include <set>
#include <string_view>
#include <vector>

#include "frame/message.hpp"

namespace Kovra {

using Messages = std::vector<std::reference_wrapper<frame::MessageRow const>>;

/// Every message of every family, in the order of the families' lists.
Messages const& catalogue();

/// Those that are read.
Messages const& replies();

/// Those that are read from a root of that name.
Messages const& repliesOf(std::string_view root);

/// The reply of that name, or null. Several replies may share a root.
frame::MessageRow const* findReply(std::string_view name);

/// The message that is composed under that name, its own or that of a command line, or null.
frame::MessageRow const* findRequest(std::string_view name);

/// The elements of all messages whose texts are secrets.
std::set<std::string_view> const& secretElements();

/// Has some message an element of that name?
bool isElement(std::string_view name);

}  // namespace Kovra

#endif
