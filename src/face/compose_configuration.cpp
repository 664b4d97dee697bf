#include <memory>

#include "config/config_documents.hpp"
#include "config/config_words.hpp"
#include "face/compose_choice.hpp"
#include "frame/output.hpp"
#include "frame/wipe.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

/// Why no section was written, so that nobody has to guess.
void explainNothing(ConfigurationChoice const& choice, long sections, Problem& problem) {
  if (sections == 0) {
    problem.path = "sections";
    frame::fail(problem, "none", "some of: " + frame::listed(config::sectionNames));
  } else if (choice.card < 0 || choice.card > 2) {
    problem.path = "card";
    frame::fail(problem, std::to_string(choice.card), "1 or 2, or 0 for both");
  } else if (choice.card != 0) {
    problem.path = "sections";
    frame::fail(problem, "no cards", "the section cards, of which one card was chosen");
  } else {
    frame::fail(
        problem, "nothing to write in the chosen sections",
        "a laminate that is marked as installed, or transfer settings of a printer with film");
  }
}

}  // namespace

std::vector<std::string> configurationSections() {
  return namesOf(config::sectionNames);
}

Composition composeConfiguration(Value const& record, ConfigurationChoice const& choice) {
  Composition composition;
  Problem& problem = composition.problem;
  long sections = 0;
  if (!bitsOf(sections, choice.sections, config::sectionNames, "sections", problem)) {
    return composition;
  }
  auto const config = std::make_unique<_KVConfiguration>();
  frame::WipedAtEnd<_KVConfiguration> const wiped(*config);
  if (assignConfiguration(*config, record, problem) == frame::Assigned::failed) return composition;

  frame::SecretDocument document;
  TiXmlElement* const root = frame::beginDocument(document, configurationRoot);
  if (writeConfiguration(*root, *config, sections, choice.card, choice.filmless)) {
    composition.text = frame::printNarrow(document);
    composition.composed = true;
  } else {
    explainNothing(choice, sections, problem);
  }
  return composition;
}

}  // namespace Kovra
