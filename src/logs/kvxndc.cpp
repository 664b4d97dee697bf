#include "kvxndc.h"

#include "frame/typed/reply.hpp"
#include "logs/logs_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// Hosts get the text in a buffer of this size, without a record around it.
struct LaminatorResponse {
  char lam_ndc_rsp[512];
};

constexpr char const* responseRoots[] = {"lam_ndc_rsp"};

constexpr auto response = text<&LaminatorResponse::lam_ndc_rsp>(responseRoots[0]);

/// The text is that of the root itself.
bool decodeResponse(Element root, Observer& observer) {
  LaminatorResponse record{};
  return response.read(root, record, Watch(observer));
}

constexpr ReplyReader replies[] = {
    {"laminator-response", "answer of the laminator to a command", responseRoots, decodeResponse,
     [](Outline& outline) { outline.emplace(response.element()); }},
};

}  // namespace

std::span<frame::ReplyReader const> laminatorReplies() {
  return replies;
}

KVXNDC::KVXNDC() = default;
KVXNDC::~KVXNDC() = default;

bool KVXNDC::GetLaminatorResponse(wchar_t const& text, int len, char* out) {
  if (out == nullptr) return false;
  return readWide(&text, len, responseRoots, [&](Element root) {
    return convertText(root.text(), out, sizeof LaminatorResponse::lam_ndc_rsp);
  });
}

}  // namespace Kovra
