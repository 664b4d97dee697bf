/// @file
/// What there is to say about inputs, on standard error.

#ifndef KOVRA_TOOL_COMPLAINTS_HPP
#define KOVRA_TOOL_COMPLAINTS_HPP

#include <cstddef>
#include <kovra.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"

namespace Kovra::tool {

/// What is wrong with an input, or what it lost.
struct Complaint {
  Place place;
  Severity severity = Severity::error;
  std::string text;
};

/// Says all that there is to say of the input that messages call `name`: a line each that begins
/// with the name. On a terminal a name with several lines stands above them, once.
void complainOf(std::string const& name, std::vector<Complaint> const& complaints);

/// A printable line as it stands on standard error: on a terminal wrapped, all but its first line
/// behind `indent` blanks, and the word for its severity in colour.
std::string shownComplaint(std::string_view line, std::size_t indent);

}  // namespace Kovra::tool

#endif
