#include "sample.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "messages.hpp"
#include "oddities.hpp"
#include "options.hpp"
#include "output.hpp"
#include "suggest.hpp"

namespace Kovra::tool {

namespace {

struct Options {
  std::string message;
  std::vector<std::string> wishes;
  SampleOptions sample;
  std::uint64_t seed = 1;
  std::uint64_t count = 1;
};

constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

Message messageNamed(std::string const& name) {
  std::vector<Message> const all = messages();
  return *std::find_if(all.begin(), all.end(),
                       [&](Message const& message) { return message.name() == name; });
}

/// What somebody asks for is a mistake on the command line where no reply can say it.
[[noreturn]] void refuse(std::string const& path, std::string const& why) {
  refuseCommandLine("--set " + path + ": " + why);
}

bool isControl(char letter) {
  auto const byte = static_cast<unsigned char>(letter);
  return byte < ' ' || byte == 0x7f;
}

void addWish(std::string const& given, Wishes& wishes) {
  std::size_t const equals = given.find('=');
  if (equals == given.npos || equals == 0) refuse(given, "expected PATH=VALUE");
  bool const hasControls =
      std::any_of(given.begin() + static_cast<std::ptrdiff_t>(equals), given.end(), isControl);
  if (hasControls) refuse(given.substr(0, equals), "XML cannot carry control characters");
  bool const isNew = wishes.emplace(given.substr(0, equals), given.substr(equals + 1)).second;
  if (!isNew) refuse(given.substr(0, equals), "it is set already");
}

void checkPaths(Sample const& sample, Wishes const& wishes) {
  std::vector<std::string> const told(sample.told.begin(), sample.told.end());
  for (auto const& [path, value] : wishes) {
    if (sample.told.find(path) != sample.told.end()) continue;
    refuse(path, "no reply tells such a member." + suggestion(path, told));
  }
}

/// Did the text say what was asked for? Blanks around it get lost.
void checkTexts(Decoding const& decoding, Wishes const& wishes) {
  if (decoding.readings().empty()) return;
  Reading const reading = decoding.readings().front();
  for (auto const& [path, value] : wishes) {
    Value const* const found = reading.record().findAt(path);
    bool const isLost = found != nullptr && found->isText() && found->asText() != value;
    if (isLost) refuse(path, "a reply cannot say this text");
  }
}

void check(Message const& message, Sample const& sample, SampleOptions const& options) {
  checkPaths(sample, options.wishes);
  if (options.wishes.empty()) return;
  Decoding const decoding = decode(sample.text, message.name());
  std::string const path = options.wishes.begin()->first;
  if (!decoding) refuse(path, decoding.refusal().message());
  if (options.isOdd) return;
  if (!decoding.notes().empty()) refuse(path, decoding.notes().front().message());
  checkTexts(decoding, options.wishes);
}

/// Replies to the same wishes are all told of when the first one is not as it should be.
void printSamples(Options const& options) {
  Message const message = messageNamed(options.message);
  for (std::uint64_t i = 0; i < options.count; ++i) {
    Sample const sample = sampleOf(message, options.seed + i, options.sample);
    check(message, sample, options.sample);
    print(sample.text);
  }
}

void describe(CLI::App& command, Options& options) {
  addOption(command, "MESSAGE", options.message,
            "What is to be replied; 'kovra list' has the names")
      .shows(" ")
      .isRequired()
      .passes(isMessage(isReadMessage));
  addOption(command, "--seed", options.seed,
            "Which reply; the same for the same number (default: 1)")
      .shows("N");
  addOption(command, "--count", options.count,
            "So many replies, one after the other, of the seeds from\nthat one on (default: 1)")
      .shows("N")
      .isWithin(1, 1000000000);
  addOption(command, "--set", options.wishes,
            "The member at this path says that; may be given again.\n"
            "Paths are those of the record")
      .shows("PATH=VALUE")
      .takesOne();
  addFlag(command, "--odd", options.sample.isOdd,
          "A reply that no printer should send, and that is read\nall the same");
  addOutput(command);
  addFooter(command,
            R"(Makes a reply for those who have no printer at hand: with every member that a
reply of this kind can tell and with likely values. All of them are invented;
addresses are from the ranges for documentation. Such a reply is decoded without
a note. One that is --odd has unknown elements and words, repeated, empty and
deep elements, numbers at and beyond their bounds, texts that are too long,
comments, CDATA sections and the like; it is decoded with notes, and never
refused.

A setting is set by its path, or by those of its parts: lcd_contrast=5 or
lcd_contrast.max=9. A flag takes the printer's word for it, and so does a
keyword.

Examples:
  kovra sample general-status | kovra decode
  kovra sample job-list --seed 7 --set 'jobs[1].uuid=2f1c'
  kovra sample configuration --set wireless.ssid=Office -o reply.xml
  kovra sample media --odd --count 1000 | kovra decode --stream --format jsonl

Exit status:
  0  the replies were printed
  2  the command line is wrong, or no reply can say what was asked for
  3  the output could not be written)");
}

}  // namespace

Sample sampleOf(Message const& message, std::uint64_t seed, SampleOptions const& options) {
  Random random(seed);
  LikelyTexts const likely = likelyTexts(message);
  Sampler sampler(options.wishes, likely, random);
  Node root = sampler.reply(message.root());
  std::string begin = declaration;
  if (options.isOdd) {
    root.name = random.oneOf(message.roots());
    makeOdd(root, random);
    begin = oddProlog(random);
  }
  return {begin + printed(root), sampler.told()};
}

void addSample(CLI::App& command, ExitStatus&) {
  auto const options = std::make_shared<Options>();
  describe(command, *options);
  addWork(command, [options] {
    for (std::string const& wish : options->wishes) addWish(wish, options->sample.wishes);
    printSamples(*options);
  });
}

}  // namespace Kovra::tool
