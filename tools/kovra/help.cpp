#include "help.hpp"

#include <algorithm>

#include "terminal.hpp"

namespace Kovra::tool {

namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::size_t nameWidth = 30;

/// Longer lines are hard to read on the widest terminal, and footers are made for this one.
std::size_t width() {
  std::size_t const columns = lineWidth();
  return columns == 0 ? usualWidth : std::min(columns, usualWidth);
}

}  // namespace

HelpFormatter::HelpFormatter() {
  column_width(nameWidth);
}

std::string HelpFormatter::line(std::string const& name, std::string const& description) const {
  std::string text = description;
  std::replace(text.begin(), text.end(), '\n', ' ');
  std::string const start = "  " + name;
  std::string const gap(nameWidth, ' ');
  bool const isLong = start.size() + 1 >= nameWidth;
  std::string const first = isLong ? start + '\n' : "";
  std::string const before = isLong ? gap : start + gap.substr(start.size());
  return first + (text.empty() ? start : wrapped(before + text, width(), nameWidth)) + '\n';
}

std::string HelpFormatter::make_option(CLI::Option const* option, bool isPositional) const {
  return line(make_option_name(option, isPositional) + make_option_opts(option),
              make_option_desc(option));
}

std::string HelpFormatter::make_subcommand(CLI::App const* command) const {
  return line(command->get_display_name(true), command->get_description());
}

}  // namespace Kovra::tool
