/// @file
/// A message is a table: one row for each element, made from a pointer to the member that it fills.
///
///     constexpr Field<KVGeneralStatus> generalStatus[] = {
///         keyword<&KVGeneralStatus::printer_state, printerStates>("printer_state"),
///         number<&KVGeneralStatus::error>("error"),
///     };
///     static_assert(namesAreUnique(generalStatus));
///
/// walk() reads an element with such a table. The kinds of rows below are the only place where text
/// becomes a value; each states its tolerance once, for every document.

#ifndef KOVRA_FRAME_FIELD_HPP
#define KOVRA_FRAME_FIELD_HPP

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <concepts>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/assign.hpp"
#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/text.hpp"
#include "frame/vocabulary.hpp"
#include "kvxhelper.h"

namespace Kovra::frame {

/// The words of a document: the names of its elements and the keywords in their texts.
using Outline = std::set<std::string, std::less<>>;

/// Bits that say under which circumstances a row is written; a family gives them their meaning.
using Circumstances = unsigned long;

/// The members that a table's rows fill, by name: what may be assigned.
using Keys = std::vector<std::string_view>;

/// One row of a document's table: which element it is, how it is read into the record and written
/// from it, and how a value is assigned to its member. A function that is null is something that
/// the row does not do.
template <class Record>
struct Field {
  std::string_view element;
  bool (*read)(TiXmlElement&, Record&);
  bool (*observe)(TiXmlElement&, Record&, Observer&);
  void (*outline)(Outline&);
  /// Adds the element below the parent; the result is the new running result.
  bool (*write)(TiXmlElement& parent, char const* element, Record const&, Circumstances,
                bool result) = nullptr;
  Assigned (*assign)(Record&, std::string_view member, Value const&, Problem&) = nullptr;
  Circumstances needs = 0;
  void (*keys)(Keys&) = nullptr;
  /// Does the result of the reading count, or does the walk keep the one that it had?
  bool counts = true;
};

/// A row that is read and never written.
template <class Record>
constexpr Field<Record> readOnly(Field<Record> field) {
  field.write = nullptr;
  return field;
}

/// A row that is written and never read.
template <class Record>
constexpr Field<Record> writeOnly(Field<Record> field) {
  field.read = nullptr;
  field.observe = nullptr;
  field.assign = nullptr;
  field.keys = nullptr;
  return field;
}

/// A row that is written, and that takes a value from whoever composes, but is never read.
template <class Record>
constexpr Field<Record> neverRead(Field<Record> field) {
  field.read = nullptr;
  field.observe = nullptr;
  return field;
}

/// A row whose success or failure is not that of the walk.
template <class Record>
constexpr Field<Record> uncounted(Field<Record> field) {
  field.counts = false;
  return field;
}

/// A row that is written only where all the circumstances in `needs` hold.
template <class Record>
constexpr Field<Record> when(Circumstances needs, Field<Record> field) {
  field.needs = needs;
  return field;
}

/// Two rows that read one element would leave the second unread.
template <class Record, std::size_t N>
constexpr bool namesAreUnique(Field<Record> const (&table)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      bool const bothRead = table[i].read != nullptr && table[j].read != nullptr;
      if (bothRead && table[i].element == table[j].element) return false;
    }
  }
  return true;
}

// The walk.

/// Calls `visit` with every child element in document order. The result is that of the last child
/// that `visit` recognised: it gets the running result and returns the new one.
template <class Visit>
bool walkChildren(TiXmlElement* element, Visit visit) {
  bool result = false;
  if (element == nullptr) return result;
  for (TiXmlNode* child = element->FirstChild(); child != nullptr; child = child->NextSibling()) {
    if (TiXmlElement* const inner = child->ToElement()) result = visit(*inner, result);
  }
  return result;
}

/// Finds rows by the names of elements. Printers name a message's elements in the order of its
/// table, so the search begins behind the row that was found last.
template <class Record>
class RowFinder {
 public:
  explicit RowFinder(std::span<Field<Record> const> table) : table_(table) {}

  Field<Record> const* find(std::string_view name) {
    for (std::size_t tried = 0; tried < table_.size(); ++tried) {
      Field<Record> const& candidate = table_[next_];
      next_ = next_ + 1 < table_.size() ? next_ + 1 : 0;
      if (candidate.element == name && candidate.read != nullptr) return &candidate;
    }
    return nullptr;
  }

 private:
  std::span<Field<Record> const> table_;
  std::size_t next_ = 0;
};

/// Reads a child with the row that names it; without one it is skipped. The result is the new
/// running result.
template <class Record, class Watch>
bool readChild(Field<Record> const* field, TiXmlElement& child, Record& record, Watch& watch,
               bool result) {
  if (field == nullptr) {
    remark(watch, [&](Observer& observer) { observer.unknownElement(child); });
    return result;
  }
  bool read = false;
  if constexpr (std::is_same_v<Watch, Unwatched>) {
    read = field->read(child, record);
  } else {
    watch.knownElement(child);
    read = field->observe(child, record, watch);
  }
  return field->counts ? read : result;
}

