#include "replies.hpp"

#include <unistd.h>

#include <algorithm>
#include <kovra.hpp>
#include <memory>
#include <new>
#include <thread>
#include <utility>

#include "findings.hpp"
#include "input.hpp"
#include "messages.hpp"
#include "options.hpp"
#include "output.hpp"
#include "pipeline.hpp"
#include "suggest.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

// So much goes to a worker at once: with less the handing over costs more than the work, with more
// the last worker is busy for long.
constexpr std::size_t batchBytes = 1 << 18;
constexpr std::size_t batchReplies = 512;
constexpr std::size_t batchFiles = 16;

/// A reply on its way to a worker.
struct Item {
  std::string source;
  std::size_t number = 0;
  std::size_t begin = 0;  ///< of its text in the batch
  std::size_t length = 0;
  bool isFile = false;  ///< it is read only when its turn has come
  std::shared_ptr<InputFailure const> failure = nullptr;
};

struct Batch {
  std::vector<Item> items;
  std::string text;

  bool isFull() const {
    return text.size() >= batchBytes ||
           items.size() >= (items.back().isFile ? batchFiles : batchReplies);
  }
};

/// Where replies go that were found: each to the work.
class Receiver {
 public:
  virtual ~Receiver() = default;
  /// The text is there until it returns.
  virtual void file(std::string const& path) = 0;
  virtual void reply(ReplyInput const& input) = 0;
  /// Nothing comes before the tool has waited.
  virtual void pause() = 0;
  virtual void end() = 0;
};

/// Reads a file and works on it.
Finish workOnFile(Work const& work, InputReader& reader, std::string const& path) try {
  return work({path, 0, reader.read(path), nullptr});
} catch (InputFailure const& failure) {
  return work({path, 0, {}, &failure});
} catch (std::bad_alloc const&) {
  InputFailure const failure(ExitStatus::refused, "not enough memory");
  return work({path, 0, {}, &failure});
}

/// One after the other.
class Sequence : public Receiver {
 public:
  Sequence(Work const& work, std::size_t maxSize) : work_(work), reader_(maxSize) {}

  void file(std::string const& path) override {
    if (path == standardInput) flushOutput();
    workOnFile(work_, reader_, path)();
  }
  void reply(ReplyInput const& input) override { work_(input)(); }
  void pause() override { flushOutput(); }
  void end() override {}

 private:
  Work const& work_;
  InputReader reader_;
};

/// Several at once, in batches.
class Crowd : public Receiver {
 public:
  Crowd(Work const& work, std::size_t maxSize, unsigned workers)
      : work_(work), maxSize_(maxSize), pipeline_(workers, flushOutput) {}

  void file(std::string const& path) override {
    batch_.items.push_back({path, 0, 0, 0, true});
    if (batch_.isFull()) pause();
  }
  void reply(ReplyInput const& input) override {
    Item item{std::string(input.source), input.number, batch_.text.size(), input.text.size()};
    if (input.failure != nullptr) item.failure = std::make_shared<InputFailure>(*input.failure);
    batch_.text += input.text;
    batch_.items.push_back(std::move(item));
    if (batch_.isFull()) pause();
  }
  void pause() override {
    if (batch_.items.empty()) return;
    auto batch = std::make_shared<Batch>(std::exchange(batch_, {}));
    pipeline_.add([this, batch] { return workOn(*batch); });
  }
  void end() override {
    pause();
    pipeline_.finish();
  }

 private:
  Finish workOn(Batch const& batch) {
    auto finishes = std::make_shared<std::vector<Finish>>();
    InputReader reader(maxSize_);
    for (Item const& item : batch.items) {
      std::string_view const text = std::string_view(batch.text).substr(item.begin, item.length);
      finishes->push_back(item.isFile
                              ? workOnFile(work_, reader, item.source)
                              : work_({item.source, item.number, text, item.failure.get()}));
    }
    return [finishes] {
      for (Finish const& finish : *finishes) finish();
    };
  }

  Work const& work_;
  std::size_t maxSize_;
  Batch batch_;
  Pipeline pipeline_;
};

/// Finds the replies that the options name.
class Finder {
 public:
  Finder(ReplyOptions const& options, Receiver& receiver)
      : options_(options), receiver_(receiver) {}

