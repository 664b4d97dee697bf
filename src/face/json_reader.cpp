#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <limits>
#include <new>
#include <set>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "face/json.hpp"
#include "face/json_bytes.hpp"
#include "frame/utf8.hpp"
#include "frame/value.hpp"
#include "frame/wipe.hpp"

namespace Kovra {

using detail::ValueAccess;
using frame::appendUtf8;
using frame::characterAt;
using Character = frame::Utf8Character;
using Kind = Value::Kind;

JsonError::JsonError(std::string const& what, std::string path, int line, int column,
                     std::size_t offset)
    : std::runtime_error(what),
      line_(line),
      column_(column),
      offset_(offset),
      path_(std::move(path)) {}

/// Copied while it is thrown, so it must not throw itself: without memory the path is left out.
JsonError::JsonError(JsonError const& other) noexcept
    : std::runtime_error(other),
      line_(other.line_),
      column_(other.column_),
      offset_(other.offset_) {
  try {
    path_ = other.path_;
  } catch (std::bad_alloc const&) {
    path_.clear();
  }
}

JsonError::~JsonError() = default;

namespace {

/// Skipped at the front, where editors leave it.
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

struct LineAndColumn {
  int line = 1;
  int column = 1;
};

/// Of the byte behind `before`, which begins where the first line does.
LineAndColumn placeBehind(std::string_view before) {
  std::string_view const line = before.substr(before.rfind('\n') + 1);  // npos + 1 is 0
  LineAndColumn place;
  place.line += static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  place.column += static_cast<int>(
      std::count_if(line.begin(), line.end(), [](char byte) { return (byte & '\xc0') != '\x80'; }));
  return place;
}

/// The keys of one object, of which there may be very many.
class Keys {
 public:
  /// Is the last of the object's members one of those before it, too?
  bool isRepeated(std::span<Member const> members) {
    std::string_view const name = members.back().name();
    auto const earlier = members.first(members.size() - 1);
    if (earlier.size() < few) {
      return std::any_of(earlier.begin(), earlier.end(),
                         [&](Member const& member) { return member.name() == name; });
    }
    if (sorted_.empty()) {
      for (Member const& member : earlier) sorted_.insert(member.name());
    }
    return !sorted_.insert(name).second;
  }

 private:
  /// As many are quickly compared one by one.
  static constexpr std::size_t few = 16;

  std::set<std::string_view> sorted_;  // a tree: no choice of keys makes it slow
};

/// Drops what waits from `first` on.
template <class Item>
void dropFrom(std::vector<Item>& waiting, std::size_t first) {
  while (waiting.size() > first) waiting.pop_back();
}

/// Moves what waits from `first` on to where it belongs, which is made exactly as large as needed.
template <class Item>
void moveFrom(std::vector<Item>& waiting, std::size_t first, std::vector<Item>& to) {
  to.reserve(waiting.size() - first);
  std::move(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end(),
            std::back_inserter(to));
  dropFrom(waiting, first);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The exponent of a number, or one beyond all bounds in its place.
std::int64_t exponentIn(std::string_view number) {
  std::size_t const letter = number.find_first_of("eE");
  if (letter == number.npos) return 0;
  std::string_view digits = number.substr(letter + 1);
  if (digits.front() == '+') digits.remove_prefix(1);
  std::int64_t exponent = 0;
  auto const problem = std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec;
  constexpr std::int64_t beyond = std::int64_t{1} << 62;
  return problem == std::errc{}  ? std::clamp(exponent, -beyond, beyond)
         : digits.front() == '-' ? -beyond
                                 : beyond;
}

/// Is a number that no double holds too large for it, rather than too close to zero?
bool isTooLarge(std::string_view number) {
  std::string_view const mantissa = number.substr(0, number.find_first_of("eE"));
  std::size_t const point = std::min(mantissa.find('.'), mantissa.size());
  std::size_t const first = mantissa.find_first_of("123456789");
  return static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) + exponentIn(number) >
         0;
}

constexpr bool isHighSurrogate(char32_t code) {
  return code >= 0xd800 && code < 0xdc00;
}
constexpr bool isLowSurrogate(char32_t code) {
  return code >= 0xdc00 && code < 0xe000;
}

/// The value of a hexadecimal digit; 16 for what is none.
constexpr unsigned hexadecimal(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
  return 16;
}

Value const* find(std::span<Member const> members, std::string_view name) {
  auto const found = std::find_if(members.begin(), members.end(),
                                  [&](Member const& member) { return member.name() == name; });
  return found != members.end() ? &found->value() : nullptr;
}

/// Makes a keyword of an object that is one: its members are exactly those that a keyword prints.
bool takeKeyword(std::span<Member const> members, Value& keyword) {
  if (members.size() != 2 && members.size() != 3) return false;
  Value const* const code = find(members, "code");
  Value const* const name = find(members, "name");
  Value const* const raw = find(members, "raw");
  if (code == nullptr || !code->isWhole() || name == nullptr) return false;
  bool const isKnown = members.size() == 2;
  if (!isKnown && (raw == nullptr || !name->isNothing())) return false;
  Value const& word = isKnown ? *name : *raw;
  std::int64_t const number = code->asInteger(std::numeric_limits<std::int64_t>::max());
  if (!word.isText() || !std::in_range<int>(number)) return false;
  keyword = ValueAccess::keyword(static_cast<int>(number), word.asText(), isKnown);
  return true;
}

/// Reads one value. What belongs to lists and objects that are still open waits on two stacks, so
/// that each of them is made once, as large as it is.
///
/// Until the text is taken, all of it counts as a secret: what is left of a text that is refused
/// nobody has but the reader, and so it is wiped.
class JsonReader {
 public:
  explicit JsonReader(std::string_view text)
      : text_(text),
        begin_(text.data() + (text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0)),
        at_(begin_),
        end_(text.data() + text.size()) {}
  ~JsonReader() { wipeUnescaped(); }
  JsonReader(JsonReader const&) = delete;
  JsonReader& operator=(JsonReader const&) = delete;

