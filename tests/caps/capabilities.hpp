/// @file
/// A host's capabilities: a record and arrays for its lists, full of the sentinel.

#ifndef KOVRA_TESTS_CAPS_CAPABILITIES_HPP
#define KOVRA_TESTS_CAPS_CAPABILITIES_HPP

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "kvxcapsrecords.h"
#include "support/records.hpp"

namespace Kovra::test {

/// More entries than any test gives a list room for, so that one too many is seen.
struct Arrays {
  _PortCaps hostPorts[6];
  _PortCaps devicePorts[6];
  _InterfaceCaps swInterfaces[6];
  _OCPLanguageCaps ocpLanguages[6];
  int graphicFormats[6];
  _FontCaps fonts[6];
  _TemplateCaps templates[6];
  _TemplateCaps graphics[6];
  _BarCodeCaps barcodes[6];
};

/// All counts are the same number, whatever the arrays could hold.
struct HostCapabilities {
  Arrays arrays = filled<Arrays>();
  _Capabilities record = filled<_Capabilities>();

  explicit HostCapabilities(int count) {
    record.hostPorts = arrays.hostPorts;
    record.devicePorts = arrays.devicePorts;
    record.swInterfaces = arrays.swInterfaces;
    record.ocpLanguages = arrays.ocpLanguages;
    record.graphicFormats = arrays.graphicFormats;
    record.fonts = arrays.fonts;
    record.templates = arrays.templates;
    record.graphics = arrays.graphics;
    record.barcodes = arrays.barcodes;
    record.hostPortCount = record.devicePortCount = record.swInterfaceCount = count;
    record.ocpLanguageCount = record.graphicFormatCount = record.fontCount = count;
    record.templateCount = record.graphicCount = record.barcodeCount = count;
  }
  HostCapabilities(HostCapabilities const&) = delete;
  HostCapabilities& operator=(HostCapabilities const&) = delete;
};

/// Expects that `read` gives `result` and changes just what `change` changes.
template <class Read, class Change>
void expectReading(HostCapabilities& host, Read read, bool result, Change change) {
  Arrays expectedArrays;
  std::memcpy(&expectedArrays, &host.arrays, sizeof expectedArrays);
  _Capabilities expected;
  std::memcpy(&expected, &host.record, sizeof expected);
  change(expected, expectedArrays);
  EXPECT_EQ(read(host.record), result);
  EXPECT_TRUE(same(host.record, expected)) << "the record";
  EXPECT_TRUE(same(host.arrays, expectedArrays)) << "the arrays";
}

template <std::size_t N>
void setText(char (&array)[N], std::string const& text) {
  ASSERT_LT(text.size(), N);
  std::memcpy(array, text.c_str(), text.size() + 1);
}

inline std::string element(std::string const& name, std::string const& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

}  // namespace Kovra::test

#endif
