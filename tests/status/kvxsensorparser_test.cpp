#include "kvxsensorparser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::same;
using test::StatusReply;
using test::Tree;
using test::untouched;

// ---- Sensor states ---------------------------------------------------------------------------

/// The states are read from narrow text. What the entry is told of its length is wrong on purpose.
struct StatesParser : KVXSensorParser {
  bool entry(wchar_t const& text, int len, _KVPrinterSensorInfo& out) {
    return ParseSensorStates(test::narrowed(text, len).get(), 1, out);
  }
};

StatusReply<_KVPrinterSensorInfo, StatesParser> const sensorStates{
    "get_sensor_status", &StatesParser::entry, &StatesParser::getSensorStates};

/// A text stored in a member.
template <std::size_t N>
void store(char (&member)[N], char const* text) {
  ASSERT_LT(std::strlen(text), N);
  std::strcpy(member, text);
}

constexpr MemberCase<_KVPrinterSensorInfo> stateMembers[] = {
    {"sensor_states", "ribbon_takeup_encoder", "blocked",
     [](auto& r) { store(r.ribbon_takeup_encoder, "blocked"); }},
    {"sensor_states", "ribbon_payout_encoder", "clear",
     [](auto& r) { store(r.ribbon_payout_encoder, "clear"); }},
    {"sensor_states", "door_open", "yes", [](auto& r) { store(r.door_open, "yes"); }},
    {"sensor_states", "feeder_door_open", "no", [](auto& r) { store(r.feeder_door_open, "no"); }},
    {"sensor_states", "flipper_sensor_blocked", "yes",
     [](auto& r) { store(r.flipper_sensor_blocked, "yes"); }},
    {"sensor_states", "card_in_flipper", "no", [](auto& r) { store(r.card_in_flipper, "no"); }},
    {"sensor_states", "out_of_cards", "yes", [](auto& r) { store(r.out_of_cards, "yes"); }},
    {"sensor_states", "option_cam_state", "raised",
     [](auto& r) { store(r.option_cam_state, "raised"); }},
    {"sensor_states", "option_card_motion", "no",
     [](auto& r) { store(r.option_card_motion, "no"); }},
    {"sensor_states", "option_mag_blocked", "yes",
     [](auto& r) { store(r.option_mag_blocked, "yes"); }},
    {"sensor_states", "internal_encoder_present", "no",
     [](auto& r) { store(r.internal_encoder_present, "no"); }},
    {"sensor_states", "external_encoder_present", "yes",
     [](auto& r) { store(r.external_encoder_present, "yes"); }},
    {"sensor_states", "uhf_encoder_present", "no",
     [](auto& r) { store(r.uhf_encoder_present, "no"); }},
    {"sensor_states", "pusher_plate_blocked", "yes",
     [](auto& r) { store(r.pusher_plate_blocked, "yes"); }},
    {"sensor_states", "feeder_mode", "dual", [](auto& r) { store(r.feeder_mode, "dual"); }},
    {"sensor_states", "option_cam_blocked", "no",
     [](auto& r) { store(r.option_cam_blocked, "no"); }},
    {"sensor_states", "card_edge_blocked", "yes",
     [](auto& r) { store(r.card_edge_blocked, "yes"); }},
    {"sensor_states", "tricolor_state", "no_ribbon_seen",
     [](auto& r) { store(r.tricolor_state, "no_ribbon_seen"); }},
    {"sensor_states", "head_cam_blocked", "no", [](auto& r) { store(r.head_cam_blocked, "no"); }},
    {"sensor_states", "printhead_fan", "on", [](auto& r) { store(r.printhead_fan, "on"); }},
};

std::string states(std::string const& children) {
  return element("sensor_states", children);
}

TEST(SensorStates, ReadsEachElementIntoItsMember) {
  sensorStates.expectMembers(stateMembers);
}

TEST(SensorStates, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : stateMembers) children += element(member.name, member.text) + "\n";
  sensorStates.expectWideEntry(
      "<?xml version='1.0'?>\n" + element("get_sensor_status", states(children)) + "\n",
      [](auto& record) {
        for (auto const& member : stateMembers) member.set(record);
      });
}

