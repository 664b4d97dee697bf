/// @file
/// What a document would change, before anybody sends it.

#ifndef KOVRA_TOOL_PREVIEW_HPP
#define KOVRA_TOOL_PREVIEW_HPP

#include <kovra.hpp>
#include <string>
#include <vector>

#include "edit.hpp"

namespace Kovra::tool {

struct Preview {
  std::string changes;                 ///< for people: a line for each member that changes
  std::vector<std::string> unwritten;  ///< paths of edits that the document does not hold
};

/// What edits change of a record in the document that these choices make of it. Secrets are masked
/// whatever the record says of them: where it was read of JSON it does not know them.
Preview previewOf(Message const& message, Value const& before, std::vector<Edit> const& edits,
                  Value const& choices);

}  // namespace Kovra::tool

#endif
