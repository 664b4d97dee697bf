/// @file
/// The kinds of values: the only place where text becomes a value. Each states its tolerance once,
/// for every document.

#ifndef KOVRA_FRAME_KINDS_HPP
#define KOVRA_FRAME_KINDS_HPP

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "frame/assign.hpp"
#include "frame/bytes.hpp"
#include "frame/convert.hpp"
#include "frame/observer.hpp"
#include "frame/row.hpp"
#include "frame/vocabulary.hpp"
#include "kvxhelper.h"

namespace Kovra::frame {

// A kind of one type of member is a struct with
//   read     the classic reading: element and member in, success out
//   report   what an observer is told of a value that was just read
//   missing  what it is told when nothing was read, instead of that the element has no text
//   write    the member as an element, for documents that are written as well
//   assign   a value that a host gives, into the member
//   outline  the words in the element
//   shape    what the value is, where the member's type does not say it
// of which missing, outline and shape may be left out; one that does not write or assign says so. A
// kind that needs to know more than a type is an object of its own, of functions that get the row.

/// What a kind or a reading never does it says, by being one of these: a function of another
/// signature than is looked for would else be left out without a word.
struct NeverRead {};
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

// Numbers.

/// A decimal number by KVXHelper::GetNumber in the form of the member's type: one of those that
/// convertNumber() knows.
struct NumberKind {
  template <class Number>
  static bool read(Element element, Number& out) {
    return convertNumber(element.text(), out);
  }

  template <class Number>
  static void report(Observer& observer, std::string_view name, Element element, Number value);

  static bool write(Sink& sink, char const* element, int value);
  static bool write(Sink& sink, char const* element, unsigned int value);
  static bool write(Sink& sink, char const* element, long value);
  static bool write(Sink& sink, char const* element, float value);

  template <class Number>
  static Assigned assign(Number& out, Value const& value, Problems& problems) {
    return assignNumber(out, value, problems);
  }
};

/// The printer's counters, which it reports and nobody sets.
struct CounterKind : NumberKind, NeverWritten {};

/// A hexadecimal number with a mandatory "0x". A text without it counts as read and stores nothing.
struct HexadecimalKind : NeverWritten, NeverAssigned {
  static constexpr Shape shape = Shape::hexadecimal;

  static bool read(Element element, unsigned int& out) {
    return convertHexadecimal(element.text(), out);
  }
  static void report(Observer& observer, std::string_view name, Element element,
                     unsigned int value);
};

/// A whole number in an attribute of the element, whose text is not looked at. The row has the
/// attribute's name.
extern Kind const attributeKind;

// A setting with bounds, of either type: attributes "min" and "max", and the value as text. A bound
// that is absent stays as it was. The value is put up to "min" and then down to "max", also when
// there is no text: a setting without bounds in a cleared record reads as 0, and crossed bounds as
// "max". Printers always send the bounds, and hosts rely on values within them. The result is that
// of the text.
extern Kind const wholeSettingKind;
extern Kind const realSettingKind;

// A setting of which only the value is read, and all three parts are written.
extern Kind const wholeValueKind;
extern Kind const realValueKind;

// Texts.

/// A text, copied as far as its array goes. One without a terminator is written to the array's end.
extern Kind const textKind;

/// A text that is read and written like any other, and never shown.
extern Kind const secretKind;

/// What a text kind reads and tells an observer, for readings that are made of it.
bool readText(Element element, std::span<char> out);
void reportText(Observer& observer, std::string_view name, Element element, std::string_view kept);

/// A hardware address by KVXHelper::GetPhysicalAddress: what is missing in the text is zero.
struct AddressKind {
  using Address = unsigned char[6];
  static constexpr Shape shape = Shape::address;

  static bool read(Element element, Address& out) { return convertAddress(element.text(), out); }
  static void report(Observer& observer, std::string_view name, Element element,
                     Address const& value);
  static bool write(Sink& sink, char const* element, Address const& value);
  static Assigned assign(Address& out, Value const& value, Problems& problems);
};

// Keywords.

/// How a keyword is read and written. A text that is no word stores the vocabulary's code for it,
/// and an element without text leaves the code as it was, unless these say otherwise.
struct Keywords {
  Vocabulary const* read;
  Vocabulary const* written;
  char const* otherwise = "";  ///< written for a code without a word
  /// Only the words are stored: any other text counts as read and leaves the code.
  bool knownOnly = false;
  /// Every element stores, also one without text: the code of an unknown word. That does not count
  /// as read, and yet an observer sees what the record holds since.
  bool always = false;
};

/// The words that stand in an element for a value of the row; none where that is no word.
std::span<Word const> wordsIn(Row const& row);

// The row has the keywords.
extern Kind const keywordKind;      ///< of an int, or an enumeration like one
extern Kind const byteKeywordKind;  ///< of an unsigned char

/// What a keyword's kind tells of a code together with the text that it was made from. Is that a
/// word?
bool showKeyword(Observer& observer, std::string_view name, char const* text, int code,
                 Vocabulary const& words);
void reportKeyword(Observer& observer, std::string_view name, Element element, int code,
                   Vocabulary const& words);
void outlineWords(Vocabulary const& words, Outline& outline);

// Flags.

/// A flag that is set by exactly one word, and cleared by any other; or cleared by exactly one, and
/// set by any other, also by a misspelling. An element without text leaves it.
struct FlagWord {
  Word words[2];  ///< that one, and what printers send otherwise; any third text is worth a note

  std::string_view word() const { return words[0].text; }
  std::string_view opposite() const { return words[1].text; }
  bool sets() const { return words[0].code != 0; }
};
// The row has the words.
extern Kind const boolWordKind;
extern Kind const charWordKind;

/// The words that KVXHelper::GetBool takes for a flag that is set, and those that printers send for
/// one that is not. Any other text means not set, too, and is worth a note.
inline constexpr Word switchWords[] = {{"enabled", 1}, {"yes", 1}, {"disabled", 0}, {"no", 0}};
inline constexpr Vocabulary switches{switchWords, Match::exact, 0};
static_assert(everyWordIsReachable(switches));

void reportSwitch(Observer& observer, std::string_view name, Element element, bool value);

/// What is written for a flag that is set, and for one that is not.
struct SwitchWords {
  Word words[2];
};
// A flag by KVXHelper::GetBool. An empty element leaves it. The row has the words.
extern Kind const boolSwitchKind;
extern Kind const charSwitchKind;
/// The same by the form of KVXHelper::GetBool that clears the flag of an element without text.
extern Kind const clearedSwitchKind;

// One of several flags that share a member; the row has a vocabulary with the bit of each element.
// They are shown and assigned as an object with a member for each. A flag that is not set clears
// its bit, an empty element leaves it.
extern Kind const byteBitKind;
extern Kind const intBitKind;

// Elements with children.

// The row has the rows below.
extern Kind const nestedKind;  ///< those of a record in the record
extern Kind const groupKind;   ///< those of the record itself

}  // namespace Kovra::frame

#endif
