#include "redact.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <kovra.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "findings.hpp"
#include "identity.hpp"
#include "input.hpp"
#include "options.hpp"
#include "output.hpp"
#include "paths.hpp"
#include "pseudonyms.hpp"
#include "replies.hpp"
#include "survey.hpp"
#include "table.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  ReplyOptions replies;
  std::vector<std::string> kept;
  std::string folder;  // for the copies; empty: standard output
  std::string map;
  bool overwrites = false;
  bool lists = false;
};

/// A reply between the two halves of the work: all values have to be known before the first is
/// replaced, since one reply may mention what is a value of another.
struct Original {
  std::string source;
  std::size_t number = 0;
  ReplyText text;
  std::vector<Piece> pieces;

  std::string name() const { return nameOf(ReplyInput{source, number, {}, nullptr}); }
};

/// A copy, and the name of its file.
struct Copy {
  std::string path;
  std::string bytes;
};

/// Does a copy say what its original says, but for what was replaced?
class Comparison {
 public:
  Comparison(Identities const& identities, Pseudonyms const& pseudonyms, std::string_view copy)
      : identities_(identities), pseudonyms_(pseudonyms), copy_(copy) {}

  bool isGood(Decoding const& before, Decoding const& after) {
    std::vector<Reading> const old = before.readings();
    std::vector<Reading> const now = after.readings();
    bool const isSame = after && before.root() == after.root() && old.size() == now.size();
    for (std::size_t i = 0; isSame && i < old.size(); ++i) {
      message_ = old[i].message();
      bool const isAlike = message_ == now[i].message() && old[i].result() == now[i].result();
      if (!isAlike || !isGood(old[i].record(), now[i].record(), "")) return false;
    }
    return isSame;
  }

 private:
  bool isGood(Value const& old, Value const& now, std::string const& path) {
    if (identities_.isReplaced(message_, path)) return isHidden(old, now);
    if (old.isRecord() && now.isRecord()) return areMembersGood(old, now, path);
    if (old.isList() && now.isList()) {
      if (old.size() != now.size()) return false;
      for (std::size_t i = 0; i < old.size(); ++i) {
        if (!isGood(old.items()[i], now.items()[i], path)) return false;
      }
      return true;
    }
    return old == now || (old.isText() && now.isText() && isHiddenIn(old.asText(), now.asText()));
  }

  /// A value that is replaced may be there in one of them only, where it is no good one.
  bool areMembersGood(Value const& old, Value const& now, std::string const& path) {
    for (Member const& member : old.members()) {
      Value const* const other = now.find(member.name());
      bool const isFine = other != nullptr
                              ? isGood(member.value(), *other, memberPath(path, member.name()))
                              : identities_.isReplaced(message_, memberPath(path, member.name()));
      if (!isFine) return false;
    }
    return std::all_of(now.members().begin(), now.members().end(), [&](Member const& member) {
      return old.find(member.name()) != nullptr ||
             identities_.isReplaced(message_, memberPath(path, member.name()));
    });
  }

  /// What did not fit may be read as the same; then what it was read from stands there no more. A
  /// member may also be the name of an element.
  bool isHidden(Value const& old, Value const& now) const {
    if (old != now || old.isNothing()) return true;
    if (old.isText()) {
      std::string const tag = '<' + std::string(old.asText());
      return saysNothing(old.asText()) || copy_.find(tag) != copy_.npos ||
             copy_.find(old.asText()) == copy_.npos;
    }
    if (!old.isWhole() || old.toJson() == "0") return true;
    return copy_.find(old.toJson()) == copy_.npos;
  }

  /// Other texts may mention a value; one may be cut since.
  bool isHiddenIn(std::string_view old, std::string_view now) const {
    std::string const hidden = pseudonyms_.hidden(old);
    std::size_t const common = std::min(hidden.size(), now.size());
    return hidden != old && hidden.substr(0, common) == now.substr(0, common);
  }

  Identities const& identities_;
  Pseudonyms const& pseudonyms_;
  std::string_view copy_;
  std::string message_;
};

std::set<Group> groupsOf(std::vector<std::string> const& names) {
  std::set<Group> groups;
  for (Group const group : {Group::serial, Group::address, Group::network, Group::job}) {
    if (std::count(names.begin(), names.end(), nameOf(group)) > 0) groups.insert(group);
  }
  return groups;
}

/// Goes forward through a text and counts its lines.
class LineCounter {
 public:
  explicit LineCounter(std::string_view text) : text_(text) {}

  Place placeOf(std::size_t offset) {
    for (; at_ < offset; ++at_) {
      if (text_[at_] == '\n') {
        ++place_.line;
        place_.column = 1;
      } else {
        place_.column += (text_[at_] & '\xC0') != '\x80';
      }
    }
    return place_;
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
  Place place_{1, 1};
};

/// One call of the tool.
class Run {
 public:
  explicit Run(Options const& options) : options_(options), identities_(groupsOf(options.kept)) {}

