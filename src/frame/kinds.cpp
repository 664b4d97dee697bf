#include "frame/kinds.hpp"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "frame/print.hpp"
#include "frame/text.hpp"
#include "frame/walk.hpp"
#include "frame/wipe.hpp"

namespace Kovra::frame {

namespace {

std::string printed(char const* format, auto value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

/// The kinds' own values, from places whose type the row's factory has checked.
template <class Type>
Type& at(void* place) {
  return *static_cast<Type*>(place);
}
template <class Type>
Type const& at(void const* place) {
  return *static_cast<Type const*>(place);
}

/// What a kind needs to know, likewise.
template <class Type>
Type const& with(Row const& row) {
  return *static_cast<Type const*>(row.with);
}

/// Did the conversion take a number, and nothing but blanks behind it?
bool isWhole(char const* text, char const* end) {
  return end != text && end[std::strspn(end, " \t\r\n")] == '\0';
}

/// Is it of no form that only the conversion knows? "nan", "infinity", "0x10"
bool isDecimal(char const* text, char const* end) {
  constexpr std::string_view allowed = "0123456789+-.eE \t\r\n\v\f";
  return std::string_view(text, end).find_first_not_of(allowed) == allowed.npos;
}

/// `text` is that of the element, or of an attribute of it.
void reportReal(Observer& observer, Element element, char const* text, float value) {
  char* end = nullptr;
  errno = 0;
  double const sent = std::strtod(text, &end);
  if (!isWhole(text, end) || !isDecimal(text, end)) {
    observer.notANumber(element, "a decimal number", text);
  } else if (errno == ERANGE || (std::isfinite(sent) && !std::isfinite(value))) {
    observer.changedNumber(element, std::to_string(value), text);
  }
}

/// Is it a number in so few digits that the member holds it, whichever it is? Most are.
bool isPlainWhole(char const* text, int most, bool isSigned) {
  if (isSigned && *text == '-') ++text;
  int digits = 0;
  while (text[digits] >= '0' && text[digits] <= '9' && digits <= most) ++digits;
  return digits > 0 && digits <= most && text[digits] == '\0';
}

/// What there is to say of a number in a form that is looked at closely.
template <class Number>
[[gnu::noinline]] void reportOddWhole(Observer& observer, Element element, char const* text,
                                      Number value) {
  char* end = nullptr;
  errno = 0;
  long const sent = std::strtol(text, &end, 10);
  if (!isWhole(text, end)) {
    observer.notANumber(element, "a whole decimal number", text);
  } else if (errno == ERANGE || !std::in_range<Number>(sent) ||
             static_cast<Number>(sent) != value) {
    observer.changedNumber(element, std::to_string(value), text);
  }
}

/// A value that is as it was read is looked at only where it is not plain.
template <class Number>
void reportWhole(Observer& observer, Element element, char const* text, Number value,
                 bool isAsRead) {
  // Counters have 16 bits, whatever the member has.
  constexpr int most =
      std::min(std::numeric_limits<Number>::digits10,
               std::is_same_v<Number, unsigned long> ? std::numeric_limits<std::uint16_t>::digits10
                                                     : std::numeric_limits<int>::digits10);
  if (isAsRead && isPlainWhole(text, most, std::is_signed_v<Number>)) [[likely]]
    return;
  reportOddWhole(observer, element, text, value);
}

template <class Number>
void reportNumber(Observer& observer, std::string_view name, Element element, char const* text,
                  Number value) {
  observer.member(name, value);
  if constexpr (std::is_floating_point_v<Number>) {
    reportReal(observer, element, text, value);
  } else {
    reportWhole(observer, element, text, value, true);
  }
}

/// A number in an attribute.
template <class Number>
void reportAttribute(Observer& observer, std::string_view name, Element element,
                     char const* attribute, bool read, Number value) {
  if (!read) return observer.noAttribute(element, attribute, element.attribute(attribute));
  reportNumber(observer, name, element, element.attribute(attribute), value);
}

}  // namespace

// Numbers.

template <class Number>
void NumberKind::report(Observer& observer, std::string_view name, Element element, Number value) {
  reportNumber(observer, name, element, element.peek(), value);
}

template void NumberKind::report(Observer&, std::string_view, Element, int);
template void NumberKind::report(Observer&, std::string_view, Element, long);
template void NumberKind::report(Observer&, std::string_view, Element, unsigned short);
template void NumberKind::report(Observer&, std::string_view, Element, unsigned int);
template void NumberKind::report(Observer&, std::string_view, Element, unsigned long);
template void NumberKind::report(Observer&, std::string_view, Element, float);

bool NumberKind::write(Sink& sink, char const* element, int value) {
  sink.leaf(element, printWhole(value).data());
  return true;
}
bool NumberKind::write(Sink& sink, char const* element, unsigned int value) {
  sink.leaf(element, printWhole(value).data());
  return true;
}
bool NumberKind::write(Sink& sink, char const* element, long value) {
  sink.leaf(element, printWhole(value).data());
  return true;
}
bool NumberKind::write(Sink& sink, char const* element, float value) {
  sink.leaf(element, printDecimals(value, 4).data());
  return true;
}

namespace {

constexpr char hexadecimalForm[] = "a hexadecimal number with 0x before it";

/// Is it a number in so few digits that the member holds it? Most are.
bool isPlainHexadecimal(char const* text) {
  if (text[0] != '0' || text[1] != 'x') return false;
  constexpr std::size_t most = 2 * sizeof(unsigned int);
  std::size_t digits = 0;
  for (text += 2; digits <= most && std::isxdigit(static_cast<unsigned char>(*text)) != 0; ++text) {
    ++digits;
  }
  return digits > 0 && digits <= most && *text == '\0';
}

}  // namespace

void HexadecimalKind::report(Observer& observer, std::string_view name, Element element,
                             unsigned int value) {
  if (isPlainHexadecimal(element.text())) return observer.bits(name, value);
  WordText text;
  text.read(element);
  unsigned int scanned = 0;
  if (std::sscanf(text.get(), "0x%x", &scanned) != 1) {
    observer.notANumber(element, hexadecimalForm);
    return;
  }
  observer.bits(name, value);
  char* end = nullptr;
  errno = 0;
  unsigned long const sent = std::strtoul(element.text(), &end, 16);
  if (errno == ERANGE || sent != value) {
    observer.changedNumber(element, printed("0x%x", value));
  } else if (!isWhole(element.text(), end)) {
    observer.notANumber(element, hexadecimalForm);
  }
}

// Attributes.

namespace {

bool readAttribute(Row const& row, Element element, void* place, Watch const& watch) {
  auto const* const name = static_cast<char const*>(row.with);
  bool const read = convertBound(element.attribute(name), at<int>(place));
  remark(watch, [&](Observer& observer) {
    reportAttribute(observer, row.member, element, name, read, at<int>(place));
  });
  return read;
}

void outlineAttribute(Row const& row, Outline& outline) {
  outline.emplace(static_cast<char const*>(row.with));
}

}  // namespace

constinit Kind const attributeKind = {Shape::integer, readAttribute, nullptr,
                                      nullptr,        nullptr,       outlineAttribute};

// Settings.

namespace {

template <class Number>
void reportValue(Observer& observer, Element element, bool read, Number value, Number sent,
                 Number before) {
  if (!read) observer.emptyElement(element);
  if (!read && value != before) observer.member("val", value);
  if (!read) return;
  if constexpr (std::is_integral_v<Number>) {
    observer.member("val", value);
    reportWhole(observer, element, element.text(), value, value == sent);
  } else {
    NumberKind::report(observer, "val", element, value);
    if (value != sent) observer.changedNumber(element, printed("%g", static_cast<double>(value)));
  }
}

template <class Setting>
bool readSetting(Row const& row, Element element, void* place, Watch const& watch) {
  Setting& setting = at<Setting>(place);
  auto const before = setting.val;
  bool const min = convertBound(element.attribute("min"), setting.min);
  bool const max = convertBound(element.attribute("max"), setting.max);
  bool const read = convertNumber(element.text(), setting.val);
  auto const sent = setting.val;
  if (setting.val < setting.min) setting.val = setting.min;
  if (setting.val > setting.max) setting.val = setting.max;
  remark(watch, [&](Observer& observer) {
    observer.within(row.member, [&] {
      reportAttribute(observer, "min", element, "min", min, setting.min);
      reportAttribute(observer, "max", element, "max", max, setting.max);
      reportValue(observer, element, read, setting.val, sent, before);
      return read;
    });
  });
  return read;
}

template <class Setting>
bool readSettingsValue(Row const& row, Element element, void* place, Watch const& watch) {
  auto& value = at<Setting>(place).val;
  bool const read = NumberKind::read(element, value);
  remark(watch, [&](Observer& observer) {
    if (!read) return observer.emptyElement(element);
    observer.within(row.member, [&] {
      NumberKind::report(observer, "val", element, value);
      return read;
    });
  });
  return read;
}

void writeParts(Sink& sink, char const* element, NumberText const& min, NumberText const& max,
                NumberText const& value) {
  sink.open(element);
  sink.attribute("min", min.data());
  sink.attribute("max", max.data());
  sink.text(value.data());
  sink.close(element);
}

template <class Setting>
bool writeSetting(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  auto const& [min, max, val] = at<Setting>(place);
  if constexpr (std::is_floating_point_v<decltype(Setting::val)>) {
    writeParts(sink, row.element.data(), printDecimals(min, 2), printDecimals(max, 2),
               printDecimals(val, 4));
  } else {
    writeParts(sink, row.element.data(), printWhole(min), printWhole(max), printWhole(val));
  }
  return true;
}

/// A part as a member, for those who compose; on the wire it is no element.
template <class Setting>
Assigned assignPart(Setting& setting, Kovra::Member const& part, Problems& problems) {
  if (part.name() == "min") return assignNumber(setting.min, part.value(), problems);
  if (part.name() == "max") return assignNumber(setting.max, part.value(), problems);
  if (part.name() == "val") return assignNumber(setting.val, part.value(), problems);
  return fail(problems, "an unknown key", "one of: min, max, val");
}

/// Assigns the members of a value to parts that are no rows, with `assign`.
template <class Assign>
Assigned assignParts(Row const& row, std::string_view member, Value const& value,
                     Problems& problems, Assign assign) {
  if (member != row.member) return Assigned::notMine;
  if (!value.isRecord()) return fail(problems, described(value), "an object");
  auto all = Assigned::done;
  for (Kovra::Member const& part : value.members()) {
    std::size_t const mark = problems.mark();
    all = both(all, assign(part));
    problems.prefix(mark, part.name());
  }
  return all;
}

template <class Setting>
Assigned assignSetting(Row const& row, void* place, std::string_view member, Value const& value,
                       Problems& problems) {
  return assignParts(row, member, value, problems, [&](Kovra::Member const& part) {
    return assignPart(at<Setting>(place), part, problems);
  });
}

void outlineSetting(Row const&, Outline& outline) {
  outline.insert({"min", "max"});
}

template <class Setting>
constexpr Kind settingKind = {
    Shape::setting, readSetting<Setting>, writeSetting<Setting>, assignSetting<Setting>,
    nullptr,        outlineSetting};
template <class Setting>
constexpr Kind valueKind = {Shape::setting,
                            readSettingsValue<Setting>,
                            writeSetting<Setting>,
                            assignSetting<Setting>,
                            nullptr,
                            outlineSetting};

}  // namespace

constinit Kind const wholeSettingKind = settingKind<_MinMaxVal>;
constinit Kind const realSettingKind = settingKind<_MinMaxValFloat>;
constinit Kind const wholeValueKind = valueKind<_MinMaxVal>;
constinit Kind const realValueKind = valueKind<_MinMaxValFloat>;

// Texts.

bool readText(Element element, std::span<char> out) {
  return convertText(element.text(), out.data(), static_cast<int>(out.size()));
}

void reportText(Observer& observer, std::string_view name, Element element, std::string_view kept) {
  observer.member(name, kept);
  if (std::strlen(element.text()) > kept.size()) observer.cutText(element, kept);
}

namespace {

std::span<char> arrayOf(Row const& row, void* place) {
  return {static_cast<char*>(place), row.size};
}

std::string_view textOf(Row const& row, void const* place) {
  auto const* const text = static_cast<char const*>(place);
  return {text, ::strnlen(text, row.size)};
}

/// Hosts get as many bytes as fit; whoever watches is to have whole characters.
void dropCutCharacter(std::span<char> array) {
  std::string_view const text(array.data(), ::strnlen(array.data(), array.size()));
  std::size_t const whole = wholeCharacters(text).size();
  std::fill(array.begin() + static_cast<std::ptrdiff_t>(whole),
            array.begin() + static_cast<std::ptrdiff_t>(text.size()), '\0');
}

template <bool IsSecret>
bool readTextRow(Row const& row, Element element, void* place, Watch const& watch) {
  bool const read = readText(element, arrayOf(row, place));
  remark(watch, [&](Observer& observer) {
    if (IsSecret) element.hide();
    if (!read) return observer.emptyElement(element);
    if (IsSecret) observer.secrecy(true);
    dropCutCharacter(arrayOf(row, place));
    reportText(observer, row.member, element, textOf(row, place));
    if (IsSecret) observer.secrecy(false);
  });
  return read;
}

bool writeTextRow(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  std::string_view const text = textOf(row, place);
  if (text.size() < row.size) {
    sink.leaf(row.element.data(), text.data());
    return true;
  }
  std::string terminated(text);
  sink.leaf(row.element.data(), terminated.c_str());
  wipe(terminated.data(), terminated.size());
  return true;
}

Assigned assignTextRow(Row const& row, void* place, std::string_view member, Value const& value,
                       Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  return assignText(arrayOf(row, place), value, problems);
}

/// What should have become a secret is told by its length, if it is a text at all.
Assigned assignSecretRow(Row const& row, void* place, std::string_view member, Value const& value,
                         Problems& problems) {
  std::size_t const mark = problems.mark();
  Assigned const result = assignTextRow(row, place, member, value, problems);
  for (Trouble& trouble : problems.all().subspan(mark)) {
    trouble.found = value.isText() ? "a text of " + std::to_string(value.asText().size()) + " bytes"
                                   : "a value of another kind";
  }
  return result;
}

}  // namespace

constinit Kind const textKind = {
    Shape::text, readTextRow<false>, writeTextRow, assignTextRow, nullptr, nullptr};
constinit Kind const secretKind = {Shape::secret,   readTextRow<true>, writeTextRow,
                                   assignSecretRow, nullptr,           nullptr};

// Addresses.

namespace {

constexpr char addressForm[] = "six hexadecimal bytes with colons between them";

/// Two digits in each field, as printers send it.
bool isPlainAddress(char const* text) {
  constexpr std::size_t length = 3 * std::extent_v<AddressKind::Address> - 1;
  for (std::size_t i = 0; i < length; ++i) {
    bool const isColon = i % 3 == 2;
    bool const fits = isColon ? text[i] == ':' : std::isxdigit(static_cast<unsigned char>(text[i]));
    if (!fits) return false;
  }
  return text[length] == '\0';
}

/// Are there six fields, and nothing behind them?
bool isWholeAddress(char const* text) {
  if (isPlainAddress(text)) return true;
  // The conversion also takes signs, blanks and "0x" for parts of a field.
  std::string_view const all = text;
  if (all.find_first_not_of("0123456789abcdefABCDEF:") != all.npos) return false;
  std::array<unsigned int, std::extent_v<AddressKind::Address>> bytes{};
  int end = 0;
  int const fields = std::sscanf(text, "%02x:%02x:%02x:%02x:%02x:%02x%n", &bytes[0], &bytes[1],
                                 &bytes[2], &bytes[3], &bytes[4], &bytes[5], &end);
  return fields == static_cast<int>(bytes.size()) && text[end] == '\0';
}

}  // namespace

void AddressKind::report(Observer& observer, std::string_view name, Element element,
                         Address const& value) {
  observer.member(name, printAddress(value).data());
  if (!isWholeAddress(element.text())) observer.notANumber(element, addressForm);
}

bool AddressKind::write(Sink& sink, char const* element, Address const& value) {
  sink.leaf(element, printAddress(value).data());
  return true;
}

Assigned AddressKind::assign(Address& out, Value const& value, Problems& problems) {
  std::string const text(value.asText(""));
  if (text.find('\0') != text.npos || !isWholeAddress(text.c_str())) {
    return fail(problems, described(value), addressForm);
  }
  convertAddress(text.c_str(), out);
  return Assigned::done;
}

// Keywords.

bool showKeyword(Observer& observer, std::string_view name, char const* text, int code,
                 Vocabulary const& words) {
  Word const* const word = words.find(text);
  observer.keyword(name, code, word != nullptr ? word->text : text, word != nullptr);
  return word != nullptr;
}

namespace {

void reportWord(Observer& observer, std::string_view name, Element element, WordText const& text,
                Word const* word, int code, Vocabulary const& words) {
  observer.keyword(name, code, word != nullptr ? word->text : text.get(), word != nullptr);
  if (word == nullptr) {
    observer.unknownWord(element, element.text(), words);
  } else if (!text.is(word->text)) {
    observer.otherSpelling(element, word->text);
  }
}

}  // namespace

void reportKeyword(Observer& observer, std::string_view name, Element element, int code,
                   Vocabulary const& words) {
  WordText text;
  text.read(element);
  reportWord(observer, name, element, text, words.find(text.get()), code, words);
}

void outlineWords(Vocabulary const& words, Outline& outline) {
  for (Word const& word : words.words) outline.emplace(word.text);
}

namespace {

/// A code in its member, which may be an enumeration.
template <class Code>
int codeAt(void const* place) {
  Code code;
  std::memcpy(&code, place, sizeof code);
  return code;
}
template <class Code>
void storeCode(void* place, int code) {
  Code const stored = static_cast<Code>(code);
  std::memcpy(place, &stored, sizeof stored);
}

template <class Code>
bool readKeyword(Row const& row, Element element, void* place, Watch const& watch) {
  Keywords const& keywords = with<Keywords>(row);
  WordText text;
  bool const read = text.read(element);
  Word const* word = nullptr;
  if (read || keywords.always) {
    word = keywords.read->find(text.get());
    if (word != nullptr || !keywords.knownOnly) {
      storeCode<Code>(place, word != nullptr ? word->code : keywords.read->unknown);
    }
  }
  remark(watch, [&](Observer& observer) {
    int const code = codeAt<Code>(place);
    if (read) return reportWord(observer, row.member, element, text, word, code, *keywords.read);
    observer.emptyElement(element);
    if (keywords.always) showKeyword(observer, row.member, "", code, *keywords.read);
  });
  return read;
}

template <class Code>
bool writeKeyword(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  Keywords const& keywords = with<Keywords>(row);
  std::string_view const word = keywords.written->wordOf(codeAt<Code>(place));
  sink.leaf(row.element.data(), word.empty() ? keywords.otherwise : word.data());
  return true;
}

template <class Code>
Assigned assignKeywordRow(Row const& row, void* place, std::string_view member, Value const& value,
                          Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  int code = 0;
  Assigned const result =
      assignKeyword(code, value, *with<Keywords>(row).read, std::numeric_limits<Code>::min(),
                    std::numeric_limits<Code>::max(), problems);
  if (result == Assigned::done) storeCode<Code>(place, code);
  return result;
}

void outlineKeyword(Row const& row, Outline& outline) {
  outlineWords(*with<Keywords>(row).read, outline);
}

Vocabulary const& wordsOfKeyword(Row const& row) {
  return *with<Keywords>(row).read;
}

template <class Code>
constexpr Kind keywordKindOf = {Shape::keyword,         readKeyword<Code>, writeKeyword<Code>,
                                assignKeywordRow<Code>, nullptr,           outlineKeyword,
                                wordsOfKeyword};

}  // namespace

constinit Kind const keywordKind = keywordKindOf<int>;
constinit Kind const byteKeywordKind = keywordKindOf<unsigned char>;

// Flags.

void reportSwitch(Observer& observer, std::string_view name, Element element, bool value) {
  observer.member(name, value);
  WordText text;
  text.read(element);
  if (switches.find(text.get()) == nullptr) {
    observer.unknownWord(element, element.text(), switches);
  }
}

namespace {

void outlineSwitches(Row const&, Outline& outline) {
  outlineWords(switches, outline);
}

template <class Flag>
bool readWordFlag(Row const& row, Element element, void* place, Watch const& watch) {
  FlagWord const& flag = with<FlagWord>(row);
  WordText text;
  bool const read = text.read(element);
  if (read) at<Flag>(place) = static_cast<Flag>(text.is(flag.word()) == flag.sets());
  remark(watch, [&](Observer& observer) {
    if (!read) return observer.emptyElement(element);
    observer.member(row.member, at<Flag>(place) != 0);
    bool const isKnown = text.is(flag.word()) || text.is(flag.opposite());
    if (!isKnown) observer.unknownWord(element, {flag.word(), flag.opposite()});
  });
  return read;
}

template <class Flag>
Assigned assignFlagRow(Row const& row, void* place, std::string_view member, Value const& value,
                       Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  return assignFlag(at<Flag>(place), value, problems);
}

void outlineFlagWord(Row const& row, Outline& outline) {
  for (Word const& word : with<FlagWord>(row).words) outline.emplace(word.text);
}

template <class Flag>
constexpr Kind wordKindOf = {Shape::flag, readWordFlag<Flag>, nullptr, assignFlagRow<Flag>,
                             nullptr,     outlineFlagWord};

/// `Stored` says with which form of the conversion the flag is stored: the one for `bool` also
/// clears that of an element without text.
template <class Flag, class Stored>
bool readSwitch(Row const& row, Element element, void* place, Watch const& watch) {
  Stored stored{};  // what the host has may be no value of a flag
  bool const wasSet = watch && at<Flag>(place) != 0;
  bool const read = convertFlag(element.text(), stored);
  if (read || std::is_same_v<Stored, bool>) at<Flag>(place) = static_cast<Flag>(stored);
  remark(watch, [&](Observer& observer) {
    bool const isCleared = !read && wasSet && at<Flag>(place) == 0;
    if (isCleared) observer.member(row.member, false);
    if (!read) return observer.emptyElement(element);
    reportSwitch(observer, row.member, element, at<Flag>(place) != 0);
  });
  return read;
}

template <class Flag>
bool writeSwitch(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  auto const& words = with<SwitchWords>(row).words;
  sink.leaf(row.element.data(), words[at<Flag>(place) != 0 ? 0 : 1].text.data());
  return true;
}

template <class Flag, class Stored>
constexpr Kind switchKindOf = {Shape::flag,       readSwitch<Flag, Stored>,
                               writeSwitch<Flag>, assignFlagRow<Flag>,
                               nullptr,           outlineSwitches};

}  // namespace

constinit Kind const boolWordKind = wordKindOf<bool>;
constinit Kind const charWordKind = wordKindOf<char>;
constinit Kind const boolSwitchKind = switchKindOf<bool, char>;
constinit Kind const charSwitchKind = switchKindOf<char, char>;
constinit Kind const clearedSwitchKind = switchKindOf<bool, bool>;

// Bits.

namespace {

template <class Set>
void putBit(void* place, int bit, bool flag) {
  Set& set = at<Set>(place);
  set = static_cast<Set>(flag ? set | bit : set & ~bit);
}

template <class Set>
bool readBit(Row const& row, Element element, void* place, Watch const& watch) {
  char flag = 0;
  bool const read = convertFlag(element.text(), flag);
  if (read) putBit<Set>(place, with<Vocabulary>(row).codeOf(row.element.data()), flag != 0);
  remark(watch, [&](Observer& observer) {
    if (!read) observer.emptyElement(element);
    observer.within(row.member, [&] {
      if (read) reportSwitch(observer, row.element, element, flag != 0);
      return read;
    });
  });
  return read;
}

template <class Set>
bool writeBit(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  int const bit = with<Vocabulary>(row).codeOf(row.element.data());
  sink.leaf(row.element.data(), (at<Set>(place) & bit) != 0 ? "yes" : "no");
  return true;
}

template <class Set>
Assigned assignBit(Row const& row, void* place, Kovra::Member const& member, Problems& problems) {
  Vocabulary const& bits = with<Vocabulary>(row);
  Word const* const word = bits.find(member.name());
  if (word == nullptr) return fail(problems, "an unknown key", "one of: " + listed(bits));
  bool flag = false;
  Assigned const result = flagFrom(flag, member.value(), problems);
  if (result == Assigned::done) putBit<Set>(place, word->code, flag);
  return result;
}

template <class Set>
Assigned assignBits(Row const& row, void* place, std::string_view member, Value const& value,
                    Problems& problems) {
  return assignParts(row, member, value, problems, [&](Kovra::Member const& flag) {
    return assignBit<Set>(row, place, flag, problems);
  });
}

Vocabulary const& wordsOfBits(Row const& row) {
  return with<Vocabulary>(row);
}

template <class Set>
constexpr Kind bitKindOf = {Shape::bits, readBit<Set>,    writeBit<Set>, assignBits<Set>,
                            nullptr,     outlineSwitches, wordsOfBits};

}  // namespace

constinit Kind const byteBitKind = bitKindOf<unsigned char>;
constinit Kind const intBitKind = bitKindOf<int>;

// Elements with children.

namespace {

bool readGroup(Row const& row, Element element, void* place, Watch const& watch) {
  return readBelow(element, with<Rows>(row), place, watch);
}

bool readNested(Row const& row, Element element, void* place, Watch const& watch) {
  return watch.within(row.member,
                      [&] { return readBelow(element, with<Rows>(row), place, watch); });
}

bool writeNested(Row const& row, Sink& sink, void const* place, Circumstances circumstances, bool) {
  return writeRowsBelow(sink, row.element.data(), with<Rows>(row), place, circumstances);
}

Assigned assignGroup(Row const& row, void* place, std::string_view member, Value const& value,
                     Problems& problems) {
  return assignMember(with<Rows>(row), place, member, value, problems);
}

Assigned assignNested(Row const& row, void* place, std::string_view member, Value const& value,
                      Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  return assignRows(with<Rows>(row), place, value, problems);
}

void keysOfGroup(Row const& row, Keys& keys) {
  keysOf(with<Rows>(row), keys);
}

void outlineBelow(Row const& row, Outline& outline) {
  outlineOf(with<Rows>(row), outline);
}

}  // namespace

constinit Kind const nestedKind = {Shape::record, readNested, writeNested,
                                   assignNested,  nullptr,    outlineBelow};
constinit Kind const groupKind = {Shape::group, readGroup,   writeNested,
                                  assignGroup,  keysOfGroup, outlineBelow};

std::span<Word const> wordsIn(Row const& row) {
  Shape const shape = row.kind->shape;
  if (shape == Shape::bits && with<Vocabulary>(row).find(row.element) != nullptr) {
    return switchWords;
  }
  if (row.kind->words != nullptr) return row.kind->words(row).words;
  bool const isWordFlag = row.kind == &boolWordKind || row.kind == &charWordKind;
  if (isWordFlag) return with<FlagWord>(row).words;
  bool const isSwitch =
      row.kind == &boolSwitchKind || row.kind == &charSwitchKind || row.kind == &clearedSwitchKind;
  return isSwitch ? std::span<Word const>(with<SwitchWords>(row).words) : std::span<Word const>();
}

}  // namespace Kovra::frame
