#include "terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "characters.hpp"
#include "options.hpp"
#include "output.hpp"

namespace Kovra::tool {

namespace {

enum class When { automatic, always, never };

When& whenToColor() {
  static When when = When::automatic;
  return when;
}

/// Is the variable of the environment there and not empty?
bool isSet(char const* name) {
  char const* const value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool isDumb() {
  char const* const kind = std::getenv("TERM");
  return kind == nullptr || std::strcmp(kind, "dumb") == 0;
}

char const* codeOf(Style style) {
  switch (style) {
    case Style::heading:
      return "\033[1m";
    case Style::faint:
      return "\033[2m";
    case Style::good:
      return "\033[32m";
    case Style::warning:
      return "\033[35m";  // yellow cannot be read on white
    case Style::error:
      return "\033[1;31m";
    case Style::plain:
      break;
  }
  return "";
}

int descriptorOf(Stream stream) {
  return stream == Stream::data ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

void addColor(CLI::App& command) {
  addOption(
      command, "--color",
      [](std::string const& when) {
        whenToColor() = when == "always"  ? When::always
                        : when == "never" ? When::never
                                          : When::automatic;
      },
      "Colours: auto (default: on a terminal), always or\nnever")
      .shows("WHEN")
      .isOneOf({"auto", "always", "never"});
}

bool isTerminal(int descriptor) {
  return ::isatty(descriptor) == 1;
}

bool isTerminal(Stream stream) {
  bool const isElsewhere = stream == Stream::data && isOutputFile();
  return !isElsewhere && isTerminal(descriptorOf(stream));
}

bool hasColor(Stream stream) {
  if (whenToColor() != When::automatic) return whenToColor() == When::always;
  return isTerminal(stream) && !isSet("NO_COLOR") && !isDumb();
}

std::string styled(Style style, std::string_view text, Stream stream) {
  if (style == Style::plain || text.empty() || !hasColor(stream)) return std::string(text);
  return codeOf(style) + std::string(text) + "\033[0m";
}

std::size_t lineWidth(Stream stream) {
  if (!isTerminal(stream)) return 0;
  if (isSet("COLUMNS")) {
    long const said = std::strtol(std::getenv("COLUMNS"), nullptr, 10);
    if (said > 0 && said < 10000) return static_cast<std::size_t>(said);
  }
  winsize size{};
  bool const isKnown = ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : 80;
}

std::size_t shownColumns(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    std::size_t const code = text.find('\033');
    columns += columnsOf(text.substr(0, code));
    std::size_t const end = code == text.npos ? text.npos : text.find('m', code);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  return columns;
}

std::string wrapped(std::string_view text, std::size_t width, std::size_t indent) {
  if (width != 0) indent = std::min(indent, width * 2 / 3);
  std::string out;
  std::size_t column = 0;
  bool isFirst = true;
  while (!text.empty()) {
    std::size_t const blank = text.find(' ');
    std::string_view const word = text.substr(0, blank);
    bool const isGap = word.empty() || out.empty() || out.back() == ' ';
    std::size_t const shown = shownColumns(word);
    bool const fits = width == 0 || isGap || column + 1 + shown <= width;
    // A word that fits on no line stays where others begin.
    std::size_t const before = shown > width ? indent : std::min(indent, width - shown);
    if (!isFirst) out += fits ? " " : '\n' + std::string(before, ' ');
    column = (fits ? column + !isFirst : before) + shown;
    out += word;
    isFirst = false;
    text.remove_prefix(blank == text.npos ? text.size() : blank + 1);
  }
  return out;
}

}  // namespace Kovra::tool
