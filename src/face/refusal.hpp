/// @file
/// Why a text was refused: what was found where, and what would be right.

#ifndef KOVRA_FACE_REFUSAL_HPP
#define KOVRA_FACE_REFUSAL_HPP

#include <string>
#include <string_view>

#include "face/catalogue.hpp"
#include "face/findings.hpp"
#include "face/source.hpp"
#include "frame/entry.hpp"

namespace Kovra {

/// None of the `known` messages is called `name`.
detail::FindingData refuseMessage(std::string_view name, Messages const& known);
/// The text is longer than any that is looked into.
detail::FindingData refuseLength();
/// The source is unreadable.
detail::FindingData refuseSource(Source const& source);
/// The scanner found a fault in the source's text.
detail::FindingData refuseText(Source const& source, frame::Scan const& scan);
/// No element at the top level is the root of a message that is read, or of one of `wanted` where
/// these were asked for.
detail::FindingData refuseRoot(Source const& source, frame::Tree const& tree,
                               Messages const* wanted);

}  // namespace Kovra

#endif