  Value read();

 private:
  /// A list or an object that is open.
  struct Level {
    bool isRecord = false;
    std::size_t first = 0;  // of what it has among all that waits
  };

  Value value();
  Value unmarked();
  Value list();
  Value object();
  void member(Keys& keys);
  Value literal();
  Value number();
  Value whole(std::string_view number);
  Value real(std::string_view number);
  std::string_view quoted();
  void skipUnescaped();
  void makeRoom();
  void wipeUnescaped() { frame::wipe(unescaped_.data(), unescaped_.size()); }
  void appendEscaped();
  char32_t escapedCharacter();
  char32_t escapedUnit();
  bool followsEscapedUnit() const { return rest().starts_with("\\u"); }

  void open(bool isRecord);
  Level close() { return levels_[--depth_]; }
  bool isAt(char c) const { return at_ != end_ && *at_ == c; }
  std::string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
  bool take(char c);
  bool takeWord(std::string_view word);
  bool takesNext(char bracket);
  void takeDigits(char const* found);
  void skipBlanks();

  [[noreturn]] void malformed(char const* at, std::string const& found,
                              std::string const& expected) const;
  /// The same where `found` is said of a character that may not be there.
  [[noreturn]] void unexpected(char const* found, char const* expected) const;
  [[noreturn]] void refuse(char const* at, std::string const& found,
                           std::string const& expected) const;
  [[noreturn]] void fail(char const* at, std::string const& what, std::string path) const;
  std::string path() const;

