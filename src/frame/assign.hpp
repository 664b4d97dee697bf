/// @file
/// The way back: values that a host or a person gives, into the members of a record.
///
/// A reading shows its record as a Value; assigning takes such a Value and fills the record with
/// it, by the same tables. What does not fit is a problem, with the path of the value: unlike a
/// printer, whoever writes a record by hand wants to be told.

#ifndef KOVRA_FRAME_ASSIGN_HPP
#define KOVRA_FRAME_ASSIGN_HPP

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/problems.hpp"
#include "frame/vocabulary.hpp"
#include "kovra_value.hpp"

namespace Kovra::frame {

/// What became of a value that was offered to a row.
enum class Assigned {
  notMine,  ///< the row has no member of that name
  done,
  failed,  ///< the problems say why
};

/// Adds a problem; the path is completed by those who know the names.
inline Assigned fail(Problems& problems, std::string found, std::string expected) {
  problems.add({}, std::move(found), std::move(expected));
  return Assigned::failed;
}

/// The worse of two: what became of a whole.
inline Assigned both(Assigned a, Assigned b) {
  return a == Assigned::failed ? a : b;
}

/// A value in a few words, for problems. Of a secret one only its kind and a text's length.
std::string described(Value const& value);

/// A whole number from `least` to `most`, into `bits` as a conversion to unsigned has it.
Assigned assignWhole(unsigned long& bits, Value const& value, long least, unsigned long most,
                     Problems& problems);

Assigned assignReal(float& out, Value const& value, Problems& problems);

template <class Number>
Assigned assignNumber(Number& out, Value const& value, Problems& problems) {
  if constexpr (std::is_floating_point_v<Number>) {
    return assignReal(out, value, problems);
  } else {
    using Range = std::numeric_limits<Number>;
    unsigned long bits = 0;
    Assigned const result = assignWhole(bits, value, static_cast<long>(Range::min()),
                                        static_cast<unsigned long>(Range::max()), problems);
    if (result == Assigned::done) out = static_cast<Number>(bits);
    return result;
  }
}

/// The form for flags of any type.
Assigned flagFrom(bool& flag, Value const& value, Problems& problems);

template <class Flag>
Assigned assignFlag(Flag& out, Value const& value, Problems& problems) {
  bool flag = false;
  Assigned const result = flagFrom(flag, value, problems);
  if (result == Assigned::done) out = static_cast<Flag>(flag);
  return result;
}

/// Done when the value is a text of at most `longest` bytes that a document can carry: UTF-8,
/// without the control characters that XML lacks. TinyXML would write them as references that no
/// parser has to take.
Assigned checkText(Value const& value, std::size_t longest, Problems& problems);
/// The same of a text that is known to fit.
Assigned checkText(std::string_view text, Problems& problems);

/// The rest of the array is cleared, so that a record made from values holds nothing else.
Assigned assignText(std::span<char> out, Value const& value, Problems& problems);

/// A keyword is its code, its word, or both as a reading shows them; then the code counts. It is
/// one from `least` to `most`.
Assigned assignKeyword(int& code, Value const& value, Vocabulary const& words, int least, int most,
                       Problems& problems);

/// The words of a vocabulary in one line.
std::string listed(Vocabulary const& words);

}  // namespace Kovra::frame

#endif
