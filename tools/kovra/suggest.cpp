#include "suggest.hpp"

#include <algorithm>
#include <cstddef>

namespace Kovra::tool {

namespace {

/// No name is so long, and whoever types more means none of them.
constexpr std::size_t longest = 64;

char lower(char letter) {
  if (letter == '_') return '-';
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// How many letters have to be changed, put in, left out, or swapped with the next one.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) steps[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) steps[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      bool const isSame = lower(a[i - 1]) == lower(b[j - 1]);
      std::size_t best = std::min(
          {steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + (isSame ? 0 : 1)});
      bool const isSwapped = i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) &&
                             lower(a[i - 2]) == lower(b[j - 1]);
      if (isSwapped) best = std::min(best, steps[i - 2][j - 2] + 1);
      steps[i][j] = best;
    }
  }
  return steps[a.size()][b.size()];
}

bool goesOn(std::string_view word, std::string_view known) {
  return word.size() >= 2 && known.substr(0, word.size()) == word;
}

}  // namespace

std::vector<std::string> nearest(std::string_view word, std::vector<std::string> const& known) {
  std::vector<std::string> found;
  if (word.empty() || word.size() > longest) return found;
  std::size_t best = std::max<std::size_t>(1, word.size() / 3);
  for (std::string const& candidate : known) {
    std::size_t const far = goesOn(word, candidate) ? 1 : distance(word, candidate);
    if (far > best) continue;
    if (far < best) found.clear();
    best = far;
    if (std::find(found.begin(), found.end(), candidate) == found.end()) found.push_back(candidate);
  }
  return found;
}

std::string suggestion(std::string_view word, std::vector<std::string> const& known) {
  std::string text;
  for (std::string const& candidate : nearest(word, known)) {
    text += (text.empty() ? " Did you mean \"" : " or \"") + candidate + '"';
  }
  return text.empty() ? text : text + '?';
}

}  // namespace Kovra::tool
