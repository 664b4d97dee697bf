// `kovra compose printer-id`.

#include "compose.hpp"

namespace Kovra::tool {

void addComposePrinterId(CLI::App& compose, ExitStatus& status) {
  Composing composing(compose, "printer-id", "Model and printhead of the printer", "printer-id");
  auto const fields = std::make_shared<std::vector<std::string>>();
  composing.command()
      .add_option("--fields", *fields,
                  "What is set, separated by commas:\n" + listed(printerIdFields()))
      ->option_text("NAME,...")
      ->delimiter(',')
      ->allow_extra_args(false)  // what follows is the record
      ->required()
      ->check(CLI::IsMember(printerIdFields()));
  composing.command().footer(R"(Example:
  kovra compose printer-id record.json --fields model,printhead)");
  composing.run(status,
                [fields](Value const& record) { return composePrinterId(record, *fields); });
}

}  // namespace Kovra::tool
