#include "kvxndc.h"

#include "frame/message.hpp"
#include "logs/logs_tables.hpp"

namespace Kovra {

using namespace logs;

KVXNDC::KVXNDC() = default;
KVXNDC::~KVXNDC() = default;

bool KVXNDC::GetLaminatorResponse(wchar_t const& text, int len, char* out) {
  if (out == nullptr) return false;
  return readWide(&text, len, laminatorResponseRoots, [&](Element root) {
    return convertText(root.text(), out, sizeof LaminatorResponse::lam_ndc_rsp);
  });
}

}  // namespace Kovra
