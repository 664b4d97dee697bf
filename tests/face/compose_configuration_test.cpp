#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "config/config_tables.hpp"
#include "kovra.hpp"
#include "kvxconfigparser.h"
#include "support/configuration.hpp"
#include "support/folder.hpp"
#include "support/records.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

std::string sample(char const* name) {
  return test::contentsOf(std::string(KOVRA_SAMPLES_DIR "/config/") + name);
}

Value recordOf(std::string const& reply) {
  Decoding const decoding = decode(reply, "configuration");
  EXPECT_TRUE(static_cast<bool>(decoding)) << decoding.refusal().message();
  return decoding.readings().at(0).record();
}

std::vector<std::string> allSections() {
  for (Message const& message : messages()) {
    if (message.name() == "configuration") return message.choices().at(0).words();
  }
  return {};
}

Value sectionsOf(std::vector<std::string> const& sections) {
  Value list = Value::list();
  for (std::string const& section : sections) list.append(section);
  return Value::object({{"sections", list}});
}

/// Choices of sections; members that the record lacks are zero.
Value choice(std::vector<std::string> const& sections, int card = 0, bool filmless = false) {
  Value chosen = test::withZeros(sectionsOf(sections));
  chosen.add("card", card);
  chosen.add("filmless", filmless);
  return chosen;
}

Composition composed(Value const& record, Value const& choices) {
  return compose("configuration", record, choices);
}

/// The only problem with the record.
std::string problem(Value const& record, Value const& choices) {
  Composition const composition = composed(record, choices);
  EXPECT_FALSE(composition);
  EXPECT_EQ(composition.text(), "");
  EXPECT_EQ(composition.problems().size(), 1U) << test::problemsOf(composition);
  return test::firstProblem(composition).message();
}

TEST(ComposeConfiguration, MakesTheClassicDocument) {
  Value record = recordOf(sample("full.xml"));
  record.set("ribbon.ribbonNameCode", "YMCKO");
  record.set("film.ribbonNameCode", "hologram");
  Composition const composition = composed(record, choice(allSections()));
  EXPECT_TRUE(static_cast<bool>(composition)) << test::problemsOf(composition);
  EXPECT_EQ(composition.text(), sample("request.xml"));
  EXPECT_EQ(composed(record, choice(allSections(), 0, true)).text(),
            sample("request-filmless.xml"));
}

TEST(ComposeConfiguration, ShownRecordIsTheClassicRecord) {
  for (char const* const name :
       {"full.xml", "odd.xml", "minimal.xml", "request.xml", "request-filmless.xml"}) {
    auto classic = std::make_unique<_KVConfiguration>();
    auto shown = std::make_unique<_KVConfiguration>();
    std::memset(static_cast<void*>(shown.get()), 0, sizeof *shown);
    testing::internal::CaptureStderr();
    KVXConfigParser().GetConfiguration(sample(name).c_str(), 0, *classic);
    testing::internal::GetCapturedStderr();
    frame::Problems problems;
    EXPECT_EQ(assignAll(config::configuration, *shown, recordOf(sample(name)), problems),
              frame::Assigned::done)
        << name << ": " << (problems.empty() ? "" : problems.all().front().path);
    EXPECT_TRUE(test::same(*shown, *classic)) << name;
  }
}

TEST(ComposeConfiguration, KeyIsASecret) {
  Value const record = recordOf(sample("full.xml"));
  EXPECT_TRUE(record.at("wireless.key").isSecret());
  EXPECT_FALSE(record.at("wireless.ssid").isSecret());
}

TEST(ComposeConfiguration, ListsItsSections) {
  std::string list;
  for (std::string const& name : allSections()) list += name + " ";
  EXPECT_EQ(list,
            "physical_address ethernet wireless ocp_language error_control usage_counters "
            "standby_timeout imaging_parameters ribbon_motor_parameters ribbon_sensor_offset "
            "mech_adjustments media_info lamination cleaning feeder_mode cards transfer_settings "
            "lcd_contrast internal_encoder ");
}