TEST(SensorStates, DoesNotUseTheLengthItIsGiven) {
  std::string const reply = element("get_sensor_status", states(element("door_open", "yes")));
  auto expected = filled<_KVPrinterSensorInfo>();
  store(expected.door_open, "yes");
  for (int const length : {0, -1, 1, 10, INT_MAX, INT_MIN}) {
    auto record = filled<_KVPrinterSensorInfo>();
    EXPECT_TRUE(KVXSensorParser().ParseSensorStates(reply.c_str(), length, record)) << length;
    EXPECT_TRUE(same(record, expected)) << length;
  }
}

TEST(SensorStates, RefusesANullTextUntouched) {
  auto record = filled<_KVPrinterSensorInfo>();
  EXPECT_FALSE(KVXSensorParser().ParseSensorStates(nullptr, 100, record));
  EXPECT_TRUE(untouched(record));
}

TEST(SensorStates, ReadsBytesThatNoLocaleKnows) {
  auto record = filled<_KVPrinterSensorInfo>();
  char const reply[] =
      "<get_sensor_status><sensor_states><door_open>\xE9t</door_open></sensor_states>"
      "</get_sensor_status>";
  EXPECT_TRUE(KVXSensorParser().ParseSensorStates(reply, 0, record));
  EXPECT_STREQ(record.door_open, "\xE9t");
}

/// Each member with its bound: a text that just fits is kept whole, a longer one is cut, and what
/// lies behind a short one is left alone.
TEST(SensorStates, CutsATextThatIsTooLong) {
  struct {
    char const* name;
    char* (*member)(_KVPrinterSensorInfo&);
    std::size_t capacity;
  } const cases[] = {
      {"ribbon_takeup_encoder", [](auto& r) { return r.ribbon_takeup_encoder; }, 8},
      {"ribbon_payout_encoder", [](auto& r) { return r.ribbon_payout_encoder; }, 8},
      {"door_open", [](auto& r) { return r.door_open; }, 4},
      {"feeder_door_open", [](auto& r) { return r.feeder_door_open; }, 4},
      {"flipper_sensor_blocked", [](auto& r) { return r.flipper_sensor_blocked; }, 4},
      {"card_in_flipper", [](auto& r) { return r.card_in_flipper; }, 4},
      {"out_of_cards", [](auto& r) { return r.out_of_cards; }, 4},
      {"option_cam_state", [](auto& r) { return r.option_cam_state; }, 8},
      {"option_card_motion", [](auto& r) { return r.option_card_motion; }, 4},
      {"option_mag_blocked", [](auto& r) { return r.option_mag_blocked; }, 4},
      {"internal_encoder_present", [](auto& r) { return r.internal_encoder_present; }, 4},
      {"external_encoder_present", [](auto& r) { return r.external_encoder_present; }, 4},
      {"uhf_encoder_present", [](auto& r) { return r.uhf_encoder_present; }, 4},
      {"pusher_plate_blocked", [](auto& r) { return r.pusher_plate_blocked; }, 4},
      {"feeder_mode", [](auto& r) { return r.feeder_mode; }, 8},
      {"option_cam_blocked", [](auto& r) { return r.option_cam_blocked; }, 4},
      {"card_edge_blocked", [](auto& r) { return r.card_edge_blocked; }, 4},
      {"tricolor_state", [](auto& r) { return r.tricolor_state; }, 16},
      {"head_cam_blocked", [](auto& r) { return r.head_cam_blocked; }, 4},
      {"printhead_fan", [](auto& r) { return r.printhead_fan; }, 4},
  };
  for (auto const& [name, member, capacity] : cases) {
    for (std::size_t const length : {std::size_t{1}, capacity - 1, capacity, std::size_t{500}}) {
      std::string const kept(std::min(length, capacity - 1), 'w');
      sensorStates.expectRead(
          states(element(name, std::string(length, 'w'))),
          [&, at = member](auto& r) { std::memcpy(at(r), kept.c_str(), kept.size() + 1); });
    }
  }
}

