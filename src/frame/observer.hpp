/// @file
/// Who watches a reading: nobody (the classic entries) or the recorder behind the face.
///
/// `Observer` writes down every member that was read, as it stands in the record afterwards or only
/// that it was, and a remark on everything that was lost or changed. A reading gets a `Watch`,
/// which leads to one or to nobody. What no reading used is found in the end, by the tree's usage.

#ifndef KOVRA_FRAME_OBSERVER_HPP
#define KOVRA_FRAME_OBSERVER_HPP

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/remarks.hpp"
#include "frame/trail.hpp"
#include "frame/tree.hpp"
#include "frame/value.hpp"
#include "frame/vocabulary.hpp"

namespace Kovra::frame {

/// Watches a reading: what it fills, as values or as a trail, and what it does not know.
class Observer {
 public:
  /// Shows what is read in `record`.
  Observer(Tree const& tree, Value& record);
  /// Notes what is read, without a look at what it is.
  Observer(Tree const& tree, Trail& trail) : tree_(&tree), trail_(&trail) {}

  /// The member `name`, a word of the tables, of the record under observation now holds `value`; an
  /// earlier one goes.
  template <class Type>
  void member(std::string_view name, Type const& value) {
    ++told_;
    if (trail_ != nullptr) {
      trail_->member(step_, name);
    } else if constexpr (std::is_same_v<Type, float>) {  // NOLINT(bugprone-branch-clone): by type
      measure(name, value);
    } else if constexpr (std::is_same_v<Type, bool>) {
      single(name, Value::Kind::flag, value ? 1 : 0);
    } else if constexpr (std::is_integral_v<Type>) {
      single(name, std::is_signed_v<Type> ? Value::Kind::integer : Value::Kind::natural,
             static_cast<std::uint64_t>(value));
    } else {
      text(name, value);
    }
  }
  /// The same of a number that people read as bits.
  void bits(std::string_view name, unsigned int value);
  /// The same of a keyword: `word` is what was sent.
  void keyword(std::string_view name, int code, std::string_view word, bool isKnown);

  /// Watches `read` as the reading of the nested record `name`. A record of which nothing was read
  /// does not show.
  template <class Read>
  bool within(std::string_view name, Read read);

  /// Watches `read` as the reading of entry `index` of the list `name`. An entry always shows.
  template <class Read>
  bool entry(std::string_view name, std::size_t index, Read read);

  /// Forgets what entry `index` of the list `name` shows: another one takes its place. Was there
  /// anything?
  bool clearEntry(std::string_view name, std::size_t index);

  /// The same for an entry that is a single value: the one that `read` reports, under any name.
  template <class Read>
  bool item(std::string_view name, std::size_t index, Read read);

  /// How many values were told so far: one that an element changes is told again.
  std::size_t told() const { return told_; }

  /// Another element fills the member `name` of the record under observation: the one that filled
  /// it before, or none.
  Element lastToFill(std::string_view name, Element element);

  /// Shows the list `name`, though no entry may follow.
  void list(std::string_view name);

  /// What the earlier element said is overwritten; `overwritten` is its text, if that is told.
  void repeatedElement(Element element, Element earlier, std::string_view overwritten);
  void unknownWord(Element element, std::string_view text, Vocabulary const& words);
  /// The same of one that is neither of a few words.
  void unknownWord(Element element, std::initializer_list<std::string_view> words);
  /// A word that the vocabulary has in another spelling, or as a part of the text.
  void otherSpelling(Element element, std::string_view word);
  void notANumber(Element element, std::string_view expected);
  void changedNumber(Element element, std::string_view kept);
  /// The same of a number that stands in an attribute of the element.
  void notANumber(Element element, std::string_view expected, std::string_view found);
  void changedNumber(Element element, std::string_view kept, std::string_view found);
  void cutText(Element element, std::string_view kept);
  /// What a reading makes of a text is another one.
  void alteredText(Element element, std::string_view kept);
  void emptyElement(Element element);
  /// It lacks an attribute, or there is no number in it; `found` is null where there is none.
  void noAttribute(Element element, std::string_view attribute, char const* found);
  /// The list of that many entries is full; of all that follow one remark tells.
  void surplusEntry(Element list, Element element, std::size_t capacity);

