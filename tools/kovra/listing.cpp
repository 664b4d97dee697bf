#include "listing.hpp"

#include <kovra.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "output.hpp"
#include "table.hpp"

namespace Kovra::tool {

namespace {

std::string joined(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

void listDocuments() {
  std::vector<std::vector<std::string>> rows;
  for (Message const& message : messages()) {
    if (message.isRead())
      rows.push_back({message.name(), joined(message.roots()), message.title()});
  }
  print(columns(rows));
}

/// A line of a libFuzzer dictionary. The vocabulary's words are ASCII without control characters.
std::string dictionaryLine(std::string_view word) {
  std::string line = "\"";
  for (char const letter : word) {
    if (letter == '"' || letter == '\\') line += '\\';
    line += letter;
  }
  return line + "\"\n";
}

void listWords(bool dictionary) {
  for (std::string const& word : vocabulary()) {
    print(dictionary ? dictionaryLine(word) : word + '\n');
  }
}

}  // namespace

void addList(CLI::App& command, ExitStatus&) {
  command.footer(R"(Prints a line for each document: its name, which decode takes with --as, the
names of its root element, and what it tells.)");
  command.callback(listDocuments);
}

void addVocabulary(CLI::App& command, ExitStatus&) {
  auto const format = std::make_shared<std::string>();
  command.add_option("--format", *format, "What to print: words (default) or dict")
      ->option_text("FORMAT")
      ->check(CLI::IsMember({"words", "dict"}));
  command.footer(R"(Formats:
  words   one on each line
  dict    a dictionary for libFuzzer and its kin

Example:
  kovra vocabulary --format dict >kovra.dict && some_fuzzer -dict=kovra.dict)");
  command.callback([format] { listWords(*format == "dict"); });
}

}  // namespace Kovra::tool
