// Any reply that is read: its copy differs in values that tell whose it is and in nothing else,
// none of them is left where it can be replaced, and the same holds of the copy's copy.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <kovra.hpp>
#include <set>
#include <string>
#include <string_view>

#include "support/guarded.hpp"
#include "support/redacted.hpp"

namespace {

using Kovra::tool::Group;
using Kovra::tool::Identities;

void requireGoodCopy(std::string_view text, Identities const& identities) {
  std::string const fault = Kovra::test::faultOfRedaction(text, identities);
  if (!fault.empty()) std::fprintf(stderr, "%s\n", fault.c_str());
  kovra_fuzz::require(fault.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static Identities const all({});
  static Identities const secrets({Group::serial, Group::address, Group::network, Group::job});
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  if (!Kovra::decode(text)) return 0;
  requireGoodCopy(text, all);
  requireGoodCopy(text, secrets);
  return 0;
}
