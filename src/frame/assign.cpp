#include "frame/assign.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "frame/utf8.hpp"

namespace Kovra::frame {

namespace {

/// All that is told of a secret one.
constexpr char aNumber[] = "a number";

/// Why a text can stand in no document, or nothing.
enum class Unfit { no, utf8, character };

/// Of control characters XML has tabs and line ends alone.
constexpr bool isInXml(char32_t code) {
  return code >= 0x20 ? code != 0xfffe && code != 0xffff
                      : code == '\t' || code == '\n' || code == '\r';
}

Unfit unfitIn(std::string_view text) {
  char const* const end = text.data() + text.size();
  for (char const* at = text.data(); at != end;) {
    Utf8Character const character = characterAt(at, end);
    if (character.isBroken) return Unfit::utf8;
    if (!isInXml(character.code)) return Unfit::character;
    at += character.length;
  }
  return Unfit::no;
}

}  // namespace

std::string described(Value const& value) {
  switch (value.kind()) {
    case Value::Kind::nothing:
      return "nothing";
    case Value::Kind::flag:
      return value.isSecret() ? "a flag" : value.asBool() ? "true" : "false";
    case Value::Kind::integer:
      return value.isSecret() ? aNumber : std::to_string(value.asInteger());
    case Value::Kind::natural:
      return value.isSecret() ? aNumber : std::to_string(value.asNatural());
    case Value::Kind::real:
      return value.isSecret() ? aNumber : std::to_string(value.asReal());
    case Value::Kind::text: {
      // A long text, which may be a secret, is told by its length.
      std::string_view const text = value.asText();
      return text.size() > 32 || value.isSecret()
                 ? "a text of " + std::to_string(text.size()) + " bytes"
                 : '"' + std::string(text) + '"';
    }
    case Value::Kind::keyword:
      return value.isSecret() ? "a keyword" : '"' + std::string(value.word()) + '"';
    case Value::Kind::list:
      return "a list";
    case Value::Kind::record:
      return "an object";
  }
  return {};
}

Assigned checkText(Value const& value, std::size_t longest, Problems& problems) {
  if (!value.isText()) return fail(problems, described(value), "a text");
  std::string_view const text = value.asText();
  if (text.size() > longest || text.find('\0') != text.npos) {
    return fail(problems, described(value),
                "a text of at most " + std::to_string(longest) + " bytes, none of them NUL");
  }
  return checkText(text, problems);
}

Assigned checkText(std::string_view text, Problems& problems) {
  switch (unfitIn(text)) {
    case Unfit::no:
      break;
    case Unfit::utf8:
      return fail(problems, "a text that is no UTF-8", "a text in UTF-8");
    case Unfit::character:
      return fail(problems, "a text with a character that XML cannot carry",
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
                     Problems& problems) {
  bool const isSmall = value.asInteger(0) < 0;
  bits = isSmall ? static_cast<unsigned long>(value.asInteger()) : value.asNatural(0UL);
  bool const fits = value.isWhole() && (isSmall ? value.asInteger() >= least : bits <= most);
  if (fits) return Assigned::done;
  return fail(problems, described(value),
              "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
}

Assigned assignReal(float& out, Value const& value, Problems& problems) {
  if (!value.isReal() && !value.isWhole()) return fail(problems, described(value), "a number");
  double const number = value.asReal();
  if (!(std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max()))) {
    return fail(problems, described(value), "a number that a float can hold");
  }
  out = static_cast<float>(number);
  return Assigned::done;
}

Assigned flagFrom(bool& flag, Value const& value, Problems& problems) {
  if (!value.isFlag()) return fail(problems, described(value), "true or false");
  flag = value.asBool();
  return Assigned::done;
}

Assigned assignText(std::span<char> out, Value const& value, Problems& problems) {
  Assigned const result = checkText(value, out.size() - 1, problems);
  if (result != Assigned::done) return result;
  std::memset(out.data(), 0, out.size());
  std::string_view const text = value.asText();
  std::memcpy(out.data(), text.data(), text.size());
  return result;
}

namespace {

Assigned codeFrom(int& code, Value const& value, Vocabulary const& words, Problems& problems) {
  switch (value.kind()) {
    case Value::Kind::integer:
    case Value::Kind::natural:
      return assignNumber(code, value, problems);
    case Value::Kind::text: {
      // A vocabulary would not see what stands behind a NUL.
      Word const* const word = words.find(value.asText());
      if (word == nullptr) return fail(problems, described(value), "one of: " + listed(words));
      code = word->code;
      return Assigned::done;
    }
    case Value::Kind::keyword:
      code = value.code();
      return Assigned::done;
    case Value::Kind::record:
      if (Value const* const inner = value.find("code")) {
        return assignNumber(code, *inner, problems);
      }
      [[fallthrough]];
    default:
      return fail(problems, described(value), "a keyword: its code, or one of: " + listed(words));
  }
}

}  // namespace

Assigned assignKeyword(int& code, Value const& value, Vocabulary const& words, int least, int most,
                       Problems& problems) {
  int found = 0;
  Assigned const result = codeFrom(found, value, words, problems);
  if (result != Assigned::done) return result;
  if (found < least || found > most) {
    return fail(problems, value.isSecret() ? "a code" : std::to_string(found),
                "a code that the member can hold");
  }
  code = found;
  return result;
}

}  // namespace Kovra::frame
