#include "kvxprinteridparser.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <new>
#include <string>

#include "support/allocations.hpp"
#include "support/folder.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::filled;
using test::same;
using test::Tree;
using test::untouched;

struct Outcome {
  bool result;
  KVPrinterInfo record;
};

/// Reads into a record of sentinels.
Outcome read(std::string const& xml) {
  Outcome outcome{false, filled<KVPrinterInfo>()};
  outcome.result = KVXPrinterIDParser().ParsePrinterInfo(xml.c_str(), -1, outcome.record);
  return outcome;
}

template <class Change>
void expectRead(bool result, std::string const& children, Change change) {
  KVPrinterInfo expected = filled<KVPrinterInfo>();
  change(expected);
  Outcome const outcome = read("<printer_id>" + children + "</printer_id>");
  EXPECT_EQ(outcome.result, result) << children;
  EXPECT_TRUE(same(outcome.record, expected)) << children;
}

TEST(PrinterId, ReadsEveryMember) {
  Outcome const outcome = read(test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml"));
  KVPrinterInfo const& info = outcome.record;
  EXPECT_TRUE(outcome.result);
  EXPECT_STREQ(info.vendor, "Halvex Card Systems");
  EXPECT_STREQ(info.printer_model, "HX-500 Retransfer");
  EXPECT_EQ(info.printer_serial, 20417733U);
  EXPECT_EQ(info.laminator_serial, 4294967295U);
  unsigned char const wired[6] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
  unsigned char const wireless[6] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F};
  EXPECT_TRUE(same(info.physical_address, wired));
  EXPECT_TRUE(same(info.wireless_physical_address, wireless));
  EXPECT_STREQ(info.printhead_serial, "PH-0098-1145");
  EXPECT_STREQ(info.oem_country, "EU");
  EXPECT_STREQ(info.firmware_version, "4.11.2 build 7");
  EXPECT_STREQ(info.laminator_fw_version, "2.0.9");
  EXPECT_STREQ(info.lam_mab_fw_version, "1.3");
  EXPECT_STREQ(info.hcb_fw_version, "3.2.1");
  EXPECT_STREQ(info.mab_fw_version, "0.9.14");
  EXPECT_STREQ(info.kovra_version, "1.6");
  EXPECT_STREQ(info.ethernet_deviceid, "MFG:Halvex;CMD:XML;MDL:HX-500;CLS:PRINTER;");
  char spare[32];
  std::memset(spare, test::sentinel, sizeof spare);
  EXPECT_TRUE(same(info.spare, spare)) << "no element fills it";
}

TEST(PrinterId, DoesNotUseItsLength) {
  for (int const length : {INT_MIN, -1, 0, 1, 40, INT_MAX}) {
    auto info = filled<KVPrinterInfo>();
    EXPECT_TRUE(KVXPrinterIDParser().ParsePrinterInfo(
        "<printer_id><printer_serial>7</printer_serial></printer_id>", length, info));
    EXPECT_EQ(info.printer_serial, 7U) << length;
  }
}

TEST(PrinterId, SerialNumbersAreScanned) {
  struct {
    char const* text;
    unsigned int serial;
  } const rows[] = {
      {"12345", 12345}, {"007", 7}, {" 42", 42}, {"12abc", 12}, {"4294967295", 4294967295U},
      {"+5", 5},        {"0x1A", 0}};
  for (auto const& row : rows) {
    expectRead(true, "<printer_serial>" + std::string(row.text) + "</printer_serial>",
               [&](auto& info) { info.printer_serial = row.serial; });
  }
}

TEST(PrinterId, SerialThatIsNoNumberIsLeftAndCountsAsRead) {
  for (char const* const name : {"printer_serial", "laminator_serial"}) {
    for (char const* const text : {"abc", "-", "#1"}) {
      expectRead(true, "<" + std::string(name) + ">" + text + "</" + name + ">", [](auto&) {});
    }
    expectRead(false, "<" + std::string(name) + "/>", [](auto&) {});
  }
}

