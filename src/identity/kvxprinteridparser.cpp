#include "kvxprinteridparser.h"

#include "frame/entry.hpp"
#include "identity/identity_tables.hpp"

namespace Kovra {

using namespace identity;

KVXPrinterIDParser::KVXPrinterIDParser() = default;
KVXPrinterIDParser::~KVXPrinterIDParser() = default;

bool KVXPrinterIDParser::ParsePrinterInfo(char const* text, int, KVPrinterInfo& out) {
  return readAsDocument(*this, text, identityRoots,
                        [&](Element root) { return walk(root, printerInfo, out, Watch()); });
}

bool KVXPrinterIDParser::parsePrinterInfo(TiXmlElement* root, KVPrinterInfo& out) {
  return walk(root, printerInfo, out);
}

}  // namespace Kovra
