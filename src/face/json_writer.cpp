#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include "face/json.hpp"
#include "face/json_bytes.hpp"
#include "frame/utf8.hpp"
#include "frame/value.hpp"
#include "frame/wipe.hpp"

namespace Kovra {

using detail::ValueAccess;
using frame::characterAt;
using Character = frame::Utf8Character;
using Kind = Value::Kind;

namespace {

constexpr std::size_t longestEscape = 12;  // of a pair of surrogates
constexpr std::size_t longestNumber = 32;
constexpr std::size_t firstRoom = 1024;

char* copied(std::string_view text, char* out) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

char* writeUnit(unsigned unit, char* out) {
  constexpr char digits[] = "0123456789abcdef";
  out = copied("\\u", out);
  for (int shift = 12; shift >= 0; shift -= 4) *out++ = digits[unit >> shift & 0xf];
  return out;
}

/// The letter that stands behind a backslash for a character; 0 where there is none.
constexpr char letterOf(char32_t code) {
  switch (code) {
    case '"':
    case '\\':
      return static_cast<char>(code);
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return '\0';
  }
}

char* writeEscape(char32_t code, char* out) {
  if (char const letter = letterOf(code)) {
    *out++ = '\\';
    *out++ = letter;
    return out;
  }
  if (code < 0x10000) return writeUnit(code, out);
  return writeUnit(0xdc00 + (code & 0x3ff), writeUnit(0xd7c0 + (code >> 10), out));
}

/// With a fraction or an exponent, so that it stays a real when it is read.
char* writeReal(double number, char* out) {
  double const size = std::fabs(number);
  bool const isLong = size != 0 && (size < 1e-4 || size >= 1e15);
  char* const first = out;
  out = std::to_chars(out, out + longestNumber, number,
                      isLong ? std::chars_format::scientific : std::chars_format::fixed)
            .ptr;
  return isLong || std::find(first, out, '.') != out ? out : copied(".0", out);
}

/// Copies up to the first special byte, or the end; both move on. There has to be room for all.
void copyPlain(char const*& from, char const* end, char*& out) {
  if constexpr (takesWords) {
    while (end - from >= 8) {
      std::size_t const plain = plainBytes(from);
      std::memcpy(out, from, 8);
      from += plain;
      out += plain;
      if (plain < 8) return;
    }
  }
  while (from != end && !isSpecial[byteAt(from)]) *out++ = *from++;
}

}  // namespace

bool isMasked(Value const& value) noexcept {
  if (!value.isSecret()) return false;
  switch (value.kind()) {
    case Kind::flag:
    case Kind::integer:
    case Kind::natural:
    case Kind::real:
    case Kind::text:
      return true;
    case Kind::nothing:
    case Kind::keyword:
    case Kind::list:
    case Kind::record:
      return false;
  }
  return true;
}

JsonWriter::JsonWriter(int indentation)
    : indentation_(static_cast<std::size_t>(std::max(indentation, 0))),
      isPretty_(indentation >= 0) {}

JsonWriter::~JsonWriter() {
  frame::wipe(buffer_.data(), buffer_.size());
}

std::string JsonWriter::take() {
  buffer_.resize(used());
  isFirst_ = true;
  at_ = end_ = nullptr;
  return std::exchange(buffer_, {});
}

std::size_t JsonWriter::used() const {
  return buffer_.size() - static_cast<std::size_t>(end_ - at_);
}

void JsonWriter::makeRoom(std::size_t bytes) {
  if (static_cast<std::size_t>(end_ - at_) < bytes) grow(bytes);
}

void JsonWriter::grow(std::size_t bytes) {
  std::size_t const written = used();
  std::string larger;
  larger.reserve(std::max({2 * buffer_.size(), written + bytes, firstRoom}));
  larger.assign(buffer_, 0, written);
  larger.resize(larger.capacity());
  frame::wipe(buffer_.data(), buffer_.size());
  buffer_ = std::move(larger);
  at_ = buffer_.data() + written;
  end_ = buffer_.data() + buffer_.size();
}

void JsonWriter::breakLine() {
  constexpr std::string_view block = "                ";
  std::size_t const blanks = depth_ * indentation_;
  makeRoom(1 + blanks + block.size());
  *at_++ = '\n';
  for (std::size_t i = 0; i < blanks; i += block.size()) copied(block, at_ + i);
  at_ += blanks;
}

/// What stands between a key or a value and what is before it.
void JsonWriter::separate() {
  bool const isAlone = std::exchange(isBehindKey_, false) || depth_ == 0;
  bool const isFirst = std::exchange(isFirst_, false);
  if (isAlone) return;
  if (!isFirst) {
    makeRoom(1);
    *at_++ = ',';
  }
  if (isPretty_) breakLine();
}

void JsonWriter::begin(char bracket) {
  separate();
  makeRoom(1);
  *at_++ = bracket;
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::end(char bracket) {
  --depth_;
  if (!std::exchange(isFirst_, false) && isPretty_) breakLine();
  makeRoom(1);
  *at_++ = bracket;
}

void JsonWriter::key(std::string_view name) {
  separate();
  quote(name);  // which leaves room for an escape
  *at_++ = ':';
  if (isPretty_) *at_++ = ' ';
  isBehindKey_ = true;
}

/// There is always room for what is left as it stands, for one escape, and for the quotes.
void JsonWriter::quote(std::string_view text) {
  char const* from = text.data();
  char const* const end = from + text.size();
  makeRoom(text.size() + longestEscape + 2);
  *at_++ = '"';
  for (char* out = at_;; out = at_) {
    copyPlain(from, end, out);
    if (from == end) {
      *out++ = '"';
      at_ = out;
      return;
    }
    Character const character = characterAt(from, end);
    from += character.length;
    at_ = writeEscape(character.isBroken ? U'\ufffd' : character.code, out);
    makeRoom(static_cast<std::size_t>(end - from) + longestEscape + 1);
  }
}

void JsonWriter::word(std::string_view word) {
  makeRoom(word.size());
  at_ = copied(word, at_);
}

void JsonWriter::text(std::string_view text) {
  separate();
  quote(text);
}

void JsonWriter::flag(bool flag) {
  separate();
  word(flag ? "true" : "false");
}

void JsonWriter::null() {
  separate();
  word("null");
}

template <class Number>
void JsonWriter::whole(Number number) {
  separate();
  makeRoom(longestNumber);
  at_ = std::to_chars(at_, end_, number).ptr;
}

void JsonWriter::integer(std::int64_t number) {
  whole(number);
}

void JsonWriter::natural(std::uint64_t number) {
  whole(number);
}

void JsonWriter::real(double number) {
  if (!std::isfinite(number)) {
    null();
    return;
  }
  separate();
  makeRoom(longestNumber + 2);
  at_ = writeReal(number, at_);
}

void JsonWriter::keyword(Value const& value) {
  beginObject();
  key("code");
  integer(value.code());
  key("name");
  if (value.isKnown()) {
    text(value.word());
  } else {
    null();
    key("raw");
    text(value.word());
  }
  endObject();
}

void JsonWriter::value(Value const& value, bool masked) {
  ValueAccess::checkDepth(depth_);
  if (masked && isMasked(value)) return text(secretMask);
  switch (value.kind()) {
    case Kind::nothing:
      return null();
    case Kind::flag:
      return flag(value.asBool(false));
    case Kind::integer:
      return integer(value.asInteger(0));
    case Kind::natural:
      return natural(value.asNatural(0));
    case Kind::real:
      return real(value.asReal(0));
    case Kind::text:
      return text(ValueAccess::text(value));
    case Kind::keyword:
      return keyword(value);
    case Kind::list:
      beginArray();
      for (Value const& item : value.items()) this->value(item, masked);
      return endArray();
    case Kind::record:
      beginObject();
      for (Member const& member : value.members()) {
        key(member.name());
        this->value(member.value(), masked);
      }
      return endObject();
  }
}

std::string Value::toJson(int indentation) const {
  JsonWriter writer(indentation);
  writer.value(*this, false);
  return writer.take();
}

}  // namespace Kovra
