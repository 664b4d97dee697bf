/// @file
/// One check for every keyword conversion: its rows, its rule of comparison, its unknown code.

#ifndef KOVRA_TESTS_SUPPORT_WORDS_HPP
#define KOVRA_TESTS_SUPPORT_WORDS_HPP

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::test {

enum class Rule { exact, anyCase, substring };

/// The rows of one conversion, written by hand from the printer's vocabulary.
struct ExpectedWords {
  struct Row {
    std::string word;
    int code;
  };

  Rule rule;
  int unknown;
  std::vector<Row> rows;
};

inline std::string upper(std::string text) {
  for (char& letter : text) letter = static_cast<char>(std::toupper(letter));
  return text;
}

inline std::string lower(std::string text) {
  for (char& letter : text) letter = static_cast<char>(std::tolower(letter));
  return text;
}

/// What a conversion with these rows makes of a text: the first row that matches.
inline int expectedCode(ExpectedWords const& words, std::string const& text) {
  for (auto const& row : words.rows) {
    bool const matches = words.rule == Rule::substring ? text.find(row.word) != std::string::npos
                         : words.rule == Rule::exact   ? text == row.word
                                                       : lower(text) == lower(row.word);
    if (matches) return row.code;
  }
  return words.unknown;
}

/// Calls `convert` with every word, and with what is nearly one.
template <class Convert>
void expectWords(ExpectedWords const& words, Convert convert) {
  auto const code = [&](std::string text) { return convert(text.data()); };
  for (auto const& [word, expected] : words.rows) {
    EXPECT_EQ(code(word), expected) << word;
    for (std::string const& similar :
         {upper(word), lower(word), "?" + word, word + "?", " " + word, word + " ",
          word.substr(0, word.size() - 1), word.substr(1)}) {
      EXPECT_EQ(code(similar), expectedCode(words, similar)) << '"' << similar << '"';
    }
  }
  for (std::string const& other : {std::string(), std::string("?"), std::string(1000, 'x')}) {
    EXPECT_EQ(code(other), words.unknown) << '"' << other << '"';
  }
  EXPECT_EQ(convert(nullptr), words.unknown) << "a null pointer";
}

}  // namespace Kovra::test

#endif
