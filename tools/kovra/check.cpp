#include "check.hpp"

#include <algorithm>
#include <kovra.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "excerpt.hpp"
#include "findings.hpp"
#include "input.hpp"
#include "options.hpp"
#include "output.hpp"
#include "printable.hpp"
#include "replies.hpp"
#include "secret.hpp"
#include "summary.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
  ReplyOptions replies;
  std::string format = "text";
  std::string as;
  std::string context = "auto";
  bool isStrict = false;
};

/// How many findings of each severity there are.
struct Counts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t information = 0;
};

/// What is to be told of one reply.
struct Checked {
  std::string data;
  std::string complaint;  ///< why it could not be read; empty: it was
  ExitStatus status = ExitStatus::good;
  Counts counts;
  bool isDecoded = false;
  bool isClean = false;
};

std::string dumped(Json const& json, int indentation) {
  return json.dump(indentation, ' ', true, Json::error_handler_t::replace);
}

void addIfAny(Json& json, char const* key, std::string const& text) {
  if (!text.empty()) json[key] = text;
}

/// The keys are those of a note in what `decode` prints.
Json jsonOf(ReplyInput const& input, Found const& found) {
  Json json = {{"source", input.source}};
  if (input.number != 0) json["number"] = input.number;
  json["kovra"] = 1;
  json["id"] = found.id;
  json["kind"] = found.kind;
  json["severity"] = nameOf(found.severity);
  json["line"] = found.begin.line;
  json["column"] = found.begin.column;
  json["offset"] = found.offset;
  json["end_line"] = found.end.line;
  json["end_column"] = found.end.column;
  json["end_offset"] = found.endOffset;
  addIfAny(json, "path", found.path);
  addIfAny(json, "element", found.element);
  addIfAny(json, "found", found.found);
  addIfAny(json, "kept", found.kept);
  if (!found.expected.empty()) json["expected"] = found.expected;
  if (found.count != 1) json["count"] = found.count;
  json["message"] = found.message;
  return json;
}

Style styleOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return Style::error;
    case Severity::warning:
      return Style::warning;
    case Severity::information:
      break;
  }
  return Style::faint;
}

/// `reply.xml:4:3: warning: <firmware>: unknown element, skipped [K101]`
std::string lineOf(ReplyInput const& input, Found const& found) {
  std::string place = nameOf(input) + ':';
  if (found.begin.line != 0) {
    place += std::to_string(found.begin.line) + ':' + std::to_string(found.begin.column) + ':';
  }
  std::string const severity = std::string(severityWord(found.severity)) + ':';
  std::string const line = styled(Style::heading, printable(place)) + ' ' +
                           styled(styleOf(found.severity), severity) + ' ' +
                           printable(found.message) + " [" + found.id + ']';
  return wrapped(line, lineWidth(), 4) + '\n';
}

/// One call of the tool: checks inputs and remembers the worst that was found.
class Run {
 public:
  explicit Run(Options const& options);

  ExitStatus all();

 private:
  Checked checked(ReplyInput const& input) const;
  Checked unreadable(ReplyInput const& input) const;
  std::string textOf(ReplyInput const& input, std::vector<Found> const& all) const;
  std::string dataOf(ReplyInput const& input, std::vector<Found> const& all) const;
  bool fails(Found const& found) const;
  void finish(Checked const& checked);
  void printEnd();

  Options const& options_;
  bool hasContext_;
  std::size_t width_;
  Summary progress_;
  ExitStatus status_ = ExitStatus::good;
  Counts counts_;
  std::size_t replies_ = 0;
  std::size_t clean_ = 0;
  std::size_t unreadable_ = 0;
  bool hasItem_ = false;  ///< does the list of the JSON object hold something?
};

Run::Run(Options const& options)
    : options_(options),
      hasContext_(options.context == "always" ||
                  (options.context == "auto" && isTerminal(STDOUT_FILENO))),
      width_(lineWidth() != 0 ? lineWidth() : 80) {}

ExitStatus Run::all() {
  if (options_.format == "json") print("{\n  \"kovra\": 1,\n  \"findings\": [");
  bool const isAnyRead = forEachReply(options_.replies, [&](ReplyInput const& input) -> Finish {
    auto result = std::make_shared<Checked const>(checked(input));
    return [this, result] { finish(*result); };
  });
  progress_.end();
  if (options_.format == "json") printEnd();
  if (!isAnyRead) keepReplaced();
  return status_;
}

Checked Run::checked(ReplyInput const& input) const {
  if (input.failure != nullptr) return unreadable(input);
  Decoding const decoding = decode(input.text, options_.as);
  std::vector<Found> const all = findingsOf(decoding, input.text);
  Checked checked;
  checked.isDecoded = static_cast<bool>(decoding);
  checked.isClean = all.empty();
  for (Found const& found : all) {
    bool const isError = found.severity == Severity::error;
    bool const isWarning = found.severity == Severity::warning;
    ++(isError     ? checked.counts.errors
       : isWarning ? checked.counts.warnings
                   : checked.counts.information);
    if (fails(found)) checked.status = ExitStatus::refused;
  }
  checked.data = dataOf(input, all);
  return checked;
}

