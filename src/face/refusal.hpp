/// @file
/// Why a text was refused, in words: what was found where, and what would be right.

#ifndef KOVRA_FACE_REFUSAL_HPP
#define KOVRA_FACE_REFUSAL_HPP

#include <cstddef>
#include <string>
#include <string_view>

#include "frame/places.hpp"
#include "frame/scanner.hpp"
#include "kovra.hpp"

namespace Kovra {

/// No document is called `as`.
Decoding refuseName(std::string const& as);
/// `text` holds a NUL byte at `offset`.
Decoding refuseNul(std::string_view text, std::size_t offset);
/// The scanner found a fault in `text`.
Decoding refuseText(std::string_view text, frame::Scan const& scan);
/// The first element of `tree` (there may be none) is not the root of a known document, or not that
/// of `as`.
Decoding refuseRoot(frame::Tree const& tree, frame::Places& places, std::string const& as);

}  // namespace Kovra

#endif