/// Reads the children of `element` with `table`: a child that a row names is read by it, others are
/// skipped, a repeated one is read again. The result is that of the last child that a row read;
/// false when there was none, or no element at all.
template <class Record, class Watch>
bool walk(TiXmlElement* element, std::span<Field<Record> const> table, Record& record,
          Watch& watch) {
  RowFinder<Record> rows(table);
  return walkChildren(element, [&](TiXmlElement& child, bool result) {
    return readChild(rows.find(child.ValueStr()), child, record, watch, result);
  });
}

template <class Record, std::size_t N, class Watch>
bool walk(TiXmlElement* element, Field<Record> const (&table)[N], Record& record, Watch& watch) {
  return walk(element, std::span<Field<Record> const>(table), record, watch);
}

/// The walk that nobody watches: what a host's call does.
template <class Record, std::size_t N>
bool walk(TiXmlElement* element, Field<Record> const (&table)[N], Record& record) {
  Unwatched nobody;
  return walk(element, table, record, nobody);
}

/// Writes `record` below `parent` with `table`, row by row, as far as the circumstances allow. The
/// result is that of the last row that wrote something; `result` when none did.
template <class Record, std::size_t N>
bool writeAll(TiXmlElement& parent, Field<Record> const (&table)[N], Record const& record,
              Circumstances circumstances, bool result) {
  for (Field<Record> const& field : table) {
    if (field.write == nullptr || (field.needs & ~circumstances) != 0) continue;
    result = field.write(parent, field.element.data(), record, circumstances, result);
  }
  return result;
}

/// Offers a value to the rows; the first that has a member of that name takes it.
template <class Record, std::size_t N>
Assigned assignMember(Field<Record> const (&table)[N], Record& record, std::string_view member,
                      Value const& value, Problem& problem) {
  for (Field<Record> const& field : table) {
    if (field.assign == nullptr) continue;
    Assigned const result = field.assign(record, member, value, problem);
    if (result != Assigned::notMine) return result;
  }
  return Assigned::notMine;
}

