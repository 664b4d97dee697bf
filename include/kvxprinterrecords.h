/// @file
/// The record of a printer's identity. A plain structure without pointers that the host owns.

#ifndef KVXPRINTERRECORDS_H
#define KVXPRINTERRECORDS_H

namespace Kovra {

/// Who the printer is: root "printer_id". Texts are terminated; members are named after their
/// elements.
struct KVPrinterInfo {
  char vendor[32];                             ///< 'vendor'
  char printer_model[32];                      ///< 'printer_model'
  unsigned int printer_serial;                 ///< 'printer_serial', decimal
  unsigned int laminator_serial;               ///< 'laminator_serial', decimal
  unsigned char physical_address[6];           ///< 'physical_address', of the wired interface
  char printhead_serial[32];                   ///< 'printhead_serial'
  char oem_country[8];                         ///< 'oem_country'
  char firmware_version[32];                   ///< 'firmware_version'
  char laminator_fw_version[32];               ///< 'laminator_fw_version', never written
  char lam_mab_fw_version[32];                 ///< 'lam_mab_fw_version', never written
  char spare[32];                              ///< no element: neither read nor written
  char hcb_fw_version[32];                     ///< 'hcb_fw_version', never written
  char mab_fw_version[32];                     ///< 'mab_fw_version', never written
  char kovra_version[32];                      ///< 'kovra_version', of the protocol
  char ethernet_deviceid[256];                 ///< 'ethernet_deviceid'
  unsigned char wireless_physical_address[6];  ///< 'wireless_physical_address'
};

}  // namespace Kovra

#endif
