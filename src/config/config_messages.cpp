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

/// A reading shows a ribbon's or film's name, of which the document has the code.
void nameCode(_RibbonInfo& info, Value const* value) {
  if (value == nullptr || value->find(memberName<&_RibbonInfo::ribbonNameCode>) != nullptr) return;
  Value const* const name = value->find(memberName<&_RibbonInfo::description>);
  Word const* const word = name != nullptr ? ribbonNames.find(name->asText("")) : nullptr;
  if (word != nullptr) info.ribbonNameCode = word->code;
}

Assigned assign(void* memory, Value const& value, Problems& problems) {
  auto& record = *static_cast<_KVConfiguration*>(memory);
  Assigned const result = assignAll(configuration, record, value, problems);
  nameCode(record.ribbon, value.find(memberName<&_KVConfiguration::ribbon>));
  nameCode(record.film, value.find(memberName<&_KVConfiguration::film>));
  return result;
}

/// Why no section was written, so that nobody has to guess.
void explainNothing(Chosen chosen, Problems& problems) {
  long const number = chosen[onlyCard];
  if (chosen[sections] == 0) {
    problems.add("sections", "none", "some of: " + listed(sectionNames));
  } else if (number < 0 || number > 2) {
    problems.add("card", std::to_string(number), "1 or 2, or 0 for both");
  } else if (number != 0) {
    problems.add("sections", "no cards", "the section cards, of which one card was chosen");
  } else {
    problems.add(
        {}, "nothing to write in the chosen sections",
        "a laminate that is marked as installed, or transfer settings of a printer with film");
  }
}

constexpr Composing composing = {
    .command = "configuration",
    .title = "Settings of the printer",
    .help = R"(Ribbon and film are described by "ribbonNameCode", a code or a name ("YMCKO");
without it the "description" that 'kovra decode' shows is sent, if it is such a
name.

Example:
  kovra compose configuration record.json --sections ethernet,cards --card 1)",
    .root = configurationRoots[0],
    .recordOf = "configuration",
    .choices = choices,
    .isOfSections = true,
    .assign = assign,
    .write = write,
    .explain = explainNothing,
};

constexpr MessageRow lines[] = {
    alsoWritten(
        withoutResult(reply(
            "configuration", "all settings of the printer: interfaces, media, mechanics, cards",
            configurationRoots, configuration, &readBy<EntryReading, _KVConfiguration>)),
        composing),
};

}  // namespace

std::span<frame::MessageRow const> configMessages() {
  return lines;
}

}  // namespace Kovra
