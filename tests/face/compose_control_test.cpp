#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kovra.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::outcome;

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

std::string const deviceControl = "device-control ";

Composition composed(std::string const& device, Value const& command) {
  return compose(deviceControl + device, command);
}

void expectDocuments(std::vector<Case> const& cases) {
  for (Case const& given : cases) {
    Composition const composition = composed(given.device, given.command);
    EXPECT_TRUE(static_cast<bool>(composition)) << given.outcome;
    EXPECT_EQ(outcome(composition), document(given.outcome));
  }
}

/// Of several problems the first.
void expectProblems(std::vector<Case> const& cases) {
  for (Case const& given : cases) {
    Composition const composition = composed(given.device, given.command);
    EXPECT_FALSE(composition) << given.outcome;
    EXPECT_EQ(outcome(composition), given.outcome);
  }
}

std::string const missing = ": found nothing; expected a value: this command needs it";
std::string const surplus = "; expected none: this command does not take it";

TEST(ControlledDevices, AreListedInTheirOrder) {
  std::vector<std::string> devices;
  for (Message const& message : messages()) {
    std::string const command = message.command();
    if (command.find(deviceControl) == 0) devices.push_back(command.substr(deviceControl.size()));
  }
  EXPECT_EQ(devices, (std::vector<std::string>{"motor", "cam", "calibrate", "fan", "sensor",
                                               "clutch", "advance", "laminator", "radio", "rfid"}));
}

TEST(ControlledDevices, AreKnownByTheNamesOfTheirMessagesAsWell) {
  Value const command = Value::object({{"state", "off"}});
  EXPECT_EQ(outcome(compose("device-control-motor", command)), outcome(composed("motor", command)));
}

TEST(ComposeDeviceControl, RefusesOtherDevices) {
  std::string const expected = "; expected the name of a document that is composed";
  expectProblems({{"wheel", Value::object(), "found \"device-control wheel\"" + expected},
                  {"", Value::object(), "found \"device-control \"" + expected},
                  {"motor", "on", "found \"on\"; expected an object"}});
}