TEST(ComposeConfiguration, SaysWhyNothingWasMade) {
  Value const zero = Value::object();
  EXPECT_EQ(problem(zero, choice({})).substr(0, 43), "sections: found none; expected some of: phy");
  EXPECT_EQ(problem(zero, choice({"wifi"})).substr(0, 40),
            "sections: found \"wifi\"; expected one of:");
  EXPECT_EQ(problem(zero, choice({"cards"}, 3)), "card: found 3; expected 1 or 2, or 0 for both");
  EXPECT_EQ(problem(zero, choice({"ethernet"}, 1)),
            "sections: found no cards; expected the section cards, of which one card was chosen");
  std::string const nothing =
      "found nothing to write in the chosen sections; expected a laminate "
      "that is marked as installed, or transfer settings of a printer with "
      "film";
  EXPECT_EQ(problem(zero, choice({"lamination"})), nothing);
  EXPECT_EQ(problem(zero, choice({"transfer_settings"}, 0, true)), nothing);
}

TEST(ComposeConfiguration, NamesThePathOfAProblem) {
  auto const refused = [](auto change) {
    Value record = recordOf(sample("full.xml"));
    change(record);
    return problem(record, choice({"standby_timeout"}));
  };
  EXPECT_EQ(refused([](Value& r) { r.set("wireless.ssid", std::string(34, 's')); }),
            "wireless.ssid: found a text of 34 bytes; expected a text of at most 33 bytes, none of "
            "them NUL");
  EXPECT_EQ(refused([](Value& r) { r.set("ethernet.gateway", "10.1"); }),
            "ethernet.gateway: found \"10.1\"; expected an IPv4 address, four numbers with dots "
            "between them");
  EXPECT_EQ(refused([](Value& r) { r.set("cards[1].transfer_temps.top_single.min", "hot"); }),
            "cards[1].transfer_temps.top_single.min: found \"hot\"; expected a whole number from "
            "-2147483648 to 2147483647");
  EXPECT_EQ(refused([](Value& r) { r.set("cleaning.soft", "yes"); }),
            "cleaning.soft: found an unknown key; expected one of: cleaning_deadline_is_soft, "
            "alcohol_card_cleaning, pre_warning");
  EXPECT_EQ(refused([](Value& r) { r.set("lamination.installed", "yes"); }),
            "lamination.installed: found an unknown key; expected one of: laminate_common, "
            "topLaminateInstalled, top_laminate, bottom_laminate, bottomLaminateInstalled");
  EXPECT_EQ(refused([](Value& r) {
              r.set("internal_encoder.contact_station", Value::object());
            }).substr(0, 33),
            "internal_encoder.contact_station:");
  EXPECT_EQ(refused([](Value& r) { r = "x"; }), "found \"x\"; expected an object");
}

TEST(ComposeConfiguration, TellsAllProblemsInTheOrderOfTheRecord) {
  Value const record =
      Value::object({{"wireless", Value::object({{"ssid", std::string(34, 's')}, {"wifi", 1}})},
                     {"cards", Value::list({7, Value::object({{"card", 1}})})},
                     {"ethernet", Value::object({{"gateway", "10.1"}})}});
  EXPECT_EQ(test::pathsOf(composed(record, choice({"standby_timeout"}))),
            "wireless.ssid wireless.wifi cards[0] cards[1].card ethernet.gateway ");
}

TEST(ComposeConfiguration, RefusesAMaskForAKey) {
  Value record = recordOf(sample("full.xml"));
  record.set("wireless.key", "******");
  EXPECT_EQ(problem(record, choice({"wireless"})),
            "wireless.key: found a masked secret; expected the secret itself");
  record.set("wireless.key", "*****");
  EXPECT_TRUE(static_cast<bool>(composed(record, choice({"wireless"})))) << "no mask";
}

