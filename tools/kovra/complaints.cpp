#include "complaints.hpp"

#include <algorithm>

#include "findings.hpp"
#include "output.hpp"
#include "printable.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

struct SeverityWord {
  std::string_view text;
  Style style;
};

constexpr SeverityWord severityWords[] = {
    {"error: ", Style::error},
    {"warning: ", Style::warning},
    {"note: ", Style::faint},
};

/// Where the word stands at the line's beginning or behind a blank.
std::size_t startOf(std::string_view word, std::string_view line) {
  if (line.substr(0, word.size()) == word) return 0;
  std::size_t const blank = line.find(' ' + std::string(word));
  return blank == line.npos ? blank : blank + 1;
}

/// The line with the first of these words in colour.
std::string colored(std::string_view line) {
  std::size_t first = line.npos;
  SeverityWord const* found = nullptr;
  for (SeverityWord const& word : severityWords) {
    std::size_t const at = startOf(word.text, line);
    if (at >= first) continue;
    first = at;
    found = &word;
  }
  if (found == nullptr) return std::string(line);
  std::size_t const length = found->text.size() - 1;
  return std::string(line.substr(0, first)) +
         styled(found->style, line.substr(first, length), Stream::messages) +
         std::string(line.substr(first + length));
}

std::string shownPlace(Place place) {
  if (place.line == 0) return {};
  return std::to_string(place.line) + ':' + std::to_string(place.column);
}

std::string lineOf(Complaint const& complaint) {
  return std::string(severityWord(complaint.severity)) + ": " + complaint.text;
}

/// The name, and the lines below it behind their places.
std::string grouped(std::string const& name, std::vector<Complaint> const& complaints) {
  std::size_t width = 0;
  for (Complaint const& complaint : complaints) {
    width = std::max(width, shownPlace(complaint.place).size());
  }
  std::string lines = styled(Style::heading, printable(name) + ':', Stream::messages) + '\n';
  for (Complaint const& complaint : complaints) {
    std::string start = "  " + shownPlace(complaint.place);
    start.resize(width + 4, ' ');
    lines += shownComplaint(start + printable(lineOf(complaint)), start.size()) + '\n';
  }
  return lines;
}

}  // namespace

void complainOf(std::string const& name, std::vector<Complaint> const& complaints) {
  if (complaints.size() > 1 && isTerminal(Stream::messages)) {
    return tell(grouped(name, complaints));
  }
  for (Complaint const& complaint : complaints) {
    complain(messagePrefix(name, complaint.place, severityWord(complaint.severity)) +
             complaint.text);
  }
}

std::string shownComplaint(std::string_view line, std::size_t indent) {
  return wrapped(colored(line), lineWidth(Stream::messages), indent);
}

}  // namespace Kovra::tool