  /// Members read from here on are secrets: their values are marked, remarks hold none of their
  /// text.
  void secrecy(bool on) { secret_ = on; }

  std::vector<Remark> const& remarks() const { return remarks_; }
  /// How many more there were: a hostile reply must not fill the memory with notes.
  std::size_t unlisted() const { return unlisted_; }

  static constexpr std::size_t maxRemarks = 1000;

 private:
  /// Which element was the last to fill a member that several may fill.
  struct Filled {
    std::uint32_t record;
    std::uint32_t element;
    std::string_view member;
  };

  void put(std::string_view name, Value value);
  Value& slot(std::string_view name);
  void single(std::string_view name, Value::Kind kind, std::uint64_t bits);
  void text(std::string_view name, std::string_view text);
  void measure(std::string_view name, float value);
  Value& listNamed(std::string_view name);
  /// Reads a record or an entry, which gets a number.
  template <class Read>
  bool numbered(Read read);
  /// Null where there is no room for one more.
  Remark* add(Remarked what, Element element, std::string_view found = {},
              std::string_view kept = {});

  Tree const* tree_;
  Value* record_ = nullptr;
  Trail* trail_ = nullptr;
  std::uint32_t step_ = Trail::root;
  std::uint32_t opened_ = 0;    ///< records and entries so far
  std::uint32_t inRecord_ = 0;  ///< the one under observation, by its number
  std::size_t told_ = 0;
  std::vector<Filled> filled_;
  std::vector<Remark> remarks_;
  std::size_t unlisted_ = 0;
  std::uint32_t fullList_ = Trail::root;  ///< the one that the last surplus entry was one of
  std::size_t fullListsRemark_ = 0;
  bool secret_ = false;
};

/// Finds the member `name`, a word of the tables, or adds it with the kind given.
Value& memberOf(Value& record, std::string_view name, Value::Kind kind);
/// Takes the member `name` out when it is a record without members.
void dropIfEmpty(Value& record, std::string_view name);

template <class Read>
bool Observer::numbered(Read read) {
  std::uint32_t const outer = std::exchange(inRecord_, ++opened_);
  bool const result = read();
  inRecord_ = outer;
  return result;
}

template <class Read>
bool Observer::within(std::string_view name, Read read) {
  if (trail_ != nullptr) {
    std::uint32_t const outer = std::exchange(step_, trail_->member(step_, name));
    bool const result = numbered(read);
    trail_->dropIfEmpty(step_);
    step_ = outer;
    return result;
  }
  Value* const outer = record_;
  record_ = &memberOf(*outer, name, Value::Kind::record);
  bool const result = numbered(read);
  record_ = outer;
  dropIfEmpty(*outer, name);
  return result;
}

template <class Read>
bool Observer::entry(std::string_view name, std::size_t index, Read read) {
  if (trail_ != nullptr) {
    std::uint32_t const list = trail_->member(step_, name);
    std::uint32_t const outer = std::exchange(step_, trail_->entry(list, index));
    bool const result = numbered(read);
    step_ = outer;
    return result;
  }
  Value* const outer = record_;
  Value& entries = listNamed(name);
  while (entries.size() <= index) entries.append({});
  record_ = &entries.items()[index];
  if (!record_->isRecord()) ValueAccess::become(*record_, Value::Kind::record);
  bool const result = numbered(read);
  record_ = outer;
  return result;
}

template <class Read>
bool Observer::item(std::string_view name, std::size_t index, Read read) {
  ++told_;  // also of an empty one: then it shows nothing
  bool const result = entry(name, index, read);
  if (trail_ != nullptr) return result;
  Value& item = listNamed(name).items()[index];
  Value single = item.empty() ? Value() : std::move(item.members().front().value());
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

}  // namespace Kovra::frame

#endif
