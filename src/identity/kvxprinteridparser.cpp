#include "kvxprinteridparser.h"

#include "frame/entry.hpp"
#include "frame/typed/reply.hpp"
#include "identity/identity_documents.hpp"
#include "identity/identity_tables.hpp"

namespace Kovra {

namespace {

using namespace identity;

constexpr char const* roots[] = {identityRoot};

constexpr ReplyReader replies[] = {
    reader<KVPrinterInfo, TableReading<printerInfo>>(
        "printer-id", "vendor, model, serial numbers, addresses, firmware versions", roots),
};

}  // namespace

std::span<frame::ReplyReader const> identityReplies() {
  return replies;
}

KVXPrinterIDParser::KVXPrinterIDParser() = default;
KVXPrinterIDParser::~KVXPrinterIDParser() = default;

bool KVXPrinterIDParser::ParsePrinterInfo(char const* text, int, KVPrinterInfo& out) {
  return readAsDocument(*this, text, roots, [&](Element root) {
    Watch const nobody;
    return walk(root, printerInfo, out, nobody);
  });
}

bool KVXPrinterIDParser::parsePrinterInfo(TiXmlElement* root, KVPrinterInfo& out) {
  return walk(root, printerInfo, out);
}

}  // namespace Kovra
