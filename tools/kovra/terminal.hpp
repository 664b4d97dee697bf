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

/// Does standard output show colours?
bool hasColor();

/// The text in colour where there are colours. It has to be printable already.
std::string styled(Style style, std::string_view text);

/// How many columns a line of standard output has; 0 where it is no terminal, and lines are as long
/// as they are. COLUMNS says it for those who know better.
std::size_t lineWidth();

bool isTerminal(int descriptor);

/// The text in lines of at most `width` columns, broken at blanks, all but the first behind
/// `indent` blanks. A word that is longer stays whole. With a width of 0 it stays one line.
std::string wrapped(std::string_view text, std::size_t width, std::size_t indent);

}  // namespace Kovra::tool

#endif
