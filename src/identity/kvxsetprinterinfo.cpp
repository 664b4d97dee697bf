#include "kvxsetprinterinfo.h"

#include "frame/output.hpp"
#include "identity/identity_tables.hpp"

namespace Kovra {

namespace {

using namespace identity;

constexpr char debugCopy[] = "/tmp/printidsettings";
}  // namespace

KVXSetPrinterInfo::KVXSetPrinterInfo() : root_(nullptr) {}
KVXSetPrinterInfo::~KVXSetPrinterInfo() = default;

bool KVXSetPrinterInfo::SetPrinterInfo(KVPrinterInfo const& info, wchar_t* out, int outLen,
                                       long fields) {
  root_ = beginDocument(*this, identityRoots[0]);
  return addPrinterInfo(root_, info, fields) && saveJob(out, outLen);
}

bool KVXSetPrinterInfo::addPrinterInfo(TiXmlElement* root, KVPrinterInfo const& info, long fields) {
  Circumstances const wanted = static_cast<Circumstances>(fields) & everyField;
  // An identity without any field is composed as well, so nothing at all is a success.
  return root != nullptr ? writeAll(*root, printerInfo, info, wanted, true) : wanted == 0;
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