TEST(ComposeConfiguration, TakesItsSectionsAsAListOfWords) {
  Value const record = recordOf(sample("full.xml"));
  auto const refused = [&](Value const& sections) {
    return problem(record, Value::object({{"sections", sections}}));
  };
  EXPECT_EQ(refused("wireless"), "sections: found \"wireless\"; expected a list");
  EXPECT_EQ(refused(Value::list({5})).substr(0, 34), "sections: found 5; expected one of");
  EXPECT_EQ(problem(record, "wireless"), "found \"wireless\"; expected an object with choices");
}

// A member that was forgotten would be set to zero.
TEST(ComposeConfiguration, TakesAChoiceOnce) {
  Composition const composition = compose("configuration", Value::object(),
                                          Value::object({{"sections", Value::list({"wireless"})},
                                                         {"zero-missing", true},
                                                         {"zero_missing", false},
                                                         {"card", 1}}));
  ASSERT_EQ(composition.problems().size(), 1U);
  EXPECT_EQ(composition.problems()[0].message(),
            "zero_missing: found a choice for the second time; expected each choice once");
}

TEST(ComposeConfiguration, KnowsAChoiceByNoOtherSpelling) {
  for (char const* const name : {"zeroxmissing", "_ero_missing", "zero-missin-", "zero_missin"}) {
    EXPECT_EQ(problem(recordOf(sample("full.xml")), Value::object({{name, true}})),
              std::string(name) + ": found an unknown choice; expected one that this document has")
        << name;
  }
}

TEST(ComposeConfiguration, NeedsTheMembersOfTheChosenSections) {
  Value record = recordOf(sample("full.xml"));
  ASSERT_TRUE(record.erase("standby_timeout"));
  EXPECT_TRUE(static_cast<bool>(composed(record, sectionsOf({"lcd_contrast"}))))
      << test::problemsOf(composed(record, sectionsOf({"lcd_contrast"})));
  Composition const without = composed(record, sectionsOf({"lcd_contrast", "standby_timeout"}));
  EXPECT_FALSE(without);
  EXPECT_EQ(without.text(), "");
  ASSERT_EQ(without.problems().size(), 1U) << test::problemsOf(without);
  EXPECT_EQ(without.problems()[0].path(), "standby_timeout");
  EXPECT_EQ(without.problems()[0].found(), "nothing");
  Composition const zero = composed(record, choice({"lcd_contrast", "standby_timeout"}));
  EXPECT_NE(zero.text().find("<standby_timeout>0</standby_timeout>"), std::string::npos)
      << test::outcome(zero);
}

/// A mark is no element, but without it the parts that it marks would be left out.
TEST(ComposeConfiguration, NeedsTheMarksOfTheLaminates) {
  auto const missing = [](auto change) {
    Value record = recordOf(sample("full.xml"));
    change(record);
    return test::pathsOf(composed(record, sectionsOf({"lamination", "lcd_contrast"})));
  };
  EXPECT_EQ(missing([](Value&) {}), "");
  EXPECT_EQ(missing([](Value& r) { r.erase("lamination"); }), "lamination ");
  EXPECT_EQ(missing([](Value& r) { r.at("lamination").erase("topLaminateInstalled"); }),
            "lamination.topLaminateInstalled ");
  EXPECT_EQ(missing([](Value& r) { r.at("lamination").erase("bottomLaminateInstalled"); }), "")
      << "it does not matter where the top laminate is installed";
  EXPECT_EQ(missing([](Value& r) {
              r.set("lamination.topLaminateInstalled", false);
              r.at("lamination").erase("bottomLaminateInstalled");
            }),
            "lamination.bottomLaminateInstalled ");
  EXPECT_EQ(missing([](Value& r) {
              r.set("lamination.topLaminateInstalled", false);
              r.set("lamination.bottomLaminateInstalled", false);
              r.at("lamination").erase("laminate_common");
            }),
            "")
      << "neither is installed, and nothing is written of them";
}

}  // namespace
}  // namespace Kovra
