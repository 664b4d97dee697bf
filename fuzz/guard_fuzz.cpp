/// @file
/// Any bytes at all: the guard and TinyXML agree on whether they are malformed, and on how many
/// elements and attributes they hold and how deep those are nested.

#include <tinyxml.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <tuple>

#include "frame/guard.hpp"

using namespace Kovra::frame;

namespace {

// The node behind this one in the document's order, or null. Needs no recursion.
TiXmlNode const* behind(TiXmlNode const* node, std::size_t& depth) {
  if (node->FirstChild() != nullptr) return ++depth, node->FirstChild();
  for (; node != nullptr && node->NextSibling() == nullptr; node = node->Parent()) --depth;
  return node != nullptr ? node->NextSibling() : nullptr;
}

// How many elements and attributes there are, how deep they go, and the most on one element.
auto countsOf(TiXmlDocument const& document) {
  std::size_t elements = 0, attributes = 0, deepest = 0, most = 0, depth = 0;
  for (TiXmlNode const* node = &document; node != nullptr; node = behind(node, depth)) {
    TiXmlElement const* const element = node->ToElement();
    if (element == nullptr) continue;
    std::size_t own = 0;
    for (auto* a = element->FirstAttribute(); a != nullptr; a = a->Next()) ++own;
    ++elements;
    attributes += own;
    deepest = std::max(deepest, depth);
    most = std::max(most, own);
  }
  return std::tuple(elements, attributes, deepest, most);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses whose letters and blanks are fuzzed
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  auto const text = std::make_unique<char[]>(size + padding);  // all zero
  std::copy_n(data, size, text.get());
  Scan const scanned = scan(text.get());
  if (scanned.fault == Fault::tooDeep || scanned.fault == Fault::tooManyAttributes) return 0;

  TiXmlDocument document;
  document.Parse(text.get());
  bool const agreed = (scanned.fault == Fault::none) == !document.Error() &&
                      scanned.offset <= size &&
                      countsOf(document) == std::tuple(scanned.elements, scanned.attributes,
                                                       scanned.deepest, scanned.mostAttributes);
  if (!agreed) std::abort();
  return 0;
}
