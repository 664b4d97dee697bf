#include "diff.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <kovra.hpp>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "changes.hpp"
#include "findings.hpp"
#include "input.hpp"
#include "max_size.hpp"
#include "options.hpp"
#include "output.hpp"
#include "patch.hpp"
#include "printable.hpp"
#include "replies.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  std::vector<std::string> files;
  std::string format = "text";
  std::string as;
  bool showSecrets = false;
  std::size_t maxSize = defaultMaxSize;
};

/// A record, and which message's it is. Of a record alone nobody knows that.
struct Said {
  std::string document;
  Value record;
};

/// All that one input says.
struct Side {
  std::string name;
  std::string root;  ///< empty where it is not told
  std::vector<Said> said;

  Said const* find(std::string_view document) const {
    auto const found = std::find_if(said.begin(), said.end(), [&](Said const& reading) {
      return reading.document == document;
    });
    return found == said.end() ? nullptr : &*found;
  }
};

/// An input that cannot be compared, and why: a line for standard error.
class Refused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] void refuse(std::string const& name, Place place, std::string const& why) {
  throw Refused(messagePrefix(name, place, "error") + why);
}

/// JSON does not tell what is a secret; the catalogue does.
void markSecrets(std::vector<MemberDescription> const& members, Value& record) {
  for (MemberDescription const& member : members) {
    Value* const value = record.find(member.name());
    if (value == nullptr) continue;
    std::vector<MemberDescription> const inner = member.members();
    if (member.isSecret()) value->markSecret();
    markSecrets(inner, *value);
    for (Value& item : value->items()) {
      if (member.isSecret()) item.markSecret();
      markSecrets(inner, item);
    }
  }
}

/// A record that may be any message's has the secrets of all.
void markSecrets(std::string_view document, Value& record) {
  for (Message const& message : messages()) {
    if (document.empty() || message.name() == document) markSecrets(message.members(), record);
  }
}

Side replyOf(std::string const& name, std::string_view text, std::string const& as) {
  Decoding const decoding = decode(text, as);
  if (!decoding) {
    Refusal const refusal = decoding.refusal();
    refuse(name, placeOf(refusal), refusal.message());
  }
  Side side{name, decoding.root(), {}};
  for (Reading const& reading : decoding.readings()) {
    side.said.push_back({reading.message(), reading.record()});
  }
  return side;
}

/// What `decode --format json` prints, or a record alone.
Side jsonOf(std::string const& name, std::string_view text, std::string const& as) {
  Value whole;
  try {
    whole = Value::fromJson(text);
  } catch (JsonError const& error) {
    refuse(name, {error.line(), error.column()}, error.what());
  }
  if (!whole.isRecord()) refuse(name, {}, "holds no record");
  Value const* const readings = whole.find("readings");
  Side side{name, "", {}};
  if (readings == nullptr) {
    if (whole.find("kovra") != nullptr) refuse(name, {}, "holds no reading");
    side.said.push_back({as, std::move(whole)});
    return side;
  }
  if (Value const* const root = whole.find("root")) side.root = root->asText("");
  for (Value const& reading : readings->items()) {
    Value const* const document = reading.find("document");
    Value const* const record = reading.find("record");
    bool const isReading = document != nullptr && document->isText() && record != nullptr;
    if (!isReading || !record->isRecord()) refuse(name, {}, "holds a reading without a record");
    std::string const called(document->asText());
    if (as.empty() || called == as) side.said.push_back({called, *record});
  }
  if (side.said.empty()) {
    refuse(name, {}, as.empty() ? "holds no reading" : "holds no reading of " + as);
  }
  return side;
}

Side sideOf(std::string const& path, Options const& options) {
  std::string const name = inputName(path);
  try {
    InputReader reader(options.maxSize);
    std::string_view const text = reader.read(path);
    std::string_view bare = text.substr(text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0);
    bare.remove_prefix(std::min(bare.find_first_not_of(" \t\r\n"), bare.size()));
    bool const isJson = bare.substr(0, 1) == "{";
    return isJson ? jsonOf(name, text, options.as) : replyOf(name, text, options.as);
  } catch (InputFailure const& failure) {
    refuse(name, {}, failure.what());
  } catch (std::bad_alloc const&) {
    refuse(name, {}, "not enough memory");
  }
}

/// What both say of one message. Where one of them says nothing, that is an empty record.
struct Pair {
  std::string document;
  Value before;
  Value after;
};

/// A record alone is what the other side has, where that is one.
void nameAlone(Side& alone, Side const& other) {
  if (!alone.said[0].document.empty()) return;
  if (other.said.size() > 1) {
    refuse(alone.name, {}, "does not tell its document; choose one with --as");
  }
  alone.said[0].document = other.said[0].document;
}

