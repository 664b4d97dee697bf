#include "verbs.hpp"

#include "check.hpp"
#include "completion.hpp"
#include "compose.hpp"
#include "coverage.hpp"
#include "decode.hpp"
#include "diff.hpp"
#include "explain.hpp"
#include "listing.hpp"
#include "redact.hpp"
#include "report.hpp"
#include "sample.hpp"
#include "schema.hpp"

namespace Kovra::tool {

std::vector<Verb> const& verbs() {
  static std::vector<Verb> const all = {
      {"decode", "Show what printers' replies say", addDecode},
      {"check", "Tell all that is wrong with replies, as a compiler does", addCheck},
      {"compose", "Make documents that the printer accepts from records", addCompose},
      {"diff", "Tell what two replies say differently", addDiff},
      {"redact", "Copy replies without what tells whose they are", addRedact},
      {"report", "Make a page that shows what a fleet's replies say", addReport},
      {"coverage", "Sum up what is unknown in many replies", addCoverage},
      {"explain", "Tell what a finding, an element, a member or a word is", addExplain},
      {"list", "List the documents that decode knows", addList},
      {"vocabulary", "List every element name and keyword, sorted", addVocabulary},
      {"schema", "Print the JSON Schema of messages' records", addSchema},
      {"sample", "Make replies for those who have no printer", addSample},
      {"completion", "Print completions for a shell", addCompletion},
  };
  return all;
}

}  // namespace Kovra::tool