/// Adds the members that the rows fill, each once, in the order of the rows.
template <class Record, std::size_t N>
void keysOf(Field<Record> const (&table)[N], Keys& keys) {
  for (Field<Record> const& field : table) {
    if (field.keys == nullptr) continue;
    Keys own;
    field.keys(own);
    for (std::string_view const key : own) {
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
  }
}

/// The value has a key that no row of the table fills.
template <class Record, std::size_t N>
Assigned refuseKey(Field<Record> const (&table)[N], Problem& problem) {
  Keys keys;
  keysOf(table, keys);
  std::string known;
  for (std::string_view const key : keys) known.append(known.empty() ? "" : ", ").append(key);
  return fail(problem, "an unknown key", "one of: " + known);
}

/// Puts a name, or an index in brackets, before the path of a problem.
inline void prefix(Problem& problem, std::string const& step) {
  bool const deeper = !problem.path.empty() && problem.path.front() != '[';
  problem.path = step + (deeper ? "." : "") + problem.path;
}

/// Assigns all members of `value` to the record; members that it does not name stay as they are.
template <class Record, std::size_t N>
Assigned assignAll(Field<Record> const (&table)[N], Record& record, Value const& value,
                   Problem& problem) {
  if (value.kind != Value::Kind::record) return fail(problem, described(value), "an object");
  for (Kovra::Member const& member : value.members) {
    Assigned result = assignMember(table, record, member.name, member.value, problem);
    if (result == Assigned::notMine) result = refuseKey(table, problem);
    if (result == Assigned::failed) {
      prefix(problem, member.name);
      return result;
    }
  }
  return Assigned::done;
}

/// Assigns a list to an array of records, entry by entry. An entry that is nothing stays as it is,
/// and so do those behind the list's end.
template <class Record, std::size_t N, std::size_t M>
Assigned assignEntries(Field<Record> const (&table)[N], Record (&entries)[M], Value const& value,
                       Problem& problem) {
  if (value.kind != Value::Kind::list) return fail(problem, described(value), "a list");
  if (value.items.size() > M) {
    return fail(problem, "a list of " + std::to_string(value.items.size()),
                "at most " + std::to_string(M) + " entries");
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    if (value.items[i].kind == Value::Kind::nothing) continue;
    if (assignAll(table, entries[i], value.items[i], problem) == Assigned::failed) {
      prefix(problem, '[' + std::to_string(i) + ']');
      return Assigned::failed;
    }
  }
  return Assigned::done;
}

template <class Record, std::size_t N>
void outlineOf(Field<Record> const (&table)[N], Outline& outline) {
  for (Field<Record> const& field : table) {
    outline.emplace(field.element);
    if (field.outline != nullptr) field.outline(outline);
  }
}

// Rows that read one value. Each is a struct with
//   read     the classic reading: element and member in, success out
//   report   what an observer is told of a value that was just read
//   missing  what it is told when nothing was read, unless that is an element without text
//   write    the member below the parent, for documents that are written as well
//   assign   a value that a host gives, into the member
// of which the last three may be left out.

/// A short text that is compared with words; longer ones are none of them.
class WordText {
 public:
  /// Fetches at most 31 characters of the element's text; false when it has none.
  bool read(TiXmlElement& element) {
    return KVXHelper::GetString(&element, text_.front(), static_cast<int>(text_.size()));
  }
  char const* get() const { return text_.data(); }
  bool is(std::string_view word) const { return word == text_.data(); }

 private:
  std::array<char, 32> text_{};
};

/// A decimal number by KVXHelper::GetNumber in the form of the member's type.
struct NumberKind {
  template <class Number>
  static bool read(TiXmlElement& element, Number& out) {
    return KVXHelper::GetNumber(&element, out, false);
  }

  template <class Number>
  static void report(Observer& observer, std::string_view name, TiXmlElement& element,
                     Number value) {
    observer.member(name, shown(value));
    char const* const text = textOf(&element);
    char* end = nullptr;
    errno = 0;
    if constexpr (std::is_floating_point_v<Number>) {
      double const sent = std::strtod(text, &end);
      if (!isWhole(text, end)) {
        observer.notANumber(element, "a decimal number");
      } else if (errno == ERANGE || (std::isfinite(sent) && !std::isfinite(value))) {
        observer.changedNumber(element, std::to_string(value));
      }
    } else {
      long const sent = std::strtol(text, &end, 10);
      if (!isWhole(text, end)) {
        observer.notANumber(element, "a whole decimal number");
      } else if (errno == ERANGE || !std::in_range<Number>(sent) ||
                 static_cast<Number>(sent) != value) {
        observer.changedNumber(element, std::to_string(value));
      }
    }
  }

  static bool write(TiXmlElement& parent, char const* element, int value) {
    return KVXHelper::AddTagNumber(&parent, element, value);
  }
  static bool write(TiXmlElement& parent, char const* element, unsigned int value) {
    return KVXHelper::AddTagUnsigned(&parent, element, value);
  }
  static bool write(TiXmlElement& parent, char const* element, long value) {
    return KVXHelper::AddTagLong(&parent, element, value);
  }
  static bool write(TiXmlElement& parent, char const* element, float value) {
    return KVXHelper::AddTagFloat(&parent, element, value);
  }

  template <class Number>
  static Assigned assign(Number& out, Value const& value, Problem& problem) {
    if constexpr (std::is_floating_point_v<Number>) {
      return assignReal(out, value, problem);
    } else {
      return assignInteger(out, value, problem);
    }
  }

 private:
  /// Did the conversion take a number, and nothing but blanks behind it?
  static bool isWhole(char const* text, char const* end) {
    return end != text && end[std::strspn(end, " \t\r\n")] == '\0';
  }
};

/// A hexadecimal number with a mandatory "0x". A text without it counts as read and stores nothing.
struct HexadecimalKind {
  static bool read(TiXmlElement& element, unsigned int& out) {
    WordText text;
    if (!text.read(element)) return false;
    static_cast<void>(std::sscanf(text.get(), "0x%x", &out));
    return true;
  }

  static void report(Observer& observer, std::string_view name, TiXmlElement& element,
                     unsigned int value) {
    WordText text;
    text.read(element);
    unsigned int scanned = 0;
    if (std::sscanf(text.get(), "0x%x", &scanned) != 1) {
      observer.notANumber(element, "a hexadecimal number with 0x before it");
      return;
    }
    Value hexadecimal = shown(value);
    hexadecimal.hexadecimal = true;
    observer.member(name, hexadecimal);
    errno = 0;
    unsigned long const sent = std::strtoul(textOf(&element), nullptr, 16);
    if (errno == ERANGE || sent != value) observer.changedNumber(element, printed("0x%x", value));
  }

 private:
  static std::string printed(char const* format, unsigned int value) {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), format, value);
    return digits.data();
  }
};

/// A text, copied as far as its array goes.
struct TextKind {
  template <std::size_t N>
  static bool read(TiXmlElement& element, char (&out)[N]) {
    return KVXHelper::GetString(&element, *out, static_cast<int>(N));
  }

  template <std::size_t N>
  static void report(Observer& observer, std::string_view name, TiXmlElement& element,
                     char const (&value)[N]) {
    std::string_view const kept = textIn(value);
    observer.member(name, shown(kept));
    if (std::strlen(textOf(&element)) > kept.size()) observer.cutText(element, kept);
  }

  /// A text without a terminator ends where its array does.
  template <std::size_t N>
  static bool write(TiXmlElement& parent, char const* element, char const (&value)[N]) {
    std::string_view const text = textIn(value);
    if (text.size() < N) return KVXHelper::AddTagString(&parent, element, value);
    return KVXHelper::AddTagString(&parent, element, std::string(text).c_str());
  }

  template <std::size_t N>
  static Assigned assign(char (&out)[N], Value const& value, Problem& problem) {
    return assignText(out, value, problem);
  }
};

