#include "coverage.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <kovra.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "characters.hpp"
#include "excerpt.hpp"
#include "findings.hpp"
#include "options.hpp"
#include "output.hpp"
#include "printable.hpp"
#include "replies.hpp"
#include "secret.hpp"
#include "summary.hpp"
#include "table.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
  ReplyOptions replies;
  std::string format = "text";
};

/// What may be unknown: the kind of finding that tells of it, and how it is called here.
struct Category {
  std::string_view kind;
  char const* key;    ///< in JSON
  char const* title;  ///< for people
  char const* name;   ///< in JSON, of what the path alone does not say; empty: nothing
};
constexpr Category categories[] = {
    {"unknown_root", "roots", "Unknown documents", ""},
    {"unknown_element", "elements", "Unknown elements", ""},
    {"unread_attribute", "attributes", "Attributes that are not read", "attribute"},
    {"unknown_word", "words", "Unknown words", "word"},
};

/// Something unknown: which category, where, and what.
using Key = std::tuple<std::size_t, std::string, std::string>;

/// How often, and where for the first time.
struct Tally {
  std::size_t times = 0;
  std::size_t replies = 0;
  std::string source;
  std::size_t number = 0;  ///< of the reply, as in ReplyInput
  int line = 0;
  std::string value;
};
using Tallies = std::map<Key, Tally>;

/// What was seen in one reply.
struct Seen {
  Tallies unknown;
  std::size_t unlisted = 0;
  std::string complaint;  ///< why there is no reply; empty: there is
  ExitStatus status = ExitStatus::good;
  bool isDecoded = false;
  bool isClean = false;
};

/// As much of a text as fits into a line of a table; names may be as long as replies are.
std::string beginningOf(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xc0U) == 0x80) --most;
  return std::string(text.substr(0, most)) + "...";
}

std::size_t categoryOf(Found const& found) {
  auto const* const category =
      std::find_if(std::begin(categories), std::end(categories),
                   [&](Category const& candidate) { return candidate.kind == found.kind; });
  return static_cast<std::size_t>(category - std::begin(categories));
}

/// Goes through the findings of one reply.
class Census {
 public:
  explicit Census(ReplyInput const& input) : input_(input) {}

  void add(Found const& found);
  Tallies take() { return std::move(unknown_); }

 private:
  std::string nameOf(std::size_t category, Found const& found) const;
  std::string valueOf(std::size_t category, Found const& found);

  ReplyInput const& input_;
  Tallies unknown_;
  bool hasSecrets_ = false;  ///< have they been looked for?
  std::vector<Stretch> secrets_;
};

void Census::add(Found const& found) {
  std::size_t const category = categoryOf(found);
  if (category == std::size(categories)) return;
  constexpr std::size_t longest = 512;
  Key const key{category, beginningOf(found.path, longest),
                beginningOf(nameOf(category, found), longest)};
  Tally& tally = unknown_[key];
  if (tally.times++ != 0) return;
  tally = {
      1, 1, std::string(input_.source), input_.number, found.begin.line, valueOf(category, found)};
}

std::string Census::nameOf(std::size_t category, Found const& found) const {
  std::string_view const name = categories[category].name;
  if (name.empty()) return {};
  // Of an attribute all of it is found.
  std::size_t const end =
      name == "attribute" ? found.found.find_first_of("= \t\r\n") : found.found.npos;
  return found.found.substr(0, end);
}

/// What stands there, secrets masked; of a word that is known already.
std::string Census::valueOf(std::size_t category, Found const& found) {
  constexpr std::size_t longest = 60;
  if (categories[category].name == std::string_view("word")) {
    return beginningOf(found.found, longest);
  }
  if (!hasLines(input_.text)) return {};
  if (!std::exchange(hasSecrets_, true)) secrets_ = secretsIn(input_.text);
  std::size_t const end = std::min(found.endOffset, input_.text.size());
  Stretch const piece{std::min(found.offset, end), end};
  return beginningOf(maskedPiece(input_.text, piece, secrets_), longest);
}

