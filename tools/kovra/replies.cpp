#include "replies.hpp"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <kovra.hpp>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
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

/// A piece of a batch's text.
struct Stretch {
  std::size_t begin = 0;
  std::size_t length = 0;
};

/// A reply on its way to a worker.
struct Item {
  Stretch source;
  std::size_t number = 0;
  Stretch text;
  bool isFile = false;  ///< it is read only when its turn has come
  std::shared_ptr<InputFailure const> failure = nullptr;
};

/// Replies that go to a worker together. It is used again and again, with the memory that it has.
class Batch {
 public:
  void addFile(std::string const& path) { items_.push_back({sourceOf(path), 0, {}, true}); }
  void addReply(ReplyInput const& input) {
    Item item{sourceOf(input.source), input.number, stretchOf(input.text)};
    if (input.failure != nullptr) item.failure = std::make_shared<InputFailure>(*input.failure);
    items_.push_back(std::move(item));
  }

  std::vector<Item> const& items() const { return items_; }
  std::string_view operator[](Stretch const& stretch) const {
    return std::string_view(text_).substr(stretch.begin, stretch.length);
  }
  bool isFull() const {
    return text_.size() >= batchBytes ||
           items_.size() >= (items_.back().isFile ? batchFiles : batchReplies);
  }
  /// Was a reply in it so large that its memory is not worth keeping?
  bool isLarge() const { return text_.capacity() > 4 * batchBytes; }
  void clear() {
    items_.clear();
    text_.clear();
  }

 private:
  Stretch stretchOf(std::string_view text) {
    Stretch const stretch{text_.size(), text.size()};
    text_ += text;
    return stretch;
  }
  /// Most replies have that of the one before.
  Stretch sourceOf(std::string_view source) {
    bool const isSame = !items_.empty() && (*this)[items_.back().source] == source;
    return isSame ? items_.back().source : stretchOf(source);
  }

  std::vector<Item> items_;
  std::string text_;
};

/// Batches that are used again.
class Batches {
 public:
  std::shared_ptr<Batch> take() {
    std::lock_guard const lock(mutex_);
    if (spare_.empty()) return std::make_shared<Batch>();
    std::shared_ptr<Batch> batch = std::move(spare_.back());
    spare_.pop_back();
    return batch;
  }
  void giveBack(std::shared_ptr<Batch> batch) {
    if (batch->isLarge()) return;
    batch->clear();
    std::lock_guard const lock(mutex_);
    spare_.push_back(std::move(batch));
  }

 private:
  std::mutex mutex_;
  std::vector<std::shared_ptr<Batch>> spare_;
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

/// Works on a reply. One that fails on the way, or takes more memory than there is, cannot be read.
Finish workOn(Work const& work, ReplyInput const& input) try {
  return work(input);
} catch (InputFailure const& failure) {
  return work({input.source, input.number, {}, &failure});
} catch (std::bad_alloc const&) {
  InputFailure const failure(ExitStatus::refused, "not enough memory");
  return work({input.source, input.number, {}, &failure});
}

/// Reads a file and works on it.
Finish workOnFile(Work const& work, InputReader& reader, std::string const& path) {
  Work const read = [&](ReplyInput const& input) {
    if (input.failure != nullptr) return work(input);
    return work({path, 0, reader.read(path), nullptr});
  };
  return workOn(read, {path, 0, {}, nullptr});
}

/// One after the other.
class Sequence : public Receiver {
 public:
  Sequence(Work const& work, std::size_t maxSize) : work_(work), reader_(maxSize) {}

  void file(std::string const& path) override {
    if (path == standardInput) flushOutput();
    workOnFile(work_, reader_, path)();
  }
  void reply(ReplyInput const& input) override { workOn(work_, input)(); }
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
      : work_(work), maxSize_(maxSize), batch_(batches_.take()), pipeline_(workers, flushOutput) {}

  void file(std::string const& path) override {
    bool const mayWait = path == standardInput;
    if (mayWait) pause();
    batch_->addFile(path);
    if (mayWait || batch_->isFull()) pause();
  }
  void reply(ReplyInput const& input) override {
    batch_->addReply(input);
    if (batch_->isFull()) pause();
  }
  void pause() override {
    if (batch_->items().empty()) return;
    pipeline_.add([this, batch = std::exchange(batch_, batches_.take())](Pipeline::Turn& turn) {
      workThrough(*batch, turn);
      batches_.giveBack(batch);
    });
  }
  void end() override {
    pause();
    pipeline_.finish();
  }

 private:
  void workThrough(Batch const& batch, Pipeline::Turn& turn) const {
    std::optional<InputReader> reader;
    for (Item const& item : batch.items()) {
      if (item.isFile) {
        if (!reader) reader.emplace(maxSize_);
        turn.finish(workOnFile(work_, *reader, std::string(batch[item.source])));
      } else {
        ReplyInput const input{batch[item.source], item.number, batch[item.text],
                               item.failure.get()};
        turn.finish(workOn(work_, input));
      }
    }
  }

  Work const& work_;
  std::size_t maxSize_;
  Batches batches_;
  std::shared_ptr<Batch> batch_;
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

bool forEachReply(ReplyOptions const& options, Work const& given) {
  std::atomic<bool> isAnyRead = false;
  std::atomic<bool> isAnyLost = false;
  Work const work = [&](ReplyInput const& input) {
    bool const isLost = input.failure != nullptr && input.failure->status() == ExitStatus::failed;
    if (input.failure == nullptr) isAnyRead = true;
    if (isLost) isAnyLost = true;
    return given(input);
  };
  unsigned const workers = workersOf(options);
  std::unique_ptr<Receiver> receiver;
  if (workers == 1) {
    receiver = std::make_unique<Sequence>(work, options.maxSize);
  } else {
    receiver = std::make_unique<Crowd>(work, options.maxSize, workers);
  }
  Finder(options, *receiver).all();
  return isAnyRead || !isAnyLost;
}

void addReplies(CLI::App& command, ReplyOptions& options) {
  addOption(command, "FILE", options.files, "Replies; '-' or none at all: standard input")
      .shows(" ");
  Option const list = addOption(command, "--files-from", options.list,
                                "Then the replies that this file names, one on each\n"
                                "line; '-': standard input")
                          .shows("FILE");
  addFlag(command, "-0,--null", options.nullSeparated,
          "Names in that file end with NUL bytes, not with lines")
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