Checked Run::unreadable(ReplyInput const& input) const {
  Checked checked;
  checked.status = input.failure->status();
  checked.complaint = messagePrefix(nameOf(input), {}, "error") + input.failure->what();
  return checked;
}

/// Of notes that are not listed nobody knows what they are.
bool Run::fails(Found const& found) const {
  return options_.isStrict || found.severity != Severity::information || found.kind == unlistedKind;
}

std::string Run::dataOf(ReplyInput const& input, std::vector<Found> const& all) const {
  if (options_.format == "text") return textOf(input, all);
  std::string data;
  for (Found const& found : all) {
    if (options_.format == "jsonl") {
      data += dumped(jsonOf(input, found), -1) + '\n';
      continue;
    }
    if (!data.empty()) data += ',';
    data += "\n    ";
    for (char const byte : dumped(jsonOf(input, found), 2)) {
      data += byte;
      if (byte == '\n') data += "    ";
    }
  }
  return data;
}

std::string Run::textOf(ReplyInput const& input, std::vector<Found> const& all) const {
  bool const hasExcerpts = hasContext_ && !all.empty() && hasLines(input.text);
  std::vector<Stretch> secrets;
  if (hasExcerpts) secrets = secretsIn(input.text);
  std::string data;
  for (Found const& found : all) {
    data += lineOf(input, found);
    if (hasExcerpts && found.begin.line != 0) {
      data += excerpt(input.text, {found.offset, found.endOffset}, secrets, found.begin.line,
                      width_, styleOf(found.severity));
    }
  }
  return data;
}

void Run::finish(Checked const& checked) {
  status_ = worse(status_, checked.status);
  std::size_t const notes = checked.counts.warnings + checked.counts.information;
  progress_.count(checked.isDecoded, notes);
  if (!checked.complaint.empty()) {
    ++unreadable_;
    progress_.makeRoom();
    return complain(checked.complaint);
  }
  ++replies_;
  clean_ += checked.isClean;
  counts_.errors += checked.counts.errors;
  counts_.warnings += checked.counts.warnings;
  counts_.information += checked.counts.information;
  if (options_.format == "json" && !checked.data.empty() && std::exchange(hasItem_, true)) {
    print(",");
  }
  print(checked.data);
}

void Run::printEnd() {
  Json const counts = {{"replies", replies_},
                       {"clean", clean_},
                       {"errors", counts_.errors},
                       {"warnings", counts_.warnings},
                       {"information", counts_.information},
                       {"unreadable", unreadable_}};
  print((hasItem_ ? "\n  ]," : "],") + dumped(counts, 2).substr(1) + '\n');
}

void describe(CLI::App& command, Options& options) {
  addReplies(command, options.replies);
  addOption(command, "--format", options.format, "What to print: text (default), json or jsonl")
      .shows("FORMAT")
      .isOneOf({"text", "json", "jsonl"});
  addFlag(command, "--strict", options.isStrict, "Findings of mere information fail, too");
  addOption(command, "--context", options.context,
            "The line of the reply below each finding, with a\n"
            "caret: auto (default: on a terminal), always or never")
      .shows("WHEN")
      .isOneOf({"auto", "always", "never"});
  addAs(command, options.as, "Check");
  addOutput(command);
  addColor(command);
  addFooter(command, R"(Tells why a reply is refused, and all in it that was lost or changed:

  reply.xml:4:3: warning: <firmware>: unknown element, skipped [K101]

Severities are error (the reply is refused), warning (something was lost or
changed) and note (information only). 'kovra explain K101' tells more. The
finding XML is the tool's own: Kovra reads the reply, and a parser that takes
XML by the letter refuses it. In a line that is shown, keys, pass phrases and
track data are ******. Replies in UTF-16 are checked without showing lines.

Formats:
  text    for people and editors: a line for each finding
  json    one object with the list of all findings, and how many there are
  jsonl   an object on one line for each finding

Examples:
  kovra check reply.xml
  kovra check --strict --context never replies/*.xml
  kovra check --format jsonl replies/*.xml | jq -r .id | sort | uniq -c

Exit status:
  0  no reply has an error or a warning; with --strict: none has any finding
  1  some reply has one, or was too large; notes that are not listed count
  2  the command line is wrong; nothing was read
  3  some file could not be read, or the output not be written)");
}

}  // namespace

void addCheck(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options, &status] {
    tellWaiting(options->replies);
    status = Run(*options).all();
  });
}

}  // namespace Kovra::tool
