#include <gtest/gtest.h>

#include <string>

#include "kovra.hpp"
#include "support/folder.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::outcome;
using test::record;
using test::text;
using test::texts;

TEST(ComposePrinterId, ListsItsFields) {
  EXPECT_EQ(printerIdFields(), (std::vector<std::string>{"model", "printhead"}));
}

TEST(ComposePrinterId, MakesTheClassicDocument) {
  std::string const reply = test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml");
  Value const shown = decode(reply.data(), reply.size()).readings.at(0).record;
  Composition const composition = composePrinterId(shown, printerIdFields());
  EXPECT_TRUE(composition.composed) << composition.problem.description();
  EXPECT_EQ(composition.text,
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id>\n"
            "    <printer_model>HX-500 Retransfer</printer_model>\n"
            "    <printhead_serial>PH-0098-1145</printhead_serial>\n</printer_id>\n");
  EXPECT_EQ(composePrinterId(shown, {}).text,
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id />\n");
}

TEST(ComposePrinterId, RefusesUnknownFieldsAndKeys) {
  Composition const field = composePrinterId(record({}), {"serial"});
  EXPECT_FALSE(field.composed);
  EXPECT_EQ(field.problem.description(),
            "fields: found \"serial\"; expected one of: model, printhead");
  EXPECT_EQ(composePrinterId(texts({{"spare", "x"}}), {"model"}).problem.description(),
            "spare: found an unknown key; expected one of: vendor, printer_model, printer_serial, "
            "laminator_serial, physical_address, printhead_serial, oem_country, firmware_version, "
            "laminator_fw_version, lam_mab_fw_version, hcb_fw_version, mab_fw_version, "
            "kovra_version, ethernet_deviceid, wireless_physical_address");
}

TEST(ComposePrinterId, WritesWhatTheRecordLeavesOutAsEmptyTexts) {
  EXPECT_EQ(outcome(composePrinterId(record({}), {"printhead", "model"})),
            test::declaration + std::string("<printer_id>\n"
                                            "    <printer_model></printer_model>\n"
                                            "    <printhead_serial></printhead_serial>\n"
                                            "</printer_id>\n"));
}

TEST(ComposePrinterId, TellsWhatDoesNotFit) {
  EXPECT_EQ(outcome(composePrinterId(record({{"printer_serial", text("1")}}), {"model"})),
            "printer_serial: found \"1\"; expected a whole number from 0 to 4294967295");
  EXPECT_EQ(outcome(composePrinterId(text("x"), {"model"})), "found \"x\"; expected an object");
}

}  // namespace
}  // namespace Kovra
