/// @file
/// Documents as TinyXML prints them, to compare with.

#ifndef KOVRA_TESTS_SUPPORT_PRINTED_HPP
#define KOVRA_TESTS_SUPPORT_PRINTED_HPP

#include <tinyxml.h>

#include <string>

namespace Kovra::test {

/// The document as TinyXML prints it with an indent of four blanks: what every document that the
/// library prints has to be.
inline std::string printedByTinyxml(TiXmlDocument const& document) {
  TiXmlPrinter printer;
  printer.SetIndent("    ");
  document.Accept(&printer);
  return printer.Str();
}

}  // namespace Kovra::test

#endif