/// One call of the tool.
class Run {
 public:
  explicit Run(Options const& options) : options_(options) {}

  ExitStatus all();

 private:
  static Seen seenIn(ReplyInput const& input);
  void finish(Seen const& seen);
  void printText() const;
  void printJson() const;
  std::vector<std::pair<Key, Tally>> tallies(std::size_t category) const;
  std::string replyCounts() const;

  Options const& options_;
  Summary progress_;
  ExitStatus status_ = ExitStatus::good;
  Tallies unknown_;
  std::size_t replies_ = 0;
  std::size_t decoded_ = 0;
  std::size_t clean_ = 0;
  std::size_t unreadable_ = 0;
  std::size_t unlisted_ = 0;
};

ExitStatus Run::all() {
  bool const isAnyRead = forEachReply(options_.replies, [this](ReplyInput const& input) -> Finish {
    auto seen = std::make_shared<Seen const>(seenIn(input));
    return [this, seen] { finish(*seen); };
  });
  progress_.end();
  options_.format == "json" ? printJson() : printText();
  if (!isAnyRead) keepReplaced();
  return status_;
}

Seen Run::seenIn(ReplyInput const& input) {
  Seen seen;
  if (input.failure != nullptr) {
    seen.status = input.failure->status();
    seen.complaint = messagePrefix(nameOf(input), {}, "error") + input.failure->what();
    return seen;
  }
  Decoding const decoding = decode(input.text);
  seen.isDecoded = static_cast<bool>(decoding);
  seen.isClean = seen.isDecoded && decoding.notes().empty();
  if (!seen.isDecoded) seen.status = ExitStatus::refused;
  Census census(input);
  for (Found const& found : libraryFindings(decoding)) {
    census.add(found);
    if (found.kind == unlistedKind) seen.unlisted += found.count;
  }
  seen.unknown = census.take();
  return seen;
}

void Run::finish(Seen const& seen) {
  status_ = worse(status_, seen.status);
  progress_.count(seen.isDecoded, seen.unknown.size());
  if (!seen.complaint.empty()) {
    ++unreadable_;
    progress_.makeRoom();
    return complain(seen.complaint);
  }
  ++replies_;
  decoded_ += seen.isDecoded;
  clean_ += seen.isClean;
  unlisted_ += seen.unlisted;
  for (auto const& [key, tally] : seen.unknown) {
    auto const [place, isNew] = unknown_.try_emplace(key, tally);
    if (isNew) continue;
    place->second.times += tally.times;
    ++place->second.replies;
  }
}

/// Those of a category, the most frequent ones first.
std::vector<std::pair<Key, Tally>> Run::tallies(std::size_t category) const {
  std::vector<std::pair<Key, Tally>> found;
  for (auto const& [key, tally] : unknown_) {
    if (std::get<0>(key) == category) found.emplace_back(key, tally);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](auto const& a, auto const& b) { return a.second.times > b.second.times; });
  return found;
}

std::string Run::replyCounts() const {
  return std::to_string(replies_) + " read, " + std::to_string(decoded_) + " decoded, " +
         std::to_string(clean_) + " clean, " + std::to_string(replies_ - decoded_) + " refused, " +
         std::to_string(unreadable_) + " unreadable\n";
}

std::string placeOf(Tally const& tally) {
  return nameOf({tally.source, tally.number, {}, nullptr}) + ':' + std::to_string(tally.line);
}

/// What is unknown at a path, as people write it.
std::string subjectOf(Key const& key) {
  auto const& [category, path, name] = key;
  std::string_view const what = categories[category].name;
  if (what == "attribute") return path + '@' + name;
  return what.empty() ? path : path + ' ' + (name.empty() ? "(not told)" : '"' + name + '"');
}

