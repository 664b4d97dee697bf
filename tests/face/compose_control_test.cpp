#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "kovra.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::number;
using test::outcome;
using test::real;
using test::record;
using test::text;
using test::texts;

std::string document(std::string const& element) {
  return test::declaration + std::string("<device_control>\n    ") + element +
         "\n</device_control>\n";
}

/// What a device is told, and the element or the problem that comes of it.
struct Case {
  char const* device;
  Value command;
  std::string outcome;
};

void expectDocuments(std::vector<Case> const& cases) {
  for (Case const& given : cases) {
    Composition const composition = composeDeviceControl(given.device, given.command);
    EXPECT_TRUE(composition.composed) << given.outcome;
    EXPECT_EQ(outcome(composition), document(given.outcome));
  }
}

void expectProblems(std::vector<Case> const& cases) {
  for (Case const& given : cases) {
    Composition const composition = composeDeviceControl(given.device, given.command);
    EXPECT_FALSE(composition.composed) << given.outcome;
    EXPECT_EQ(outcome(composition), given.outcome);
  }
}

std::string const missing = ": found nothing; expected a value: this command needs it";
std::string const surplus = "; expected none: this command does not take it";

TEST(ControlledDevices, AreListedInTheirOrder) {
  EXPECT_EQ(controlledDevices(),
            (std::vector<std::string>{"motor", "cam", "calibrate", "fan", "sensor", "clutch",
                                      "advance", "laminator", "radio", "rfid"}));
}

TEST(ComposeDeviceControl, RefusesOtherDevices) {
  expectProblems(
      {{"wheel", record({}), "found device \"wheel\"; expected a device that takes commands"},
       {"", record({}), "found device \"\"; expected a device that takes commands"},
       {"motor", text("on"), "found \"on\"; expected an object"}});
}

// What no member of its kind takes, whatever the device.
TEST(ComposeDeviceControl, RefusesValuesOfOtherKinds) {
  std::string const switches = "expected a keyword: its code, or one of: off, on";
  std::string const longest = "expected a text of at most 255 bytes, none of them NUL";
  std::string const wholeNumber = "expected a whole number from -2147483648 to 2147483647";
  Value secret = text("on!");
  secret.secret = true;
  expectProblems(
      {{"fan", record({{"state", real(1.5)}}), "state: found 1.500000; " + switches},
       {"fan", record({{"state", record({})}}), "state: found an object; " + switches},
       {"fan", record({{"state", record({{"code", text("on")}})}}),
        "state: found \"on\"; " + wholeNumber},
       {"fan", record({{"state", number(2147483648L)}}), "state: found 2147483648; " + wholeNumber},
       {"fan", record({{"state", secret}}),
        "state: found a text of 3 bytes; expected one of: off, on"},
       {"fan", record({{"text", number(1)}}), "text: found 1; expected a text"},
       {"fan", record({{"text", text(std::string(256, 'x'))}}),
        "text: found a text of 256 bytes; " + longest},
       {"fan", record({{"text", text(std::string("a\0b", 3))}}),
        "text: found " + std::string("\"a\0b\"", 5) + "; " + longest},
       {"fan", texts({{"text", "\x01"}}),
        "text: found a text with a character that XML cannot carry; expected a text without "
        "control characters other than tabs and line ends"},
       {"advance", record({{"panel", text(std::string(256, 'x'))}}),
        "panel: found a text of 256 bytes; " + longest},
       {"cam", record({{"state", text(std::string(256, 'x'))}}),
        "state: found a text of 256 bytes; " + longest},
       {"calibrate", texts({{"torque", "1.5"}}), "torque: found \"1.5\"; expected a number"},
       {"motor", record({{"rpm", real(1e39)}}),
        "rpm: found " + std::to_string(1e39) + "; expected a number that a float can hold"},
       {"motor", record({{"speed", real(50)}}), "speed: found 50.000000; " + wholeNumber},
       {"motor", texts({{"direction", "left"}}),
        "direction: found \"left\"; expected one of: forward, reverse"},
       {"rfid", texts({{"mode", "warm_up"}}),
        "mode: found \"warm_up\"; expected one of: off, on, modulate"}});
}

// Names of members that each device takes, in the problem of one that it does not.
TEST(ComposeDeviceControl, NamesTheMembersThatADeviceTakes) {
  for (auto const& [device, members] : std::vector<std::pair<std::string, std::string>>{
           {"motor", "motor, state, direction, speed, rpm, period"},
           {"cam", "state, text"},
           {"calibrate", "type, torque, rpm"},
           {"fan", "state, text"},
           {"sensor", "state, text"},
           {"clutch", "state, text"},
           {"advance", "panel, text"},
           {"laminator", "spool, text"},
           {"radio", "text"},
           {"rfid", "mode, antenna"},
       }) {
    expectProblems({{device.c_str(), texts({{"colour", "red"}}),
                     "colour: found an unknown key; expected one of: " + members}});
  }
}

