/// @file
/// A vocabulary: the words that the printer uses for one thing, their codes, how a text is compared
/// with them, and the code of a text that is none of them.

#ifndef KOVRA_FRAME_VOCABULARY_HPP
#define KOVRA_FRAME_VOCABULARY_HPP

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace Kovra::frame {

/// One word and its code. Several words may share a code; the first of them is the one written.
struct Word {
  std::string_view text;  ///< from a literal, so a NUL stands behind it
  int code;
};

/// How a text is compared with a word.
enum class Match {
  exact,      ///< the whole text, letter by letter
  anyCase,    ///< the whole text, whatever the case of its letters
  substring,  ///< the word stands anywhere in the text
};

/// Words are tried in their order and the first match wins.
struct Vocabulary {
  std::span<Word const> words;
  Match match;
  int unknown;

  /// The word that `text` is, or null.
  Word const* find(char const* text) const;
  /// The same for a text with a length; one with a zero byte in it is no word.
  Word const* find(std::string_view text) const;
  /// The code of `text`; a null text is unknown.
  int codeOf(char const* text) const;
  /// The word written for `code`; empty when none has it.
  constexpr std::string_view wordOf(int code) const {
    for (Word const& word : words) {
      if (word.code == code) return word.text;
    }
    return {};
  }

  /// The same, terminated, and `otherwise` where there is none.
  char const* wordOr(int code, char const* otherwise) const {
    std::string_view const word = wordOf(code);
    return word.empty() ? otherwise : word.data();
  }
  char const* wordOrEmpty(int code) const { return wordOr(code, ""); }
};

namespace detail {
constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool sameInAnyCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}
}  // namespace detail

/// Would the text `later` already be taken for the word `earlier`?
constexpr bool hides(Match match, std::string_view earlier, std::string_view later) {
  switch (match) {
    case Match::exact:
      return earlier == later;
    case Match::anyCase:
      return detail::sameInAnyCase(earlier, later);
    case Match::substring:
      return later.find(earlier) != std::string_view::npos;
  }
  return false;
}

/// Proves a vocabulary while compiling: no word stands behind one that takes its text away.
constexpr bool everyWordIsReachable(Vocabulary const& vocabulary) {
  for (std::size_t later = 0; later < vocabulary.words.size(); ++later) {
    if (vocabulary.words[later].text.empty()) return false;
    for (std::size_t earlier = 0; earlier < later; ++earlier) {
      if (hides(vocabulary.match, vocabulary.words[earlier].text, vocabulary.words[later].text)) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace Kovra::frame

#endif
