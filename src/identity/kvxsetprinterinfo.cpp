#include "kvxsetprinterinfo.h"

#include "frame/output.hpp"
#include "identity/identity_documents.hpp"
#include "identity/identity_tables.hpp"

namespace Kovra {

namespace {

using namespace identity;

constexpr char debugCopy[] = "/tmp/printidsettings";
constexpr Circumstances everyField = fieldPrinterModel | fieldPrintheadSerial;

}  // namespace

/// An identity without any field is composed as well, so nothing at all is a success.
bool writeIdentity(TiXmlElement& root, KVPrinterInfo const& info, long fields) {
  return writeAll(root, printerInfo, info, static_cast<Circumstances>(fields) & everyField, true);
}

frame::Assigned assignIdentity(KVPrinterInfo& info, Value const& value, Problem& problem) {
  return assignAll(printerInfo, info, value, problem);
}

KVXSetPrinterInfo::KVXSetPrinterInfo() : root_(nullptr) {}
KVXSetPrinterInfo::~KVXSetPrinterInfo() = default;

bool KVXSetPrinterInfo::SetPrinterInfo(KVPrinterInfo const& info, wchar_t* out, int outLen,
                                       long fields) {
  root_ = beginDocument(*this, identityRoot);
  return addPrinterInfo(root_, info, fields) && saveJob(out, outLen);
}

bool KVXSetPrinterInfo::addPrinterInfo(TiXmlElement* root, KVPrinterInfo const& info, long fields) {
  if (root == nullptr) return (static_cast<Circumstances>(fields) & everyField) == 0;
  return writeIdentity(*root, info, fields);
}

bool KVXSetPrinterInfo::addPrinterInfo(TiXmlElement* root, KVPrinterInfo const& info) {
  if (root != nullptr) writeAll(*root, printerInfo, info, everyField | everything, true);
  return true;
}

bool KVXSetPrinterInfo::saveJob(wchar_t* out, int outLen) {
  saveDebugCopy(*this, debugCopy);
  return printWide(*this, out, outLen);
}

bool KVXSetPrinterInfo::saveJob(char* path) {
  return saveTo(*this, path);
}

}  // namespace Kovra
