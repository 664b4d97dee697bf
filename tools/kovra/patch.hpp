/// @file
/// What became of a record, as operations that make one of the other.

#ifndef KOVRA_TOOL_PATCH_HPP
#define KOVRA_TOOL_PATCH_HPP

#include <kovra.hpp>
#include <string>
#include <vector>

#include "changes.hpp"

namespace Kovra::tool {

/// A patch of RFC 6902.
struct Patch {
  std::string text;
  std::vector<std::string> leftOut;  ///< paths of secrets that it does not have
};

/// What was not compared is not in it. Nor are secrets, where they are masked: whoever applied the
/// masks would have lost them.
Patch patchOf(std::vector<Change> const& changes, Secrets secrets);

}  // namespace Kovra::tool

#endif