TEST(SensorStates, ResultIsThatOfTheLastKnownElement) {
  auto const open = [](auto& record) { store(record.door_open, "yes"); };
  std::string const door = element("door_open", "yes");
  sensorStates.expect(false, states(door + "<feeder_mode/>"), open);
  sensorStates.expect(false, states(door + "<feeder_mode/><unknown>a</unknown>"), open);
  sensorStates.expect(true, states("<feeder_mode/>" + door + "<unknown/>"), open);
  sensorStates.expect(true, states(element("door_open", "no") + door), open);
  // A second set of states is read over the first, and the last one decides.
  sensorStates.expect(true, states(element("door_open", "no")) + states(door), open);
  sensorStates.expect(false, states(door) + "<sensor_states/>", open);
  sensorStates.expect(true, "<sensor_states/>" + states(door) + "<other/>", open);
  sensorStates.expectSkipped(door);
  sensorStates.expectSkipped("");
}

TEST(SensorStates, ReadersNeedChildren) {
  auto const start = filled<_KVPrinterSensorInfo>();
  expectNeedsChildren(start, [](TiXmlElement* root, _KVPrinterSensorInfo& record) {
    return KVXSensorParser().getSensorStates(root, record);
  });
  expectNeedsChildren(start, [](TiXmlElement* element, _KVPrinterSensorInfo& record) {
    return KVXSensorParser().getSensorState(element, record);
  });
}

TEST(SensorStates, ElementReaderDoesNotAskForTheNameOfItsElement) {
  auto record = filled<_KVPrinterSensorInfo>();
  auto expected = record;
  store(expected.feeder_mode, "single");
  Tree tree("<any><feeder_mode>single</feeder_mode></any>");
  EXPECT_TRUE(KVXSensorParser().getSensorState(tree.root(), record));
  EXPECT_TRUE(same(record, expected));
}

// ---- Sensor information ----------------------------------------------------------------------

StatusReply<KVSensorInfo, KVXSensorParser> const sensorInfo{
    "get_sensor_status", &KVXSensorParser::ParseSensorInfo, &KVXSensorParser::parseSensorInfo};

using AreaReader = bool (KVXSensorParser::*)(TiXmlElement*, KVSensorInfo&);
using P = KVXSensorParser;

struct SensorCase {
  std::vector<std::string> areas;  ///< from the outermost to the one that holds the sensor
  AreaReader reader;               ///< of the innermost area
  char const* name;
  char const* attribute;
  int KVSensorInfo::*member;

  std::string sensor(std::string const& attributes) const {
    return "<" + std::string(name) + " " + attributes + "/>";
  }
  std::string within(std::string content) const {
    for (auto area = areas.rbegin(); area != areas.rend(); ++area)
      content = element(*area, content);
    return content;
  }
};

std::vector<SensorCase> sensorCases() {
  std::vector<std::string> const io{"input_output"}, path{"card_path"}, doors{"doors"},
      positioning{"positioning"}, ribbon{"web_media", "ribbon"},
      color{"web_media", "ribbon", "color"}, intm{"web_media", "intm"};
  AreaReader const readIo = &P::getInputOutputSensorInfo, readPath = &P::getCardPathSensorInfo,
                   readDoors = &P::getDoorSensorInfo,
                   readPositioning = &P::getPositioningSensorInfo,
                   readRibbon = &P::getRibbonSensorInfo, readColor = &P::getRibbonColorSensorInfo,
                   readIntm = &P::getInTMSensorInfo;
  using S = KVSensorInfo;
  return {
      {io, readIo, "atm_card_present", "reading", &S::atm_card_present},
      {io, readIo, "input_feeder", "reading", &S::input_feeder},
      {io, readIo, "output_hopper", "reading", &S::output_hopper},
      {path, readPath, "synchro_card", "reading", &S::synchro_card},
      {path, readPath, "synchro_mag", "reading", &S::synchro_mag},
      {path, readPath, "synchro_contact", "reading", &S::synchro_contact},
      {path, readPath, "synchro_contactless", "reading", &S::synchro_contactless},
      {path, readPath, "flipper_card_present", "reading", &S::flipper_card_present},
      {doors, readDoors, "head_open", "reading", &S::head_open},
      {doors, readDoors, "input_media_open", "reading", &S::input_media_open},
      {doors, readDoors, "output_media_open", "reading", &S::output_media_open},
      {positioning, readPositioning, "head_down", "reading", &S::head_down},
      {positioning, readPositioning, "flipper_ready_in", "reading", &S::flipper_ready_in},
      {positioning, readPositioning, "flipper_ready_out", "reading", &S::flipper_ready_out},
      {ribbon, readRibbon, "encoder", "reading", &S::encoder},
      {ribbon, readRibbon, "ribbon_sync_detection", "adc_value", &S::ribbon_sync_detection},
      {color, readColor, "led_1", "reading", &S::led_1},
      {color, readColor, "led_2", "reading", &S::led_2},
      {color, readColor, "led_3", "reading", &S::led_3},
      {intm, readIntm, "film_sensor", "reading", &S::film_sensor},
      {intm, readIntm, "supply_motor_pulses", "count", &S::supply_motor_pulses},
      {intm, readIntm, "takeup_encoder_pulses", "count", &S::takeup_encoder_pulses},
  };
}

