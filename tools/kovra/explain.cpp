#include "explain.hpp"

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kinds.hpp"
#include "lookup.hpp"
#include "messages.hpp"
#include "options.hpp"
#include "output.hpp"
#include "printable.hpp"
#include "suggest.hpp"
#include "terminal.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
  std::string name;
  std::string format = "text";
};

std::vector<KindText> findingsIn(Matches const& matches) {
  std::vector<KindText> texts;
  for (FindingKind const& kind : matches.findings) texts.push_back(textOf(kind));
  if (matches.isStrictFinding) texts.push_back(strictText());
  return texts;
}

/// Elements from the root on; only written documents have no root that is known.
std::vector<std::string> elementPaths(Entry const& entry) {
  std::vector<std::string> const roots = entry.message->roots();
  std::string const around = roots.empty() ? "" : '/' + roots.front() + '/';
  std::vector<std::string> paths;
  for (std::string const& element : entry.elements) {
    paths.push_back(around + element);
  }
  return paths;
}

std::vector<std::string> namesOf(std::vector<MemberDescription> const& members) {
  std::vector<std::string> names;
  names.reserve(members.size());
  for (MemberDescription const& member : members) names.push_back(member.name());
  return names;
}

/// What a reading without keywords knows beside its elements: the words of a flag, attributes.
std::vector<std::string> otherNames(Entry const& entry) {
  std::vector<std::string> names;
  if (!entry.member.words().empty() || !entry.member.members().empty()) return names;
  for (std::string const& name : entry.member.vocabulary()) {
    bool const isElement =
        std::any_of(entry.elements.begin(), entry.elements.end(), [&](std::string const& element) {
          return ('/' + element + '/').find('/' + name + '/') != element.npos;
        });
    if (!isElement) names.push_back(name);
  }
  return names;
}

// For programs.

Json jsonOf(Message const& message) {
  Json json = {{"name", message.name()}, {"title", message.title()}};
  if (!message.roots().empty()) json["roots"] = message.roots();
  json["read"] = message.isRead();
  json["written"] = message.isWritten();
  if (message.isWritten()) json["command"] = message.command();
  json["members"] = namesOf(message.members());
  return json;
}

Json jsonOf(Keyword const& word) {
  return {{"code", word.code()}, {"word", word.word()}};
}

Json jsonOf(Lookup& lookup, Entry const& entry, std::string const& name) {
  MemberDescription const& member = entry.member;
  Json json = {{"message", entry.message->name()},
               {"path", entry.path},
               {"elements", elementPaths(entry)},
               {"kind", nameOf(member.kind())}};
  if (member.form() != MemberDescription::Form::plain) json["form"] = nameOf(member.form());
  if (member.mostBytes() != 0) json["most_bytes"] = member.mostBytes();
  json["secret"] = member.isSecret();
  if (!member.title().empty()) json["title"] = member.title();
  std::vector<Keyword> const words = member.words();
  for (Keyword const& word : words) {
    if (isKeyword(word, name)) json["meant"].push_back(jsonOf(word));
  }
  for (Keyword const& word : words) json["words"].push_back(jsonOf(word));
  if (!otherNames(entry).empty()) json["names"] = otherNames(entry);
  if (!member.members().empty()) json["members"] = namesOf(member.members());
  if (!hasSections(*entry.message)) return json;
  json["written_by"] = Json::array();
  for (WrittenBy const& writer : lookup.writers(entry)) {
    json["written_by"].push_back({{"choice", writer.choice}, {"word", writer.word}});
  }
  return json;
}

std::string asJson(Lookup& lookup, Matches const& matches, std::string const& name) {
  Json json = {{"kovra", 1},
               {"name", name},
               {"findings", Json::array()},
               {"messages", Json::array()},
               {"members", Json::array()}};
  for (KindText const& text : findingsIn(matches)) json["findings"].push_back(jsonOf(text));
  for (Message const* message : matches.messages) json["messages"].push_back(jsonOf(*message));
  for (Entry const* entry : matches.members) {
    json["members"].push_back(jsonOf(lookup, *entry, name));
  }
  if (matches.isWord) json["is_word"] = true;
  return json.dump(2, ' ', true, Json::error_handler_t::replace) + '\n';
}

// For people.

constexpr std::size_t labelWidth = 10;

std::string heading(std::string const& name, std::string const& title) {
  return styled(Style::heading, printable(name)) + (title.empty() ? "" : ": ") + printable(title) +
         '\n';
}

std::string row(std::string_view label, std::string const& text) {
  if (text.empty()) return {};
  std::string const before =
      "  " + std::string(label) + std::string(labelWidth - label.size(), ' ');
  std::string const lines = wrapped(before + printable(text), lineWidth(), before.size());
  return styled(Style::faint, lines.substr(0, before.size())) + lines.substr(before.size()) + '\n';
}

/// A text that is not broken into lines.
std::string wholeRow(std::string_view label, std::string const& text) {
  std::string const before =
      "  " + std::string(label) + std::string(labelWidth - label.size(), ' ');
  return styled(Style::faint, before) + printable(text) + '\n';
}

/// As much of an example as fits on a few lines.
std::string beginningOf(std::string const& example) {
  constexpr std::size_t most = 200;
  return example.size() <= most ? example : example.substr(0, most) + " ...";
}

std::string asText(KindText const& text) {
  return heading(text.id + ' ' + text.kind, text.title) +
         row("severity", std::string(nameOf(text.severity))) + row("meaning", text.explanation) +
         wholeRow("example", text.example.empty() ? "an empty text" : beginningOf(text.example)) +
         row("read as", text.exampleAs) + row("gives", text.message);
}

