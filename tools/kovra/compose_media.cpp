// `kovra compose media`.

#include "compose.hpp"

namespace Kovra::tool {

void addComposeMedia(CLI::App& compose, ExitStatus& status) {
  Composing composing(compose, "media", "Cards that the printer shall know", "media");
  auto const choice = std::make_shared<MediaChoice>();
  composing.command().add_flag("--all-types", choice->allTypes,
                               "Cards of all types; without, those of the types 0 and 1\n"
                               "only");
  composing.command().add_flag("--without-transfer", choice->withoutTransfer,
                               "No transfer temperatures and speeds");
  composing.command().footer(R"(Films, ribbons and laminates of the record are not written.

Example:
  kovra compose media record.json --all-types)");
  composing.run(status, [choice](Value const& record) { return composeMedia(record, *choice); });
}

}  // namespace Kovra::tool
