// Trees as a host without Kovra would build them, with TinyXML alone.

#ifndef KOVRA_BENCH_BY_HAND_HPP
#define KOVRA_BENCH_BY_HAND_HPP

#include <tinyxml.h>

#include <cstdio>
#include <cstdlib>

#include "kvxhelper.h"

namespace kovra_bench {

inline TiXmlElement* below(TiXmlElement* parent, char const* name) {
  auto* const element = new TiXmlElement(name);
  parent->LinkEndChild(element);
  return element;
}

inline void text(TiXmlElement* parent, char const* name, char const* value) {
  below(parent, name)->LinkEndChild(new TiXmlText(value));
}

inline void number(TiXmlElement* parent, char const* name, long value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%ld", value);
  text(parent, name, digits);
}

inline void yesOrNo(TiXmlElement* parent, char const* name, bool value) {
  text(parent, name, value ? "yes" : "no");
}

inline void setting(TiXmlElement* parent, char const* name, Kovra::_MinMaxVal const& v) {
  TiXmlElement* const element = below(parent, name);
  element->SetAttribute("min", v.min);
  element->SetAttribute("max", v.max);
  char digits[32];
  std::snprintf(digits, sizeof digits, "%d", v.val);
  element->LinkEndChild(new TiXmlText(digits));
}

inline void setting(TiXmlElement* parent, char const* name, Kovra::_MinMaxValFloat const& v) {
  TiXmlElement* const element = below(parent, name);
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.2f", static_cast<double>(v.min));
  element->SetAttribute("min", digits);
  std::snprintf(digits, sizeof digits, "%.2f", static_cast<double>(v.max));
  element->SetAttribute("max", digits);
  std::snprintf(digits, sizeof digits, "%.4f", static_cast<double>(v.val));
  element->LinkEndChild(new TiXmlText(digits));
}

/// Declaration and root of a document.
inline TiXmlElement* begin(TiXmlDocument& document, char const* root) {
  document.LinkEndChild(new TiXmlDeclaration("1.0", "UTF-8", ""));
  auto* const element = new TiXmlElement(root);
  document.LinkEndChild(element);
  return element;
}

/// Prints and converts a document.
inline void print(TiXmlDocument const& document, wchar_t* out, std::size_t length) {
  TiXmlPrinter printer;
  printer.SetIndent("    ");
  printer.SetLineBreak("\n");
  document.Accept(&printer);
  static_cast<void>(std::mbstowcs(out, printer.CStr(), length));
}

}  // namespace kovra_bench

#endif
