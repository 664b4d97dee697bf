/// @file
/// Values for records, made from the rows of their messages.

#ifndef KOVRA_TESTS_SUPPORT_GENERATED_HPP
#define KOVRA_TESTS_SUPPORT_GENERATED_HPP

#include <algorithm>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/lists.hpp"
#include "frame/message.hpp"
#include "kovra_value.hpp"

namespace Kovra::test {

/// Makes values that rows take, the same ones for the same seed.
class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  /// A value with every member that the rows assign, as far as rows tell what it may be.
  Value record(frame::Rows rows) {
    Value value = Value::object();
    addMembers(rows, value);
    return value;
  }

 private:
  using Shape = frame::Shape;

  std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_()) % bound; }

  void addMembers(frame::Rows rows, Value& value) {
    for (frame::Row const& row : rows) {
      bool const isList = row.kind->shape == Shape::list;
      if (!isList && (!row.isAssigned || row.kind->assign == nullptr)) continue;
      if (row.kind->shape == Shape::group || row.kind->shape == Shape::odd) {
        addMembers(frame::rowsBelow(row), value);
        continue;
      }
      if (row.member.empty() || value.find(row.member) != nullptr) continue;
      value.add(row.member, valueOf(row));
    }
  }

  Value valueOf(frame::Row const& row) {
    switch (row.kind->shape) {
      case Shape::flag:
        return below(2) == 1;
      case Shape::integer:
        return static_cast<long>(below(2000)) - (row.size > 2 ? 1000 : 0);
      case Shape::natural:
      case Shape::hexadecimal:
        return static_cast<long>(below(row.size == 1 ? 200 : 60000));
      case Shape::real:
        return static_cast<double>(below(4000)) / 4 - 500;
      case Shape::text:
      case Shape::secret:
        return letters(below(std::min<std::uint32_t>(row.size, 40)));
      case Shape::keyword:
        return word(*static_cast<frame::Keywords const*>(row.with)->read);
      case Shape::word:
        return word(*static_cast<frame::Vocabulary const*>(row.with));
      case Shape::bits:
        return bits(*static_cast<frame::Vocabulary const*>(row.with));
      case Shape::address:
        return "00:1a:2b:3c:4d:" + std::to_string(10 + below(90));
      case Shape::ipv4:
        return "192.168." + std::to_string(below(256)) + ".1";
      case Shape::setting:
        return setting();
      case Shape::record:
        return record(frame::rowsBelow(row));
      case Shape::list:
        return list(*static_cast<frame::Entries const*>(row.with));
      case Shape::odd:
      case Shape::group:
        break;
    }
    return {};
  }

  /// With all characters that are escaped, but no blanks, which a parser would condense.
  std::string letters(std::size_t length) {
    static constexpr char some[] = "abcdefgXYZ0189_-.:;&<>\"'#/=";
    std::string made;
    for (std::size_t i = 0; i < length; ++i) made += some[below(sizeof some - 1)];
    return made;
  }

  std::string_view word(frame::Vocabulary const& words) {
    return words.words[below(static_cast<std::uint32_t>(words.words.size()))].text;
  }

  Value bits(frame::Vocabulary const& words) {
    Value flags = Value::object();
    for (frame::Word const& word : words.words) flags.add(word.text, below(2) == 1);
    return flags;
  }

  /// Of at most two entries, which every list has room for.
  Value list(frame::Entries const& entries) {
    Value value = Value::list();
    for (std::uint32_t left = below(3); left > 0; --left) {
      value.append(entries.codes != nullptr ? word(*entries.codes->read) : record(entries.rows));
    }
    return value;
  }

  Value setting() {
    long const min = static_cast<long>(below(50)) - 25;
    long const val = min + static_cast<long>(below(50));
    return Value::object({{"min", min}, {"max", val + static_cast<long>(below(9))}, {"val", val}});
  }

  std::mt19937 random_;
};

/// What may be chosen of a message: nothing, everything, and each thing by itself.
inline std::vector<std::vector<long>> choicesOf(frame::MessageRow const& message) {
  auto const& rows = message.composing->choices;
  std::vector<std::vector<long>> all{std::vector<long>(rows.size(), 0)};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<long> values;
    if (rows[i].form == frame::ChoiceRow::Form::flag) values = {1};
    if (rows[i].form == frame::ChoiceRow::Form::number) {
      for (long number = rows[i].least; number <= std::max(rows[i].most, 1L); ++number) {
        values.push_back(number);
      }
    }
    long every = 0;
    for (frame::Word const& word :
         rows[i].words != nullptr ? rows[i].words->words : std::span<frame::Word const>()) {
      values.push_back(word.code);
      every |= word.code;
    }
    if (rows[i].form == frame::ChoiceRow::Form::words) values.push_back(every);
    std::size_t const before = all.size();
    for (std::size_t k = 0; k < before; ++k) {
      for (long const value : values) {
        all.push_back(all[k]);
        all.back()[i] = value;
      }
    }
  }
  return all;
}

}  // namespace Kovra::test

#endif
