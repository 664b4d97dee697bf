#include "kovra.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "face/catalogue.hpp"
#include "face/refusal.hpp"
#include "frame/entry.hpp"
#include "frame/observer.hpp"
#include "frame/places.hpp"

namespace Kovra {

namespace {

/// Which replies a document may be: those with one of its top-level elements for a root.
struct Candidate {
  frame::MessageRow const* reply;
  frame::Element root;
};

std::vector<Candidate> candidates(frame::Reply const& text, std::string_view as) {
  std::vector<Candidate> found;
  for (frame::MessageRow const& reply : replies()) {
    if (!as.empty() && reply.name != as) continue;
    if (frame::Element const root = text.root(reply.roots)) found.push_back({&reply, root});
  }
  return found;
}

/// A reading together with what its observer has to say.
struct Watched {
  std::unique_ptr<Reading> reading;
  std::unique_ptr<frame::Observer> observer;
};

Watched watch(Candidate const& candidate) {
  auto reading = std::make_unique<Reading>();
  reading->document = candidate.reply->name;
  auto observer = std::make_unique<frame::Observer>(reading->record);
  frame::AnyRecord const record(*candidate.reply->record);
  reading->result =
      candidate.reply->read(*candidate.reply, candidate.root, record.memory(), *observer);
  return {std::move(reading), std::move(observer)};
}

bool recognisedNothing(Watched const& watched) {
  return watched.reading->record.members.empty();
}

/// Of several readers of one root, those that made nothing of this reply are left out.
void keepThoseThatApply(std::vector<Watched>& all) {
  if (std::all_of(all.begin(), all.end(), recognisedNothing)) return;
  std::erase_if(all, recognisedNothing);
}

using Remark = frame::Observer::Remark;

/// An element is unknown only when no reading knows it.
bool isKnown(Remark const& remark, std::vector<Watched> const& all) {
  return remark.note.kind == Note::Kind::unknownElement &&
         std::any_of(all.begin(), all.end(), [&](Watched const& watched) {
           return watched.observer->knows(remark.element);
         });
}

/// What all readings remark, each once, in the order of the text.
std::vector<Remark const*> remarksOf(std::vector<Watched> const& all) {
  std::vector<Remark const*> remarks;
  std::set<std::pair<std::uint32_t, Note::Kind>> said;
  for (Watched const& watched : all) {
    for (Remark const& remark : watched.observer->remarks()) {
      if (!isKnown(remark, all) && said.emplace(remark.element.index(), remark.note.kind).second) {
        remarks.push_back(&remark);
      }
    }
  }
  std::stable_sort(remarks.begin(), remarks.end(), [](Remark const* a, Remark const* b) {
    return a->element.offset() < b->element.offset();
  });
  return remarks;
}

std::vector<Note> notesOf(std::vector<Watched> const& all, frame::Places places) {
  std::vector<Note> notes;
  for (Remark const* const remark : remarksOf(all)) {
    notes.push_back(remark->note);
    notes.back().place = places.of(remark->element.offset());
  }
  std::size_t unlisted = 0;
  for (Watched const& watched : all) unlisted += watched.observer->unlisted();
  if (unlisted > 0) {
    notes.emplace_back().kind = Note::Kind::unlisted;
    notes.back().kept = std::to_string(unlisted);
  }
  return notes;
}

void readAll(std::vector<Candidate> const& found, frame::Places const& places, Decoding& decoding) {
  std::vector<Watched> all;
  for (Candidate const& candidate : found) all.push_back(watch(candidate));
  keepThoseThatApply(all);
  decoding.notes = notesOf(all, places);
  for (Watched& watched : all) decoding.readings.push_back(std::move(*watched.reading));
  decoding.root = found.front().root.name();
  decoding.status = Decoding::Status::decoded;
}

}  // namespace

std::vector<Document> documents() {
  std::vector<Document> all;
  for (frame::MessageRow const& reply : replies()) {
    Document& document = all.emplace_back();
    document.name = reply.name;
    document.title = reply.title;
    document.roots.assign(reply.roots.begin(), reply.roots.end());
  }
  return all;
}

std::vector<std::string> vocabulary() {
  frame::Outline words;
  for (frame::MessageRow const& reply : replies()) {
    frame::outlineOf(reply, words);
  }
  return {words.begin(), words.end()};
}

Decoding decode(char const* text, std::size_t length, std::string const& as) {
  if (!as.empty() && findReply(as) == nullptr) return refuseName(as);
  std::string_view const bytes = text != nullptr ? std::string_view(text, length) : "";
  if (std::size_t const nul = bytes.find('\0'); nul != bytes.npos) return refuseNul(bytes, nul);
  frame::Reply const reply(bytes.data(), bytes.size());
  if (reply.scan().fault != frame::Fault::none) return refuseText(bytes, reply.scan());

  frame::Places places(bytes, reply.scan());
  std::vector<Candidate> const found = candidates(reply, as);
  if (found.empty()) return refuseRoot(reply.tree(), places, as);

  Decoding decoding;
  readAll(found, places, decoding);
  return decoding;
}

}  // namespace Kovra
