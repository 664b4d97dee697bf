#include "listing.hpp"

#include <algorithm>
#include <kovra.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kinds.hpp"
#include "messages.hpp"
#include "options.hpp"
#include "output.hpp"
#include "table.hpp"
#include "terminal.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

/// The rows as columns. On a terminal that is too narrow for one it goes on below itself, with its
/// last cell as a whole where not even the first word of that fits.
std::string fitted(std::vector<std::vector<std::string>> const& rows) {
  std::string const table = columns(rows);
  std::size_t const width = lineWidth();
  std::string lines;
  std::size_t at = 0;
  for (std::vector<std::string> const& row : rows) {
    std::size_t const end = table.find('\n', at);
    std::string line = table.substr(at, end - at);
    at = end + 1;
    std::string const& last = row.back();
    std::size_t const start = line.size() - last.size();
    bool const fits = width == 0 || start + std::min(last.find(' '), last.size()) <= width;
    if (!fits) line.replace(line.find_last_not_of(' ', start - 1) + 1, last.npos, "\n    " + last);
    std::size_t const head = fits ? 0 : line.find('\n') + 1;
    lines += line.substr(0, head) + wrapped(line.substr(head), width, 4) + '\n';
  }
  return lines;
}

std::string table() {
  std::vector<std::vector<std::string>> rows;
  for (Message const& message : messages()) {
    if (message.isRead())
      rows.push_back({message.name(), listed(message.roots()), message.title()});
  }
  return fitted(rows);
}

Json jsonOf(std::vector<MemberDescription> const& members);

/// What a member does not have is left out, but for whether it is a secret.
Json jsonOf(MemberDescription const& member) {
  Json json = {{"name", member.name()}, {"kind", nameOf(member.kind())}};
  if (!member.title().empty()) json["title"] = member.title();
  if (member.form() != MemberDescription::Form::plain) json["form"] = nameOf(member.form());
  if (member.mostBytes() != 0) json["most_bytes"] = member.mostBytes();
  json["elements"] = member.elements();
  Json words = Json::array();
  for (Keyword const& word : member.words()) {
    words.push_back({{"code", word.code()}, {"name", word.word()}});
  }
  if (!words.empty()) json["words"] = std::move(words);
  json["secret"] = member.isSecret();
  Json inner = jsonOf(member.members());
  if (!inner.empty()) json["members"] = std::move(inner);
  return json;
}

Json jsonOf(std::vector<MemberDescription> const& members) {
  Json list = Json::array();
  for (MemberDescription const& member : members) list.push_back(jsonOf(member));
  return list;
}

Json jsonOf(Choice const& choice) {
  Json json = {{"name", choice.name()}, {"form", nameOf(choice.form())}, {"title", choice.title()}};
  if (!choice.words().empty()) json["words"] = choice.words();
  if (choice.least() != 0 || choice.most() != 0) {
    json["least"] = choice.least();
    json["most"] = choice.most();
  }
  json["required"] = choice.isRequired();
  return json;
}

/// What there is to say of composing is left out where nothing is composed.
Json jsonOf(Message const& message) {
  Json json = {{"name", message.name()},         {"title", message.title()},
               {"roots", message.roots()},       {"read", message.isRead()},
               {"written", message.isWritten()}, {"members", jsonOf(message.members())}};
  if (!message.isWritten()) return json;
  json["command"] = message.command();
  json["purpose"] = message.purpose();
  json["required"] = message.required();
  json["choices"] = Json::array();
  for (Choice const& choice : message.choices()) json["choices"].push_back(jsonOf(choice));
  return json;
}

/// Those that are only written as well.
std::string json() {
  Json list = Json::array();
  for (Message const& message : messages()) list.push_back(jsonOf(message));
  return list.dump(2, ' ', true) + '\n';
}

std::string findings(std::string const& format) {
  std::vector<std::vector<std::string>> rows;
  Json list = Json::array();
  for (KindText const& kind : allKinds()) {
    rows.push_back({kind.id, std::string(nameOf(kind.severity)), kind.kind, kind.title});
    list.push_back(jsonOf(kind));
  }
  if (format == "table") return fitted(rows);
  return list.dump(2, ' ', true, Json::error_handler_t::replace) + '\n';
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

std::string words(std::string const& format) {
  std::vector<std::string> const all = vocabulary();
  if (format == "json") return Json(all).dump(2, ' ', true) + '\n';
  std::string lines;
  for (std::string const& word : all) {
    lines += format == "dict" ? dictionaryLine(word) : word + '\n';
  }
  return lines;
}

/// An option that picks one of these, the first unless another is named.
std::shared_ptr<std::string const> addFormat(CLI::App& command,
                                             std::vector<std::string> const& formats,
                                             std::string const& description) {
  auto const format = std::make_shared<std::string>(formats.front());
  addOption(command, "--format", *format, description).shows("FORMAT").isOneOf(formats);
  return format;
}

}  // namespace

void addList(CLI::App& command, ExitStatus&) {
  auto const format =
      addFormat(command, {"table", "json"}, "What to print: table (default) or json");
  auto const ofFindings = std::make_shared<bool>(false);
  addFlag(command, "--findings", *ofFindings, "List the kinds of findings instead");
  addOutput(command);
  addFooter(command, R"(Formats:
  table   a line for each document that is read: its name, which decode takes
          with --as, the names of its root element, and what it tells; of
          findings the id, the severity, the name and the title
  json    for programs: a list of all documents, also those that are only
          composed, with "name", "title", "roots", "read", "written" and
          "members" and, of those that are composed, "command", "purpose",
          "required" and "choices"; of a member "name", "kind", "elements",
          whether it is "secret" and, where it has them, "title", "form",
          "most_bytes", the "words" of its keywords, and the "members" of a
          record or a list

Examples:
  kovra list
  kovra list --findings
  kovra list --format json | jq '.[].name'

Exit status:
  0  the list was printed
  2  the command line is wrong
  3  the output could not be written)");
  addWork(command, [format, ofFindings] {
    if (*ofFindings) return print(findings(*format));
    print(*format == "json" ? json() : table());
  });
}

void addVocabulary(CLI::App& command, ExitStatus&) {
  auto const format =
      addFormat(command, {"words", "dict", "json"}, "What to print: words (default), dict or json");
  addOutput(command);
  addFooter(command, R"(Formats:
  words   one on each line
  dict    a dictionary for libFuzzer and its kin
  json    a list

Example:
  kovra vocabulary --format dict >kovra.dict && some_fuzzer -dict=kovra.dict

Exit status:
  0  the words were printed
  2  the command line is wrong
  3  the output could not be written)");
  addWork(command, [format] { print(words(*format)); });
}

}  // namespace Kovra::tool