  std::string_view text_;
  char const* begin_;
  char const* at_;
  char const* end_;
  std::array<Level, maxJsonLevels> levels_;
  std::size_t depth_ = 0;
  std::size_t values_ = 0;
  std::vector<Value> items_;     // of lists that are open
  std::vector<Member> members_;  // of objects that are open; the last may still lack its value
  std::string unescaped_;
};

void JsonReader::fail(char const* at, std::string const& what, std::string path) const {
  LineAndColumn const place = placeBehind({begin_, static_cast<std::size_t>(at - begin_)});
  throw JsonError(what, std::move(path), place.line, place.column,
                  static_cast<std::size_t>(at - text_.data()));
}

void JsonReader::malformed(char const* at, std::string const& found,
                           std::string const& expected) const {
  fail(at, "malformed JSON: found " + found + "; expected " + expected, {});
}

void JsonReader::unexpected(char const* found, char const* expected) const {
  if (at_ == end_) found = "the end of the text";
  if (isAt('\0')) found = "a NUL byte";
  malformed(at_, found, expected);
}

void JsonReader::refuse(char const* at, std::string const& found,
                        std::string const& expected) const {
  fail(at, "found " + found + "; expected " + expected, path());
}

/// That of the value or the key that was begun last.
std::string JsonReader::path() const {
  std::string path;
  std::size_t item = items_.size();
  std::size_t member = members_.size();
  for (std::size_t i = depth_; i-- > 0;) {
    Level const& level = levels_[i];
    if (level.isRecord) {
      std::string_view const name = members_[member - 1].name();
      path.insert(0, name).insert(0, i > 0 ? "." : "");
      member = level.first;
    } else {
      path.insert(0, '[' + std::to_string(item - level.first) + ']');
      item = level.first;
    }
  }
  return path;
}

void JsonReader::skipBlanks() {
  while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
}

bool JsonReader::take(char c) {
  if (!isAt(c)) return false;
  ++at_;
  return true;
}

bool JsonReader::takeWord(std::string_view word) {
  if (!rest().starts_with(word)) return false;
  at_ += word.size();
  return true;
}

Value JsonReader::read() {
  skipBlanks();
  Value whole = value();
  skipBlanks();
  if (at_ != end_) unexpected("something behind the value", "the end of the text");
  ValueAccess::markAll(whole, false);
  return whole;
}

Value JsonReader::value() {
  if (values_ == maxJsonValues) {
    std::string const bound = std::to_string(maxJsonValues);
    refuse(at_, "more than " + bound + " values in all", "at most " + bound);
  }
  ++values_;
  Value read = unmarked();
  read.markSecret();
  return read;
}

Value JsonReader::unmarked() {
  if (isAt('{')) return object();
  if (isAt('[')) return list();
  if (isAt('"')) return quoted();
  if (at_ != end_ && (*at_ == '-' || isDigit(*at_))) return number();
  return literal();
}

Value JsonReader::literal() {
  if (takeWord("null")) return {};
  if (takeWord("true")) return true;
  if (takeWord("false")) return false;
  unexpected("what begins no value", "a value");
}

void JsonReader::open(bool isRecord) {
  if (depth_ == maxJsonLevels) {
    std::string const bound = std::to_string(maxJsonLevels);
    refuse(at_, "more than " + bound + " levels of lists and objects", "at most " + bound);
  }
  levels_[depth_++] = {isRecord, isRecord ? members_.size() : items_.size()};
  ++at_;
  skipBlanks();
}

/// Goes on to what follows a comma; false where the bracket closes instead.
bool JsonReader::takesNext(char bracket) {
  skipBlanks();
  if (take(bracket)) return false;
  if (!take(',')) {
    unexpected("something else behind a value",
               bracket == ']' ? "\",\" or \"]\"" : "\",\" or \"}\"");
  }
  skipBlanks();
  return true;
}

Value JsonReader::list() {
  open(false);
  if (!take(']')) {
    do items_.push_back(value());
    while (takesNext(']'));
  }
  Value list;
  ValueAccess::become(list, Kind::list);
  moveFrom(items_, close().first, ValueAccess::items(list));
  return list;
}

Value JsonReader::object() {
  open(true);
  if (!take('}')) {
    Keys keys;
    if (!isAt('"')) unexpected("what begins no key", "a key in quotes, or \"}\"");
    do member(keys);
    while (takesNext('}'));
  }
  std::size_t const first = close().first;
  Value record;
  if (takeKeyword(std::span(members_).subspan(first), record)) {
    dropFrom(members_, first);
    return record;
  }
  ValueAccess::become(record, Kind::record);
  moveFrom(members_, first, ValueAccess::members(record));
  return record;
}

void JsonReader::member(Keys& keys) {
  if (!isAt('"')) unexpected("what begins no key", "a key in quotes");
  char const* const key = at_;
  members_.emplace_back(quoted(), Value());
  if (keys.isRepeated(std::span(members_).subspan(levels_[depth_ - 1].first))) {
    refuse(key, "a key for the second time", "each key once");
  }
  skipBlanks();
  if (!take(':')) unexpected("something else behind a key", "\":\"");
  skipBlanks();
  Value read = value();
  members_.back().value() = std::move(read);
}

// Texts.

/// What stands in quotes; there until the next one is read.
std::string_view JsonReader::quoted() {
  wipeUnescaped();
  unescaped_.clear();
  char const* piece = ++at_;
  for (skipUnescaped(); *at_ != '"'; skipUnescaped()) {
    makeRoom();
    unescaped_.append(piece, at_);
    appendEscaped();
    piece = at_;
  }
  std::string_view const last(piece, static_cast<std::size_t>(at_ - piece));
  ++at_;
  return unescaped_.empty() ? last : unescaped_.append(last);
}

/// Goes on to the next quote or backslash.
void JsonReader::skipUnescaped() {
  for (;;) {
    at_ = endOfPlain(at_, end_);
    if (at_ == end_) unexpected("", "the quote that ends a text");
    if (*at_ == '"' || *at_ == '\\') return;
    if (byteAt(at_) < 0x20) unexpected("a control character in a text", "an escape for it");
    Character const character = characterAt(at_, end_);
    if (character.isBroken) unexpected("bytes that are no UTF-8", "UTF-8");
    at_ += character.length;
  }
}

/// For as much as it can become, once: what grows leaves pieces of it behind. No escape is shorter
/// than what it stands for, and memory that is not touched costs nothing.
void JsonReader::makeRoom() {
  if (unescaped_.capacity() < text_.size()) unescaped_.reserve(text_.size());
}

void JsonReader::appendEscaped() {
  char const* const backslash = at_++;
  if (isAt('u')) {
    at_ = backslash;
    appendUtf8(escapedCharacter(), unescaped_);
    return;
  }
  constexpr std::string_view letters = "\"\\/bfnrt";
  constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
  std::size_t const which = at_ != end_ ? letters.find(*at_) : letters.npos;
  if (which == letters.npos) {
    unexpected("an unknown escape", R"(\", \\, \/, \b, \f, \n, \r, \t or \u)");
  }
  unescaped_ += meanings[which];
  ++at_;
}

/// One that is written as "\u" and its number, or as a pair of surrogates.
char32_t JsonReader::escapedCharacter() {
  char const* const first = at_;
  char32_t const code = escapedUnit();
  if (!isHighSurrogate(code) && !isLowSurrogate(code)) return code;
  char32_t const second = isHighSurrogate(code) && followsEscapedUnit() ? escapedUnit() : 0;
  if (!isLowSurrogate(second)) malformed(first, "half of a pair of surrogates", "both halves");
  return 0x10000 + ((code - 0xd800) << 10 | (second - 0xdc00));
}

char32_t JsonReader::escapedUnit() {
  at_ += 2;
  char32_t unit = 0;
  for (int i = 0; i < 4; ++i, ++at_) {
    unsigned const digit = at_ != end_ ? hexadecimal(*at_) : 16;
    if (digit > 15) unexpected("what is no hexadecimal digit", "four of them behind \"\\u\"");
    unit = unit << 4 | digit;
  }
  return unit;
}

// Numbers.

void JsonReader::takeDigits(char const* found) {
  if (at_ == end_ || !isDigit(*at_)) unexpected(found, "a digit");
  while (at_ != end_ && isDigit(*at_)) ++at_;
}

Value JsonReader::number() {
  char const* const first = at_;
  take('-');
  if (take('0')) {
    if (at_ != end_ && isDigit(*at_)) {
      unexpected("a digit behind a leading zero", "a number without leading zeros");
    }
  } else {
    takeDigits("a sign without a number");
  }
  bool isWhole = true;
  if (take('.')) {
    isWhole = false;
    takeDigits("a decimal point without a fraction");
  }
  if (take('e') || take('E')) {
    isWhole = false;
    if (!take('-')) take('+');
    takeDigits("an exponent without digits");
  }
  std::string_view const digits(first, static_cast<std::size_t>(at_ - first));
  return isWhole ? whole(digits) : real(digits);
}

Value JsonReader::whole(std::string_view number) {
  char const* const end = number.data() + number.size();
  std::int64_t integer = 0;
  if (std::from_chars(number.data(), end, integer).ec == std::errc{}) return integer;
  std::uint64_t natural = 0;
  if (std::from_chars(number.data(), end, natural).ec == std::errc{}) return natural;
  return real(number);
}

/// What is too close to zero for a double is zero.
Value JsonReader::real(std::string_view number) {
  double real = 0;
  auto const problem = std::from_chars(number.data(), number.data() + number.size(), real).ec;
  if (problem == std::errc{}) return real;
  if (isTooLarge(number)) {
    refuse(number.data(), "a number beyond all bounds", "one that a double can hold");
  }
  return number.front() == '-' ? -0.0 : 0.0;
}

}  // namespace

Value Value::fromJson(std::string_view json) {
  return JsonReader(json).read();
}

}  // namespace Kovra