std::string attribute(std::string const& name, std::string const& value) {
  return name + "='" + value + "'";
}

TEST(SensorInfo, ReadsEachSensorIntoItsMember) {
  for (auto const& one : sensorCases()) {
    sensorInfo.expectRead(one.within(one.sensor(attribute(one.attribute, "-417"))),
                          [&](auto& record) { record.*one.member = -417; });
  }
}

TEST(SensorInfo, ReadsEachAreaByItself) {
  for (auto const& one : sensorCases()) {
    Tree tree(element("any", one.sensor(attribute(one.attribute, "12"))));
    auto record = filled<KVSensorInfo>();
    auto expected = record;
    expected.*one.member = 12;
    EXPECT_TRUE((KVXSensorParser().*one.reader)(tree.root(), record)) << one.name;
    EXPECT_TRUE(same(record, expected)) << one.name;
  }
}

TEST(SensorInfo, DispatchesTheAreasWithinTheWebMedia) {
  auto record = filled<KVSensorInfo>();
  auto expected = record;
  expected.encoder = 1;
  expected.led_2 = 2;
  expected.film_sensor = 3;
  Tree tree(
      "<any><ribbon><encoder reading='1'/><color><led_2 reading='2'/></color></ribbon>"
      "<intm><film_sensor reading='3'/></intm><led_1 reading='4'/></any>");
  EXPECT_TRUE(KVXSensorParser().getWebMediaSensorInfo(tree.root(), record));
  EXPECT_TRUE(same(record, expected));
}

TEST(SensorInfo, LeavesTheMemberOfASensorWithoutItsAttribute) {
  for (auto const& one : sensorCases()) {
    std::string const name = one.attribute;
    for (char const* const other : {"reading", "adc_value", "count", "value", "Reading"}) {
      if (other != name) {
        sensorInfo.expectSkipped(one.within(one.sensor(attribute(other, "1"))));
      }
    }
    sensorInfo.expectSkipped(one.within(one.sensor("")));
    sensorInfo.expectSkipped(one.within(one.sensor(attribute(name, ""))));
    sensorInfo.expectSkipped(one.within(one.sensor(attribute(name, "high"))));
    // The element's text is not used.
    sensorInfo.expectSkipped(one.within(element(one.name, "1")));
  }
}

TEST(SensorInfo, FindsSensorsInTheirOwnAreaAndByTheirExactNamesOnly) {
  for (auto const& one : sensorCases()) {
    std::string const reading = attribute(one.attribute, "1");
    sensorInfo.expectSkipped(one.sensor(reading));
    sensorInfo.expectSkipped(element("other", one.within(one.sensor(reading))));
    std::string const area = one.areas.front() == "doors" ? "positioning" : "doors";
    sensorInfo.expectSkipped(element(area, one.sensor(reading)));
    SensorCase shouted = one;
    shouted.areas.back() = test::upper(one.areas.back());
    sensorInfo.expectSkipped(shouted.within(one.sensor(reading)));
    sensorInfo.expectSkipped(one.within("<" + test::upper(one.name) + " " + reading + "/>"));
  }
}

