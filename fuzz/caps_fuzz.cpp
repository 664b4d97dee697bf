/// @file
/// Any bytes at all as capabilities: whatever room a host has for the lists, no entry is stored
/// beyond it, also when a reply names a list twice. What was stored can be written, and what the
/// face shows can be composed.

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

#include "kovra.hpp"
#include "kvxcapsparser.h"
#include "kvxsetcaps.h"
#include "support/composed.hpp"
#include "support/guarded.hpp"

using namespace Kovra;
using namespace kovra_fuzz;

namespace {

/// An array that has room for what its count says, and not an entry more.
template <class Entry>
class Array {
 public:
  Array(int count, unsigned char pattern, int& countMember, Entry*& arrayMember)
      : room_(static_cast<std::size_t>(std::max(count, 0)), pattern), array_(arrayMember) {
    countMember = count;
    arrayMember = room_.entries();
  }

  bool isIntact() { return room_.isIntact() && array_ == room_.entries(); }

 private:
  Guarded<Entry> room_;
  Entry*& array_;
};

void drive(WideText const& text, int count, unsigned char pattern) {
  _Capabilities caps{};
  Array<_PortCaps> hostPorts(count, pattern, caps.hostPortCount, caps.hostPorts);
  Array<_PortCaps> devicePorts(count, pattern, caps.devicePortCount, caps.devicePorts);
  Array<_InterfaceCaps> interfaces(count, pattern, caps.swInterfaceCount, caps.swInterfaces);
  Array<_OCPLanguageCaps> languages(count, pattern, caps.ocpLanguageCount, caps.ocpLanguages);
  Array<int> formats(count, pattern, caps.graphicFormatCount, caps.graphicFormats);
  Array<_FontCaps> fonts(count, pattern, caps.fontCount, caps.fonts);
  Array<_TemplateCaps> templates(count, pattern, caps.templateCount, caps.templates);
  Array<_TemplateCaps> graphics(count, pattern, caps.graphicCount, caps.graphics);
  Array<_BarCodeCaps> barcodes(count, pattern, caps.barcodeCount, caps.barcodes);
  require(!KVXCapsParser().GetCapabilities(*text.characters.get(), text.length, caps));
  require(hostPorts.isIntact() && devicePorts.isIntact() && interfaces.isIntact() &&
          languages.isIntact() && formats.isIntact() && fonts.isIntact() && templates.isIntact() &&
          graphics.isIntact() && barcodes.isIntact());
}

// What a host does: it asks for the counts, makes room for just as many, and reads again.
void driveWithRoom(WideText const& text) {
  _Capabilities caps{};
  KVXCapsParser().GetCapabilities(*text.characters.get(), text.length, caps);
  int const most = std::max({caps.hostPortCount, caps.devicePortCount, caps.swInterfaceCount,
                             caps.ocpLanguageCount, caps.graphicFormatCount, caps.fontCount,
                             caps.templateCount, caps.graphicCount, caps.barcodeCount});
  if (most < 1000) drive(text, most, 0x00);
  KVXSetCaps writer;
  wchar_t out[64];
  require(writer.SetCapabilities({}, out, 64, 0, caps.atm));
}

void compose(std::uint8_t const* data, std::size_t size) try {
  composeAgain(data, size, "capabilities",
               [](Value const& record) { return composeCapabilities(record); });
} catch (std::bad_alloc const&) {  // more entries than any printer has
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses which characters narrow
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  if (size == 0) return 0;
  WideText const text(data, size);
  for (int const count : {-1, 0, 1, 3}) drive(text, count, 0xA5);
  driveWithRoom(text);
  compose(data, size);
  return 0;
}
