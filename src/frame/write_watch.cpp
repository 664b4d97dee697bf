#include "frame/write_watch.hpp"

#include "frame/assign.hpp"
#include "frame/kinds.hpp"
#include "frame/row.hpp"

namespace Kovra::frame {

namespace {

/// Another member of the record may say the same: a keyword's word.
bool isSaidOtherwise(Row const& row, Value const& record) {
  if (row.alternative.empty() || row.kind->shape != Shape::keyword) return false;
  Value const* const other = record.find(row.alternative);
  auto const& keywords = *static_cast<Keywords const*>(row.with);
  return other != nullptr && keywords.written->find(other->asText("")) != nullptr;
}

}  // namespace

void WriteWatch::enter(Row const& row) {
  Value const* const record = steps_.back().value;
  if (row.member.empty()) {
    steps_.push_back({record, path_.size()});
    return;
  }
  Value const* const member = record != nullptr ? record->find(row.member) : nullptr;
  enterMember(row.member, member);
  if (record == nullptr) return;
  if (member == nullptr || member->isNothing()) {
    if (!isSaidOtherwise(row, *record)) miss({});
    steps_.back().value = nullptr;
  } else {
    lookAtParts(row, *member);
  }
}

void WriteWatch::enterMember(std::string_view name, Value const* member) {
  steps_.push_back({member, path_.size()});
  if (!path_.empty()) path_ += '.';
  path_ += name;
}

/// Members that are no records, but secrets, or with parts that are written.
void WriteWatch::lookAtParts(Row const& row, Value const& member) {
  if (row.kind->shape == Shape::secret && member.asText("") == secretMask) {
    problems_.add(path_, "a masked secret", "the secret itself");
  }
  if (row.kind->shape == Shape::setting) {
    for (char const* const part : {"min", "max", "val"}) {
      if (member.find(part) == nullptr) miss(part);
    }
  }
  if (row.kind->shape == Shape::bits && member.find(row.element) == nullptr) miss(row.element);
}

void WriteWatch::miss(std::string_view part) {
  if (!demandsAll_) return;
  std::string path = path_;
  if (!part.empty()) path.append(".").append(part);
  problems_.add(std::move(path), "nothing", "a value: the document is made of it");
}

void WriteWatch::enterEntry(std::size_t index) {
  Value const* const list = steps_.back().value;
  Range<Value const> const items = list != nullptr ? list->items() : Range<Value const>();
  bool const isThere = index < items.size() && !items[index].isNothing();
  steps_.push_back({isThere ? &items[index] : nullptr, path_.size()});
  path_.append("[").append(std::to_string(index)).append("]");
  if (list != nullptr && !isThere) miss({});
}

void WriteWatch::leave() {
  path_.resize(steps_.back().path);
  steps_.pop_back();
}

void WriteWatch::text(std::string_view text) {
  if (!isRecord_) return;
  std::size_t const mark = problems_.mark();
  checkText(text, problems_);
  problems_.prefix(mark, path_);
}

}  // namespace Kovra::frame