TEST(ComposeDeviceControl, RunsANamedMotor) {
  auto const on = [](char const* motor, char const* direction) {
    return record({{"motor", text(motor)},
                   {"state", text("on")},
                   {"direction", text(direction)},
                   {"speed", number(50)}});
  };
  auto const element = [](std::string const& rest, char const* motor) {
    return "<motor state=\"on\" direction=" + rest + ">" + motor + "</motor>";
  };
  expectDocuments(
      {{"motor", on("card_feed", "forward"), element("\"forward\" speed=\"50\"", "card_feed")},
       {"motor", on("card_x", "reverse"),
        element("\"reverse\" distance=\"0\" speed=\"50\"", "card_x")},
       {"motor", on("head_lift", "forward"),
        element("\"forward\" distance=\"0\" speed=\"50\"", "head_lift")},
       {"motor", on("options", "forward"), element("\"forward\" speed=\"50\"", "options")},
       {"motor", on("flipper", "forward"), element("\"forward\" speed=\"50\"", "flipper")},
       {"motor", texts({{"motor", "ribbon"}, {"state", "on"}, {"direction", "reverse"}}),
        element("\"reverse\"", "ribbon")},
       {"motor", texts({{"motor", "flipper"}, {"state", "off"}}),
        "<motor state=\"off\">flipper</motor>"}});
}

TEST(ComposeDeviceControl, RunsTheMotorWithoutAName) {
  expectDocuments(
      {{"motor",
        record({{"state", text("on")}, {"direction", text("forward")}, {"speed", number(-3)}}),
        "<motor state=\"on\" direction=\"forward\" speed=\"-3\" />"},
       {"motor",
        record({{"state", text("on")}, {"direction", text("reverse")}, {"speed", number(3)}}),
        "<motor state=\"on\" direction=\"reverse\" speed=\"3\" />"},
       {"motor", record({{"state", text("warm_up")}, {"rpm", real(12.5)}, {"period", number(5)}}),
        "<motor state=\"warm_up\" rpm=\"12.5\" period=\"5\" />"},
       {"motor", texts({{"state", "off"}}), "<motor state=\"off\" />"},
       {"motor", record({{"state", number(0)}}), "<motor state=\"off\" />"}});
}

TEST(ComposeDeviceControl, RefusesWhatAMotorCannotDo) {
  expectProblems(
      {{"motor", record({}), "state" + missing},
       {"motor", texts({{"motor", "card_x"}}), "state" + missing},
       {"motor", texts({{"state", "on"}}), "direction" + missing},
       {"motor", texts({{"state", "on"}, {"direction", "forward"}}), "speed" + missing},
       {"motor", texts({{"state", "warm_up"}}), "rpm" + missing},
       {"motor", record({{"state", text("warm_up")}, {"rpm", number(1)}}), "period" + missing},
       {"motor", texts({{"motor", "card_x"}, {"state", "warm_up"}}),
        "state: found \"warm_up\"; expected off or on: no motor is warmed up by its name"},
       {"motor",
        record({{"motor", text("ribbon")},
                {"state", text("on")},
                {"direction", text("forward")},
                {"speed", number(50)}}),
        "speed: found 50" + surplus},
       {"motor", record({{"state", text("off")}, {"rpm", real(1.5)}}),
        "rpm: found 1.500000" + surplus},
       {"motor", texts({{"state", "off"}, {"motor", "wheel"}}),
        "motor: found \"wheel\"; expected one of: card_feed, card_x, ribbon, head_lift, options, "
        "flipper"},
       {"motor", texts({{"state", "stop"}}),
        "state: found \"stop\"; expected one of: off, on, warm_up"},
       {"motor", texts({{"text", "x"}}),
        "text: found an unknown key; expected one of: motor, state, direction, speed, rpm, "
        "period"}});
}

TEST(ComposeDeviceControl, SetsTheCam) {
  expectDocuments(
      {{"cam", texts({{"state", "up"}, {"text", "print"}}), "<cam state=\"up\">print</cam>"},
       {"cam", texts({{"state", ""}}), "<cam state=\"\" />"}});
  expectProblems({{"cam", texts({{"text", "print"}}), "state" + missing},
                  {"cam", record({{"state", number(1)}}), "state: found 1; expected a text"},
                  {"cam", texts({{"state", "\xff"}}),
                   "state: found a text that is no UTF-8; expected a text in UTF-8"},
                  {"cam", texts({{"type", "low"}}),
                   "type: found an unknown key; expected one of: state, text"}});
}

