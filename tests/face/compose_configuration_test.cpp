#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "config/config_tables.hpp"
#include "kovra.hpp"
#include "kvxconfigparser.h"
#include "support/configuration.hpp"
#include "support/folder.hpp"
#include "support/records.hpp"

namespace Kovra {
namespace {

std::string sample(char const* name) {
  return test::contentsOf(std::string(KOVRA_SAMPLES_DIR "/config/") + name);
}

Value recordOf(std::string const& reply) {
  Decoding const decoding = decode(reply.data(), reply.size(), "configuration");
  EXPECT_EQ(decoding.status, Decoding::Status::decoded) << decoding.description();
  return decoding.readings.at(0).record;
}

Value text(std::string const& contents) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = contents;
  return value;
}

Value object() {
  Value value;
  value.kind = Value::Kind::record;
  return value;
}

Value& member(Value& record, std::string const& name) {
  for (Member& inner : record.members) {
    if (inner.name == name) return inner.value;
  }
  record.members.emplace_back();
  record.members.back().name = name;
  record.members.back().value = object();
  return record.members.back().value;
}

ConfigurationChoice choice(std::vector<std::string> const& sections, int card = 0,
                           bool filmless = false) {
  ConfigurationChoice chosen;
  chosen.sections = sections;
  chosen.card = card;
  chosen.filmless = filmless;
  return chosen;
}

std::string problem(Value const& record, ConfigurationChoice const& chosen) {
  Composition const composition = composeConfiguration(record, chosen);
  EXPECT_FALSE(composition.composed);
  EXPECT_EQ(composition.text, "");
  return composition.problem.description();
}

TEST(ComposeConfiguration, MakesTheClassicDocument) {
  Value record = recordOf(sample("full.xml"));
  member(member(record, "ribbon"), "ribbonNameCode") = text("YMCKO");
  member(member(record, "film"), "ribbonNameCode") = text("hologram");
  Composition const composition = composeConfiguration(record, choice(configurationSections()));
  EXPECT_TRUE(composition.composed) << composition.problem.description();
  EXPECT_EQ(composition.text, sample("request.xml"));
  EXPECT_EQ(composeConfiguration(record, choice(configurationSections(), 0, true)).text,
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
    Problem why;
    EXPECT_EQ(assignAll(config::configuration, *shown, recordOf(sample(name)), why),
              frame::Assigned::done)
        << name << ": " << why.description();
    EXPECT_TRUE(test::same(*shown, *classic)) << name;
  }
}

TEST(ComposeConfiguration, KeyIsASecret) {
  Value const record = recordOf(sample("full.xml"));
  EXPECT_TRUE(record.find("wireless")->find("key")->secret);
  EXPECT_FALSE(record.find("wireless")->find("ssid")->secret);
}

TEST(ComposeConfiguration, ListsItsSections) {
  std::string list;
  for (std::string const& name : configurationSections()) list += name + " ";
  EXPECT_EQ(list,
            "physical_address ethernet wireless ocp_language error_control usage_counters "
            "standby_timeout imaging_parameters ribbon_motor_parameters ribbon_sensor_offset "
            "mech_adjustments media_info lamination cleaning feeder_mode cards transfer_settings "
            "lcd_contrast internal_encoder ");
}

TEST(ComposeConfiguration, SaysWhyNothingWasMade) {
  Value const zero = object();
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
  EXPECT_EQ(
      refused([](Value& r) { member(member(r, "wireless"), "ssid") = text(std::string(34, 's')); }),
      "wireless.ssid: found a text of 34 bytes; expected a text of at most 33 bytes, none of "
      "them NUL");
  EXPECT_EQ(refused([](Value& r) { member(member(r, "ethernet"), "gateway") = text("10.1"); }),
            "ethernet.gateway: found \"10.1\"; expected an IPv4 address, four numbers with dots "
            "between them");
  EXPECT_EQ(refused([](Value& r) {
              member(member(member(r, "cards").items.at(1), "transfer_temps"), "top_single")
                  .members.at(0)
                  .value = text("hot");
            }),
            "cards[1].transfer_temps.top_single.min: found \"hot\"; expected a whole number from "
            "-2147483648 to 2147483647");
  EXPECT_EQ(refused([](Value& r) { member(member(r, "cleaning"), "soft") = text("yes"); }),
            "cleaning.soft: found an unknown key; expected one of: cleaning_deadline_is_soft, "
            "alcohol_card_cleaning, pre_warning");
  EXPECT_EQ(refused([](Value& r) { member(member(r, "lamination"), "installed") = text("yes"); }),
            "lamination.installed: found an unknown key; expected one of: laminate_common, "
            "topLaminateInstalled, top_laminate, bottom_laminate, bottomLaminateInstalled");
  EXPECT_EQ(refused([](Value& r) {
              member(member(r, "internal_encoder"), "contact_station");
            }).substr(0, 33),
            "internal_encoder.contact_station:");
  EXPECT_EQ(refused([](Value& r) { r = text("x"); }), "found \"x\"; expected an object");
}

}  // namespace
}  // namespace Kovra
