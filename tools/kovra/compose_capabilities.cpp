// `kovra compose capabilities`.

#include "compose.hpp"

namespace Kovra::tool {

namespace {

CapabilitiesChoice::Part partNamed(std::string const& name) {
  if (name == "mag-encoder") return CapabilitiesChoice::Part::magEncoder;
  if (name == "internal-encoder") return CapabilitiesChoice::Part::internalEncoder;
  return CapabilitiesChoice::Part::all;
}

}  // namespace

void addComposeCapabilities(CLI::App& compose, ExitStatus& status) {
  Composing composing(compose, "capabilities", "What a printer can do", "capabilities");
  auto const only = std::make_shared<std::string>();
  auto const direct = std::make_shared<bool>(false);
  composing.command()
      .add_option("--only", *only, "Nothing but this part: mag-encoder or internal-encoder")
      ->option_text("PART")
      ->check(CLI::IsMember({"mag-encoder", "internal-encoder"}));
  composing.command().add_flag("--direct-to-card", *direct,
                               "The printer prints without transfer film; the record's\n"
                               "printSystem is not looked at");
  composing.command().footer(R"(Example:
  kovra compose capabilities record.json --only mag-encoder)");
  composing.run(status, [only, direct](Value const& record) {
    CapabilitiesChoice choice;
    choice.part = partNamed(*only);
    choice.directToCard = *direct;
    return composeCapabilities(record, choice);
  });
}

}  // namespace Kovra::tool