TEST(ComposeDeviceControl, Calibrates) {
  for (std::string const type : {"low", "high"}) {
    expectDocuments(
        {{"calibrate", record({{"type", text(type)}, {"torque", real(1.5)}, {"rpm", number(60)}}),
          "<calibrate type=\"" + type + "\" torque=\"1.5\" rpm=\"60.0\" />"}});
    expectProblems({{"calibrate", record({{"type", text(type)}}), "torque" + missing}});
  }
  for (std::string const type : {"calc", "mot_cur_off", "mot_cur_on", "save_cal"}) {
    expectDocuments(
        {{"calibrate", record({{"type", text(type)}}), "<calibrate type=\"" + type + "\" />"}});
    expectProblems({{"calibrate", record({{"type", text(type)}, {"torque", number(1)}}),
                     "torque: found 1" + surplus}});
  }
  expectProblems({{"calibrate", record({}), "type" + missing},
                  {"calibrate", texts({{"type", "off"}}),
                   "type: found \"off\"; expected one of: low, high, calc, mot_cur_off, "
                   "mot_cur_on, save_cal"}});
}

TEST(ComposeDeviceControl, SwitchesFanSensorAndClutch) {
  for (char const* const device : {"fan", "sensor", "clutch"}) {
    std::string const name = device;
    expectDocuments({{device, texts({{"state", "on"}, {"text", "head"}}),
                      "<" + name + " state=\"on\">head</" + name + ">"},
                     {device, texts({{"state", "off"}}), "<" + name + " state=\"off\" />"}});
    expectProblems({{device, texts({{"text", "head"}}), "state" + missing},
                    {device, texts({{"state", "warm_up"}}),
                     "state: found \"warm_up\"; expected one of: off, on"}});
  }
}

TEST(ComposeDeviceControl, AdvancesToAPanel) {
  expectDocuments({{"advance", texts({{"panel", "yellow"}, {"text", "ribbon"}}),
                    "<advance panel=\"yellow\">ribbon</advance>"},
                   {"advance", texts({{"panel", "yellow"}}), "<advance panel=\"yellow\" />"}});
  expectProblems({{"advance", texts({{"text", "ribbon"}}), "panel" + missing}});
}

TEST(ComposeDeviceControl, CommandsTheLaminator) {
  for (std::string const spool : {"both", "top", "bottom"}) {
    expectDocuments({{"laminator", record({{"spool", text(spool)}}),
                      "<laminator spool=\"" + spool + "\">scal</laminator>"}});
  }
  expectDocuments({{"laminator", texts({{"text", "heat"}}), "<laminator>heat</laminator>"},
                   {"laminator", record({}), "<laminator />"}});
  expectProblems({{"laminator", texts({{"spool", "top"}, {"text", "heat"}}),
                   "text: found a text beside a spool; expected one of the two"},
                  {"laminator", texts({{"spool", "left"}}),
                   "spool: found \"left\"; expected one of: both, top, bottom"},
                  // A code beyond the words selects no spool.
                  {"laminator", record({{"spool", number(3)}}), "spool: found 3" + surplus},
                  // By its text a command would gain an attribute that was not asked for.
                  {"laminator", texts({{"text", "scal"}}), "spool" + missing}});
}

TEST(ComposeDeviceControl, CommandsTheRadio) {
  expectDocuments({{"radio", texts({{"text", "scan"}}), "<radio iterations=\"1\">scan</radio>"},
                   {"radio", texts({{"text", "reset"}}), "<radio>reset</radio>"}});
  expectProblems(
      {{"radio", texts({{"state", "on"}}), "state: found an unknown key; expected one of: text"}});
}

TEST(ComposeDeviceControl, DrivesTheAntenna) {
  for (std::string const mode : {"off", "on", "modulate"}) {
    expectDocuments({{"rfid", record({{"mode", text(mode)}, {"antenna", number(2)}}),
                      "<rfid antenna=\"2\">" + mode + "</rfid>"}});
  }
  expectProblems({{"rfid", record({{"antenna", number(2)}}), "mode" + missing},
                  {"rfid", texts({{"mode", "on"}}), "antenna" + missing},
                  {"rfid", record({{"mode", text("on")}, {"antenna", number(2147483648L)}}),
                   "antenna: found 2147483648; expected a whole number from -2147483648 to "
                   "2147483647"}});
}

/// What the classic operations make of such codes.
TEST(ComposeDeviceControl, TakesCodesWithoutAWordAsTheClassicOperationsDo) {
  for (char const* const device : {"fan", "sensor", "clutch"}) {
    expectDocuments({{device, record({{"state", number(5)}}),
                      "<" + std::string(device) + " state=\"off\" />"}});
  }
  expectDocuments(
      {{"motor", record({{"motor", number(0)}, {"state", number(-1)}}),
        "<motor state=\"off\">card_feed</motor>"},
       {"motor", record({{"motor", number(-2)}, {"state", number(0)}}), "<motor state=\"off\" />"},
       {"motor", record({{"state", number(1)}, {"direction", number(3)}, {"speed", number(5)}}),
        "<motor state=\"on\" direction=\"reverse\" speed=\"5\" />"}});
  std::string const none = "; expected none: this command does not take it";
  expectProblems({{"motor", record({{"state", number(-2)}}), "state: found -2" + none},
                  {"calibrate", record({{"type", number(-2)}}), "type: found -2" + none},
                  {"calibrate", record({{"type", number(9)}}), "type: found 9" + none}});
}

}  // namespace
}  // namespace Kovra