TEST(SensorInfo, TakesReadingsAsAttributesOfWholeNumbersAreTaken) {
  struct {
    char const* text;
    int value;
  } const cases[] = {{"0", 0},  {"2147483647", INT_MAX}, {"-2147483648", INT_MIN},
                     {" 7", 7}, {"12abc", 12},           {"+3", 3}};
  for (auto const& [text, value] : cases) {
    sensorInfo.expectRead("<doors><head_open reading='" + std::string(text) + "'/></doors>",
                          [v = value](auto& record) { record.head_open = v; });
  }
}

TEST(SensorInfo, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  int value = 100;
  for (auto const& one : sensorCases()) {
    children += one.within(one.sensor(attribute(one.attribute, std::to_string(value++)))) + "\n";
  }
  sensorInfo.expectWideEntry(element("get_sensor_status", children), [](auto& record) {
    int reading = 100;
    for (auto const& one : sensorCases()) record.*one.member = reading++;
  });
}

TEST(SensorInfo, ResultIsThatOfTheLastKnownChild) {
  auto const open = [](auto& record) { record.head_open = 1; };
  std::string const head = "<head_open reading='1'/>";
  sensorInfo.expect(true, element("doors", head), open);
  sensorInfo.expect(false, element("doors", head + "<input_media_open/>"), open);
  sensorInfo.expect(true, element("doors", "<input_media_open/>" + head + "<lid/>"), open);
  sensorInfo.expect(true, element("doors", "<head_open reading='9'/>" + head), open);
  sensorInfo.expect(false, element("doors", head) + "<card_path/>", open);
  sensorInfo.expect(false, element("doors", head) + element("web_media", "<ribbon/>"), open);
  sensorInfo.expect(true, "<card_path/>" + element("doors", head) + "<cover/>", open);
  sensorInfo.expectSkipped("<cover/>");
  sensorInfo.expectSkipped("");
}

TEST(SensorInfo, ReadersNeedChildren) {
  auto const start = filled<KVSensorInfo>();
  for (AreaReader const reader :
       {&P::parseSensorInfo, &P::getInputOutputSensorInfo, &P::getCardPathSensorInfo,
        &P::getDoorSensorInfo, &P::getPositioningSensorInfo, &P::getWebMediaSensorInfo,
        &P::getRibbonSensorInfo, &P::getRibbonColorSensorInfo, &P::getInTMSensorInfo}) {
    expectNeedsChildren(start, [&](TiXmlElement* area, KVSensorInfo& record) {
      return (KVXSensorParser().*reader)(area, record);
    });
  }
}

// ---- The interface ---------------------------------------------------------------------------

TEST(SensorInfo, SharesItsRootWithTheStates) {
  std::string const reading = "<doors><head_open reading='1'/></doors>";
  std::string const state = states(element("door_open", "yes"));
  sensorInfo.expectRead(reading + state, [](auto& record) { record.head_open = 1; });
  sensorStates.expectRead(reading + state, [](auto& record) { store(record.door_open, "yes"); });
  sensorInfo.expectSkipped(state);
  sensorStates.expectSkipped(reading);
}

TEST(KVXSensorParser, HasEveryOperationWithItsSignature) {
  bool (P::*const entry)(char const*, int, _KVPrinterSensorInfo&) = &P::ParseSensorStates;
  [[maybe_unused]] bool (P::*const a)(TiXmlElement*, _KVPrinterSensorInfo&) = &P::getSensorStates;
  [[maybe_unused]] bool (P::*const b)(TiXmlElement*, _KVPrinterSensorInfo&) = &P::getSensorState;
  [[maybe_unused]] bool (P::*const c)(wchar_t const&, int, KVSensorInfo&) = &P::ParseSensorInfo;
  auto record = filled<_KVPrinterSensorInfo>();
  EXPECT_FALSE((P().*entry)("", 0, record));
  EXPECT_TRUE(untouched(record));
}

}  // namespace
}  // namespace Kovra
