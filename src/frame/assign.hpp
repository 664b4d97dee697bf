/// @file
/// The way back: values that a host or a person gives, into the members of a record.
///
/// A reading shows its record as a Value; assigning takes such a Value and fills the record with
/// it, by the same tables. What does not fit is a problem, with the path of the value: unlike a
/// printer, whoever writes a record by hand wants to be told.

#ifndef KOVRA_FRAME_ASSIGN_HPP
#define KOVRA_FRAME_ASSIGN_HPP

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/vocabulary.hpp"
#include "kovra.hpp"

namespace Kovra::frame {

/// What became of a value that was offered to a row.
enum class Assigned {
  notMine,  ///< the row has no member of that name
  done,
  failed,  ///< the problem says why
};

/// Fills in the problem; the path is completed by those who know the names.
inline Assigned fail(Problem& problem, std::string found, std::string expected) {
  problem.found = std::move(found);
  problem.expected = std::move(expected);
  return Assigned::failed;
}

/// A value in a few words, for problems. Of a secret one only its kind and a text's length.
std::string described(Value const& value);

template <class Number>
Assigned assignInteger(Number& out, Value const& value, Problem& problem) {
  bool const fits = (value.kind == Value::Kind::integer && std::in_range<Number>(value.integer)) ||
                    (value.kind == Value::Kind::natural && std::in_range<Number>(value.natural));
  if (!fits) {
    return fail(problem, described(value),
                "a whole number from " + std::to_string(std::numeric_limits<Number>::min()) +
                    " to " + std::to_string(std::numeric_limits<Number>::max()));
  }
  out = value.kind == Value::Kind::integer ? static_cast<Number>(value.integer)
                                           : static_cast<Number>(value.natural);
  return Assigned::done;
}

inline Assigned assignReal(float& out, Value const& value, Problem& problem) {
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

template <class Flag>
Assigned assignFlag(Flag& out, Value const& value, Problem& problem) {
  if (value.kind != Value::Kind::flag) return fail(problem, described(value), "true or false");
  out = static_cast<Flag>(value.flag);
  return Assigned::done;
}

/// Done when the value is a text of at most `longest` bytes that a document can carry: UTF-8,
/// without the control characters that XML lacks. TinyXML would write them as references that no
/// parser has to take.
Assigned checkText(Value const& value, std::size_t longest, Problem& problem);

/// The rest of the array is cleared, so that a record made from values holds nothing else.
template <std::size_t N>
Assigned assignText(char (&out)[N], Value const& value, Problem& problem) {
  Assigned const result = checkText(value, N - 1, problem);
  if (result != Assigned::done) return result;
  std::memset(out, 0, N);
  std::memcpy(out, value.text.data(), value.text.size());
  return result;
}

/// A keyword is its code, its word, or both as a reading shows them; then the code counts.
Assigned codeFrom(int& code, Value const& value, Vocabulary const& words, Problem& problem);

template <class Code>
Assigned assignKeyword(Code& out, Value const& value, Vocabulary const& words, Problem& problem) {
  int code = 0;
  Assigned const result = codeFrom(code, value, words, problem);
  if (result != Assigned::done) return result;
  if (static_cast<int>(static_cast<Code>(code)) != code) {
    return fail(problem, value.secret ? "a code" : std::to_string(code),
                "a code that the member can hold");
  }
  out = static_cast<Code>(code);
  return result;
}

/// The words of a vocabulary in one line.
std::string listed(Vocabulary const& words);

}  // namespace Kovra::frame

#endif
