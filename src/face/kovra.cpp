#include "kovra.hpp"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "face/catalogue.hpp"
#include "face/plain_locale.hpp"
#include "face/refusal.hpp"
#include "face/results.hpp"
#include "face/source.hpp"
#include "face/survey.hpp"
#include "frame/entry.hpp"
#include "frame/few.hpp"
#include "frame/observer.hpp"

namespace Kovra {

namespace {

using detail::DecodingData;
using detail::FindingData;
using detail::ReadingData;
using detail::ReplyData;
using frame::Encoding;
using frame::Observer;

/// Which replies are wanted: all, that of a name, or those with a record of a type.
struct Wanted {
  std::string_view name = {};
  std::string_view record = {};

  bool isAll() const { return name.empty() && record.empty(); }
  bool takes(frame::MessageRow const& reply) const {
    return (name.empty() || reply.name == name) && (record.empty() || reply.record->name == record);
  }
  Messages messages() const {
    Messages found;
    std::copy_if(replies().begin(), replies().end(), std::back_inserter(found),
                 [this](frame::MessageRow const& reply) { return takes(reply); });
    return found;
  }
};

/// A reply that a document may be: one with a top-level element of it for a root.
struct Candidate {
  frame::MessageRow const* reply;
  frame::Element root;
};

/// No root has more readers.
using Candidates = frame::Few<Candidate, 4>;

Candidates candidates(frame::Reply const& text, Wanted const& wanted) {
  Candidates found;
  frame::Element const first = frame::firstElement(text.tree());
  if (!first) return found;
  bool const isAlone = !first.nextSibling();
  for (frame::MessageRow const& reply : isAlone ? repliesOf(first.name()) : replies()) {
    if (!wanted.takes(reply)) continue;
    frame::Element const root = isAlone ? first : text.root(reply.roots);
    if (root) found.push_back({&reply, root});
  }
  return found;
}

/// A text that can be read, with its tree, or why it cannot.
class Text {
 public:
  Text(std::string_view bytes, ReadOptions const& options)
      : source_(bytes, options.skipsTextBefore()),
        reply_(isReadable() ? source_.text() : std::string_view(), Encoding::utf8),
        usage_(reply_.tree().nodes().size(), reply_.tree().attributeCount()) {
    reply_.watch(usage_);
    if (!isReadable()) {
      refusal_ = refuseSource(source_);
    } else if (reply_.scan().fault != frame::Fault::none) {
      refusal_ = refuseText(source_, reply_.scan());
    }
  }

  /// Those of the replies that are wanted which it may be. Where there is none, it is refused.
  Candidates candidatesFor(Wanted const& wanted) {
    if (refusal_) return {};
    Candidates found = candidates(reply_, wanted);
    if (found.empty()) refuse(wanted);
    for (std::size_t i = 0; i < found.size(); ++i) found[i].root.use();
    return found;
  }

  frame::Tree const& tree() const { return reply_.tree(); }
  std::optional<FindingData>& refusal() { return refusal_; }
  std::string root() const {
    bool const isRead = isReadable() && reply_.scan().fault == frame::Fault::none;
    frame::Element const first = isRead ? frame::firstElement(tree()) : frame::Element();
    return first ? std::string(first.name()) : "";
  }
  std::vector<FindingData> notes(std::span<Observer const> observers) const {
    return notesOf(source_, reply_, usage_, observers);
  }

 private:
  bool isReadable() const { return source_.unreadable() == Source::Unreadable::no; }

  void refuse(Wanted const& wanted) {
    Messages const messages = wanted.messages();
    refusal_ = refuseRoot(source_, tree(), wanted.isAll() ? nullptr : &messages);
  }

