/// @file
/// Who watches a reading: nobody (the classic entries) or the recorder behind the face.
///
/// `Observer` writes down every member that was read, as it stands in the record afterwards, and a
/// note on everything that the tables do not know. A reading gets a `Watch`, which leads to one or
/// to nobody.

#ifndef KOVRA_FRAME_OBSERVER_HPP
#define KOVRA_FRAME_OBSERVER_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "frame/tree.hpp"
#include "frame/vocabulary.hpp"
#include "kovra.hpp"

namespace Kovra::frame {

class Observer {
 public:
  explicit Observer(Value& record);

  /// The member `name` of the record under observation now holds `value`; an earlier one goes.
  void member(std::string_view name, Value value);

  /// Watches `read` as the reading of the nested record `name`. A record of which nothing was read
  /// does not show.
  template <class Read>
  bool within(std::string_view name, Read read);

  /// Watches `read` as the reading of entry `index` of the list `name`. An entry always shows.
  template <class Read>
  bool entry(std::string_view name, std::size_t index, Read read);

  /// Forgets what entry `index` of the list `name` shows: another one takes its place.
  void clearEntry(std::string_view name, std::size_t index);

  /// The same for an entry that is a single value: the one that `read` reports, under any name.
  template <class Read>
  bool item(std::string_view name, std::size_t index, Read read);

  /// Shows the list `name`, though no entry may follow.
  void list(std::string_view name);

  void knownElement(Element element) { known_.insert(element.index()); }
  void unknownElement(Element element);
  void unknownWord(Element element, std::string_view text, Vocabulary const& words);
  void notANumber(Element element, std::string_view expected);
  void changedNumber(Element element, std::string_view kept);
  void cutText(Element element, std::string_view kept);
  void emptyElement(Element element);
  void noAttribute(Element element, std::string_view attribute);
  void surplusEntry(Element element, std::size_t capacity);

  /// Members read from here on are secrets: their values are marked, notes hold none of their text.
  void secrecy(bool on) { secret_ = on; }

  /// A note and the element that it is about.
  struct Remark {
    Element element;
    Note note;  ///< without its place
  };

  std::vector<Remark> const& remarks() const { return remarks_; }
  /// How many more there were: a hostile reply must not fill the memory with notes.
  std::size_t unlisted() const { return unlisted_; }
  /// Did a row, at any depth, take this element?
  bool knows(Element element) const { return known_.contains(element.index()); }

 private:
  Value& listNamed(std::string_view name);
  void add(Note::Kind kind, Element element, std::string_view found = {},
           std::string_view kept = {}, std::vector<std::string> expected = {});

  static constexpr std::size_t maxRemarks = 1000;

  Value* record_;
  std::vector<Remark> remarks_;
  std::size_t unlisted_ = 0;
  std::unordered_set<std::uint32_t> known_;
  bool secret_ = false;
};

/// Finds the member `name` of `record`, or adds it with the kind given.
Value& memberOf(Value& record, std::string_view name, Value::Kind kind);
/// Takes the member `name` out when it is a record without members.
void dropIfEmpty(Value& record, std::string_view name);

template <class Read>
bool Observer::within(std::string_view name, Read read) {
  Value* const outer = record_;
  record_ = &memberOf(*outer, name, Value::Kind::record);
  bool const result = read();
  record_ = outer;
  dropIfEmpty(*outer, name);
  return result;
}

template <class Read>
bool Observer::entry(std::string_view name, std::size_t index, Read read) {
  Value* const outer = record_;
  Value& entries = listNamed(name);
  if (entries.items.size() <= index) entries.items.resize(index + 1);
  record_ = &entries.items[index];
  record_->kind = Value::Kind::record;
  bool const result = read();
  record_ = outer;
  return result;
}

template <class Read>
bool Observer::item(std::string_view name, std::size_t index, Read read) {
  bool const result = entry(name, index, read);
  Value& item = listNamed(name).items[index];
  Value single = item.members.empty() ? Value{} : std::move(item.members.front().value);
  item = std::move(single);
  return result;
}

/// Who watches a reading: an observer, or nobody. Then every reading is done as it is.
class Watch {
 public:
  Watch() = default;
  Watch(Observer& observer) : observer_(&observer) {}

  explicit operator bool() const { return observer_ != nullptr; }

  // As those of the observer.

  template <class Read>
  bool within(std::string_view name, Read read) const {
    return observer_ != nullptr ? observer_->within(name, read) : read();
  }
  template <class Read>
  bool entry(std::string_view name, std::size_t index, Read read) const {
    return observer_ != nullptr ? observer_->entry(name, index, read) : read();
  }
  template <class Read>
  bool item(std::string_view name, std::size_t index, Read read) const {
    return observer_ != nullptr ? observer_->item(name, index, read) : read();
  }

  /// Null when nobody watches.
  Observer* observer() const { return observer_; }

 private:
  Observer* observer_ = nullptr;
};

/// Tells of something that only an observer wants to know: `tell` takes the observer.
template <class Tell>
void remark(Watch const& watch, Tell tell) {
  if (watch) [[unlikely]]
    tell(*watch.observer());
}

// What a record's member shows.

Value shown(bool flag);
Value shown(int number);
Value shown(long number);
Value shown(unsigned short number);
Value shown(unsigned int number);
Value shown(unsigned long number);
Value shown(float number);
Value shown(std::string_view text);
Value shownKeyword(int code, std::string_view text, bool known);

}  // namespace Kovra::frame

#endif