  void all() {
    for (std::string const& path : options_.files) input(path);
    if (!options_.list.empty()) {
      listed();
    } else if (options_.files.empty()) {
      input(std::string(standardInput));
    }
    receiver_.end();
  }

 private:
  void fail(std::string const& path, InputFailure const& failure) {
    receiver_.reply({path, 0, {}, &failure});
  }

  void input(std::string const& path) try {
    if (path == standardInput && options_.list == standardInput) {
      throw InputFailure(ExitStatus::failed, "holds the names of files already");
    }
    if (options_.division == Division::none) return receiver_.file(path);
    stream(path);
  } catch (InputFailure const& failure) {
    fail(path, failure);
  }

  void stream(std::string const& path) {
    ReplyStream replies(path, options_.division, options_.maxSize, [&] { receiver_.pause(); });
    InputFailure const tooLarge = InputReader::tooLarge(options_.maxSize);
    for (ReplyStream::Item item; replies.next(item);) {
      receiver_.reply({path, item.number, item.text, item.isTooLarge ? &tooLarge : nullptr});
    }
  }

  void listed() try {
    NameList list(options_.list, options_.nullSeparated ? '\0' : '\n', [&] { receiver_.pause(); });
    for (std::string name; list.next(name);) input(name);
  } catch (InputFailure const& failure) {
    fail(options_.list, failure);
  }

  ReplyOptions const& options_;
  Receiver& receiver_;
};

unsigned workersOf(ReplyOptions const& options) {
  return options.jobs != 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency());
}

/// Empty for the name of a message that is read, else the complaint: with all names, or with those
/// that may have been meant.
std::string checkMessage(std::string const& name) {
  Refusal const refusal = decode({}, name).refusal();
  if (kindOf(refusal) != "unknown_message") return {};
  std::string const meant = suggestion(name, messageNames(isReadMessage));
  return meant.empty() ? refusal.message() : "unknown message \"" + name + "\"." + meant;
}

}  // namespace

std::string nameOf(ReplyInput const& input) {
  std::string name = inputName(input.source);
  if (input.number != 0) name += '#' + std::to_string(input.number);
  return name;
}

void forEachReply(ReplyOptions const& options, Work const& work) {
  unsigned const workers = workersOf(options);
  std::unique_ptr<Receiver> receiver;
  if (workers == 1) {
    receiver = std::make_unique<Sequence>(work, options.maxSize);
  } else {
    receiver = std::make_unique<Crowd>(work, options.maxSize, workers);
  }
  Finder(options, *receiver).all();
}

void addReplies(CLI::App& command, ReplyOptions& options) {
  addOption(command, "FILE", options.files, "Replies; '-' or none at all: standard input")
      .shows(" ");
  Option const list = addOption(command, "--files-from", options.list,
                                "Then the replies that this file names, one on each\n"
                                "line; '-': standard input")
                          .shows("FILE");
  addFlag(command, "-0,--null", options.nullSeparated,
          "Names in that file end with a NUL byte, not with the line")
      .shows(" ")
      .needs(list);
  Option const stream = addFlag(
      command, "--stream", [&] { options.division = Division::reply; },
      "Each input holds replies, one after the other, with or\n"
      "without NUL bytes between them; each is taken as soon\n"
      "as it is there");
  addFlag(
      command, "--lines", [&] { options.division = Division::line; },
      "Each input holds a reply a line, as it is or as a JSON\nstring")
      .excludes(stream);
  addOption(command, "-j,--jobs", options.jobs,
            "How many replies are worked on at once (default: 1;\n0: one a core)")
      .shows("N")
      .isWithin(0, 1024);
  addMaxSize(command, options.maxSize, "Refuse larger replies");
}

void addAs(CLI::App& command, std::string& message, std::string const& verb) {
  addOption(command, "--as", message, verb + " as this document only; 'kovra list' has the names")
      .shows("NAME")
      .passes({checkMessage, messageNames(isReadMessage)});
}

void tellWaiting(ReplyOptions const& options) {
  std::vector<std::string> const& files = options.files;
  bool const isNamed = std::find(files.begin(), files.end(), standardInput) != files.end();
  bool const isLeft = files.empty() && options.list.empty();
  if (!(isNamed || isLeft) || !isTerminal(STDIN_FILENO)) return;
  complain("kovra: reading a reply from the terminal; Ctrl-D ends it");
}

}  // namespace Kovra::tool
