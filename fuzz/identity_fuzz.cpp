/// @file
/// Any bytes as an identity: reading never strays, and what was read can be written and read again.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kvxprinteridparser.h"
#include "kvxsetprinterinfo.h"

using namespace Kovra;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  KVPrinterInfo read{};
  KVXPrinterIDParser parser;
  parser.ParsePrinterInfo(text.c_str(), 0, read);

  TiXmlElement root("printer_id");
  KVPrinterInfo again{};
  bool const right = parser.NoChildren() && KVXSetPrinterInfo().addPrinterInfo(&root, read) &&
                     parser.parsePrinterInfo(&root, again) &&
                     std::strcmp(read.vendor, again.vendor) == 0 &&
                     std::strcmp(read.ethernet_deviceid, again.ethernet_deviceid) == 0 &&
                     read.printer_serial == again.printer_serial &&
                     std::memcmp(read.physical_address, again.physical_address, 6) == 0;
  if (!right) std::abort();
  return 0;
}
