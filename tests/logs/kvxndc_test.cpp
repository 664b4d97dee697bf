#include "kvxndc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::element;
using test::filled;
using test::same;
using test::untouched;
using test::wide;

/// The host's buffer and what lies behind it.
struct Buffer {
  char response[512];
  char behind[512];
};

struct Response {
  bool result;
  Buffer buffer;
};

Response response(std::wstring const& text, int length) {
  Response response{false, filled<Buffer>()};
  auto const exact = test::unterminated(text);
  response.result = KVXNDC().GetLaminatorResponse(*exact.get(), length, response.buffer.response);
  return response;
}

Response response(std::string const& text) {
  return response(wide(text), static_cast<int>(text.size()));
}

void expectText(std::string const& xml, std::string const& text) {
  auto expected = filled<Buffer>();
  std::strcpy(expected.response, text.c_str());
  auto const [result, buffer] = response(xml);
  EXPECT_TRUE(result) << xml;
  EXPECT_TRUE(same(buffer, expected)) << xml;
}

void expectRefused(Response const& response, std::string const& what) {
  EXPECT_FALSE(response.result) << what;
  EXPECT_TRUE(untouched(response.buffer)) << what;
}

TEST(LaminatorResponse, IsTheTextOfTheRoot) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    expectText("<lam_ndc_rsp>OK</lam_ndc_rsp>", "OK");
    expectText("<?xml version='1.0'?>\n<lam_ndc_rsp>T=173;F=2 &amp; ready</lam_ndc_rsp>\n",
               "T=173;F=2 & ready");
  }
}

TEST(LaminatorResponse, IsTheFirstChildWhateverItIs) {
  expectText("<lam_ndc_rsp><![CDATA[ <a>  b\n]]></lam_ndc_rsp>", " <a>  b\n");
  expectText("<lam_ndc_rsp><answer>1</answer></lam_ndc_rsp>", "answer");
  expectText("<lam_ndc_rsp><!--comment-->text</lam_ndc_rsp>", "comment");
}

TEST(LaminatorResponse, IsCopiedWholeWhenItFitsAndCutWhenItDoesNot) {
  for (std::size_t const length : {1U, 510U, 511U, 512U, 513U, 5000U}) {
    expectText(element("lam_ndc_rsp", std::string(length, 'r')),
               std::string(std::min<std::size_t>(length, 511), 'r'));
  }
}

TEST(LaminatorResponse, FailsUntouchedWithoutAText) {
  for (char const* const xml :
       {"<lam_ndc_rsp/>", "<lam_ndc_rsp></lam_ndc_rsp>", "<lam_ndc_rsp>  </lam_ndc_rsp>"}) {
    expectRefused(response(xml), xml);
  }
}

TEST(LaminatorResponse, FailsUntouchedWithAnotherRoot) {
  for (char const* const xml : {"<lam_rsp>OK</lam_rsp>", "<LAM_NDC_RSP>OK</LAM_NDC_RSP>",
                                "<a><lam_ndc_rsp>OK</lam_ndc_rsp></a>"}) {
    expectRefused(response(xml), xml);
  }
}

TEST(LaminatorResponse, FailsUntouchedWhenItIsMalformed) {
  std::string const whole = "<?xml version='1.0'?><lam_ndc_rsp>OK</lam_ndc_rsp>";
  for (std::size_t size = 1; size < whole.size(); ++size) {
    expectRefused(response(whole.substr(0, size)), "cut at " + std::to_string(size));
    expectRefused(response(wide(whole), static_cast<int>(size)), "length " + std::to_string(size));
  }
  expectRefused(response(whole + "<open>"), "malformed behind the root");
}

TEST(LaminatorResponse, FailsUntouchedWhenItIsHostile) {
  std::string deep, end, crowded = "<a";
  for (int i = 0; i < 128; ++i) deep += "<a>", end += "</a>";
  for (int i = 0; i < 257; ++i) crowded += " a" + std::to_string(i) + "='1'";
  expectRefused(response(element("lam_ndc_rsp", "OK" + deep + end)), "129 elements deep");
  expectRefused(response(element("lam_ndc_rsp", "OK" + crowded + "/>")), "257 attributes");
}

TEST(LaminatorResponse, FailsUntouchedForALengthBelowOne) {
  std::wstring const text = L"<lam_ndc_rsp>OK</lam_ndc_rsp>";
  for (int const length : {0, -1, INT_MIN}) {
    expectRefused(response(text, length), std::to_string(length));
  }
}

TEST(LaminatorResponse, FailsWithoutABuffer) {
  std::wstring const text = L"<lam_ndc_rsp>OK</lam_ndc_rsp>";
  EXPECT_FALSE(
      KVXNDC().GetLaminatorResponse(*text.c_str(), static_cast<int>(text.size()), nullptr));
}

TEST(KVXNDC, HasItsOperationWithItsSignature) {
  bool (KVXNDC::*const entry)(wchar_t const&, int, char*) = &KVXNDC::GetLaminatorResponse;
  auto buffer = filled<Buffer>();
  EXPECT_FALSE((KVXNDC().*entry)(L'\0', 0, buffer.response));
  EXPECT_TRUE(untouched(buffer));
}

}  // namespace
}  // namespace Kovra
