/// @file
/// Standard output for data, standard error for all else.

#ifndef KOVRA_TOOL_OUTPUT_HPP
#define KOVRA_TOOL_OUTPUT_HPP

#include <string_view>

namespace Kovra::tool {

/// Adds data to standard output. It is written when enough has come together, so that a million
/// replies do not take a million writes.
///
/// This and the next three throw an OutputFailure when it cannot be written (a full disk, a reader
/// that is gone); then nothing is left to be written.
void print(std::string_view data);

/// Lets go of what has come together: before the tool waits for input, so that whoever reads along
/// does not wait, too.
void flushOutput();

/// After the last data. Some file systems tell only now that they could not keep it.
void closeOutput();

/// One line on standard error, made printable, behind all data so far.
void complain(std::string_view line);

}  // namespace Kovra::tool

#endif