TEST(PrinterId, OtherChildrenChangeNothing) {
  expectRead(true, "<vendor>A</vendor><spare>x</spare><Vendor>B</Vendor>",
             [](auto& info) { std::strcpy(info.vendor, "A"); });
  expectRead(false, "<spare>x</spare>", [](auto&) {});
  expectRead(false, "", [](auto&) {});
  expectRead(false, "<vendor>A</vendor><printer_model/>",
             [](auto& info) { std::strcpy(info.vendor, "A"); });
}

TEST(PrinterId, TextsAreCutToTheirMembers) {
  std::string const longest(300, 'x');
  Outcome const outcome =
      read("<printer_id><oem_country>" + longest + "</oem_country>" + "<ethernet_deviceid>" +
           longest + "</ethernet_deviceid>" + "<vendor>" + longest + "</vendor></printer_id>");
  KVPrinterInfo expected = filled<KVPrinterInfo>();
  std::strcpy(expected.oem_country, longest.substr(0, 7).c_str());
  std::strcpy(expected.ethernet_deviceid, longest.substr(0, 255).c_str());
  std::strcpy(expected.vendor, longest.substr(0, 31).c_str());
  EXPECT_TRUE(same(outcome.record, expected));
}

TEST(PrinterId, LeavesTheRecordWithoutARoot) {
  for (char const* const xml :
       {"", "<printer/>", "<configuration/>", "<printer_id><vendor>A</vendor>",
        "<x><printer_id/></x>", "<printer_id><vendor>A</vender></printer_id>"}) {
    Outcome const outcome = read(xml);
    EXPECT_FALSE(outcome.result) << xml;
    EXPECT_TRUE(untouched(outcome.record)) << xml;
  }
  KVPrinterInfo record = filled<KVPrinterInfo>();
  EXPECT_FALSE(KVXPrinterIDParser().ParsePrinterInfo(nullptr, 5, record));
  EXPECT_FALSE(KVXPrinterIDParser().parsePrinterInfo(nullptr, record));
  EXPECT_TRUE(untouched(record));
}

TEST(PrinterId, CutAnywhereLeavesTheRecord) {
  std::string const full = test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml");
  for (std::size_t length = 0; length < full.rfind('>'); ++length) {
    Outcome const outcome = read(full.substr(0, length));
    ASSERT_FALSE(outcome.result) << length;
    ASSERT_TRUE(untouched(outcome.record)) << length;
  }
}

TEST(PrinterId, LeavesNoDocumentBehind) {
  KVXPrinterIDParser parser;
  KVPrinterInfo record;
  for (char const* const xml : {"<printer_id><a/></printer_id>", "<broken><a>", "<other/>"}) {
    parser.ParsePrinterInfo(xml, 0, record);
    EXPECT_TRUE(parser.NoChildren()) << xml;
  }
  EXPECT_TRUE(parser.ParsePrinterInfo("<printer_id><vendor>A</vendor></printer_id>", 0, record));
}

using PrinterIdWithoutMemory = test::HeapTest;

TEST_F(PrinterIdWithoutMemory, LeavesNoDocumentBehind) {
  bool failed = true;
  for (std::size_t failing = 1; failed; ++failing) {
    failed = false;
    bool empty = false;
    KVPrinterInfo record;
    test::Allocations const watch(failing);
    {
      KVXPrinterIDParser parser;
      try {
        parser.ParsePrinterInfo("<printer_id><vendor>A</vendor></printer_id>", 0, record);
      } catch (std::bad_alloc const&) {
        failed = true;
      }
      empty = parser.NoChildren();
    }
    EXPECT_EQ(watch.alive(), 0U) << failing;
    EXPECT_TRUE(empty) << failing;
  }
}

}  // namespace
}  // namespace Kovra
