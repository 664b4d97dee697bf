/// @file
/// Choices by name for those who compose.

#ifndef KOVRA_FACE_COMPOSE_CHOICE_HPP
#define KOVRA_FACE_COMPOSE_CHOICE_HPP

#include <string>
#include <string_view>
#include <vector>

#include "frame/vocabulary.hpp"
#include "kovra.hpp"

namespace Kovra {

/// Fills in the problem; the result is false for those who return it.
bool refuse(Problem& problem, std::string_view path, std::string_view found,
            std::string_view expected);

/// The names, in their order.
std::vector<std::string> namesOf(frame::Vocabulary const& words);

/// The bits of all names in `chosen`. An unknown one is a problem of `what`, and false.
bool bitsOf(long& bits, std::vector<std::string> const& chosen, frame::Vocabulary const& words,
            std::string const& what, Problem& problem);

}  // namespace Kovra

#endif
