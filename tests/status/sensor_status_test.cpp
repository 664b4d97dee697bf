// Sensor status: states and readings.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "kvxstatusparser.h"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::same;
using test::StatusReply;
using test::Tree;

StatusReply<_SENSOR> const sensorStatus{"get_sensor_status", &KVXStatusParser::ParseSensorStatus,
                                        &KVXStatusParser::parseSensorStatus};

template <std::size_t N>
void setText(char (&out)[N], std::string const& text) {
  std::snprintf(out, N, "%s", text.c_str());
}

std::string state(std::string const& name, std::string const& text) {
  return element("sensor_states", element(name, text));
}

std::string value(std::string const& name, std::string const& text) {
  return element("sensor_values", element(name, text));
}

// ---- Members -----------------------------------------------------------------------------------

std::string const wholeReply = R"(<?xml version="1.0" encoding="UTF-8" ?>
<get_sensor_status>
    <sensor_states>
        <ribbon_takeup_encoder>set</ribbon_takeup_encoder>
        <door_open>yes</door_open>
        <flipoptions_door_open>no</flipoptions_door_open>
        <flipper_card_blocked>yes</flipper_card_blocked>
        <flipper_rotation_blocked>no</flipper_rotation_blocked>
        <cardout_sensor_set>yes</cardout_sensor_set>
        <option_mag_blocked>no</option_mag_blocked>
        <option_cam_blocked>yes</option_cam_blocked>
        <card_exit_blocked>no</card_exit_blocked>
        <card_edge_blocked>yes</card_edge_blocked>
        <tricolor_state>yellow</tricolor_state>
        <head_cam_blocked>no</head_cam_blocked>
        <tricolor_error>-1</tricolor_error>
        <printhead_fan>on</printhead_fan>
    </sensor_states>
    <sensor_values>
        <voltage_24>24.35</voltage_24>
        <voltage_raw>3021</voltage_raw>
        <mag_track_1>101</mag_track_1>
        <mag_track_2>102</mag_track_2>
        <mag_track_3>103</mag_track_3>
        <print_head_temp>31</print_head_temp>
        <mag_head_type>2</mag_head_type>
        <ribbon_bemf>-77</ribbon_bemf>
        <tricolor_any>201</tricolor_any>
        <tricolor_red>202</tricolor_red>
        <tricolor_green>203</tricolor_green>
        <tricolor_blue>204</tricolor_blue>
        <platen_temp128>3968</platen_temp128>
        <RLEC>301</RLEC>
        <RSEC>302</RSEC>
        <RLDC>303</RLDC>
        <RSDC>304</RSDC>
        <RGSU>305</RGSU>
        <RGSD>306</RGSD>
    </sensor_values>
</get_sensor_status>
)";

void setStates(_SENSOR& sensor) {
  setText(sensor.ribbon_takeup_encoder, "set");
  sensor.door_open = 1;
  sensor.flipoptions_door_open = 0;
  sensor.flipper_card_blocked = 1;
  sensor.flipper_rotation_blocked = 0;
  sensor.cardout_sensor_set = 1;
  sensor.option_mag_blocked = 0;
  sensor.option_cam_blocked = 1;
  sensor.card_exit_blocked = 0;
  sensor.card_edge_blocked = 1;
  setText(sensor.tricolor_state, "yellow");
  sensor.head_cam_blocked = 0;
  sensor.tricolor_error = -1;
  sensor.printhead_fan = 1;
}

void setValues(_SENSOR& sensor) {
  sensor.voltage_24 = 24.35F;
  sensor.voltage_raw = 3021;
  sensor.mag_track_1 = 101;
  sensor.mag_track_2 = 102;
  sensor.mag_track_3 = 103;
  sensor.print_head_temp = 31;
  sensor.mag_head_type = 2;
  sensor.ribbon_bemf = -77;
  sensor.tricolor_any = 201;
  sensor.tricolor_red = 202;
  sensor.tricolor_green = 203;
  sensor.tricolor_blue = 204;
  sensor.platen_temp128 = 3968;
  sensor.RLEC = 301;
  sensor.RSEC = 302;
  sensor.RLDC = 303;
  sensor.RSDC = 304;
  sensor.RGSU = 305;
  sensor.RGSD = 306;
}

