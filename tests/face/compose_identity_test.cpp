#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "support/folder.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::outcome;
using test::withZeros;

Value fields(std::initializer_list<Value> names) {
  return Value::object({{"fields", Value::list(names)}});
}

TEST(ComposePrinterId, ListsItsFields) {
  std::vector<Message> const all = messages();
  auto const message = std::find_if(all.begin(), all.end(),
                                    [](Message const& one) { return one.name() == "printer-id"; });
  ASSERT_NE(message, all.end());
  std::vector<Choice> const choices = message->choices();
  ASSERT_FALSE(choices.empty());
  EXPECT_EQ(choices[0].name(), "fields");
  EXPECT_EQ(choices[0].words(), (std::vector<std::string>{"model", "printhead"}));
}

TEST(ComposePrinterId, MakesTheClassicDocument) {
  Reading const reading =
      decode(test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml")).readings().at(0);
  EXPECT_EQ(outcome(compose("printer-id", reading.record(), fields({"model", "printhead"}))),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id>\n"
            "    <printer_model>HX-500 Retransfer</printer_model>\n"
            "    <printhead_serial>PH-0098-1145</printhead_serial>\n</printer_id>\n");
  EXPECT_EQ(outcome(compose("printer-id", reading.record(), fields({}))),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<printer_id />\n");
}

TEST(ComposePrinterId, RefusesUnknownFieldsAndKeys) {
  Composition const field = compose("printer-id", Value::object(), fields({"serial"}));
  EXPECT_FALSE(field);
  EXPECT_EQ(outcome(field), "fields: found \"serial\"; expected one of: model, printhead");
  EXPECT_EQ(outcome(compose("printer-id", Value::object({{"spare", "x"}}), fields({"model"}))),
            "spare: found an unknown key; expected one of: vendor, printer_model, printer_serial, "
            "laminator_serial, physical_address, printhead_serial, oem_country, firmware_version, "
            "laminator_fw_version, lam_mab_fw_version, hcb_fw_version, mab_fw_version, "
            "kovra_version, ethernet_deviceid, wireless_physical_address");
}

TEST(ComposePrinterId, NeedsTheMembersOfTheChosenFields) {
  Value const record = Value::object({{"printer_model", "HX-500"}});
  EXPECT_EQ(outcome(compose("printer-id", record, fields({"model"}))),
            test::declaration + std::string("<printer_id>\n"
                                            "    <printer_model>HX-500</printer_model>\n"
                                            "</printer_id>\n"));
  Composition const lacking = compose("printer-id", record, fields({"model", "printhead"}));
  EXPECT_FALSE(lacking);
  EXPECT_EQ(test::pathsOf(lacking), "printhead_serial ");
  EXPECT_EQ(test::firstProblem(lacking).found(), "nothing");
}

TEST(ComposePrinterId, WritesWhatTheRecordLeavesOutAsEmptyTextsWhereThatIsChosen) {
  EXPECT_EQ(
      outcome(compose("printer-id", Value::object(), withZeros(fields({"printhead", "model"})))),
      test::declaration + std::string("<printer_id>\n"
                                      "    <printer_model></printer_model>\n"
                                      "    <printhead_serial></printhead_serial>\n"
                                      "</printer_id>\n"));
}

TEST(ComposePrinterId, TellsWhatDoesNotFit) {
  Value const record = Value::object({{"printer_serial", "1"}, {"vendor", 1}, {"spare", "x"}});
  Composition const composition = compose("printer-id", record, withZeros(fields({"model"})));
  EXPECT_EQ(outcome(composition),
            "printer_serial: found \"1\"; expected a whole number from 0 to 4294967295");
  EXPECT_EQ(test::pathsOf(composition), "printer_serial vendor spare ");
  EXPECT_EQ(outcome(compose("printer-id", "x", fields({"model"}))),
            "found \"x\"; expected an object");
}

}  // namespace
}  // namespace Kovra
