/// @file
/// What a document would change, before anybody sends it.

#ifndef KOVRA_TOOL_PREVIEW_HPP
#define KOVRA_TOOL_PREVIEW_HPP

#include <kovra.hpp>
#include <string>

namespace Kovra::tool {

/// For people, a line for each member that is not what it was. Secrets are masked whatever the
/// records say of them: where they were read of JSON they do not know them.
std::string previewOf(Message const& message, Value before, Value after);

}  // namespace Kovra::tool

#endif
