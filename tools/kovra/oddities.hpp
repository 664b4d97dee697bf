/// @file
/// What no printer should send, and a reader has to bear all the same.

#ifndef KOVRA_TOOL_ODDITIES_HPP
#define KOVRA_TOOL_ODDITIES_HPP

#include <string>

#include "random.hpp"
#include "reply_tree.hpp"

namespace Kovra::tool {

/// Changes a reply here and there. It stays well-formed, and within what a reader takes.
void makeOdd(Node& root, Random& random);

/// Something that may stand in front of a document.
std::string oddProlog(Random& random);

}  // namespace Kovra::tool

#endif