/// A hardware address by KVXHelper::GetPhysicalAddress: what is missing in the text is zero.
struct AddressKind {
  using Address = unsigned char[6];
  static constexpr char form[] = "six hexadecimal bytes with colons between them";

  static bool read(TiXmlElement& element, Address& out) {
    return KVXHelper::GetPhysicalAddress(&element, out);
  }

  static void report(Observer& observer, std::string_view name, TiXmlElement& element,
                     Address const& value) {
    observer.member(name, shown(printed(value)));
    if (!isWhole(textOf(&element))) {
      observer.notANumber(element, form);
    }
  }

  static bool write(TiXmlElement& parent, char const* element, Address const& value) {
    return KVXHelper::AddTagPhysicalAddress(&parent, element, value);
  }

  static Assigned assign(Address& out, Value const& value, Problem& problem) {
    if (value.kind != Value::Kind::text || !isWhole(value.text.c_str())) {
      return fail(problem, described(value), form);
    }
    TiXmlElement element("");
    element.LinkEndChild(new TiXmlText(value.text));
    KVXHelper::GetPhysicalAddress(&element, out);
    return Assigned::done;
  }

 private:
  static std::string printed(Address const& value) {
    std::array<char, sizeof "00:00:00:00:00:00"> text{};
    std::snprintf(text.data(), text.size(), "%02x:%02x:%02x:%02x:%02x:%02x", value[0], value[1],
                  value[2], value[3], value[4], value[5]);
    return text.data();
  }

  /// Are there six fields, and nothing behind them?
  static bool isWhole(char const* text) {
    std::array<unsigned int, std::extent_v<Address>> bytes{};
    int end = 0;
    int const fields = std::sscanf(text, "%02x:%02x:%02x:%02x:%02x:%02x%n", &bytes[0], &bytes[1],
                                   &bytes[2], &bytes[3], &bytes[4], &bytes[5], &end);
    return fields == static_cast<int>(bytes.size()) && text[end] == '\0';
  }
};

/// A keyword's code; an unknown word stores the vocabulary's code for it.
template <Vocabulary const& Words>
struct KeywordKind {
  template <class Code>
  static bool read(TiXmlElement& element, Code& out) {
    WordText text;
    if (!text.read(element)) return false;
    out = static_cast<Code>(Words.codeOf(text.get()));
    return true;
  }

  template <class Code>
  static void report(Observer& observer, std::string_view name, TiXmlElement& element, Code value) {
    WordText text;
    text.read(element);
    if (!show(observer, name, text.get(), value)) {
      observer.unknownWord(element, textOf(&element), Words);
    }
  }

  /// Shows a code together with the text that it was made from. Is that a word?
  template <class Code>
  static bool show(Observer& observer, std::string_view name, char const* text, Code value) {
    Word const* const word = Words.find(text);
    observer.member(name, shownKeyword(static_cast<int>(value), word != nullptr ? word->text : text,
                                       word != nullptr));
    return word != nullptr;
  }

  /// A code without a word is written as an empty text.
  template <class Code>
  static bool write(TiXmlElement& parent, char const* element, Code value) {
    std::string_view const word = Words.wordOf(static_cast<int>(value));
    return KVXHelper::AddTagString(&parent, element, word.empty() ? "" : word.data());
  }

  template <class Code>
  static Assigned assign(Code& out, Value const& value, Problem& problem) {
    return assignKeyword(out, value, Words, problem);
  }

  static void outline(Outline& outline) {
    for (Word const& word : Words.words) outline.emplace(word.text);
  }
};

/// A keyword of which only the known words are stored: an unknown one counts as read and leaves the
/// code as it was.
template <Vocabulary const& Words>
struct KnownKeywordKind : KeywordKind<Words> {
  template <class Code>
  static bool read(TiXmlElement& element, Code& out) {
    WordText text;
    if (!text.read(element)) return false;
    if (Word const* const word = Words.find(text.get())) out = static_cast<Code>(word->code);
    return true;
  }
};

/// A keyword of which every code is written: those without a word as the word of `Otherwise`.
template <class Kind, Vocabulary const& Words, int Otherwise>
struct AlwaysWrittenKind : Kind {
  static_assert(!Words.wordOf(Otherwise).empty());

  static char const* wordOf(int code) {
    std::string_view const word = Words.wordOf(code);
    return (word.empty() ? Words.wordOf(Otherwise) : word).data();
  }

  template <class Code>
  static bool write(TiXmlElement& parent, char const* element, Code value) {
    return KVXHelper::AddTagString(&parent, element, wordOf(static_cast<int>(value)));
  }
};

/// A word that stands in a table's type.
template <std::size_t N>
struct Fixed {
  char text[N];
  constexpr Fixed(char const (&literal)[N]) { std::copy_n(literal, N, text); }
  constexpr operator std::string_view() const { return {text, N - 1}; }
};

