/// @file
/// Any bytes at all: the scanner builds the tree that TinyXML builds, node for node, or finds the
/// same error. LC_ALL chooses whose letters and blanks are fuzzed; with KOVRA_KEEP_WHITE_SPACE set
/// TinyXML is told to keep white space.

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/twin_trees.hpp"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");
  if (std::getenv("KOVRA_KEEP_WHITE_SPACE") != nullptr) TiXmlBase::SetCondenseWhiteSpace(false);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const told = Kovra::test::difference({reinterpret_cast<char const*>(data), size});
  if (told.empty()) return 0;
  std::fprintf(stderr, "%s\n", told.c_str());
  std::abort();
}
