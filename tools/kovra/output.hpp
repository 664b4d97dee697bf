/// @file
/// Data goes to standard output, or into a file that appears when all of it is there; standard
/// error is for all else.

#ifndef KOVRA_TOOL_OUTPUT_HPP
#define KOVRA_TOOL_OUTPUT_HPP

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace Kovra::tool {

/// Adds `--output` to a command: the data goes into that file. It is written beside it and takes
/// its name in the end, so that nobody ever sees a half of it.
void addOutput(CLI::App& command, std::string const& description = "");

/// Is there such a file, so that standard output gets nothing?
bool isOutputFile();

/// Adds data. It is written when enough has come together, so that a million replies do not take a
/// million writes.
///
/// This and the next three throw an OutputFailure when it cannot be written (a full disk); then
/// nothing is left to be written. A reader that has gone away ends the tool without a word, as it
/// ends any other.
void print(std::string_view data);

/// Lets go of what has come together: before the tool waits for input, so that whoever reads along
/// does not wait, too. Into a pipe it goes in whole lines, as many as a pipe takes undivided, so
/// that those of several writers never mix.
void flushOutput();

/// After the last data: a file takes its name. Some file systems tell only now that they could not
/// keep it.
void closeOutput();

/// There will be no data: a file that was to be replaced stays as it was.
void dropOutput();

/// All data so far says nothing of any input: a file that was to be replaced stays as it was.
/// Elsewhere the data goes on.
void keepReplaced();

/// One line on standard error, made printable, behind all data so far. On a terminal it is wrapped,
/// and an "error: ", "warning: " or "note: " in it has a colour.
void complain(std::string_view line);

/// Lines on standard error that are printable already, behind all data so far.
void tell(std::string_view lines);

/// Writes a file of its own, whole or not at all. Throws an OutputFailure.
void writeWhole(std::string const& path, std::string_view data);

/// The same; nobody else may read the file.
void writePrivate(std::string const& path, std::string_view data);

/// Before anything else: how the tool is to end when nobody reads its output.
void expectBrokenPipes();

}  // namespace Kovra::tool

#endif
