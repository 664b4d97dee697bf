#include "face/compose_choice.hpp"
#include "frame/output.hpp"
#include "identity/identity_documents.hpp"
#include "kovra.hpp"

namespace Kovra {

std::vector<std::string> printerIdFields() {
  return namesOf(identityFields);
}

Composition composePrinterId(Value const& record, std::vector<std::string> const& fields) {
  Composition composition;
  long bits = 0;
  if (!bitsOf(bits, fields, identityFields, "fields", composition.problem)) return composition;
  KVPrinterInfo info{};
  if (assignIdentity(info, record, composition.problem) == frame::Assigned::failed) {
    return composition;
  }
  TiXmlDocument document;
  composition.composed = writeIdentity(*frame::beginDocument(document, identityRoot), info, bits);
  if (composition.composed) composition.text = frame::printNarrow(document);
  return composition;
}

}  // namespace Kovra
