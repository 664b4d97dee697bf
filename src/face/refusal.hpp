/// @file
/// Why a text was refused, in words: what was found where, and what would be right.

#ifndef KOVRA_FACE_REFUSAL_HPP
#define KOVRA_FACE_REFUSAL_HPP

#include <tinyxml.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "frame/guard.hpp"
#include "kovra.hpp"

namespace Kovra {

/// No document is called `as`.
Decoding refuseName(std::string const& as);
/// `text` holds a NUL byte at `offset`.
Decoding refuseNul(std::string_view text, std::size_t offset);
/// The guard found a fault in `text`.
Decoding refuseText(std::string_view text, frame::Scan const& scan);
/// TinyXML found an error that the guard did not see.
Decoding refuseDocument(TiXmlDocument const& document);
/// The root (null: there is none) is not that of a known document, or not that of `as`.
Decoding refuseRoot(TiXmlElement const* root, std::string const& as);

}  // namespace Kovra

#endif