/// A flag that is set by exactly one word, and cleared by any other (`Sets` true); or cleared by
/// exactly one word, and set by any other, also by a misspelling (`Sets` false).
template <Fixed TheWord, bool Sets>
struct WordFlagKind {
  template <class Flag>
  static bool read(TiXmlElement& element, Flag& out) {
    WordText text;
    if (!text.read(element)) return false;
    out = static_cast<Flag>(text.is(TheWord) == Sets);
    return true;
  }

  template <class Flag>
  static void report(Observer& observer, std::string_view name, TiXmlElement&, Flag value) {
    observer.member(name, shown(value != 0));
  }

  template <class Flag>
  static Assigned assign(Flag& out, Value const& value, Problem& problem) {
    return assignFlag(out, value, problem);
  }

  static void outline(Outline& outline) { outline.emplace(std::string_view(TheWord)); }
};

/// The words that KVXHelper::GetBool takes for a flag that is set, and those that printers send for
/// one that is not. Any other text means not set, too, and is worth a note.
inline constexpr Word switchWords[] = {{"enabled", 1}, {"yes", 1}, {"disabled", 0}, {"no", 0}};
inline constexpr Vocabulary switches{switchWords, Match::exact, 0};
static_assert(everyWordIsReachable(switches));

inline void reportSwitch(Observer& observer, std::string_view name, TiXmlElement& element,
                         bool value) {
  observer.member(name, shown(value));
  WordText text;
  text.read(element);
  if (switches.find(text.get()) == nullptr) {
    observer.unknownWord(element, textOf(&element), switches);
  }
}

/// A flag by KVXHelper::GetBool, written with one of two words. An empty element leaves it.
template <Fixed Yes, Fixed No>
struct SwitchKind {
  template <class Flag>
  static bool read(TiXmlElement& element, Flag& out) {
    char flag = 0;
    if (!KVXHelper::GetBool(&element, flag)) return false;
    out = static_cast<Flag>(flag);
    return true;
  }

  template <class Flag>
  static void report(Observer& observer, std::string_view name, TiXmlElement& element, Flag value) {
    reportSwitch(observer, name, element, value != 0);
  }

  template <class Flag>
  static bool write(TiXmlElement& parent, char const* element, Flag value) {
    return KVXHelper::AddTagString(&parent, element, value != 0 ? Yes.text : No.text);
  }

  template <class Flag>
  static Assigned assign(Flag& out, Value const& value, Problem& problem) {
    return assignFlag(out, value, problem);
  }

  static void outline(Outline& outline) {
    for (Word const& word : switches.words) outline.emplace(word.text);
  }
};

namespace detail {

template <class Kind>
concept HasWords = requires(Outline& outline) {
  Kind::outline(outline);
};

template <class Kind>
concept TellsOfMissing = requires(Observer& observer, TiXmlElement& element) {
  Kind::missing(observer, element);
};

template <class Kind, class Type>
concept Writes = requires(TiXmlElement& parent, Type const& value) {
  { Kind::write(parent, "", value) } -> std::same_as<bool>;
};

template <class Kind, class Type>
concept Assigns = requires(Type& target, Value const& value, Problem& problem) {
  { Kind::assign(target, value, problem) } -> std::same_as<Assigned>;
};

template <auto M, class Kind>
constexpr auto writeOfKind() -> bool (*)(TiXmlElement&, char const*,
                                         typename Member<M>::Record const&, Circumstances, bool) {
  if constexpr (Writes<Kind, typename Member<M>::Type>) {
    return [](TiXmlElement& parent, char const* element, typename Member<M>::Record const& record,
              Circumstances, bool) { return Kind::write(parent, element, record.*M); };
  } else {
    return nullptr;
  }
}

template <auto M, class Kind>
constexpr auto assignOfKind()
    -> Assigned (*)(typename Member<M>::Record&, std::string_view, Value const&, Problem&) {
  if constexpr (Assigns<Kind, typename Member<M>::Type>) {
    return [](typename Member<M>::Record& record, std::string_view member, Value const& value,
              Problem& problem) {
      if (member != Member<M>::name()) return Assigned::notMine;
      return Kind::assign(record.*M, value, problem);
    };
  } else {
    return nullptr;
  }
}

template <auto M>
void keyOf(Keys& keys) {
  keys.push_back(Member<M>::name());
}

template <auto M, class Kind>
constexpr auto keysOfKind() -> void (*)(Keys&) {
  return Assigns<Kind, typename Member<M>::Type> ? &keyOf<M> : nullptr;
}

template <class Reading>
constexpr auto keysOfReading() -> void (*)(Keys&) {
  if constexpr (requires(Keys & keys) { Reading::keys(keys); }) {
    return [](Keys& keys) { Reading::keys(keys); };
  } else {
    return nullptr;
  }
}

template <class Kind>
constexpr auto outlineOfKind() -> void (*)(Outline&) {
  if constexpr (HasWords<Kind>) {
    return &Kind::outline;
  } else {
    return nullptr;
  }
}

}  // namespace detail