std::vector<Pair> pairsOf(Side& a, Side& b) {
  nameAlone(a, b);
  nameAlone(b, a);
  for (Side* const side : {&a, &b}) {
    for (Said& said : side->said) markSecrets(said.document, said.record);
  }
  std::vector<Pair> pairs;
  Value const nothing = Value::object();
  for (Said const& said : a.said) {
    Said const* const other = b.find(said.document);
    pairs.push_back({said.document, said.record, other != nullptr ? other->record : nothing});
  }
  for (Said const& said : b.said) {
    if (a.find(said.document) == nullptr) pairs.push_back({said.document, nothing, said.record});
  }
  return pairs;
}

std::string textOf(std::vector<Pair> const& pairs, Secrets secrets) {
  std::string text;
  for (Pair const& pair : pairs) {
    std::string const lines = shownChanges(changes(pair.before, pair.after), secrets);
    if (!lines.empty() && pairs.size() > 1) {
      text += styled(Style::heading, printable(pair.document) + ':') + '\n';
    }
    text += lines;
  }
  return text;
}

std::string patchOf(Pair const& pair, Secrets secrets) {
  std::vector<Change> const all = changes(pair.before, pair.after);
  for (Change const& change : all) {
    if (change.kind != Change::Kind::masked) continue;
    complain("kovra: warning: " + change.path + ": masked, not compared");
  }
  Patch const patch = patchOf(all, secrets);
  for (std::string const& path : patch.leftOut) {
    complain("kovra: warning: " + path + ": a secret, left out of the patch; see --show-secrets");
  }
  return patch.text;
}

bool isDifferent(Pair const& pair) {
  std::vector<Change> const all = changes(pair.before, pair.after);
  return std::any_of(all.begin(), all.end(),
                     [](Change const& change) { return change.kind != Change::Kind::masked; });
}

ExitStatus compareFiles(Options const& options) {
  Secrets const secrets = options.showSecrets ? Secrets::shown : Secrets::masked;
  Side a = sideOf(options.files[0], options);
  Side b = sideOf(options.files[1], options);
  bool const areRootsKnown = !a.root.empty() && !b.root.empty();
  if (areRootsKnown && a.root != b.root) {
    refuse(b.name, {}, "found root <" + b.root + ">; expected <" + a.root + ">, as in " + a.name);
  }
  std::vector<Pair> const pairs = pairsOf(a, b);
  if (options.format == "text") {
    print(textOf(pairs, secrets));
  } else if (pairs.size() > 1) {
    refuse(a.name, {}, "holds several documents; choose one of them with --as");
  } else {
    print(patchOf(pairs.front(), secrets));
  }
  bool const differ = std::any_of(pairs.begin(), pairs.end(), isDifferent);
  return differ ? ExitStatus::refused : ExitStatus::good;
}

void describe(CLI::App& command, Options& options) {
  addOption(command, "FILE", options.files,
            "Two replies, or what 'decode --format json' prints\n"
            "of them; one may be '-': standard input")
      .shows(" ")
      .isRequired()
      .takesJust(2);
  addOption(command, "--format", options.format, "What to print: text (default) or json")
      .shows("FORMAT")
      .isOneOf({"text", "json"});
  addAs(command, options.as, "Read both");
  addFlag(command, "--show-secrets", options.showSecrets,
          "Show keys, pass phrases and track data, not only\n"
          "that they differ");
  addMaxSize(command, options.maxSize, "Refuse larger files");
  addOutput(command);
  addColor(command);
  addFooter(command,
            R"(Compares what two replies say, member by member, and not their bytes. Entries of
lists are compared by their numbers. A file that begins with { is JSON.

Formats:
  text   a line for each value that is not the same:
           ~ printer_state: ready (1) -> offline (7)
           ~ lcd_contrast: 40 [0..63] -> 45 [0..63]
           + wireless.ssid: "Office"                    only the second has it
           - error: 3                                   only the first has it
           ! error: a whole number 3 -> a text "3"      it is something else
           ~ wireless.key: differ                       a secret
           ? wireless.key: not compared, masked in the first
  json   a patch (RFC 6902) that makes the second record of the first; secrets
         are left out of it, and a message names each, unless --show-secrets is
         given

Examples:
  kovra diff before.xml after.xml
  kovra diff before.json after.xml
  printer-query status | kovra diff yesterday.xml -
  kovra diff --format json --show-secrets before.xml after.xml >patch.json

Exit status:
  0  they say the same
  1  they do not
  2  the command line is wrong; nothing was read
  3  a file could not be read or was refused, the roots are not the same, or the
     output could not be written)");
}

}  // namespace

void addDiff(CLI::App& command, ExitStatus& status) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options, &status] {
    if (options->files[0] == standardInput && options->files[1] == standardInput) {
      refuseCommandLine("only one of the files can be standard input");
    }
    try {
      status = compareFiles(*options);
    } catch (Refused const& refused) {
      dropOutput();
      complain(refused.what());
      status = ExitStatus::failed;
    }
  });
}

}  // namespace Kovra::tool