std::vector<std::string> rowOf(std::size_t category, Key const& key, Tally const& tally) {
  std::string const replies = tally.replies == 1 ? " reply" : " replies";
  bool const isTold = categories[category].name != std::string_view("word");
  std::string const example = placeOf(tally) + (isTold ? ": " + tally.value : "");
  return {"  " + std::to_string(tally.times), "in " + std::to_string(tally.replies) + replies,
          printable(subjectOf(key)), printable(example)};
}

/// On a terminal that has no room for it beside the rest, the example goes below.
std::string fitted(std::vector<std::vector<std::string>> rows) {
  std::string wide = columns(rows);
  std::size_t const width = lineWidth();
  bool fits = true;
  for (std::size_t at = 0; at < wide.size();) {
    std::size_t const end = wide.find('\n', at);
    fits = fits && columnsOf(std::string_view(wide).substr(at, end - at)) <= width;
    at = end + 1;
  }
  if (width == 0 || fits) return wide;
  std::string narrow;
  for (std::vector<std::string>& row : rows) {
    std::string const example = std::move(row.back());
    row.pop_back();
    narrow += columns({row}) + "      " + styled(Style::faint, example) + '\n';
  }
  return narrow;
}

void Run::printText() const {
  print(styled(Style::heading, "Replies") + "\n  " + replyCounts());
  for (std::size_t category = 0; category < std::size(categories); ++category) {
    std::vector<std::vector<std::string>> rows;
    for (auto const& [key, tally] : tallies(category)) rows.push_back(rowOf(category, key, tally));
    if (rows.empty()) continue;
    print('\n' + styled(Style::heading, categories[category].title) + '\n' +
          fitted(std::move(rows)));
  }
  if (unlisted_ != 0) print('\n' + std::to_string(unlisted_) + " more notes were not listed\n");
}

void Run::printJson() const {
  Json json = {{"kovra", 1},
               {"replies", replies_},
               {"decoded", decoded_},
               {"clean", clean_},
               {"refused", replies_ - decoded_},
               {"unreadable", unreadable_},
               {"unlisted", unlisted_}};
  for (std::size_t category = 0; category < std::size(categories); ++category) {
    Json& list = json[categories[category].key] = Json::array();
    for (auto const& [key, tally] : tallies(category)) {
      Json item = {{"path", std::get<1>(key)}};
      if (*categories[category].name != '\0') item[categories[category].name] = std::get<2>(key);
      item["times"] = tally.times;
      item["replies"] = tally.replies;
      Json& example = item["example"] = {{"source", tally.source}};
      if (tally.number != 0) example["number"] = tally.number;
      example["line"] = tally.line;
      if (!tally.value.empty()) example["value"] = tally.value;
      list.push_back(std::move(item));
    }
  }
  print(json.dump(2, ' ', true, Json::error_handler_t::replace) + '\n');
}

}  // namespace

void addCoverage(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  addReplies(command, options->replies);
  addOption(command, "--format", options->format, "What to print: text (default) or json")
      .shows("FORMAT")
      .isOneOf({"text", "json"});
  addOutput(command);
  addColor(command);
  addFooter(command, R"(Sums up what Kovra does not know of all the replies together: documents,
elements, attributes and words, each with how often it was there, in how many
replies, and where for the first time; the most frequent ones first. Keys, pass
phrases and track data are ****** there.

Of the replies it counts those that were decoded, those of them that are clean
(nothing at all was noted), and those that were refused.

Examples:
  kovra coverage replies/*.xml
  find replies -name '*.xml' | kovra coverage -j 0 --files-from -
  kovra coverage --format json replies/*.xml | jq -r .elements[].path

Exit status:
  0  all replies were decoded, whatever is unknown in them
  1  some reply was refused; the others were counted all the same
  2  the command line is wrong; nothing was read
  3  some file could not be read, or the output not be written)");
  addWork(command, [options, &status] {
    tellWaiting(options->replies);
    status = Run(*options).all();
  });
}

}  // namespace Kovra::tool