TEST(SensorStatus, ReadsEveryMemberOfAWholeReply) {
  sensorStatus.expectWideEntry(wholeReply, [](_SENSOR& sensor) {
    setStates(sensor);
    setValues(sensor);
  });
}

constexpr MemberCase<_SENSOR> members[] = {
    {"sensor_states", "ribbon_takeup_encoder", "clear",
     [](auto& sensor) { setText(sensor.ribbon_takeup_encoder, "clear"); }},
    {"sensor_states", "door_open", "yes", [](auto& sensor) { sensor.door_open = 1; }},
    {"sensor_states", "flipoptions_door_open", "yes",
     [](auto& sensor) { sensor.flipoptions_door_open = 1; }},
    {"sensor_states", "flipper_card_blocked", "yes",
     [](auto& sensor) { sensor.flipper_card_blocked = 1; }},
    {"sensor_states", "flipper_rotation_blocked", "yes",
     [](auto& sensor) { sensor.flipper_rotation_blocked = 1; }},
    {"sensor_states", "cardout_sensor_set", "yes",
     [](auto& sensor) { sensor.cardout_sensor_set = 1; }},
    {"sensor_states", "option_mag_blocked", "yes",
     [](auto& sensor) { sensor.option_mag_blocked = 1; }},
    {"sensor_states", "option_cam_blocked", "yes",
     [](auto& sensor) { sensor.option_cam_blocked = 1; }},
    {"sensor_states", "card_exit_blocked", "yes",
     [](auto& sensor) { sensor.card_exit_blocked = 1; }},
    {"sensor_states", "card_edge_blocked", "yes",
     [](auto& sensor) { sensor.card_edge_blocked = 1; }},
    {"sensor_states", "tricolor_state", "cyan",
     [](auto& sensor) { setText(sensor.tricolor_state, "cyan"); }},
    {"sensor_states", "head_cam_blocked", "yes", [](auto& sensor) { sensor.head_cam_blocked = 1; }},
    {"sensor_states", "tricolor_error", "12", [](auto& sensor) { sensor.tricolor_error = 12; }},
    {"sensor_states", "printhead_fan", "on", [](auto& sensor) { sensor.printhead_fan = 1; }},
    {"sensor_values", "voltage_24", "-0.5", [](auto& sensor) { sensor.voltage_24 = -0.5F; }},
    {"sensor_values", "voltage_raw", "1", [](auto& sensor) { sensor.voltage_raw = 1; }},
    {"sensor_values", "mag_track_1", "2", [](auto& sensor) { sensor.mag_track_1 = 2; }},
    {"sensor_values", "mag_track_2", "3", [](auto& sensor) { sensor.mag_track_2 = 3; }},
    {"sensor_values", "mag_track_3", "4", [](auto& sensor) { sensor.mag_track_3 = 4; }},
    {"sensor_values", "print_head_temp", "5", [](auto& sensor) { sensor.print_head_temp = 5; }},
    {"sensor_values", "mag_head_type", "6", [](auto& sensor) { sensor.mag_head_type = 6; }},
    {"sensor_values", "ribbon_bemf", "7", [](auto& sensor) { sensor.ribbon_bemf = 7; }},
    {"sensor_values", "tricolor_any", "8", [](auto& sensor) { sensor.tricolor_any = 8; }},
    {"sensor_values", "tricolor_red", "9", [](auto& sensor) { sensor.tricolor_red = 9; }},
    {"sensor_values", "tricolor_green", "10", [](auto& sensor) { sensor.tricolor_green = 10; }},
    {"sensor_values", "tricolor_blue", "11", [](auto& sensor) { sensor.tricolor_blue = 11; }},
    {"sensor_values", "platen_temp128", "12", [](auto& sensor) { sensor.platen_temp128 = 12; }},
    {"sensor_values", "RLEC", "13", [](auto& sensor) { sensor.RLEC = 13; }},
    {"sensor_values", "RSEC", "14", [](auto& sensor) { sensor.RSEC = 14; }},
    {"sensor_values", "RLDC", "15", [](auto& sensor) { sensor.RLDC = 15; }},
    {"sensor_values", "RSDC", "16", [](auto& sensor) { sensor.RSDC = 16; }},
    {"sensor_values", "RGSU", "17", [](auto& sensor) { sensor.RGSU = 17; }},
    {"sensor_values", "RGSD", "18", [](auto& sensor) { sensor.RGSD = 18; }},
};