// What no member of its kind takes, whatever the device.
TEST(ComposeDeviceControl, RefusesValuesOfOtherKinds) {
  std::string const switches = "expected a keyword: its code, or one of: off, on";
  std::string const longest = "expected a text of at most 255 bytes, none of them NUL";
  std::string const wholeNumber = "expected a whole number from -2147483648 to 2147483647";
  Value secret = "on!";
  secret.markSecret();
  expectProblems(
      {{"fan", Value::object({{"state", 1.5}}), "state: found 1.500000; " + switches},
       {"fan", Value::object({{"state", Value::object()}}), "state: found an object; " + switches},
       {"fan", Value::object({{"state", Value::object({{"code", "on"}})}}),
        "state: found \"on\"; " + wholeNumber},
       {"fan", Value::object({{"state", 2147483648L}}), "state: found 2147483648; " + wholeNumber},
       {"fan", Value::object({{"state", secret}}),
        "state: found a text of 3 bytes; expected one of: off, on"},
       {"fan", Value::object({{"text", 1}}), "text: found 1; expected a text"},
       {"fan", Value::object({{"text", std::string(256, 'x')}}),
        "text: found a text of 256 bytes; " + longest},
       {"fan", Value::object({{"text", std::string("a\0b", 3)}}),
        "text: found " + std::string("\"a\0b\"", 5) + "; " + longest},
       {"fan", Value::object({{"text", "\x01"}}),
        "text: found a text with a character that XML cannot carry; expected a text without "
        "control characters other than tabs and line ends"},
       {"advance", Value::object({{"panel", std::string(256, 'x')}}),
        "panel: found a text of 256 bytes; " + longest},
       {"cam", Value::object({{"state", std::string(256, 'x')}}),
        "state: found a text of 256 bytes; " + longest},
       {"calibrate", Value::object({{"torque", "1.5"}}),
        "torque: found \"1.5\"; expected a number"},
       {"motor", Value::object({{"rpm", 1e39}}),
        "rpm: found " + std::to_string(1e39) + "; expected a number that a float can hold"},
       {"motor", Value::object({{"speed", 50.0}}), "speed: found 50.000000; " + wholeNumber},
       {"motor", Value::object({{"direction", "left"}}),
        "direction: found \"left\"; expected one of: forward, reverse"},
       {"rfid", Value::object({{"mode", "warm_up"}}),
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
    expectProblems({{device.c_str(), Value::object({{"colour", "red"}}),
                     "colour: found an unknown key; expected one of: " + members}});
  }
}

TEST(ComposeDeviceControl, RunsANamedMotor) {
  auto const on = [](char const* motor, char const* direction) {
    return Value::object(
        {{"motor", motor}, {"state", "on"}, {"direction", direction}, {"speed", 50}});
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
       {"motor", Value::object({{"motor", "ribbon"}, {"state", "on"}, {"direction", "reverse"}}),
        element("\"reverse\"", "ribbon")},
       {"motor", Value::object({{"motor", "flipper"}, {"state", "off"}}),
        "<motor state=\"off\">flipper</motor>"}});
}

TEST(ComposeDeviceControl, RunsTheMotorWithoutAName) {
  expectDocuments(
      {{"motor", Value::object({{"state", "on"}, {"direction", "forward"}, {"speed", -3}}),
        "<motor state=\"on\" direction=\"forward\" speed=\"-3\" />"},
       {"motor", Value::object({{"state", "on"}, {"direction", "reverse"}, {"speed", 3}}),
        "<motor state=\"on\" direction=\"reverse\" speed=\"3\" />"},
       {"motor", Value::object({{"state", "warm_up"}, {"rpm", 12.5}, {"period", 5}}),
        "<motor state=\"warm_up\" rpm=\"12.5\" period=\"5\" />"},
       {"motor", Value::object({{"state", "off"}}), "<motor state=\"off\" />"},
       {"motor", Value::object({{"state", 0}}), "<motor state=\"off\" />"}});
}

TEST(ComposeDeviceControl, RefusesWhatAMotorCannotDo) {
  expectProblems(
      {{"motor", Value::object(), "state" + missing},
       {"motor", Value::object({{"motor", "card_x"}}), "state" + missing},
       {"motor", Value::object({{"state", "on"}}), "direction" + missing},
       {"motor", Value::object({{"state", "on"}, {"direction", "forward"}}), "speed" + missing},
       {"motor", Value::object({{"state", "warm_up"}}), "rpm" + missing},
       {"motor", Value::object({{"state", "warm_up"}, {"rpm", 1}}), "period" + missing},
       {"motor", Value::object({{"motor", "card_x"}, {"state", "warm_up"}}),
        "state: found \"warm_up\"; expected off or on: no motor is warmed up by its name"},
       {"motor",
        Value::object(
            {{"motor", "ribbon"}, {"state", "on"}, {"direction", "forward"}, {"speed", 50}}),
        "speed: found 50" + surplus},
       {"motor", Value::object({{"state", "off"}, {"rpm", 1.5}}), "rpm: found 1.500000" + surplus},
       {"motor", Value::object({{"state", "off"}, {"motor", "wheel"}}),
        "motor: found \"wheel\"; expected one of: card_feed, card_x, ribbon, head_lift, options, "
        "flipper"},
       {"motor", Value::object({{"state", "stop"}}),
        "state: found \"stop\"; expected one of: off, on, warm_up"},
       {"motor", Value::object({{"text", "x"}}),
        "text: found an unknown key; expected one of: motor, state, direction, speed, rpm, "
        "period"}});
}

TEST(ComposeDeviceControl, TellsAllProblemsOfACommand) {
  EXPECT_EQ(
      test::problemsOf(composed(
          "motor", Value::object({{"motor", "wheel"}, {"colour", "red"}, {"state", "stop"}}))),
      "motor: found \"wheel\"; expected one of: card_feed, card_x, ribbon, head_lift, "
      "options, flipper\n"
      "colour: found an unknown key; expected one of: motor, state, direction, speed, rpm, "
      "period\n"
      "state: found \"stop\"; expected one of: off, on, warm_up\n");
  EXPECT_EQ(test::pathsOf(composed("motor", Value::object({{"state", "on"}}))), "direction speed ");
  EXPECT_EQ(test::pathsOf(
                composed("motor", Value::object({{"state", "off"}, {"rpm", 1}, {"period", 1}}))),
            "rpm period ");
}

TEST(ComposeDeviceControl, SetsTheCam) {
  expectDocuments({{"cam", Value::object({{"state", "up"}, {"text", "print"}}),
                    "<cam state=\"up\">print</cam>"},
                   {"cam", Value::object({{"state", ""}}), "<cam state=\"\" />"}});
  expectProblems({{"cam", Value::object({{"text", "print"}}), "state" + missing},
                  {"cam", Value::object({{"state", 1}}), "state: found 1; expected a text"},
                  {"cam", Value::object({{"state", "\xff"}}),
                   "state: found a text that is no UTF-8; expected a text in UTF-8"},
                  {"cam", Value::object({{"type", "low"}}),
                   "type: found an unknown key; expected one of: state, text"}});
}

TEST(ComposeDeviceControl, Calibrates) {
  for (std::string const type : {"low", "high"}) {
    expectDocuments({{"calibrate", Value::object({{"type", type}, {"torque", 1.5}, {"rpm", 60}}),
                      "<calibrate type=\"" + type + "\" torque=\"1.5\" rpm=\"60.0\" />"}});
    expectProblems({{"calibrate", Value::object({{"type", type}}), "torque" + missing}});
  }
  for (std::string const type : {"calc", "mot_cur_off", "mot_cur_on", "save_cal"}) {
    expectDocuments(
        {{"calibrate", Value::object({{"type", type}}), "<calibrate type=\"" + type + "\" />"}});
    expectProblems({{"calibrate", Value::object({{"type", type}, {"torque", 1}}),
                     "torque: found 1" + surplus}});
  }
  expectProblems({{"calibrate", Value::object(), "type" + missing},
                  {"calibrate", Value::object({{"type", "off"}}),
                   "type: found \"off\"; expected one of: low, high, calc, mot_cur_off, "
                   "mot_cur_on, save_cal"}});
}

TEST(ComposeDeviceControl, SwitchesFanSensorAndClutch) {
  for (char const* const device : {"fan", "sensor", "clutch"}) {
    std::string const name = device;
    expectDocuments(
        {{device, Value::object({{"state", "on"}, {"text", "head"}}),
          "<" + name + " state=\"on\">head</" + name + ">"},
         {device, Value::object({{"state", "off"}}), "<" + name + " state=\"off\" />"}});
    expectProblems({{device, Value::object({{"text", "head"}}), "state" + missing},
                    {device, Value::object({{"state", "warm_up"}}),
                     "state: found \"warm_up\"; expected one of: off, on"}});
  }
}

TEST(ComposeDeviceControl, AdvancesToAPanel) {
  expectDocuments(
      {{"advance", Value::object({{"panel", "yellow"}, {"text", "ribbon"}}),
        "<advance panel=\"yellow\">ribbon</advance>"},
       {"advance", Value::object({{"panel", "yellow"}}), "<advance panel=\"yellow\" />"}});
  expectProblems({{"advance", Value::object({{"text", "ribbon"}}), "panel" + missing}});
}

TEST(ComposeDeviceControl, CommandsTheLaminator) {
  for (std::string const spool : {"both", "top", "bottom"}) {
    expectDocuments({{"laminator", Value::object({{"spool", spool}}),
                      "<laminator spool=\"" + spool + "\">scal</laminator>"}});
  }
  expectDocuments({{"laminator", Value::object({{"text", "heat"}}), "<laminator>heat</laminator>"},
                   {"laminator", Value::object(), "<laminator />"}});
  expectProblems({{"laminator", Value::object({{"spool", "top"}, {"text", "heat"}}),
                   "text: found a text beside a spool; expected one of the two"},
                  {"laminator", Value::object({{"spool", "left"}}),
                   "spool: found \"left\"; expected one of: both, top, bottom"},
                  // A code beyond the words selects no spool.
                  {"laminator", Value::object({{"spool", 3}}), "spool: found 3" + surplus},
                  // By its text a command would gain an attribute that was not asked for.
                  {"laminator", Value::object({{"text", "scal"}}), "spool" + missing}});
}

TEST(ComposeDeviceControl, CommandsTheRadio) {
  expectDocuments(
      {{"radio", Value::object({{"text", "scan"}}), "<radio iterations=\"1\">scan</radio>"},
       {"radio", Value::object({{"text", "reset"}}), "<radio>reset</radio>"}});
  expectProblems({{"radio", Value::object({{"state", "on"}}),
                   "state: found an unknown key; expected one of: text"}});
}

TEST(ComposeDeviceControl, DrivesTheAntenna) {
  for (std::string const mode : {"off", "on", "modulate"}) {
    expectDocuments({{"rfid", Value::object({{"mode", mode}, {"antenna", 2}}),
                      "<rfid antenna=\"2\">" + mode + "</rfid>"}});
  }
  expectProblems({{"rfid", Value::object({{"antenna", 2}}), "mode" + missing},
                  {"rfid", Value::object({{"mode", "on"}}), "antenna" + missing},
                  {"rfid", Value::object({{"mode", "on"}, {"antenna", 2147483648L}}),
                   "antenna: found 2147483648; expected a whole number from -2147483648 to "
                   "2147483647"}});
}

/// What the classic operations make of such codes.
TEST(ComposeDeviceControl, TakesCodesWithoutAWordAsTheClassicOperationsDo) {
  for (char const* const device : {"fan", "sensor", "clutch"}) {
    expectDocuments(
        {{device, Value::object({{"state", 5}}), "<" + std::string(device) + " state=\"off\" />"}});
  }
  expectDocuments(
      {{"motor", Value::object({{"motor", 0}, {"state", -1}}),
        "<motor state=\"off\">card_feed</motor>"},
       {"motor", Value::object({{"motor", -2}, {"state", 0}}), "<motor state=\"off\" />"},
       {"motor", Value::object({{"state", 1}, {"direction", 3}, {"speed", 5}}),
        "<motor state=\"on\" direction=\"reverse\" speed=\"5\" />"}});
  std::string const none = "; expected none: this command does not take it";
  expectProblems({{"motor", Value::object({{"state", -2}}), "state: found -2" + none},
                  {"calibrate", Value::object({{"type", -2}}), "type: found -2" + none},
                  {"calibrate", Value::object({{"type", 9}}), "type: found 9" + none}});
}

}  // namespace
}  // namespace Kovra
