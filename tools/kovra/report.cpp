#include "report.hpp"

#include <cstdlib>
#include <ctime>
#include <kovra.hpp>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "findings.hpp"
#include "input.hpp"
#include "options.hpp"
#include "output.hpp"
#include "replies.hpp"
#include "report_fleet.hpp"
#include "report_page.hpp"
#include "summary.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  ReplyOptions replies;
  std::string grouping = "name";
};

/// So many notes are listed; a page with more of them is not read.
constexpr std::size_t mostNotes = 1000;

/// What became of one reply.
struct Heard {
  ExitStatus status = ExitStatus::good;
  Report report;
  Refused refused;
  std::vector<Noted> notes;
};

Grouping groupingOf(std::string const& name) {
  return name == "folder" ? Grouping::folder : name == "input" ? Grouping::input : Grouping::name;
}

std::string placed(ReplyInput const& input, Place place) {
  std::string where = nameOf(input);
  if (place.line == 0) return where;
  return where + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
}

Heard refusedAs(ExitStatus status, std::string where, std::string why) {
  Heard heard;
  heard.status = status;
  heard.refused = {std::move(where), std::move(why)};
  return heard;
}

/// One call: hears replies, and makes the page of them.
class Run {
 public:
  explicit Run(Options const& options)
      : options_(options), grouping_(groupingOf(options.grouping)) {}

  ExitStatus all();

 private:
  Heard heardOf(ReplyInput const& input) const;
  Heard decoded(ReplyInput const& input, Decoding const& decoding) const;
  void finish(Heard& heard);
  void note(Noted& note);

  Options const& options_;
  Grouping grouping_;
  ExitStatus status_ = ExitStatus::good;
  std::vector<Report> reports_;
  Fleet fleet_;
  std::unordered_map<std::string, std::size_t> notes_;  ///< where each message is in the fleet's
  Summary summary_;
};

/// Those who want the same bytes again say what time it is.
std::time_t now() {
  char const* const said = std::getenv("SOURCE_DATE_EPOCH");
  return said != nullptr && *said != '\0' ? std::time_t{std::strtoll(said, nullptr, 10)}
                                          : std::time(nullptr);
}

ExitStatus Run::all() {
  bool const isAnyRead = forEachReply(options_.replies, [&](ReplyInput const& input) -> Finish {
    auto heard = std::make_shared<Heard>(heardOf(input));
    return [this, heard] { finish(*heard); };
  });
  summary_.end();
  fleet_.printers = printersOf(std::move(reports_));
  fleet_.made = now();
  print(page(fleet_));
  if (!isAnyRead) keepReplaced();
  return status_;
}

Heard Run::heardOf(ReplyInput const& input) const {
  if (input.failure != nullptr) {
    return refusedAs(input.failure->status(), nameOf(input), input.failure->what());
  }
  Decoding const decoding = decode(input.text);
  if (decoding) return decoded(input, decoding);
  Refusal const refusal = decoding.refusal();
  return refusedAs(ExitStatus::refused, placed(input, placeOf(refusal)), refusal.message());
}

Heard Run::decoded(ReplyInput const& input, Decoding const& decoding) const {
  Heard heard;
  std::vector<Reading> const readings = decoding.readings();
  for (Reading const& reading : readings) {
    Value const& record = reading.record();
    heard.report.told.push_back(
        {reading.message(), nameOf(input), membersOf(record), factsOf(reading.message(), record)});
  }
  heard.report.group = groupOf(input, grouping_, readings.front().message(), decoding.root());
  for (Note const& note : decoding.notes()) {
    heard.notes.push_back({note.severity(), note.message(), placed(input, placeOf(note)), 1});
  }
  return heard;
}

void Run::finish(Heard& heard) {
  status_ = worse(status_, heard.status);
  bool const isGood = heard.status == ExitStatus::good;
  summary_.count(isGood, heard.notes.size());
  if (isGood) {
    reports_.push_back(std::move(heard.report));
    for (Noted& each : heard.notes) note(each);
    return;
  }
  summary_.makeRoom();
  complain(heard.refused.where + ": error: " + heard.refused.why);
  fleet_.refused.push_back(std::move(heard.refused));
}

/// A fleet of one kind says the same again and again: once is enough.
void Run::note(Noted& note) {
  auto const known = notes_.find(note.message);
  if (known != notes_.end()) {
    ++fleet_.notes[known->second].count;
  } else if (fleet_.notes.size() == mostNotes) {
    ++fleet_.otherNotes;
  } else {
    notes_.emplace(note.message, fleet_.notes.size());
    fleet_.notes.push_back(std::move(note));
  }
}

void describe(CLI::App& command, Options& options) {
  addReplies(command, options.replies);
  addOption(command, "--group-by", options.grouping,
            "Replies of one printer have the same name (the\n"
            "default), folder or input: see below")
      .shows("WHAT")
      .isOneOf({"name", "folder", "input"});
  addOutput(command);
  addFooter(command,
            R"(One HTML page that needs nothing else and asks the network for nothing: every
printer with what needs a person, its states, and a bar for each supply and for
the time until it is to be cleaned; those that need somebody come first. What
was refused, and notes, stand at the end. In a browser the page can be sorted
and filtered; it can be printed, and read on a telephone. Secrets never stand
in it.

Replies are of one printer where they say the same serial number, or where
another reply that says one belongs to the same
  name    file without its ending, and without the name of the message or of
          its root behind that: hx-17.general-status.xml and
          hx-17/media-status.xml are both of hx-17; each reply of a stream is
          of a printer of its own
  folder  folder
  input   file or stream
Of several replies of one kind the last one counts.

Examples:
  kovra report replies/*.xml --output report.html
  kovra report --group-by folder replies/*/*.xml -o report.html
  printer-query-all | kovra report --stream -o report.html

Exit status:
  0  all replies are in the page
  1  some reply was refused; the page says which
  2  the command line is wrong; nothing was read
  3  some file could not be read, or the output not be written)");
}

}  // namespace

void addReport(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options, &status] {
    tellWaiting(options->replies);
    status = Run(*options).all();
  });
}

}  // namespace Kovra::tool
