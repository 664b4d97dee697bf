// `kovra compose configuration`.

#include <algorithm>

#include "compose.hpp"

namespace Kovra::tool {

namespace {

constexpr char wirelessSection[] = "wireless";

/// The key is needed only where the wireless section is.
Composition composed(Value const& record, ConfigurationChoice const& choice) {
  bool const asksForKey = std::find(choice.sections.begin(), choice.sections.end(),
                                    wirelessSection) != choice.sections.end();
  Value const* const wireless = record.find(wirelessSection);
  Composition refused;
  if (asksForKey && wireless != nullptr &&
      !holdsNoMask(*wireless, wirelessSection, refused.problem)) {
    return refused;
  }
  return composeConfiguration(record, choice);
}

}  // namespace

void addComposeConfiguration(CLI::App& compose, ExitStatus& status) {
  Composing composing(compose, "configuration", "Settings of the printer", "configuration");
  auto const choice = std::make_shared<ConfigurationChoice>();
  CLI::App& command = composing.command();
  command
      .add_option("--sections", choice->sections,
                  "What is set, separated by commas:\n" + listed(configurationSections()))
      ->option_text("NAME,...")
      ->delimiter(',')
      ->allow_extra_args(false)  // what follows is the record
      ->required()
      ->check(CLI::IsMember(configurationSections()));
  command
      .add_option("--card", choice->card,
                  "The section cards alone, with the first or the second\n"
                  "card alone")
      ->option_text("1|2")
      ->check(CLI::IsMember({1, 2}));
  command.add_flag("--filmless", choice->filmless,
                   "The printer works without transfer film: leave out what\n"
                   "belongs to it");
  command.footer(R"(Ribbon and film are described by "ribbonNameCode", a code or a name ("YMCKO");
the "description" that 'kovra decode' shows is not sent.

Example:
  kovra compose configuration record.json --sections ethernet,cards --card 1)");
  composing.run(status, [choice](Value const& record) { return composed(record, *choice); });
}

}  // namespace Kovra::tool
