/// @file
/// The kinds of values: the only place where text becomes a value. Each states its tolerance once,
/// for every document.

#ifndef KOVRA_FRAME_TYPED_KINDS_HPP
#define KOVRA_FRAME_TYPED_KINDS_HPP

#include <tinyxml.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/assign.hpp"
#include "frame/bytes.hpp"
#include "frame/convert.hpp"
#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/print.hpp"
#include "frame/text.hpp"
#include "frame/typed/walk.hpp"
#include "frame/vocabulary.hpp"
#include "kvxhelper.h"

namespace Kovra::frame::typed {

// Rows that read one value. Each is a struct with
//   read     the classic reading: element and member in, success out
//   report   what an observer is told of a value that was just read
//   missing  what it is told when nothing was read, instead of that the element has no text
//   write    the member below the parent, for documents that are written as well
//   assign   a value that a host gives, into the member
// of which missing may be left out. One that does not write or assign says so.

/// What a kind or a reading never does it says, by being one of these: a function of another
/// signature than is looked for would else be left out without a word.
struct NeverWritten {};
struct NeverAssigned {};

/// A short text that is compared with words; longer ones are none of them.
class WordText {
 public:
  WordText() = default;
  WordText(WordText const&) = delete;
  WordText& operator=(WordText const&) = delete;

  /// Fetches at most 31 characters of the element's text; false when it has none.
  bool read(Element element) {
    char const* const text = element.text();
    if (text == nullptr) return false;
    std::size_t const length = ::strnlen(text, cut_.size() - 1);
    text_ = {text, length};
    if (text[length] == '\0') return true;
    convertText(text, cut_.data(), static_cast<int>(cut_.size()));
    text_ = {cut_.data(), length};
    return true;
  }
  char const* get() const { return text_.data(); }
  bool is(std::string_view word) const { return sameText(text_, word); }

 private:
  std::string_view text_ = "";  ///< with a zero byte behind it
  std::array<char, 32> cut_;    ///< of a longer text, what is left of it
};

/// A decimal number by KVXHelper::GetNumber in the form of the member's type.
struct NumberKind {
  template <class Number>
  static bool read(Element element, Number& out) {
    return convertNumber(element.text(), out);
  }

  template <class Number>
  static void report(Observer& observer, std::string_view name, Element element, Number value) {
    observer.member(name, shown(value));
    char const* const text = element.text();
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
    return assignNumber(out, value, problem);
  }

 private:
  /// Did the conversion take a number, and nothing but blanks behind it?
  static bool isWhole(char const* text, char const* end) {
    return end != text && end[std::strspn(end, " \t\r\n")] == '\0';
  }
};

/// The printer's counters, which it reports and nobody sets.
struct CounterKind : NumberKind, NeverWritten {};

/// A hexadecimal number with a mandatory "0x". A text without it counts as read and stores nothing.
struct HexadecimalKind : NeverWritten, NeverAssigned {
  static bool read(Element element, unsigned int& out) {
    return convertHexadecimal(element.text(), out);
  }

