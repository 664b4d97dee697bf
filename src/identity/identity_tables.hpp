/// @file
/// The identity as a table: what KVXPrinterIDParser reads and KVXSetPrinterInfo writes, in the
/// order of writing.

#ifndef KOVRA_IDENTITY_IDENTITY_TABLES_HPP
#define KOVRA_IDENTITY_IDENTITY_TABLES_HPP

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "frame/field.hpp"
#include "identity/identity_words.hpp"
#include "kvxprinterrecords.h"
#include "kvxsetprinterinfo.h"

namespace Kovra::identity {

using namespace frame;

/// The circumstance of an element that is only written with all others, beside the fields' bits.
inline constexpr Circumstances everything = Circumstances{1} << 32U;

/// A serial number by "%u". A text that is no number counts as read and stores nothing.
struct SerialKind : NumberKind {
  static bool read(Element element, unsigned int& out) {
    WordText text;
    if (!text.read(element)) return false;
    static_cast<void>(std::sscanf(text.get(), "%u", &out));
    return true;
  }

  static void report(Observer& observer, std::string_view name, Element element,
                     unsigned int value) {
    unsigned int scanned = 0;
    if (std::sscanf(element.text(), "%u", &scanned) == 1) {
      NumberKind::report(observer, name, element, value);
    } else {
      observer.notANumber(element, "a whole decimal number");
    }
  }
};

template <auto M>
constexpr auto serial(std::string_view element) {
  return row<M, SerialKind>(element);
}

inline constexpr Table printerInfo = {
    when(everything, text<&KVPrinterInfo::vendor>("vendor")),
    when(fieldPrinterModel, text<&KVPrinterInfo::printer_model>("printer_model")),
    when(everything, serial<&KVPrinterInfo::printer_serial>("printer_serial")),
    when(everything, serial<&KVPrinterInfo::laminator_serial>("laminator_serial")),
    when(everything, address<&KVPrinterInfo::physical_address>("physical_address")),
    when(fieldPrintheadSerial, text<&KVPrinterInfo::printhead_serial>("printhead_serial")),
    when(everything, text<&KVPrinterInfo::oem_country>("oem_country")),
    when(everything, text<&KVPrinterInfo::firmware_version>("firmware_version")),
    // The versions of the boards are read and never written.
    readOnly(text<&KVPrinterInfo::laminator_fw_version>("laminator_fw_version")),
    readOnly(text<&KVPrinterInfo::lam_mab_fw_version>("lam_mab_fw_version")),
    readOnly(text<&KVPrinterInfo::hcb_fw_version>("hcb_fw_version")),
    readOnly(text<&KVPrinterInfo::mab_fw_version>("mab_fw_version")),
    when(everything, text<&KVPrinterInfo::kovra_version>("kovra_version")),
    when(everything, text<&KVPrinterInfo::ethernet_deviceid>("ethernet_deviceid")),
    when(everything,
         address<&KVPrinterInfo::wireless_physical_address>("wireless_physical_address")),
};

inline constexpr char const* identityRoots[] = {"printer_id"};

inline constexpr Circumstances everyField = fieldPrinterModel | fieldPrintheadSerial;

}  // namespace Kovra::identity

#endif
