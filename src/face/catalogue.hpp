/// @file
/// The catalogue of all replies: what the face decodes, lists and takes its vocabulary from.

#ifndef KOVRA_FACE_CATALOGUE_HPP
#define KOVRA_FACE_CATALOGUE_HPP

#include <functional>
#include <string_view>
#include <vector>

#include "frame/typed/reader.hpp"

namespace Kovra {

/// Every reply of every family, in the order of the families' lists.
std::vector<std::reference_wrapper<frame::ReplyReader const>> const& catalogue();

/// Where several replies share a root, all of them; null names find nothing.
frame::ReplyReader const* findReply(std::string_view name);

}  // namespace Kovra

#endif
