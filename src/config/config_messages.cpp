#include "config/config_messages.hpp"

#include <string>

#include "config/config_tables.hpp"

namespace Kovra {

namespace {

using namespace config;

constexpr ChoiceRow choices[] = {
    {"sections", ChoiceRow::Form::words, "What is set", &sectionNames, true, "NAME,..."},
    {"card", ChoiceRow::Form::number,
     "The section cards alone, with the first or the second\ncard alone", nullptr, false, "1|2", 1,
     2},
    {"filmless", ChoiceRow::Form::flag,
     "The printer works without transfer film: leave out what\nbelongs to it"},
};
enum : std::size_t { sections, onlyCard, filmless };

bool write(Sink& sink, void const* record, Chosen chosen, Circumstances) {
  return writeRows(sink, configuration, record,
                   chosenSections(chosen[sections], chosen[onlyCard], chosen[filmless] != 0),
                   false);
}

/// Why no section was written, so that nobody has to guess.
void explainNothing(Chosen chosen, Problem& problem) {
  long const number = chosen[onlyCard];
  if (chosen[sections] == 0) {
    problem.path = "sections";
    fail(problem, "none", "some of: " + listed(sectionNames));
  } else if (number < 0 || number > 2) {
    problem.path = "card";
    fail(problem, std::to_string(number), "1 or 2, or 0 for both");
  } else if (number != 0) {
    problem.path = "sections";
    fail(problem, "no cards", "the section cards, of which one card was chosen");
  } else {
    fail(problem, "nothing to write in the chosen sections",
         "a laminate that is marked as installed, or transfer settings of a printer with film");
  }
}

constexpr Composing composing = {
    .command = "configuration",
    .title = "Settings of the printer",
    .help = R"(Ribbon and film are described by "ribbonNameCode", a code or a name ("YMCKO");
the "description" that 'kovra decode' shows is not sent.

Example:
  kovra compose configuration record.json --sections ethernet,cards --card 1)",
    .root = configurationRoots[0],
    .recordOf = "configuration",
    .choices = choices,
    .write = write,
    .explain = explainNothing,
};

constexpr MessageRow lines[] = {
    alsoWritten(
        reply("configuration", "all settings of the printer: interfaces, media, mechanics, cards",
              configurationRoots, configuration, &readBy<EntryReading, _KVConfiguration>),
        composing),
};

}  // namespace

std::span<frame::MessageRow const> configMessages() {
  return lines;
}

}  // namespace Kovra
