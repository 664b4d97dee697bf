#include "frame/observer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "frame/text.hpp"

namespace Kovra::frame {

namespace {

std::string_view textIn(Element element) {
  char const* const text = element.text();
  return text != nullptr ? text : "";
}

}  // namespace

// Values.

Observer::Observer(Tree const& tree, Value& record) : tree_(&tree), record_(&record) {
  ValueAccess::become(record, Value::Kind::record);
}

void Observer::put(std::string_view name, Value value) {
  if (secret_) value.markSecret();
  ValueAccess::ofTable(*record_, name) = std::move(value);
}

Value& Observer::slot(std::string_view name) {
  Value& value = ValueAccess::ofTable(*record_, name);
  if (secret_) value.markSecret();
  return value;
}

void Observer::single(std::string_view name, Value::Kind kind, std::uint64_t bits) {
  ValueAccess::setSingle(slot(name), kind, bits);
}

void Observer::text(std::string_view name, std::string_view text) {
  ValueAccess::setText(slot(name), wholeCharacters(text));
}

/// The shortest decimal that is this float, not the float's expansion: 24.35, not 24.3500003815.
void Observer::measure(std::string_view name, float value) {
  double shortest = static_cast<double>(value);
  std::array<char, 32> digits{};
  auto const [end, problem] = std::to_chars(digits.begin(), digits.end(), value);
  if (problem == std::errc{}) std::from_chars(digits.begin(), end, shortest);
  put(name, shortest);
}

void Observer::bits(std::string_view name, unsigned int value) {
  if (trail_ != nullptr) return member(name, value);
  ++told_;
  put(name, ValueAccess::natural(value, true));
}

void Observer::keyword(std::string_view name, int code, std::string_view word, bool isKnown) {
  if (trail_ != nullptr) return member(name, code);
  ++told_;
  put(name, ValueAccess::keyword(code, wholeCharacters(word), isKnown));
}

/// Records that are open or come later have higher numbers, and stand behind.
Element Observer::lastToFill(std::string_view name, Element element) {
  for (std::size_t i = filled_.size(); i-- > 0 && filled_[i].record >= inRecord_;) {
    if (filled_[i].record != inRecord_ || filled_[i].member != name) continue;
    return element.at(std::exchange(filled_[i].element, element.index()));
  }
  filled_.push_back({inRecord_, element.index(), name});
  return {};
}

void Observer::list(std::string_view name) {
  if (trail_ != nullptr) {
    trail_->member(step_, name);
  } else {
    listNamed(name);
  }
}

bool Observer::clearEntry(std::string_view name, std::size_t index) {
  if (trail_ != nullptr) return trail_->forget(step_, name, index);
  Range<Value> const entries = listNamed(name).items();
  return index < entries.size() && !std::exchange(entries[index], {}).isNothing();
}

Value& Observer::listNamed(std::string_view name) {
  return memberOf(*record_, name, Value::Kind::list);
}

// Remarks.

Remark* Observer::add(Remarked what, Element element, std::string_view found,
                      std::string_view kept) {
  if (remarks_.size() == maxRemarks) {
    ++unlisted_;
    return nullptr;
  }
  Remark& remark = remarks_.emplace_back();
  remark.what = what;
  remark.index = element.index();
  if (!secret_) {
    remark.found = found;
    remark.kept = kept;
  }
  return &remark;
}

void Observer::repeatedElement(Element element, Element earlier, std::string_view overwritten) {
  Remark* const remark = add(Remarked::repeatedElement, element, overwritten);
  if (remark != nullptr && earlier.name() != element.name()) remark->earlier = earlier.name();
}

void Observer::unknownWord(Element element, std::string_view text, Vocabulary const& words) {
  if (Remark* const remark = add(Remarked::unknownWord, element, text)) remark->words = &words;
}

void Observer::unknownWord(Element element, std::initializer_list<std::string_view> words) {
  if (Remark* const remark = add(Remarked::unknownWord, element, textIn(element))) {
    remark->expected.assign(words.begin(), words.end());
  }
}

void Observer::otherSpelling(Element element, std::string_view word) {
  add(Remarked::otherSpelling, element, textIn(element), word);
}

void Observer::notANumber(Element element, std::string_view expected) {
  notANumber(element, expected, textIn(element));
}

void Observer::changedNumber(Element element, std::string_view kept) {
  changedNumber(element, kept, textIn(element));
}

void Observer::notANumber(Element element, std::string_view expected, std::string_view found) {
  if (Remark* const remark = add(Remarked::notANumber, element, found)) {
    remark->expected.emplace_back(expected);
  }
}

void Observer::changedNumber(Element element, std::string_view kept, std::string_view found) {
  add(Remarked::changedNumber, element, found, kept);
}

void Observer::cutText(Element element, std::string_view kept) {
  add(Remarked::cutText, element, textIn(element), wholeCharacters(kept));
}

void Observer::alteredText(Element element, std::string_view kept) {
  add(Remarked::alteredText, element, textIn(element), kept);
}

void Observer::emptyElement(Element element) {
  add(Remarked::emptyElement, element);
}

/// Of several attributes that an element lacks one remark tells.
void Observer::noAttribute(Element element, std::string_view attribute, char const* found) {
  bool const another = !remarks_.empty() && remarks_.back().index == element.index() &&
                       remarks_.back().what == Remarked::noAttribute;
  Remark* const remark = another ? &remarks_.back() : add(Remarked::noAttribute, element);
  if (remark == nullptr) return;
  remark->expected.emplace_back(attribute);
  if (found != nullptr) remark->found += (remark->found.empty() ? "" : ", ") + std::string(found);
}

void Observer::surplusEntry(Element list, Element element, std::size_t capacity) {
  element.tell();
  if (std::exchange(fullList_, list.index()) == list.index()) {
    if (fullListsRemark_ < remarks_.size()) ++remarks_[fullListsRemark_].count;
    return;
  }
  fullListsRemark_ = remarks_.size();
  add(Remarked::surplusEntries, element, {}, std::to_string(capacity));
}

Value& memberOf(Value& record, std::string_view name, Value::Kind kind) {
  Value& member = ValueAccess::ofTable(record, name);
  if (member.isNothing()) ValueAccess::become(member, kind);
  return member;
}

void dropIfEmpty(Value& record, std::string_view name) {
  Value const* const member = record.find(name);
  if (member != nullptr && member->isRecord() && member->empty()) record.erase(name);
}

}  // namespace Kovra::frame