std::string useOf(Message const& message) {
  std::string use;
  if (message.isRead()) use = "kovra decode";
  if (message.isWritten())
    use += (use.empty() ? "" : ", ") + ("kovra compose " + message.command());
  return use;
}

std::string asText(Message const& message) {
  return heading(message.name(), message.title()) + row("root", listed(message.roots())) +
         row("verbs", useOf(message)) + row("members", listed(namesOf(message.members())));
}

std::string kindText(MemberDescription const& member) {
  switch (member.form()) {
    case MemberDescription::Form::setting:
      return "a setting: a value val between bounds min and max";
    case MemberDescription::Form::ipv4:
      return "a text: an IPv4 address";
    case MemberDescription::Form::hardwareAddress:
      return "a text: a hardware address";
    case MemberDescription::Form::hexadecimal:
      return "a whole number without a sign, which replies write as 0x1A";
    case MemberDescription::Form::plain:
      break;
  }
  switch (member.kind()) {
    case Value::Kind::flag:
      return "a flag";
    case Value::Kind::integer:
      return "a whole number";
    case Value::Kind::natural:
      return "a whole number without a sign";
    case Value::Kind::real:
      return "a number with a fraction";
    case Value::Kind::text:
      return "a text" + (member.mostBytes() == 0
                             ? ""
                             : " of at most " + std::to_string(member.mostBytes()) + " bytes");
    case Value::Kind::keyword:
      return "a keyword";
    case Value::Kind::list:
      return member.words().empty() ? "a list" : "a list of keywords";
    case Value::Kind::record:
      return member.words().empty() ? "a record" : "flags";
    case Value::Kind::nothing:
      break;
  }
  return {};
}

std::string wordText(Keyword const& word) {
  return word.word() + " (" + std::to_string(word.code()) + ')';
}

/// The keyword that is meant, and those beside it.
std::string wordRows(MemberDescription const& member, std::string const& name) {
  std::vector<std::string> meant;
  std::vector<std::string> others;
  for (Keyword const& word : member.words()) {
    (isKeyword(word, name) ? meant : others).push_back(wordText(word));
  }
  return row("word", listed(meant)) + row(meant.empty() ? "words" : "beside", listed(others));
}

std::string writersText(Lookup& lookup, Entry const& entry) {
  if (!hasSections(*entry.message)) return {};
  std::vector<std::string> options;
  for (WrittenBy const& writer : lookup.writers(entry)) {
    options.push_back("--" + writer.choice + ' ' + writer.word);
  }
  if (options.empty()) return "by no choice of kovra compose " + entry.message->command();
  return "kovra compose " + entry.message->command() + ' ' + listed(options);
}

std::string asText(Lookup& lookup, Entry const& entry, std::string const& name) {
  MemberDescription const& member = entry.member;
  return heading(entry.message->name() + '.' + entry.path, kindText(member)) +
         row("message", entry.message->title()) + row("title", member.title()) +
         row("element", listed(elementPaths(entry))) +
         row("secret", member.isSecret() ? "yes, shown as ****** unless asked for" : "") +
         wordRows(member, name) + row("names", listed(otherNames(entry))) +
         row("members", listed(namesOf(member.members()))) +
         row("written", writersText(lookup, entry));
}

std::string asText(Lookup& lookup, Matches const& matches, std::string const& name) {
  std::vector<std::string> texts;
  if (matches.isWord) texts.push_back(heading(name, "an element or a word, of no member alone"));
  for (KindText const& text : findingsIn(matches)) texts.push_back(asText(text));
  for (Message const* message : matches.messages) texts.push_back(asText(*message));
  for (Entry const* entry : matches.members) texts.push_back(asText(lookup, *entry, name));
  std::string all;
  for (std::string const& text : texts) all += (all.empty() ? "" : "\n") + text;
  return all;
}

ExitStatus explain(Options const& options) {
  Lookup lookup;
  Matches const matches = lookup.find(options.name);
  if (matches.empty()) {
    dropOutput();
    complain("kovra: error: nothing is called \"" + options.name + "\"." +
             suggestion(options.name, lookup.names(options.name)));
    return ExitStatus::refused;
  }
  print(options.format == "json" ? asJson(lookup, matches, options.name)
                                 : asText(lookup, matches, options.name));
  return ExitStatus::good;
}

}  // namespace

void addExplain(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  addOption(command, "NAME", options->name, "What is to be explained").isRequired().shows(" ");
  addOption(command, "--format", options->format, "What to print: text (default) or json")
      .shows("FORMAT")
      .isOneOf({"text", "json"});
  addOutput(command);
  addColor(command);
  addFooter(command, R"(Explains whatever has that name:

  K104, repeated_element    a kind of finding
  general-status            a document, or its root element
  ssid, wireless.ssid       a member, or the end of its path; the name of a
                            document may stand in front of all
  /get_general_status/error an element, or the end of its path
  printing_heating          a keyword

Of a member it tells the document, the elements, the kind, the words and their
codes, and with which choices "kovra compose" writes it. Where nothing is
spelled like that, capitals do not matter, and "-" is "_".

Examples:
  kovra explain K104
  kovra explain configuration.wireless.ssid
  kovra explain --format json printing_heating | jq .members[].path

Exit status:
  0  something has the name
  1  nothing has the name; what is near to it is told
  2  the command line is wrong
  3  the output could not be written)");
  addWork(command, [options, &status] { status = explain(*options); });
}

}  // namespace Kovra::tool
