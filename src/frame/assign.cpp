#include "frame/assign.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Kovra::frame {

namespace {

/// All that is told of a secret one.
constexpr char aNumber[] = "a number";

/// Why a text can stand in no document, or nothing.
enum class Unfit { no, utf8, character };

/// What a character's first byte says: how many bytes it has, which bits of this one are its, and
/// the least code that needs so many.
struct Lead {
  std::size_t length;
  unsigned char payload;
  char32_t least;
};

constexpr Lead leadOf(unsigned char first) {
  if (first < 0x80) return {1, 0x7f, 0};
  if ((first & 0xe0U) == 0xc0) return {2, 0x1f, 0x80};
  if ((first & 0xf0U) == 0xe0) return {3, 0x0f, 0x800};
  if ((first & 0xf8U) == 0xf0) return {4, 0x07, 0x10000};
  return {0, 0, 0};
}

constexpr bool isInUnicode(char32_t code) {
  return code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
}

/// Of control characters XML has tabs and line ends alone.
constexpr bool isInXml(char32_t code) {
  return code >= 0x20 ? code != 0xfffe && code != 0xffff
                      : code == '\t' || code == '\n' || code == '\r';
}

Unfit unfitIn(std::string_view text) {
  while (!text.empty()) {
    auto const first = static_cast<unsigned char>(text.front());
    Lead const lead = leadOf(first);
    if (lead.length == 0 || lead.length > text.size()) return Unfit::utf8;
    char32_t code = first & lead.payload;
    for (char const next : text.substr(1, lead.length - 1)) {
      auto const byte = static_cast<unsigned char>(next);
      if ((byte & 0xc0U) != 0x80) return Unfit::utf8;
      code = (code << 6U) | (byte & 0x3fU);
    }
    if (code < lead.least || !isInUnicode(code)) return Unfit::utf8;
    if (!isInXml(code)) return Unfit::character;
    text.remove_prefix(lead.length);
  }
  return Unfit::no;
}

}  // namespace

std::string described(Value const& value) {
  switch (value.kind) {
    case Value::Kind::nothing:
      return "nothing";
    case Value::Kind::flag:
      return value.secret ? "a flag" : value.flag ? "true" : "false";
    case Value::Kind::integer:
      return value.secret ? aNumber : std::to_string(value.integer);
    case Value::Kind::natural:
      return value.secret ? aNumber : std::to_string(value.natural);
    case Value::Kind::real:
      return value.secret ? aNumber : std::to_string(value.real);
    case Value::Kind::text:
      // A long text, which may be a secret, is told by its length.
      return value.text.size() > 32 || value.secret
                 ? "a text of " + std::to_string(value.text.size()) + " bytes"
                 : '"' + value.text + '"';
    case Value::Kind::keyword:
      return value.secret ? "a keyword" : '"' + value.text + '"';
    case Value::Kind::list:
      return "a list";
    case Value::Kind::record:
      return "an object";
  }
  return {};
}

Assigned checkText(Value const& value, std::size_t longest, Problem& problem) {
  if (value.kind != Value::Kind::text) return fail(problem, described(value), "a text");
  if (value.text.size() > longest || value.text.find('\0') != std::string::npos) {
    return fail(problem, described(value),
                "a text of at most " + std::to_string(longest) + " bytes, none of them NUL");
  }
  switch (unfitIn(value.text)) {
    case Unfit::no:
      break;
    case Unfit::utf8:
      return fail(problem, "a text that is no UTF-8", "a text in UTF-8");
    case Unfit::character:
      return fail(problem, "a text with a character that XML cannot carry",
                  "a text without control characters other than tabs and line ends");
  }
  return Assigned::done;
}

std::string listed(Vocabulary const& words) {
  std::string list;
  for (Word const& word : words.words) {
    if (!list.empty()) list += ", ";
    list += word.text;
  }
  return list;
}

Assigned assignWhole(unsigned long& bits, Value const& value, long least, unsigned long most,
                     Problem& problem) {
  bool const isSmall = value.kind == Value::Kind::integer && value.integer < 0;
  bool const isWhole = value.kind == Value::Kind::integer || value.kind == Value::Kind::natural;
  bits = value.kind == Value::Kind::natural ? value.natural
                                            : static_cast<unsigned long>(value.integer);
  bool const fits = isWhole && (isSmall ? value.integer >= least : bits <= most);
  if (fits) return Assigned::done;
  return fail(problem, described(value),
              "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
}

Assigned assignReal(float& out, Value const& value, Problem& problem) {
  double number = 0;
  switch (value.kind) {
    case Value::Kind::real:
      number = value.real;
      break;
    case Value::Kind::integer:
      number = static_cast<double>(value.integer);
      break;
    case Value::Kind::natural:
      number = static_cast<double>(value.natural);
      break;
    default:
      return fail(problem, described(value), "a number");
  }
  if (!(std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max()))) {
    return fail(problem, described(value), "a number that a float can hold");
  }
  out = static_cast<float>(number);
  return Assigned::done;
}

Assigned flagFrom(bool& flag, Value const& value, Problem& problem) {
  if (value.kind != Value::Kind::flag) return fail(problem, described(value), "true or false");
  flag = value.flag;
  return Assigned::done;
}

Assigned assignText(std::span<char> out, Value const& value, Problem& problem) {
  Assigned const result = checkText(value, out.size() - 1, problem);
  if (result != Assigned::done) return result;
  std::memset(out.data(), 0, out.size());
  std::memcpy(out.data(), value.text.data(), value.text.size());
  return result;
}

namespace {

Assigned codeFrom(int& code, Value const& value, Vocabulary const& words, Problem& problem) {
  switch (value.kind) {
    case Value::Kind::integer:
    case Value::Kind::natural:
      return assignNumber(code, value, problem);
    case Value::Kind::text: {
      // A vocabulary would not see what stands behind a NUL.
      Word const* const word = words.find(value.text);
      if (word == nullptr) return fail(problem, described(value), "one of: " + listed(words));
      code = word->code;
      return Assigned::done;
    }
    case Value::Kind::keyword: {
      Value sent;
      sent.kind = Value::Kind::integer;
      sent.integer = value.integer;
      return assignNumber(code, sent, problem);
    }
    case Value::Kind::record:
      if (Value const* const inner = value.find("code")) {
        return assignNumber(code, *inner, problem);
      }
      [[fallthrough]];
    default:
      return fail(problem, described(value), "a keyword: its code, or one of: " + listed(words));
  }
}

}  // namespace

Assigned assignKeyword(int& code, Value const& value, Vocabulary const& words, int least, int most,
                       Problem& problem) {
  int found = 0;
  Assigned const result = codeFrom(found, value, words, problem);
  if (result != Assigned::done) return result;
  if (found < least || found > most) {
    return fail(problem, value.secret ? "a code" : std::to_string(found),
                "a code that the member can hold");
  }
  code = found;
  return result;
}

}  // namespace Kovra::frame
