/// @file
/// Keys, pass phrases and track data are not shown unasked.

#ifndef KOVRA_TOOL_SECRET_HPP
#define KOVRA_TOOL_SECRET_HPP

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// What stands in place of a secret, whatever its length.
inline constexpr char mask[] = "******";

/// A piece of a text, in bytes.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The pieces of a reply's text that hold secrets, or may hold some, in order and apart. What an
/// element holds that is known to carry a secret, wherever it stands and however broken it is; what
/// one holds that nobody knows and whose name sounds like it; and all but the names of elements
/// where the whole reply is about secrets.
std::vector<Stretch> secretsIn(std::string_view text);

/// That piece of the text with `mask` in place of each secret in it.
std::string maskedPiece(std::string_view text, Stretch piece, std::vector<Stretch> const& secrets);

}  // namespace Kovra::tool

#endif