  static void report(Observer& observer, std::string_view name, Element element,
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
    unsigned long const sent = std::strtoul(element.text(), nullptr, 16);
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
  static bool read(Element element, char (&out)[N]) {
    return convertText(element.text(), out, static_cast<int>(N));
  }

  template <std::size_t N>
  static void report(Observer& observer, std::string_view name, Element element,
                     char const (&value)[N]) {
    std::string_view const kept = textIn(value);
    observer.member(name, shown(kept));
    if (std::strlen(element.text()) > kept.size()) observer.cutText(element, kept);
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

  static bool read(Element element, Address& out) { return convertAddress(element.text(), out); }

  static void report(Observer& observer, std::string_view name, Element element,
                     Address const& value) {
    observer.member(name, shown(std::string_view(printAddress(value).data())));
    if (!isWhole(element.text())) {
      observer.notANumber(element, form);
    }
  }

  static bool write(TiXmlElement& parent, char const* element, Address const& value) {
    return KVXHelper::AddTagPhysicalAddress(&parent, element, value);
  }

  static Assigned assign(Address& out, Value const& value, Problem& problem) {
    if (value.kind != Value::Kind::text || value.text.find('\0') != value.text.npos ||
        !isWhole(value.text.c_str())) {
      return fail(problem, described(value), form);
    }
    convertAddress(value.text.c_str(), out);
    return Assigned::done;
  }

 private:
  /// Are there six fields, and nothing behind them?
  static bool isWhole(char const* text) {
    std::array<unsigned int, std::extent_v<Address>> bytes{};
    int end = 0;
    int const fields = std::sscanf(text, "%02x:%02x:%02x:%02x:%02x:%02x%n", &bytes[0], &bytes[1],
                                   &bytes[2], &bytes[3], &bytes[4], &bytes[5], &end);
    return fields == static_cast<int>(bytes.size()) && text[end] == '\0';
  }
};

/// A keyword's code; an unknown word stores the vocabulary's code for it. An element without text
/// leaves the code as it was.
template <Vocabulary const& Words>
struct KeywordKind {
  template <class Code>
  static bool read(Element element, Code& out) {
    WordText text;
    if (!text.read(element)) return false;
    out = static_cast<Code>(Words.codeOf(text.get()));
    return true;
  }

  template <class Code>
  static void report(Observer& observer, std::string_view name, Element element, Code value) {
    WordText text;
    text.read(element);
    if (!show(observer, name, text.get(), value)) {
      observer.unknownWord(element, element.text(), Words);
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
    using Stored = typename std::conditional_t<std::is_enum_v<Code>, std::underlying_type<Code>,
                                               std::type_identity<Code>>::type;
    using Range = std::numeric_limits<Stored>;
    int code = 0;
    Assigned const result = assignKeyword(code, value, Words, Range::min(), Range::max(), problem);
    if (result == Assigned::done) out = static_cast<Code>(code);
    return result;
  }

  static void outline(Outline& outline) {
    for (Word const& word : Words.words) outline.emplace(word.text);
  }
};

/// A keyword that every element stores, also one without text: as the code of an unknown word. That
/// one does not count as read, and yet an observer sees what the record holds since.
template <Vocabulary const& Words>
struct AnyKeywordKind : KeywordKind<Words> {
  template <class Code>
  static bool read(Element element, Code& out) {
    WordText text;
    bool const read = text.read(element);
    out = static_cast<Code>(Words.codeOf(text.get()));
    return read;
  }

  template <class Code>
  static void missing(Observer& observer, std::string_view name, Element element, Code value) {
    observer.emptyElement(element);
    KeywordKind<Words>::show(observer, name, "", value);
  }
};

/// A keyword of which only the known words are stored: an unknown one counts as read and leaves the
/// code as it was.
template <Vocabulary const& Words>
struct KnownKeywordKind : KeywordKind<Words> {
  template <class Code>
  static bool read(Element element, Code& out) {
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
/// exactly one word, and set by any other, also by a misspelling (`Sets` false). An element without
/// text leaves it.
template <Fixed TheWord, bool Sets>
struct WordFlagKind : NeverWritten {
  template <class Flag>
  static bool read(Element element, Flag& out) {
    WordText text;
    if (!text.read(element)) return false;
    out = static_cast<Flag>(text.is(TheWord) == Sets);
    return true;
  }

  template <class Flag>
  static void report(Observer& observer, std::string_view name, Element, Flag value) {
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

inline void reportSwitch(Observer& observer, std::string_view name, Element element, bool value) {
  observer.member(name, shown(value));
  WordText text;
  text.read(element);
  if (switches.find(text.get()) == nullptr) {
    observer.unknownWord(element, element.text(), switches);
  }
}

/// A flag by KVXHelper::GetBool, written with one of two words. An empty element leaves it.
template <Fixed Yes, Fixed No>
struct SwitchKind {
  template <class Flag>
  static bool read(Element element, Flag& out) {
    char flag = 0;
    if (!convertFlag(element.text(), flag)) return false;
    out = static_cast<Flag>(flag);
    return true;
  }

  template <class Flag>
  static void report(Observer& observer, std::string_view name, Element element, Flag value) {
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

/// The same into a `bool`, by the form of KVXHelper::GetBool for that: an element without text
/// clears the flag.
struct ClearedSwitchKind : SwitchKind<"yes", "no"> {
  static bool read(Element element, bool& out) { return convertFlag(element.text(), out); }
};

}  // namespace Kovra::frame::typed

#endif