/// A row of any one-value kind.
template <auto M, class Kind>
constexpr auto row(std::string_view element) {
  using Record = typename Member<M>::Record;
  return Field<Record>{
      element,
      [](TiXmlElement& child, Record& record) { return Kind::read(child, record.*M); },
      [](TiXmlElement& child, Record& record, Observer& observer) {
        bool const read = Kind::read(child, record.*M);
        if (read) {
          Kind::report(observer, Member<M>::name(), child, record.*M);
        } else if constexpr (detail::TellsOfMissing<Kind>) {
          Kind::missing(observer, child);
        } else {
          observer.emptyElement(child);
        }
        return read;
      },
      detail::outlineOfKind<Kind>(),
      detail::writeOfKind<M, Kind>(),
      detail::assignOfKind<M, Kind>(),
      0,
      detail::keysOfKind<M, Kind>()};
}

template <auto M>
constexpr auto number(std::string_view element) {
  return row<M, NumberKind>(element);
}

template <auto M>
constexpr auto hexadecimal(std::string_view element) {
  return row<M, HexadecimalKind>(element);
}

template <auto M>
constexpr auto text(std::string_view element) {
  return row<M, TextKind>(element);
}

template <auto M>
constexpr auto address(std::string_view element) {
  return row<M, AddressKind>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto keyword(std::string_view element) {
  return row<M, KeywordKind<Words>>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto knownKeyword(std::string_view element) {
  return row<M, KnownKeywordKind<Words>>(element);
}

template <auto M>
constexpr auto enabled(std::string_view element) {
  return row<M, SwitchKind<"enabled", "disabled">>(element);
}

template <auto M>
constexpr auto yesOrNo(std::string_view element) {
  return row<M, SwitchKind<"yes", "no">>(element);
}

template <auto M, Fixed Word>
constexpr auto flagIf(std::string_view element) {
  return row<M, WordFlagKind<Word, true>>(element);
}

template <auto M, Fixed Word>
constexpr auto flagUnless(std::string_view element) {
  return row<M, WordFlagKind<Word, false>>(element);
}

/// A whole number in an attribute of the element, whose text is not looked at.
template <Fixed Attribute>
struct AttributeKind {
  static bool read(TiXmlElement& element, int& out) {
    return KVXHelper::GetInt(&element, Attribute.text, out);
  }

  static void report(Observer& observer, std::string_view name, TiXmlElement&, int value) {
    observer.member(name, shown(value));
  }

  static void missing(Observer& observer, TiXmlElement& element) {
    observer.noAttribute(element, Attribute);
  }

  static void outline(Outline& outline) { outline.emplace(std::string_view(Attribute)); }
};

template <auto M, Fixed Attribute>
constexpr auto attribute(std::string_view element) {
  return row<M, AttributeKind<Attribute>>(element);
}

// Rows that read an element's children. Each is a struct with
//   read     `read(element, record, watch)`, a template over the watch
//   write    `write(parent, element, record, circumstances, result)`: the new running result
//   assign   `assign(record, member, value, problem)`
//   keys     `keys(keys)`: the members that assign takes
//   outline  the words below the element
// of which all but the first may be left out.

namespace detail {

template <class Record, class Reading>
concept WritesRecord = requires(TiXmlElement& parent, Record const& record) {
  { Reading::write(parent, "", record, Circumstances{}, true) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept AssignsRecord = requires(Record& record, Value const& value, Problem& problem) {
  { Reading::assign(record, "", value, problem) } -> std::same_as<Assigned>;
};

template <class Record, class Reading>
constexpr auto writeOfReading()
    -> bool (*)(TiXmlElement&, char const*, Record const&, Circumstances, bool) {
  if constexpr (WritesRecord<Record, Reading>) {
    return [](TiXmlElement& parent, char const* element, Record const& record,
              Circumstances circumstances, bool result) {
      return Reading::write(parent, element, record, circumstances, result);
    };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
constexpr auto assignOfReading()
    -> Assigned (*)(Record&, std::string_view, Value const&, Problem&) {
  if constexpr (AssignsRecord<Record, Reading>) {
    return [](Record& record, std::string_view member, Value const& value, Problem& problem) {
      return Reading::assign(record, member, value, problem);
    };
  } else {
    return nullptr;
  }
}

}  // namespace detail

/// A row whose reading is a small function of its own, with a comment that says why it is odd.
template <class Record, class Reading>
constexpr Field<Record> reading(std::string_view element) {
  return {element,
          [](TiXmlElement& child, Record& record) {
            Unwatched nobody;
            return Reading::read(child, record, nobody);
          },
          [](TiXmlElement& child, Record& record, Observer& observer) {
            return Reading::read(child, record, observer);
          },
          detail::outlineOfKind<Reading>(),
          detail::writeOfReading<Record, Reading>(),
          detail::assignOfReading<Record, Reading>(),
          0,
          detail::keysOfReading<Reading>()};
}

/// Adds the element `name` and writes the table below it. The result is that of the last row
/// written; false when the element could not be made or no row wrote anything.
template <class Record, std::size_t N>
bool writeBelow(TiXmlElement& parent, char const* name, Field<Record> const (&table)[N],
                Record const& record, Circumstances circumstances) {
  TiXmlElement* const element = KVXHelper::AddTag(&parent, name);
  return element != nullptr && writeAll(*element, table, record, circumstances, false);
}

/// Tells of an element below which a table finds nothing to read.
template <class Watch>
void remarkIfEmpty(TiXmlElement const& element, Watch& watch) {
  remark(watch, [&](Observer& observer) {
    if (element.FirstChildElement() == nullptr) observer.emptyElement(element);
  });
}

/// A nested record with a table of its own.
template <auto M, auto const& Table>
struct NestedReading {
  template <class Record, class Watch>
  static bool read(TiXmlElement& element, Record& record, Watch& watch) {
    remarkIfEmpty(element, watch);
    return watch.within(memberName<M>, [&] { return walk(&element, Table, record.*M, watch); });
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    Circumstances circumstances, bool) {
    return writeBelow(parent, element, Table, record.*M, circumstances);
  }
  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    return assignAll(Table, record.*M, value, problem);
  }
  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

template <auto M, auto const& Table>
constexpr auto nested(std::string_view element) {
  return reading<typename Member<M>::Record, NestedReading<M, Table>>(element);
}

/// How an element is read whose children fill members of the record itself: also a whole reply.
template <auto const& Table>
struct TableReading {
  template <class Record, class Watch>
  static bool read(TiXmlElement& element, Record& record, Watch& watch) {
    remarkIfEmpty(element, watch);
    return walk(&element, Table, record, watch);
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    Circumstances circumstances, bool) {
    return writeBelow(parent, element, Table, record, circumstances);
  }
  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    return assignMember(Table, record, member, value, problem);
  }
  static void keys(Keys& keys) { keysOf(Table, keys); }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

template <class Record, auto const& Table>
constexpr auto group(std::string_view element) {
  return reading<Record, TableReading<Table>>(element);
}

// Lists.

/// A setting's parts as members, for those who compose; on the wire they are no elements.
template <class Setting>
inline constexpr Field<Setting> settingParts[] = {
    number<&Setting::min>("min"),
    number<&Setting::max>("max"),
    number<&Setting::val>("val"),
};

/// A setting with bounds: attributes "min" and "max", and the value as text. A bound that is absent
/// stays as it was. The value is put up to "min" and then down to "max", also when there is no
/// text: a setting without bounds in a cleared record reads as 0, and crossed bounds as "max".
/// Printers always send the bounds, and hosts rely on values within them. The result is that of the
/// text.
template <auto M>
struct BoundedReading {
  using Setting = typename Member<M>::Type;

  template <class Record, class Watch>
  static bool read(TiXmlElement& element, Record& record, Watch& watch) {
    Setting& setting = record.*M;
    auto const before = setting.val;
    bool const min = KVXHelper::GetNumberFromAttr(&element, "min", setting.min);
    bool const max = KVXHelper::GetNumberFromAttr(&element, "max", setting.max);
    bool const read = KVXHelper::GetNumber(&element, setting.val, false);
    auto const sent = setting.val;
    if (setting.val < setting.min) setting.val = setting.min;
    if (setting.val > setting.max) setting.val = setting.max;
    remark(watch, [&](Observer& observer) {
      observer.within(Member<M>::name(), [&] {
        reportBound(observer, element, "min", min, setting.min);
        reportBound(observer, element, "max", max, setting.max);
        reportValue(observer, element, read, setting.val, sent, before);
        return read;
      });
    });
    return read;
  }

  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record, Circumstances,
                    bool) {
    return KVXHelper::AddTagMinMaxVal(&parent, element, record.*M);
  }

  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    return assignAll(settingParts<Setting>, record.*M, value, problem);
  }

  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) { outline.insert({"min", "max"}); }

 private:
  template <class Number>
  static void reportBound(Observer& observer, TiXmlElement& element, char const* name, bool read,
                          Number bound) {
    if (read) {
      observer.member(name, shown(bound));
    } else {
      observer.noAttribute(element, name);
    }
  }

  template <class Number>
  static void reportValue(Observer& observer, TiXmlElement& element, bool read, Number value,
                          Number sent, Number before) {
    if (!read) observer.emptyElement(element);
    if (!read && value != before) observer.member("val", shown(value));
    if (read) NumberKind::report(observer, "val", element, value);
    // Of a whole number the line above has told.
    if (std::is_floating_point_v<Number> && read && value != sent) {
      observer.changedNumber(element, printed(static_cast<double>(value)));
    }
  }

  static std::string printed(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
  }
};

template <auto M>
constexpr auto bounded(std::string_view element) {
  return reading<typename Member<M>::Record, BoundedReading<M>>(element);
}

/// One of several flags that share a member; `Bits` has the bit of each element. They are shown and
/// assigned as an object with a member for each. A flag that is not set clears its bit, an empty
/// element leaves it.
template <auto M, Vocabulary const& Bits>
struct BitReading {
  template <class Record, class Watch>
  static bool read(TiXmlElement& element, Record& record, Watch& watch) {
    char flag = 0;
    bool const read = KVXHelper::GetBool(&element, flag);
    if (read) put(record.*M, Bits.codeOf(element.Value()), flag != 0);
    remark(watch, [&](Observer& observer) {
      if (!read) observer.emptyElement(element);
      observer.within(Member<M>::name(), [&] {
        if (read) reportSwitch(observer, element.ValueStr(), element, flag != 0);
        return read;
      });
    });
    return read;
  }

  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record, Circumstances,
                    bool) {
    return KVXHelper::AddTagBool(&parent, element, (record.*M & Bits.codeOf(element)) != 0);
  }

  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    if (value.kind != Value::Kind::record) return fail(problem, described(value), "an object");
    for (Kovra::Member const& flag : value.members) {
      Assigned const result = assignBit(record.*M, flag, problem);
      if (result == Assigned::failed) {
        prefix(problem, flag.name);
        return result;
      }
    }
    return Assigned::done;
  }

  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) {
    for (Word const& word : switches.words) outline.emplace(word.text);
  }

 private:
  template <class Set>
  static void put(Set& set, int bit, bool flag) {
    set = static_cast<Set>(flag ? set | bit : set & ~bit);
  }

  template <class Set>
  static Assigned assignBit(Set& set, Kovra::Member const& member, Problem& problem) {
    Word const* const word = Bits.find(member.name.c_str());
    if (word == nullptr) return fail(problem, "an unknown key", "one of: " + listed(Bits));
    bool flag = false;
    Assigned const result = assignFlag(flag, member.value, problem);
    if (result == Assigned::done) put(set, word->code, flag);
    return result;
  }
};

