#include "frame/vocabulary.hpp"

#include <strings.h>

#include <cstring>

namespace Kovra::frame {

namespace {

bool matches(Match match, char const* text, Word const& word) {
  switch (match) {
    case Match::exact:
      return word.text == text;
    case Match::anyCase:
      return ::strcasecmp(text, word.text.data()) == 0;
    case Match::substring:
      return std::strstr(text, word.text.data()) != nullptr;
  }
  return false;
}

}  // namespace

Word const* Vocabulary::find(char const* text) const {
  if (text == nullptr) return nullptr;
  for (Word const& word : words) {
    if (matches(match, text, word)) return &word;
  }
  return nullptr;
}

int Vocabulary::codeOf(char const* text) const {
  Word const* const word = find(text);
  return word != nullptr ? word->code : unknown;
}

}  // namespace Kovra::frame