  Source source_;
  frame::Reply reply_;
  frame::Usage usage_;
  std::optional<FindingData> refusal_;
};

// By name.

void readWith(Candidate const& candidate, Observer& observer, ReadingData& reading) {
  reading.message = candidate.reply;
  frame::AnyRecord const record(*candidate.reply->record);
  reading.result =
      candidate.reply->read(*candidate.reply, candidate.root, record.memory(), observer);
}

/// Of several readers of one root, those that made nothing of this reply are left out. All the
/// same, what they know is known, and their remarks count.
void keepThoseThatApply(std::vector<ReadingData>& readings) {
  auto const madeNothing = [](ReadingData const& reading) { return reading.record.empty(); };
  if (std::all_of(readings.begin(), readings.end(), madeNothing)) return;
  std::erase_if(readings, madeNothing);
}

/// Most roots have one reader, whose observer stands here.
void readOne(Candidate const& candidate, Text const& text, DecodingData& decoding) {
  ReadingData& reading = decoding.readings.emplace_back();
  Observer observer(text.tree(), reading.record);
  readWith(candidate, observer, reading);
  decoding.notes = text.notes({&observer, 1});
}

/// The word of the tables that is the root's name.
std::string_view knownRoot(Candidate const& candidate) {
  for (std::string_view const root : candidate.reply->roots) {
    if (root == candidate.root.name()) return root;
  }
  return {};
}

void readAll(Candidates const& found, Text const& text, DecodingData& decoding) {
  decoding.readings.resize(found.size());
  std::vector<Observer> observers;
  observers.reserve(found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    observers.emplace_back(text.tree(), decoding.readings[i].record);
    readWith(found[i], observers.back(), decoding.readings[i]);
  }
  decoding.notes = text.notes(observers);
  keepThoseThatApply(decoding.readings);
  for (std::size_t i = found.size(); i-- > 0;) {
    if (found[i].reply == decoding.readings.front().message) {
      decoding.knownRoot = knownRoot(found[i]);
    }
  }
}

// By type.

/// Reads as one message, of which the record, its trail and the notes are kept.
void readAs(Candidate const& candidate, Text const& text, ReplyData& reply) {
  reply.message = candidate.reply;
  reply.record.emplace(*candidate.reply->record);
  Observer observer(text.tree(), reply.said);
  reply.result =
      candidate.reply->read(*candidate.reply, candidate.root, reply.record->memory(), observer);
  reply.notes = text.notes({&observer, 1});
}

}  // namespace

Decoding decode(std::string_view bytes, std::string_view as, ReadOptions const& options) {
  PlainLocale const plain;
  auto const decoding = std::make_shared<DecodingData>();
  if (!as.empty() && findReply(as) == nullptr) {
    decoding->refusal = refuseMessage(as, replies());
  } else if (bytes.size() > frame::Tree::longestText) {
    decoding->refusal = refuseLength();
  } else {
    Text text(bytes, options);
    Candidates const found = text.candidatesFor({.name = as});
    if (found.empty()) {
      decoding->root = text.root();
      decoding->refusal = std::move(text.refusal());
    } else if (decoding->knownRoot = knownRoot(found[0]); found.size() == 1) {
      readOne(found[0], text, *decoding);
    } else {
      readAll(found, text, *decoding);
    }
  }
  return detail::FaceAccess::make<Decoding>(detail::Shared<DecodingData>(decoding));
}

Decoding decode(std::string_view text, std::string_view as) {
  return decode(text, as, ReadOptions());
}

detail::AnyReply::AnyReply(std::string_view bytes, std::string_view record,
                           ReadOptions const& options) {
  PlainLocale const plain;
  auto const reply = std::make_shared_for_overwrite<ReplyData>();
  if (bytes.size() > frame::Tree::longestText) {
    reply->refusal = std::make_unique<FindingData>(refuseLength());
  } else {
    Text text(bytes, options);
    // Of several messages with such a record each has a root of its own.
    Candidates const found = text.candidatesFor({.record = record});
    if (found.empty()) {
      reply->refusal = std::make_unique<FindingData>(*std::move(text.refusal()));
    } else {
      readAs(found[0], text, *reply);
    }
  }
  data_ = reply;
}

std::vector<std::string> vocabulary() {
  frame::Outline words;
  for (frame::MessageRow const& reply : replies()) {
    frame::outlineOf(reply, words);
  }
  return {words.begin(), words.end()};
}

std::string version() {
  return KOVRA_VERSION;
}

}  // namespace Kovra