template <auto M, Vocabulary const& Bits>
constexpr auto bitFlag(std::string_view element) {
  return reading<typename Member<M>::Record, BitReading<M, Bits>>(element);
}

/// How many child elements there are, whatever their names.
inline std::size_t countChildren(TiXmlElement const& element) {
  std::size_t count = 0;
  TiXmlElement const* child = element.FirstChildElement();
  for (; child != nullptr; child = child->NextSiblingElement()) ++count;
  return count;
}

namespace detail {
template <class Record, std::size_t N>
Record recordOf(Field<Record> const (&)[N]);
}  // namespace detail

/// Visits the children named `element`, the entries of a list, in their order; others are skipped.
/// The result is that of the last one visited; false when there was none.
template <class Watch, class Visit>
bool walkEntries(TiXmlElement* parent, std::string_view element, Watch& watch, Visit visit) {
  return walkChildren(parent, [&](TiXmlElement& child, bool result) {
    bool const isEntry = child.ValueStr() == element;
    remark(watch, [&](Observer& observer) {
      isEntry ? observer.knownElement(child) : observer.unknownElement(child);
    });
    return isEntry ? visit(child, result) : result;
  });
}

/// An entry that is a record, whose members are the children of its element.
template <auto const& Table>
struct RecordEntry {
  using Entry = decltype(detail::recordOf(Table));