  ExitStatus all();

 private:
  Finish read(ReplyInput const& input);
  void refuse(std::string const& name, ExitStatus status, std::string const& why, Place place = {});
  std::optional<Copy> copyOf(Original const& original);
  void tellLeft(Original const& original, Redacted const& copy);
  std::string pathFor(Original const& original) const;
  bool areNamesFree(std::vector<Copy> const& copies);
  void write(std::vector<Copy> const& copies);
  std::string map() const;

  Options const& options_;
  Identities identities_;
  Pseudonyms pseudonyms_;
  std::deque<Original> originals_;
  ExitStatus status_ = ExitStatus::good;
};

ExitStatus Run::all() {
  forEachReply(options_.replies, [&](ReplyInput const& input) { return read(input); });
  try {
    pseudonyms_.makeUp();
  } catch (InputFailure const& failure) {
    refuse("kovra", failure.status(), failure.what());
    originals_.clear();
  }
  std::vector<Copy> copies;
  for (Original const& original : originals_) {
    if (std::optional<Copy> copy = copyOf(original)) copies.push_back(std::move(*copy));
  }
  if (!copies.empty() && areNamesFree(copies)) {
    write(copies);
  } else {
    dropOutput();
  }
  return status_;
}

void Run::refuse(std::string const& name, ExitStatus status, std::string const& why, Place place) {
  complain(messagePrefix(name, place, "error") + why);
  status_ = worse(status_, status);
}

/// Several of them may be read at once.
Finish Run::read(ReplyInput const& input) {
  std::string const name = nameOf(input);
  auto const refused = [&](ExitStatus status, std::string const& why, Place place = {}) -> Finish {
    return [this, name, status, why, place] { refuse(name, status, why, place); };
  };
  if (input.failure != nullptr) return refused(input.failure->status(), input.failure->what());
  try {
    Decoding const decoding = decode(input.text);
    if (!decoding) {
      Refusal const refusal = decoding.refusal();
      return refused(ExitStatus::refused, refusal.message(), placeOf(refusal));
    }
    auto original = std::make_shared<Original>(
        Original{std::string(input.source), input.number, ReplyText(input.text), {}});
    original->pieces = piecesOf(original->text.text(), identities_);
    return [this, original] {
      collect(original->text.text(), original->pieces, pseudonyms_);
      originals_.push_back(std::move(*original));
    };
  } catch (TagError const& error) {
    return refused(ExitStatus::refused, "cannot be redacted: no tag that can be read at offset " +
                                            std::to_string(error.offset()));
  }
}

std::optional<Copy> Run::copyOf(Original const& original) {
  Redacted const copy = redacted(original.text.text(), original.pieces, pseudonyms_);
  std::string bytes = original.text.bytesOf(copy.text);
  Decoding const before = decode(original.text.bytesOf(original.text.text()));
  Decoding const after = decode(bytes);
  if (!Comparison(identities_, pseudonyms_, copy.text).isGood(before, after)) {
    refuse(original.name(), ExitStatus::refused,
           "cannot be redacted: the copy would not say the same");
    return {};
  }
  tellLeft(original, copy);
  return Copy{pathFor(original), std::move(bytes)};
}

/// Of each value that had to stay once, without the value, and not of thousands.
void Run::tellLeft(Original const& original, Redacted const& copy) {
  constexpr std::size_t most = 10;
  std::set<std::string> told;
  LineCounter lines(original.text.text());
  for (Redacted::Left const& left : copy.left) {
    if (!told.insert(left.pseudonym).second || told.size() > most) continue;
    complain(messagePrefix(original.name(), lines.placeOf(left.offset), "warning") +
             "what became " + left.pseudonym +
             " elsewhere is a name, a number or a word here, and stays");
  }
  if (told.size() <= most) return;
  complain(messagePrefix(original.name(), {}, "warning") + std::to_string(told.size() - most) +
           " more values stay where they are names, numbers or words");
}

/// Its own name, in which values are replaced as well.
std::string Run::pathFor(Original const& original) const {
  if (options_.folder.empty()) return "";
  std::string name = original.source.substr(original.source.rfind('/') + 1);
  if (original.source == standardInput) name = "stdin.xml";
  name = pseudonyms_.hidden(name);
  if (original.number != 0) {
    std::size_t const point = std::min(name.rfind('.'), name.size());
    name.insert(point, '-' + std::to_string(original.number));
  }
  return options_.folder + '/' + name;
}

bool isThere(std::string const& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

/// Before anything is written.
bool Run::areNamesFree(std::vector<Copy> const& copies) {
  std::set<std::string> names;
  bool areFree = true;
  auto const taken = [&](std::string const& path, std::string const& why) {
    refuse(path, ExitStatus::failed, why);
    areFree = false;
  };
  for (Copy const& copy : copies) {
    if (copy.path.empty()) continue;
    if (!names.insert(copy.path).second) {
      taken(copy.path, "would be the copy of several replies");
    } else if (!options_.overwrites && isThere(copy.path)) {
      taken(copy.path, "is there already; see --force");
    }
  }
  if (!options_.map.empty() && !options_.overwrites && isThere(options_.map)) {
    taken(options_.map, "is there already; see --force");
  }
  return areFree;
}

/// The map comes first: copies without it would be of no use to whoever wanted it.
void Run::write(std::vector<Copy> const& copies) {
  if (!options_.map.empty()) writePrivate(options_.map, map());
  for (Copy const& copy : copies) {
    if (copy.path.empty()) {
      print(copy.bytes);
    } else {
      writeWhole(copy.path, copy.bytes);
    }
  }
}

std::string Run::map() const {
  nlohmann::ordered_json all = {{"kovra", 1}, {"pseudonyms", nlohmann::ordered_json::array()}};
  for (Pseudonym const& pseudonym : pseudonyms_.all()) {
    all["pseudonyms"].push_back({{"group", nameOf(pseudonym.identity.group)},
                                 {"original", pseudonym.original},
                                 {"pseudonym", pseudonym.madeUp}});
  }
  return all.dump(2, ' ', true, nlohmann::json::error_handler_t::replace) + '\n';
}

/// What is replaced: members of records by the catalogue, and all else by the words of its name.
void printList(Options const& options) {
  std::set<Group> const kept = groupsOf(options.kept);
  Identities const identities(kept);
  std::vector<Identities::Listed> listed = identities.listed();
  std::stable_sort(listed.begin(), listed.end(),
                   [](auto const& a, auto const& b) { return a.group < b.group; });
  std::vector<std::vector<std::string>> rows;
  rows.reserve(listed.size());
  for (Identities::Listed const& member : listed) {
    rows.push_back({std::string(nameOf(member.group)), member.message, member.path});
  }
  print(columns(rows));
  print('\n' +
        wrapped("Elements and attributes that Kovra does not know, by the words of their names:",
                lineWidth(), 0) +
        '\n');
  std::size_t const indent = 9;
  for (IdentityRow const& row : identityRows()) {
    if (kept.count(row.group) != 0) continue;
    std::string line(nameOf(row.group));
    line.resize(indent, ' ');
    print(wrapped(line + row.words, lineWidth(), indent) + '\n');
  }
}

void describe(CLI::App& command, Options& options) {
  addReplies(command, options.replies);
  addOption(command, "--keep", options.kept,
            "Leave these groups as they are: serial, address,\n"
            "network, job; never secrets")
      .shows("GROUP,...")
      .isSplitAt(',')
      .isOneOf(keptNames());
  addOption(command, "--map", options.map,
            "Write which value became which into this file, as\n"
            "JSON, for you alone (mode 0600)")
      .shows("FILE");
  Option const folder = addOption(command, "--output-dir", options.folder,
                                  "Write each copy into this folder, under the name of\n"
                                  "its reply")
                            .shows("DIR")
                            .isFolder();
  addFlag(command, "--force", options.overwrites, "Replace files that are there");
  addFlag(command, "--list", options.lists, "Print what is replaced, and exit");
  addOutput(command);
  optionOf(command, "--output").excludes(folder);
  addFooter(command, R"(A copy has the bytes of its reply, but for keys, pass phrases, track data,
serial numbers, addresses, names of networks, and names of jobs and users. In
their place stand made-up values of the same form; one value has the same
everywhere in a run, in all replies and in the names of the copies' files, and
different ones have different ones. What has at least four characters is
replaced wherever else it stands, too: in comments, in unknown elements, behind
the document. Numbers and words that mean something else stay; that is told.

Values are known by what the catalogue says of their members, and elsewhere by
the words in the names of elements and attributes: see --list. What stands
under another name, and nowhere under such a one, is not known. Read the copy
before you send it.

A copy decodes to the same record but for what was replaced. A reply of which
that cannot be made is refused, and nothing of it is written.

Examples:
  kovra redact reply.xml >copy.xml
  kovra redact --keep serial -o copy.xml reply.xml
  kovra redact --output-dir to-send --map private.json replies/*.xml
  kovra redact --list

Exit status:
  0  all replies were copied
  1  some reply was refused; of the others there are copies all the same
  2  the command line is wrong; nothing was read
  3  some file could not be read or written, or is there already)");
}

}  // namespace

void addRedact(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options, &status] {
    if (options->lists) return printList(*options);
    if (options->replies.areSeveral() && options->folder.empty()) {
      refuseCommandLine("several replies need --output-dir");
    }
    tellWaiting(options->replies);
    status = Run(*options).all();
  });
}

}  // namespace Kovra::tool
