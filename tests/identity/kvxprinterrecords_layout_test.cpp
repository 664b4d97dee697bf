#include <gtest/gtest.h>

#include "kvxprinterrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(IdentityLayout, PrinterIdentity) {
  test::expectPlain<KVPrinterInfo>(604);
  EXPECT_MEMBER(KVPrinterInfo, vendor, char[32], 0);
  EXPECT_MEMBER(KVPrinterInfo, printer_model, char[32], 32);
  EXPECT_MEMBER(KVPrinterInfo, printer_serial, unsigned int, 64);
  EXPECT_MEMBER(KVPrinterInfo, laminator_serial, unsigned int, 68);
  EXPECT_MEMBER(KVPrinterInfo, physical_address, unsigned char[6], 72);
  EXPECT_MEMBER(KVPrinterInfo, printhead_serial, char[32], 78);
  EXPECT_MEMBER(KVPrinterInfo, oem_country, char[8], 110);
  EXPECT_MEMBER(KVPrinterInfo, firmware_version, char[32], 118);
  EXPECT_MEMBER(KVPrinterInfo, laminator_fw_version, char[32], 150);
  EXPECT_MEMBER(KVPrinterInfo, lam_mab_fw_version, char[32], 182);
  EXPECT_MEMBER(KVPrinterInfo, spare, char[32], 214);
  EXPECT_MEMBER(KVPrinterInfo, hcb_fw_version, char[32], 246);
  EXPECT_MEMBER(KVPrinterInfo, mab_fw_version, char[32], 278);
  EXPECT_MEMBER(KVPrinterInfo, kovra_version, char[32], 310);
  EXPECT_MEMBER(KVPrinterInfo, ethernet_deviceid, char[256], 342);
  EXPECT_MEMBER(KVPrinterInfo, wireless_physical_address, unsigned char[6], 598);
}

}  // namespace
}  // namespace Kovra