  template <class Watch>
  static bool read(TiXmlElement& element, Entry& entry, Watch& watch, std::string_view list,
                   std::size_t index) {
    return watch.entry(list, index, [&] { return walk(&element, Table, entry, watch); });
  }
  static bool write(TiXmlElement& list, char const* element, Entry const& entry,
                    Circumstances circumstances) {
    return writeBelow(list, element, Table, entry, circumstances);
  }
  static Assigned assign(Entry& entry, Value const& value, Problem& problem) {
    return assignAll(Table, entry, value, problem);
  }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

/// The entries of the list `M`: the children `Element`, each read by `Each`, RecordEntry or a
/// struct like it.
template <auto M, Fixed Element, class Each>
struct EntriesBy {
  using Entry = typename Each::Entry;

  /// Reads the children in order into `room`, from its first entry on. Children of other names are
  /// skipped, and so are those for which there is no room. The result is that of the last entry
  /// read; false when there was none.
  template <class Watch>
  static bool read(TiXmlElement& parent, std::span<Entry> room, Watch& watch) {
    remark(watch, [](Observer& observer) { observer.list(memberName<M>); });
    std::size_t next = 0;
    return walkEntries(&parent, Element, watch, [&](TiXmlElement& child, bool result) {
      if (next == room.size()) {
        remark(watch, [&](Observer& observer) { observer.surplusEntry(child, room.size()); });
        return result;
      }
      std::size_t const index = next++;
      return Each::read(child, room[index], watch, memberName<M>, index);
    });
  }

  static void outline(Outline& outline) {
    outline.emplace(std::string_view(Element));
    Each::outline(outline);
  }
};

/// The entries of the list `M`: the children `Element`, each read with `Table`.
template <auto M, Fixed Element, auto const& Table>
struct EntriesOf : EntriesBy<M, Element, RecordEntry<Table>> {};

}  // namespace Kovra::frame

#endif
