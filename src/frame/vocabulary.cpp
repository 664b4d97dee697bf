#include "frame/vocabulary.hpp"

#include <strings.h>

#include <cstring>

#include "frame/bytes.hpp"

namespace Kovra::frame {

namespace {

/// `text` has a terminator behind it, as every word has.
bool matches(Match match, std::string_view text, Word const& word) {
  switch (match) {
    case Match::exact:
      return sameText(word.text, text);
    case Match::anyCase:
      return ::strcasecmp(text.data(), word.text.data()) == 0;
    case Match::substring:
      return std::strstr(text.data(), word.text.data()) != nullptr;
  }
  return false;
}

}  // namespace

Word const* Vocabulary::find(char const* text) const {
  if (text == nullptr) return nullptr;
  std::string_view const whole = text;  // measured once, not for each word
  for (Word const& word : words) {
    if (matches(match, whole, word)) return &word;
  }
  return nullptr;
}

Word const* Vocabulary::find(std::string_view text) const {
  return text.find('\0') == text.npos ? find(std::string(text).c_str()) : nullptr;
}

int Vocabulary::codeOf(char const* text) const {
  Word const* const word = find(text);
  return word != nullptr ? word->code : unknown;
}

}  // namespace Kovra::frame
