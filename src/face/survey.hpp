/// @file
/// What became of each part of a reply: the remarks of its readings, and what none of them used.

#ifndef KOVRA_FACE_SURVEY_HPP
#define KOVRA_FACE_SURVEY_HPP

#include <span>
#include <vector>

#include "face/findings.hpp"
#include "face/source.hpp"
#include "frame/entry.hpp"
#include "frame/observer.hpp"
#include "frame/usage.hpp"

namespace Kovra {

/// The notes of a reply, in the order of the text, each thing once whichever reading remarked on
/// it.
std::vector<detail::FindingData> notesOf(Source const& source, frame::Reply const& reply,
                                         frame::Usage const& usage,
                                         std::span<frame::Observer const> observers);

/// Finds the lines and columns of bytes of the whole source. Offsets may come in any order.
std::vector<detail::Spot> spotsOf(Source const& source, std::vector<std::size_t> const& offsets);

}  // namespace Kovra

#endif
