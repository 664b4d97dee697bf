// Any bytes as an input of the tool: its replies are the same ones however it arrives, each of them
// is told in one line of JSON, and what is wrong with one lies within it. One in which `kovra
// check` finds nothing is XML by the judgement of libexpat, and no other.

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <kovra.hpp>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "excerpt.hpp"
#include "findings.hpp"
#include "secret.hpp"
#include "strict_xml.hpp"
#include "support/guarded.hpp"
#include "support/replies.hpp"

namespace {

using namespace Kovra;
using kovra_fuzz::require;

void requireTheSameInPieces(std::string_view input, tool::Division division, std::size_t limit) {
  std::mt19937 random(static_cast<std::mt19937::result_type>(std::hash<std::string_view>()(input)));
  std::size_t const most = std::size_t{1} << random() % 12;
  auto const sizeOfNext = [&] { return random() % most; };
  require(test::repliesOf(input, division, limit, sizeOfNext) ==
          test::repliesOf(input, division, limit));
}

void requireOrder(std::string_view text, std::vector<tool::Stretch> const& secrets) {
  std::size_t at = 0;
  for (tool::Stretch const& secret : secrets) {
    require(at <= secret.begin && secret.begin <= secret.end && secret.end <= text.size());
    at = secret.end;
  }
}

void noteEntity(void* declared, XML_Char const*, int, XML_Char const*, int, XML_Char const*,
                XML_Char const*, XML_Char const*, XML_Char const*) {
  *static_cast<bool*>(declared) = true;
}

/// What libexpat says by itself, which here gets a text byte by byte. Of a text that declares an
/// entity the rest does not matter.
bool isStrictXml(std::string_view text) {
  std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> const parser(
      XML_ParserCreate(nullptr), &XML_ParserFree);
  bool declaresEntity = false;
  XML_SetUserData(parser.get(), &declaresEntity);
  XML_SetEntityDeclHandler(parser.get(), noteEntity);
  for (char const& byte : text) {
    if (XML_Parse(parser.get(), &byte, 1, XML_FALSE) != XML_STATUS_OK || declaresEntity) {
      return false;
    }
  }
  return XML_Parse(parser.get(), "", 0, XML_TRUE) == XML_STATUS_OK;
}

void requireSameJudgement(Decoding const& decoding, std::string_view text) {
  std::vector<tool::Found> const findings = tool::findingsOf(decoding, text);
  bool const isFaulty = std::any_of(findings.begin(), findings.end(), [](tool::Found const& found) {
    return found.id == tool::strictId;
  });
  bool const isStrict = isStrictXml(text);
  require(!findings.empty() || isStrict);
  // A text without a root was refused, and needs no second opinion.
  require(isFaulty == (!isStrict && !decoding.root().empty()));
}

void requireTold(std::string_view text) {
  Decoding const decoding = decode(text);
  requireSameJudgement(decoding, text);
  std::string const line = decoding.toJson(-1, Secrets::masked);
  require(line.size() > 2 && line.find('\n') == line.npos);
  std::vector<tool::Stretch> const secrets = tool::secretsIn(text);
  requireOrder(text, secrets);
  auto const fault = tool::strictFault(text);
  if (!fault) return;
  require(fault->offset <= text.size() && !fault->message.empty());
  tool::excerpt(text, {fault->offset, fault->offset + 1}, secrets, fault->line, 80,
                tool::Style::error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string_view const input(reinterpret_cast<char const*>(data), size);
  for (std::size_t const limit : {test::noLimit, size / 2 + 1}) {
    requireTheSameInPieces(input, tool::Division::reply, limit);
    requireTheSameInPieces(input, tool::Division::line, limit);
  }
  for (test::Reply const& reply : test::repliesOf(input, tool::Division::reply)) {
    requireTold(reply.text);
  }
  return 0;
}
