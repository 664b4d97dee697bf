#include "decode.hpp"

#include <algorithm>
#include <cstddef>
#include <kovra.hpp>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"
#include "max_size.hpp"
#include "output.hpp"
#include "table.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  std::vector<std::string> files;
  std::string list;  // a file with names of more; empty: none
  bool nullSeparated = false;
  std::string format = "table";
  std::string as;
  bool showSecrets = false;
  std::size_t maxSize = defaultMaxSize;
};

/// One call of the tool: decodes inputs one by one and remembers the worst that happened.
class Run {
 public:
  explicit Run(Options const& options)
      : options_(options),
        secrets_(options.showSecrets ? Secrets::shown : Secrets::masked),
        severalInputs_(options.files.size() > 1 || !options.list.empty()),
        reader_(options.maxSize) {}

  ExitStatus inputs();

 private:
  void listedInputs();
  void input(std::string const& path);
  std::string_view textOf(std::string const& path);
  void show(Decoding const& decoding, std::string_view path);
  void showTables(Decoding const& decoding, std::string_view path);
  void refuse(ExitStatus status, std::string_view path, Place place, std::string_view why);

  Options const& options_;
  Secrets secrets_;
  bool severalInputs_;
  InputReader reader_;
  ExitStatus status_ = ExitStatus::good;
  bool tableBefore_ = false;
};

ExitStatus Run::inputs() {
  for (std::string const& path : options_.files) input(path);
  if (!options_.list.empty()) {
    listedInputs();
  } else if (options_.files.empty()) {
    input(std::string(standardInput));
  }
  return status_;
}

void Run::listedInputs() try {
  NameList list(options_.list, options_.nullSeparated ? '\0' : '\n');
  for (std::string name; list.next(name);) input(name);
} catch (InputFailure const& failure) {
  refuse(failure.status(), options_.list, {}, failure.what());
}

/// The name of the finding's kind; empty where nothing was found.
std::string kindOf(Finding const& finding) {
  std::vector<FindingKind> const kinds = findingKinds();
  auto const kind = std::find_if(kinds.begin(), kinds.end(), [&](FindingKind const& known) {
    return known.id() == finding.id();
  });
  return kind != kinds.end() ? kind->name() : "";
}

std::string reasonOf(Refusal const& refusal, std::string const& as) {
  bool const isUnknown = as.empty() && kindOf(refusal) == "unknown_root";
  return refusal.message() + (isUnknown ? " ('kovra list' names them)" : "");
}

Place placeOf(Finding const& finding) {
  return {finding.line(), finding.column()};
}

void Run::input(std::string const& path) try {
  std::string_view const text = textOf(path);
  Decoding const decoding = decode(text, options_.as);
  if (decoding) {
    show(decoding, path);
  } else {
    Refusal const refusal = decoding.refusal();
    refuse(ExitStatus::refused, path, placeOf(refusal), reasonOf(refusal, options_.as));
  }
} catch (InputFailure const& failure) {
  refuse(failure.status(), path, {}, failure.what());
} catch (std::bad_alloc const&) {
  refuse(ExitStatus::refused, path, {}, "not enough memory");
}

std::string_view Run::textOf(std::string const& path) {
  if (path == standardInput && options_.list == standardInput) {
    throw InputFailure(ExitStatus::failed, "holds the names of files already");
  }
  return reader_.read(path);
}

/// The object on one line, with the reply's file in front of all else. Bytes of its name that are
/// no UTF-8 become U+FFFD.
std::string jsonLine(Decoding const& decoding, Secrets secrets, std::string_view source) {
  std::string const name =
      nlohmann::json(source).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
  return "{\"source\":" + name + ',' + decoding.toJson(-1, secrets).substr(1) + '\n';
}

void Run::show(Decoding const& decoding, std::string_view path) {
  if (options_.format == "json") {
    print(decoding.toJson(2, secrets_) + '\n');
  } else if (options_.format == "jsonl") {
    print(jsonLine(decoding, secrets_, path));
  } else {
    showTables(decoding, path);
  }
}

void Run::showTables(Decoding const& decoding, std::string_view path) {
  for (Reading const& reading : decoding.readings()) {
    if (tableBefore_) print("\n");
    tableBefore_ = true;
    print(table(reading, decoding.root(), secrets_, severalInputs_ ? inputName(path) : ""));
  }
  for (Note const& note : decoding.notes()) {
    bool const isWarning = note.severity() == Severity::warning;
    complain(messagePrefix(path, placeOf(note), isWarning ? "warning" : "note") + note.message());
  }
}

void Run::refuse(ExitStatus status, std::string_view path, Place place, std::string_view why) {
  status_ = worse(status_, status);
  complain(messagePrefix(path, place, "error").append(why));
}

/// Empty for the name of a message that is read, else the complaint.
std::string checkMessage(std::string const& name) {
  Refusal const refusal = decode({}, name).refusal();
  return kindOf(refusal) == "unknown_message" ? refusal.message() : "";
}

void describe(CLI::App& command, Options& options) {
  command.add_option("FILE", options.files, "Replies; '-' or none at all: standard input")
      ->option_text(" ");
  command.add_option("--format", options.format, "What to print: table (default), json or jsonl")
      ->option_text("FORMAT")
      ->check(CLI::IsMember({"table", "json", "jsonl"}));
  command.add_option("--as", options.as, "Read as this document only; 'kovra list' has the names")
      ->option_text("NAME")
      ->check(checkMessage);
  command.add_flag("--show-secrets", options.showSecrets,
                   "Show keys, pass phrases and track data, not ******\n"
                   "in their place");
  auto* const list = command
                         .add_option("--files-from", options.list,
                                     "Then the replies that this file names, one on each\n"
                                     "line; '-': standard input")
                         ->option_text("FILE");
  command
      .add_flag("-0,--null", options.nullSeparated,
                "Names in that file end with a NUL byte, not with the line")
      ->option_text(" ")
      ->needs(list);
  addMaxSize(command, options.maxSize, "Refuse larger replies");
  command.footer(R"(The reader is found by the name of the reply's root element. Only what the reply
said is shown. What Kovra does not know in it is told in notes: on standard
error beside a table, inside the object in JSON.

Formats:
  table   for people
  json    for programs: one object for each reply, indented
  jsonl   the same on one line, with the reply's file under "source"

Examples:
  kovra decode reply.xml
  kovra decode --format json reply.xml | jq .readings[0].record.printer_state
  printer-query status | kovra decode
  find replies -name '*.xml' -print0 | kovra decode --format jsonl --files-from - -0

Exit status:
  0  all replies were decoded
  1  some reply was refused; the others were decoded all the same
  2  the command line is wrong; nothing was read
  3  some file could not be read, or standard output not be written)");
}

}  // namespace

void addDecode(CLI::App& app, ExitStatus& status) {
  CLI::App* const command = app.add_subcommand("decode", "Show what printers' replies say");
  auto const options = std::make_shared<Options>();
  describe(*command, *options);
  command->callback([options, &status] { status = Run(*options).inputs(); });
}

}  // namespace Kovra::tool
