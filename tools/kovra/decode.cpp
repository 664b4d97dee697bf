#include "decode.hpp"

#include <algorithm>
#include <cstddef>
#include <kovra.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "complaints.hpp"
#include "findings.hpp"
#include "flat.hpp"
#include "input.hpp"
#include "options.hpp"
#include "output.hpp"
#include "printable.hpp"
#include "prom.hpp"
#include "replies.hpp"
#include "summary.hpp"
#include "table.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  ReplyOptions replies;
  std::string format = "table";
  std::string as;
  std::string errors = "stdout";
  std::string failures;  // a folder for texts that were refused; empty: none
  bool showSecrets = false;
  bool exitZero = false;
};

/// What is to be printed of one reply.
struct Shown {
  std::string data;
  std::vector<Complaint> complaints;
  std::vector<MetricSample> samples;
  bool isDecoded = false;
  ExitStatus status = ExitStatus::good;
  std::size_t notes = 0;
  std::string kept;  ///< a text that was refused, where somebody asked for it
};

/// One call of the tool: decodes inputs and remembers the worst that happened.
class Run {
 public:
  explicit Run(Options const& options)
      : options_(options),
        secrets_(options.showSecrets ? Secrets::shown : Secrets::masked),
        severalInputs_(options.replies.areSeveral()) {}

  ExitStatus all();

 private:
  Shown shownOf(ReplyInput const& input) const;
  Shown decoded(ReplyInput const& input, Decoding const& decoding) const;
  Shown refused(ReplyInput const& input, Refusal const& refusal, std::string const& json) const;
  Shown unreadable(ReplyInput const& input) const;
  std::string tables(ReplyInput const& input, Decoding const& decoding) const;
  std::string lines(ReplyInput const& input, Decoding const& decoding) const;
  /// JSON has them, and metrics their number.
  bool tellsNotes() const { return options_.format == "table" || options_.format == "flat"; }
  bool areFailuresData() const { return options_.format == "jsonl" && options_.errors == "stdout"; }
  void finish(ReplyInput const& input, Shown const& shown);

  Options const& options_;
  Secrets secrets_;
  bool severalInputs_;
  ExitStatus status_ = ExitStatus::good;
  bool tableBefore_ = false;
  Summary summary_;
  Metrics metrics_;
};

ExitStatus Run::all() {
  summary_.show(areFailuresData());
  bool const isAnyRead = forEachReply(options_.replies, [&](ReplyInput const& input) -> Finish {
    auto shown = std::make_shared<Shown const>(shownOf(input));
    return [this, shown, number = input.number, source = std::string(input.source)] {
      finish({source, number, {}, nullptr}, *shown);
    };
  });
  print(metrics_.text());
  summary_.end();
  if (!isAnyRead && !areFailuresData()) keepReplaced();
  bool const isForgiven = options_.exitZero && status_ == ExitStatus::refused;
  return isForgiven ? ExitStatus::good : status_;
}

/// The object on one line, with the reply's file in front of all else, and its number there where
/// it has one. Bytes of a file's name that are no UTF-8 become U+FFFD.
std::string jsonLine(ReplyInput const& input, std::string_view object) {
  std::string const name =
      nlohmann::json(input.source).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
  std::string line;
  line.reserve(name.size() + object.size() + 48);
  line.append("{\"source\":").append(name);
  if (input.number != 0) line += ",\"number\":" + std::to_string(input.number);
  line += ',';
  line += object.substr(1);
  line += '\n';
  return line;
}

Shown Run::shownOf(ReplyInput const& input) const {
  if (input.failure != nullptr) return unreadable(input);
  Decoding const decoding = decode(input.text, options_.as);
  if (decoding) return decoded(input, decoding);
  return refused(input, decoding.refusal(),
                 areFailuresData() ? decoding.toJson(-1, secrets_) : std::string());
}

Shown Run::decoded(ReplyInput const& input, Decoding const& decoding) const {
  Shown shown;
  shown.isDecoded = true;
  if (options_.format == "json") {
    shown.data = decoding.toJson(2, secrets_) + '\n';
  } else if (options_.format == "jsonl") {
    shown.data = jsonLine(input, decoding.toJson(-1, secrets_));
  } else if (options_.format == "prom") {
    shown.samples = samplesOf(decoding);
  } else if (options_.format == "flat") {
    shown.data = lines(input, decoding);
  } else {
    shown.data = tables(input, decoding);
  }
  std::vector<Note> const notes = decoding.notes();
  shown.notes = notes.size();
  if (!tellsNotes()) return shown;
  for (Note const& note : notes) {
    shown.complaints.push_back({placeOf(note), note.severity(), note.message()});
  }
  return shown;
}

std::string Run::tables(ReplyInput const& input, Decoding const& decoding) const {
  std::string all;
  for (Reading const& reading : decoding.readings()) {
    if (!all.empty()) all += '\n';
    all += table(reading, decoding.root(), secrets_, severalInputs_ ? nameOf(input) : "");
  }
  return all;
}

