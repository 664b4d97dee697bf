/// @file
/// Composing a document of any message.

#ifndef KOVRA_FACE_COMPOSE_HPP
#define KOVRA_FACE_COMPOSE_HPP

#include <span>
#include <string>

#include "frame/message.hpp"
#include "kovra.hpp"

namespace Kovra {

/// What may be chosen of every document: a member that the record lacks is zero.
extern frame::ChoiceRow const zeroMissing;

/// Writes the document of a record that is filled; false, with a problem, where there was nothing
/// to write. Whoever watches may have more to say.
bool composeRecord(frame::MessageRow const& message, void const* record, frame::Chosen chosen,
                   frame::Circumstances circumstances, frame::WriteWatch* watch, std::string& text,
                   frame::Problems& problems);

}  // namespace Kovra

#endif
