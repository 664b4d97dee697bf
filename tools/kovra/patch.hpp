/// @file
/// What became of a record, as operations that make one of the other.

#ifndef KOVRA_TOOL_PATCH_HPP
#define KOVRA_TOOL_PATCH_HPP

#include <cstddef>
#include <kovra.hpp>
#include <string>
#include <vector>

#include "changes.hpp"

namespace Kovra::tool {

/// A patch of RFC 6902.
struct Patch {
  std::string text;
  std::size_t masked = 0;  ///< operations that hold masks in place of secrets
};

/// What was not compared is not in it.
Patch patchOf(std::vector<Change> const& changes, Secrets secrets);

}  // namespace Kovra::tool

#endif