TEST(SensorStatus, ReadsEachElementIntoItsMemberAndNoOther) {
  sensorStatus.expectMembers(members);
}

TEST(SensorStatus, KnowsAnElementOnlyInItsGroup) {
  for (MemberCase<_SENSOR> const& member : members) {
    bool const isState = std::string(member.within) == "sensor_states";
    sensorStatus.expectSkipped(element(member.name, member.text));
    sensorStatus.expectSkipped(isState ? value(member.name, member.text)
                                       : state(member.name, member.text));
  }
}

struct FlagCase {
  char const* name;
  char _SENSOR::*member;
};

constexpr FlagCase flags[] = {
    {"door_open", &_SENSOR::door_open},
    {"flipoptions_door_open", &_SENSOR::flipoptions_door_open},
    {"flipper_card_blocked", &_SENSOR::flipper_card_blocked},
    {"flipper_rotation_blocked", &_SENSOR::flipper_rotation_blocked},
    {"cardout_sensor_set", &_SENSOR::cardout_sensor_set},
    {"option_mag_blocked", &_SENSOR::option_mag_blocked},
    {"option_cam_blocked", &_SENSOR::option_cam_blocked},
    {"card_exit_blocked", &_SENSOR::card_exit_blocked},
    {"card_edge_blocked", &_SENSOR::card_edge_blocked},
    {"head_cam_blocked", &_SENSOR::head_cam_blocked},
};

void expectFlag(char const* name, std::string const& text, char _SENSOR::*member, char expected) {
  sensorStatus.expectRead(state(name, text), [&](_SENSOR& sensor) { sensor.*member = expected; });
}

TEST(SensorStatus, FlagsAreClearedByNoAndSetByAnythingElse) {
  for (auto const& [name, member] : flags) {
    expectFlag(name, "no", member, 0);
    for (char const* const text :
         {"yes", "open", "blocked", "No", "NO", "n", "none", "off", "0", "nope", "yse", "no."}) {
      expectFlag(name, text, member, 1);
    }
    expectFlag(name, "no" + std::string(100, 'o'), member, 1);
    expectFlag(name, "<![CDATA[no ]]>", member, 1);
    expectFlag(name, "<![CDATA[]]>", member, 1);
  }
}

TEST(SensorStatus, FanIsClearedByOffAndSetByAnythingElse) {
  expectFlag("printhead_fan", "off", &_SENSOR::printhead_fan, 0);
  for (char const* const text : {"on", "no", "Off", "OFF", "of", "offline", "0", "yes"}) {
    expectFlag("printhead_fan", text, &_SENSOR::printhead_fan, 1);
  }
}

TEST(SensorStatus, TextsOf31CharactersFitAndLongerOnesAreCut) {
  std::string const fits = "abcdefghijklmnopqrstuvwxyz01234";
  for (std::string const behind : {"", "5", "56", "56789 and so on for quite a while"}) {
    sensorStatus.expectRead(state("ribbon_takeup_encoder", fits + behind),
                            [&](_SENSOR& sensor) { setText(sensor.ribbon_takeup_encoder, fits); });
    sensorStatus.expectRead(state("tricolor_state", fits + behind),
                            [&](_SENSOR& sensor) { setText(sensor.tricolor_state, fits); });
  }
}

TEST(SensorStatus, NumbersThatAreNoneReadAsZero) {
  sensorStatus.expectRead(value("voltage_24", "high"), [](auto& sensor) { sensor.voltage_24 = 0; });
  sensorStatus.expectRead(value("voltage_24", "24.35"),
                          [](auto& sensor) { sensor.voltage_24 = 24.35F; });
  sensorStatus.expectRead(value("voltage_24", " 24V"),
                          [](auto& sensor) { sensor.voltage_24 = 24; });
  sensorStatus.expectRead(value("voltage_raw", "high"),
                          [](auto& sensor) { sensor.voltage_raw = 0; });
  sensorStatus.expectRead(value("RGSD", "12.9"), [](auto& sensor) { sensor.RGSD = 12; });
  sensorStatus.expectRead(state("tricolor_error", "none"),
                          [](auto& sensor) { sensor.tricolor_error = 0; });
}

using SensorsInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, SensorsInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(SensorsInCommaLocale, ReadVoltagesWithCommas) {
  sensorStatus.expectRead(value("voltage_24", "24,35"),
                          [](auto& sensor) { sensor.voltage_24 = 24.35F; });
  sensorStatus.expectRead(value("voltage_24", "24.35"),
                          [](auto& sensor) { sensor.voltage_24 = 24; });
  sensorStatus.expectRead(value("voltage_raw", "1.234"),
                          [](auto& sensor) { sensor.voltage_raw = 1; });
}

// ---- The walk ----------------------------------------------------------------------------------

TEST(SensorStatus, GroupsLeaveEachOtherAlone) {
  std::size_t const states = wholeReply.find("<sensor_states>");
  std::size_t const values = wholeReply.find("<sensor_values>");
  std::size_t const end = wholeReply.find("</get_sensor_status>");
  sensorStatus.expectRead(wholeReply.substr(states, values - states), setStates);
  sensorStatus.expectRead(wholeReply.substr(values, end - values), setValues);
}

TEST(SensorStatus, ResultIsThatOfTheLastKnownElement) {
  std::string const good = value("RLEC", "1");
  struct {
    std::string children;
    bool result;
  } const cases[] = {
      {good + state("door_open", ""), false},
      {state("door_open", "") + good, true},
      {good + "<sensor_states/>", false},
      {good + "<sensor_states>text</sensor_states>", false},
      {good + state("unknown", "yes"), false},
      {"<sensor_states/>" + good, true},
      {good + "<other/>", true},
      {element("sensor_values", "<RLEC>1</RLEC><RSEC/>"), false},
      {element("sensor_values", "<RSEC/><RLEC>1</RLEC><other/>"), true},
  };
  for (auto const& [children, result] : cases) {
    sensorStatus.expect(result, children, [](_SENSOR& sensor) { sensor.RLEC = 1; });
  }
}

TEST(SensorStatus, TakesTheLaterOfTwoElements) {
  sensorStatus.expectRead(
      element("sensor_states", "<door_open>no</door_open><door_open>yes</door_open>") +
          value("RLEC", "1") + element("sensor_values", "<RLEC>2</RLEC><RLEC>3</RLEC>"),
      [](_SENSOR& sensor) {
        sensor.door_open = 1;
        sensor.RLEC = 3;
      });
}

TEST(SensorStatus, FailsUntouchedWithoutAnyKnownElement) {
  for (char const* const children :
       {"", " ", "text", "<!-- a -->", "<sensors><RLEC>1</RLEC></sensors>",
        "<Sensor_states><door_open>no</door_open></Sensor_states>", "<door_open>no</door_open>"}) {
    sensorStatus.expectSkipped(children);
  }
}

TEST(SensorStatus, ReadsItsGroupsByThemselves) {
  KVXStatusParser parser;
  auto sensor = filled<_SENSOR>();
  auto expected = sensor;
  Tree tree("<any><door_open>no</door_open><RLEC>5</RLEC></any>");
  EXPECT_TRUE(parser.parseSensorState(tree.root(), sensor));
  expected.door_open = 0;
  EXPECT_TRUE(same(sensor, expected));
  EXPECT_TRUE(parser.parseSensorValue(tree.root(), sensor));
  expected.RLEC = 5;
  EXPECT_TRUE(same(sensor, expected));
}

TEST(SensorStatus, ElementReadersNeedChildren) {
  for (auto const reader : {&KVXStatusParser::parseSensorStatus, &KVXStatusParser::parseSensorState,
                            &KVXStatusParser::parseSensorValue}) {
    expectNeedsChildren(filled<_SENSOR>(), [&](TiXmlElement* nothing, _SENSOR& record) {
      return (KVXStatusParser().*reader)(nothing, record);
    });
  }
}

TEST(KVXStatusParser, HasEveryOperationOnSensorsWithItsSignature) {
  using P = KVXStatusParser;
  bool (P::*const entry)(wchar_t const&, int, _SENSOR&) = &P::ParseSensorStatus;
  [[maybe_unused]] bool (P::*const readers[])(TiXmlElement*, _SENSOR&) = {
      &P::parseSensorStatus, &P::parseSensorState, &P::parseSensorValue};
  auto sensor = filled<_SENSOR>();
  EXPECT_FALSE((P().*entry)(*L"x", 1, sensor));
}

}  // namespace
}  // namespace Kovra
