#include "face/compose_choice.hpp"

#include "frame/assign.hpp"

namespace Kovra {

bool refuse(Problem& problem, std::string_view path, std::string_view found,
            std::string_view expected) {
  problem.path = path;
  problem.found = found;
  problem.expected = expected;
  return false;
}

std::vector<std::string> namesOf(frame::Vocabulary const& words) {
  std::vector<std::string> names;
  for (frame::Word const& word : words.words) names.emplace_back(word.text);
  return names;
}

bool bitsOf(long& bits, std::vector<std::string> const& chosen, frame::Vocabulary const& words,
            std::string const& what, Problem& problem) {
  bits = 0;
  for (std::string const& name : chosen) {
    frame::Word const* const word = words.find(name);
    if (word == nullptr) {
      problem.path = what;
      frame::fail(problem, '"' + name + '"', "one of: " + frame::listed(words));
      return false;
    }
    bits |= word->code;
  }
  return true;
}

}  // namespace Kovra