/// Of several replies each line begins with its own.
std::string Run::lines(ReplyInput const& input, Decoding const& decoding) const {
  std::string const name = printable(nameOf(input));
  std::string all;
  for (Reading const& reading : decoding.readings()) {
    all += "# " + (severalInputs_ ? name + ": " : std::string()) + reading.message() + " <" +
           printable(decoding.root()) + ">\n";
    all += flat(reading.record(), secrets_, severalInputs_ ? name + ": " : "");
  }
  return all;
}

Shown Run::refused(ReplyInput const& input, Refusal const& refusal, std::string const& json) const {
  Shown shown;
  shown.status = ExitStatus::refused;
  if (!options_.failures.empty()) shown.kept = input.text;
  if (areFailuresData()) {
    shown.data = jsonLine(input, json);
    return shown;
  }
  bool const isUnknown = options_.as.empty() && kindOf(refusal) == "unknown_root";
  shown.complaints.push_back({placeOf(refusal), Severity::error,
                              refusal.message() + (isUnknown ? " ('kovra list' names them)" : "")});
  return shown;
}

Shown Run::unreadable(ReplyInput const& input) const {
  Shown shown;
  shown.status = input.failure->status();
  if (areFailuresData()) {
    // Memory may have ended, which objects of JSON do not survive: they ask for more as they go.
    std::string const message = Value(input.failure->what()).toJson();
    shown.data = jsonLine(input, R"({"kovra":1,"ok":false,"error":{"message":)" + message + "}}");
  } else {
    shown.complaints.push_back({{}, Severity::error, input.failure->what()});
  }
  return shown;
}

void Run::finish(ReplyInput const& input, Shown const& shown) {
  status_ = worse(status_, shown.status);
  if (options_.format == "table" && shown.isDecoded) {
    if (tableBefore_) print("\n");
    tableBefore_ = true;
  }
  print(shown.data);
  if (options_.format == "prom") {
    metrics_.add(severalInputs_ ? nameOf(input) : "", shown.samples, shown.isDecoded, shown.notes);
  }
  summary_.count(shown.isDecoded, shown.notes);
  if (!shown.complaints.empty()) summary_.makeRoom();
  complainOf(nameOf(input), shown.complaints);
  if (!options_.failures.empty() && shown.status == ExitStatus::refused) {
    keepFailure(options_.failures, input, shown.kept);
  }
}

void describe(CLI::App& command, Options& options) {
  addReplies(command, options.replies);
  addOption(command, "--format", options.format,
            "What to print: table (default), flat, json, jsonl or\n"
            "prom")
      .shows("FORMAT")
      .isOneOf({"table", "flat", "json", "jsonl", "prom"});
  addAs(command, options.as, "Read");
  addFlag(command, "--show-secrets", options.showSecrets,
          "Show keys, pass phrases and track data, not ******\n"
          "in their place");
  addOption(command, "--errors", options.errors,
            "Where jsonl tells of replies that were refused:\n"
            "stdout (default), as an object like the others, or\n"
            "stderr")
      .shows("WHERE")
      .isOneOf({"stdout", "stderr"});
  addOption(command, "--save-failures", options.failures,
            "Keep the replies that were refused in this folder")
      .shows("DIR")
      .isFolder();
  addFlag(command, "--exit-zero", options.exitZero, "Replies that are refused are no failure");
  addOutput(command);
  addColor(command);
  addFooter(command,
            R"(The reader is found by the name of the reply's root element. Only what the reply
said is shown. What Kovra does not know in it is told in notes: on standard
error beside a table, inside the object in JSON.

Formats:
  table   for people: what needs somebody comes first and is marked, with ! for
          at once, * for soon and ? for a state that Kovra does not know; a
          setting stands with its bounds, as 40 [0..63]
  flat    a line for each value, for grep and diff: wireless.channel = 6;
          'kovra compose' takes it back
  json    for programs: one object for each reply, indented
  jsonl   the same on one line, with the reply's file under "source"; a reply
          that was refused gives an object with "ok":false and why, and at the
          end a line on standard error says how many there were
  prom    metrics for Prometheus, such as its node exporter takes from a file

Examples:
  kovra decode reply.xml
  kovra decode --format json reply.xml | jq .readings[0].record.printer_state
  printer-query status | kovra decode
  printer-monitor | kovra decode --stream --format jsonl
  kovra decode --format prom -o /var/lib/node_exporter/printer.prom reply.xml
  find replies -name '*.xml' -print0 |
    kovra decode --format jsonl -j 0 --files-from - -0

Exit status:
  0  all replies were decoded
  1  some reply was refused; the others were decoded all the same
  2  the command line is wrong; nothing was read
  3  some file could not be read, or the output not be written)");
}

}  // namespace

void addDecode(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options, &status] {
    tellWaiting(options->replies);
    status = Run(*options).all();
  });
}

}  // namespace Kovra::tool
