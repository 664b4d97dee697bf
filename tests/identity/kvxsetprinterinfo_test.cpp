#include "kvxsetprinterinfo.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "kvxprinteridparser.h"
#include "support/folder.hpp"
#include "support/records.hpp"
#include "support/room.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

constexpr char debugCopy[] = "/tmp/printidsettings";

KVPrinterInfo fullInfo() {
  KVPrinterInfo info{};
  KVXPrinterIDParser().ParsePrinterInfo(
      test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml").c_str(), 0, info);
  return info;
}

std::string composed(long fields) {
  wchar_t out[400];
  if (!KVXSetPrinterInfo().SetPrinterInfo(fullInfo(), out, 400, fields)) return "failed";
  std::string text;
  for (wchar_t const* c = out; *c != L'\0'; ++c) text += static_cast<char>(*c);
  return text;
}

constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

TEST(DebugCopyPrinterInfo, FieldsByteForByte) {
  EXPECT_EQ(composed(0), std::string(declaration) + "<printer_id />\n");
  EXPECT_EQ(composed(1), std::string(declaration) +
                             "<printer_id>\n"
                             "    <printer_model>HX-500 Retransfer</printer_model>\n"
                             "</printer_id>\n");
  EXPECT_EQ(composed(2), std::string(declaration) +
                             "<printer_id>\n"
                             "    <printhead_serial>PH-0098-1145</printhead_serial>\n"
                             "</printer_id>\n");
  EXPECT_EQ(composed(3), std::string(declaration) +
                             "<printer_id>\n"
                             "    <printer_model>HX-500 Retransfer</printer_model>\n"
                             "    <printhead_serial>PH-0098-1145</printhead_serial>\n"
                             "</printer_id>\n");
}

TEST(DebugCopyPrinterInfo, OtherBitsMeanNothing) {
  EXPECT_EQ(composed(~3L), composed(0));
  EXPECT_EQ(composed(~0L), composed(3));
}

TEST(DebugCopyPrinterInfo, IsWrittenAlsoWithoutAnOutput) {
  std::remove(debugCopy);
  EXPECT_FALSE(KVXSetPrinterInfo().SetPrinterInfo(fullInfo(), nullptr, 0, 3));
#if KOVRA_DEBUG_COPIES
  // Before anything else is composed, which would leave a copy, too.
  std::string const copy = test::contentsOf(debugCopy);
  EXPECT_EQ(test::modeOf(debugCopy), 0600U);
  EXPECT_EQ(copy, composed(3));
#else
  EXPECT_FALSE(test::exists(debugCopy));
#endif
}

TEST(DebugCopyPrinterInfo, SecondCallAppends) {
  KVXSetPrinterInfo writer;
  KVPrinterInfo const info{};
  wchar_t out[400];
  EXPECT_TRUE(writer.SetPrinterInfo(info, out, 400, 0));
  EXPECT_TRUE(writer.SetPrinterInfo(info, out, 400, 0));
  EXPECT_STREQ(out,
               L"<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id />\n"
               L"<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id />\n");
}

TEST(DebugCopyPrinterInfo, OfAnyRecordFitsInto4096Characters) {
  KVPrinterInfo info;
  test::fillWide(info);
  test::expectRoomFor(
      4096,
      [&](wchar_t* out, int length) {
        KVXSetPrinterInfo writer;
        writer.SetPrinterInfo(info, nullptr, 0, 0);
        return writer.addPrinterInfo(writer.RootElement(), info) && writer.saveJob(out, length);
      },
      2 * 2);
}

TEST(PrinterInfo, AddsEverythingThatIsWrittenAtAll) {
  TiXmlElement root("printer_id");
  EXPECT_TRUE(KVXSetPrinterInfo().addPrinterInfo(&root, fullInfo()));
  EXPECT_EQ(test::printed(root),
            "<printer_id><vendor>Halvex Card Systems</vendor>"
            "<printer_model>HX-500 Retransfer</printer_model>"
            "<printer_serial>20417733</printer_serial>"
            "<laminator_serial>4294967295</laminator_serial>"
            "<physical_address>02:1a:2b:3c:4d:5e</physical_address>"
            "<printhead_serial>PH-0098-1145</printhead_serial><oem_country>EU</oem_country>"
            "<firmware_version>4.11.2 build 7</firmware_version><kovra_version>1.6</kovra_version>"
            "<ethernet_deviceid>MFG:Halvex;CMD:XML;MDL:HX-500;CLS:PRINTER;</ethernet_deviceid>"
            "<wireless_physical_address>02:1a:2b:3c:4d:5f</wireless_physical_address>"
            "</printer_id>");
}

TEST(PrinterInfo, WrittenAndReadAgainLosesTheBoards) {
  TiXmlElement root("printer_id");
  KVXSetPrinterInfo().addPrinterInfo(&root, fullInfo());
  KVPrinterInfo found{};
  EXPECT_TRUE(KVXPrinterIDParser().parsePrinterInfo(&root, found));
  KVPrinterInfo expected = fullInfo();
  std::memset(expected.laminator_fw_version, 0, 32);
  std::memset(expected.lam_mab_fw_version, 0, 32);
  std::memset(expected.hcb_fw_version, 0, 32);
  std::memset(expected.mab_fw_version, 0, 32);
  EXPECT_TRUE(test::same(found, expected));
}

TEST(PrinterInfo, ResultOfTheFields) {
  TiXmlElement root("r");
  KVXSetPrinterInfo writer;
  EXPECT_TRUE(writer.addPrinterInfo(&root, fullInfo(), 0));
  EXPECT_TRUE(writer.addPrinterInfo(&root, fullInfo(), 4)) << "no field at all";
  EXPECT_TRUE(root.NoChildren());
  EXPECT_TRUE(writer.addPrinterInfo(nullptr, fullInfo(), 0));
  EXPECT_TRUE(writer.addPrinterInfo(nullptr, fullInfo(), ~3L)) << "no field at all";
  EXPECT_FALSE(writer.addPrinterInfo(nullptr, fullInfo(), 1));
  EXPECT_TRUE(writer.addPrinterInfo(nullptr, fullInfo())) << "always";
}

TEST(PrinterInfo, TextsEndWithTheirArrays) {
  KVPrinterInfo info{};
  std::memset(info.printer_model, 'm', sizeof info.printer_model);
  TiXmlElement root("r");
  KVXSetPrinterInfo().addPrinterInfo(&root, info, fieldPrinterModel);
  EXPECT_EQ(test::printed(root),
            "<r><printer_model>" + std::string(32, 'm') + "</printer_model></r>");
}

TEST(PrinterInfo, SavesToAFile) {
  test::TemporaryFolder folder;
  KVXSetPrinterInfo writer;
  writer.LinkEndChild(new TiXmlElement("printer_id"));
  EXPECT_FALSE(writer.saveJob(static_cast<char*>(nullptr)));
  EXPECT_TRUE(writer.saveJob(folder.file("id.xml").c_str()));
  EXPECT_EQ(test::contentsOf(folder.file("id.xml")), "<printer_id />\n");
}

}  // namespace
}  // namespace Kovra
