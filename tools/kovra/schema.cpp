#include "schema.hpp"

#include <kovra.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "messages.hpp"
#include "options.hpp"
#include "output.hpp"

namespace Kovra::tool {

namespace {

/// An object with the schema of each message under its name.
std::string allSchemas() {
  nlohmann::ordered_json all = nlohmann::ordered_json::object();
  for (Message const& message : messages()) {
    all[message.name()] = nlohmann::ordered_json::parse(schema(message.name()));
  }
  return all.dump(2, ' ', true) + '\n';
}

}  // namespace

void addSchema(CLI::App& command, ExitStatus&) {
  auto const message = std::make_shared<std::string>();
  addOption(command, "MESSAGE", *message, "Its name; none: all of them")
      .shows(" ")
      .passes(isMessage(anyMessage));
  addOutput(command);
  addFooter(command, R"(Prints the JSON Schema (draft 2020-12) of a message's record, which is what
'kovra decode --format json' shows under "record" and what 'kovra compose'
takes.
Without a MESSAGE it is an object with the schemas of all, by their names.

Examples:
  kovra schema general-status
  kovra schema configuration -o configuration.schema.json
  kovra schema | jq keys

Exit status:
  0  the schema was printed
  2  the command line is wrong
  3  the output could not be written)");
  addWork(command, [message] { print(message->empty() ? allSchemas() : schema(*message)); });
}

}  // namespace Kovra::tool
