/// @file
/// What a terminal can show, for people.

#ifndef KOVRA_TOOL_TERMINAL_HPP
#define KOVRA_TOOL_TERMINAL_HPP

#include <cstddef>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace Kovra::tool {

/// Adds `--color` to a command: auto, always or never. Unless it says otherwise there are colours
/// where standard output is a terminal, none for TERM=dumb, and none where NO_COLOR is set.
void addColor(CLI::App& command);

/// How a piece of text is meant; the terminal's own colours, so that they suit dark and light ones.
enum class Style { plain, heading, faint, good, warning, error };

/// Where people read: what they asked for, or what there is to say beside it, on standard error.
enum class Stream { data, messages };

/// Are colours shown there?
bool hasColor(Stream stream = Stream::data);

/// The text in colour where there are colours. It has to be printable already.
std::string styled(Style style, std::string_view text, Stream stream = Stream::data);

/// How many columns a line has there; 0 where it is no terminal, and lines are as long as they are.
/// COLUMNS says it for those who know better.
std::size_t lineWidth(Stream stream = Stream::data);

bool isTerminal(int descriptor);

/// Does it go to a terminal?
bool isTerminal(Stream stream);

/// How many columns a printable text takes; colours take none.
std::size_t shownColumns(std::string_view text);

/// The text in lines of at most `width` columns, broken at single blanks, all but the first behind
/// `indent` blanks, or two thirds of the width where that is less. A word that is longer stays
/// whole, and so does what several blanks align. With a width of 0 it stays one line.
std::string wrapped(std::string_view text, std::size_t width, std::size_t indent);

}  // namespace Kovra::tool

#endif
