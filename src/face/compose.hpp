/// @file
/// Composing a document of any message.

#ifndef KOVRA_FACE_COMPOSE_HPP
#define KOVRA_FACE_COMPOSE_HPP

#include <string>

#include "frame/message.hpp"
#include "kovra.hpp"

namespace Kovra {

/// Writes the document of a record that is filled; false, with a problem, where there was nothing
/// to write.
bool composeRecord(frame::MessageRow const& message, void const* record, frame::Chosen chosen,
                   frame::Circumstances circumstances, std::string& text, Problem& problem);

}  // namespace Kovra

#endif
