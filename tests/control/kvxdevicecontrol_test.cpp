#include "kvxdevicecontrol.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "support/folder.hpp"
#include "support/locale.hpp"

namespace {

using Kovra::test::contentsOf;
using Kovra::test::exists;
using Kovra::test::modeOf;
using Kovra::test::TemporaryFolder;

static_assert(std::is_base_of_v<TiXmlDocument, KVXDeviceControl>);

constexpr char copy[] = "/tmp/composedXML";
constexpr int room = 1024;

/// What an operation wrote; every one leaves a copy, so these tests run alone.
template <class Compose>
std::string composed(Compose compose) {
  char buffer[room];
  std::memset(buffer, '#', sizeof buffer);
  KVXDeviceControl control;
  EXPECT_TRUE(compose(control, buffer));
  return buffer;
}

std::string document(std::string const& device) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<device_control>\n    " + device +
         "\n</device_control>\n";
}

// ---- Motor by name ---------------------------------------------------------------------------

std::string namedMotor(int state, int reverse, int speed, int motor) {
  return composed([&](KVXDeviceControl& control, char* out) {
    return control.RunMotorCommand(state, reverse, speed, motor, out, room);
  });
}

TEST(DebugCopyDeviceControl, RunsAMotorByItsName) {
  struct {
    int motor;
    char const* device;
  } const cases[] = {
      {0, R"(<motor state="on" direction="forward" speed="50">card_feed</motor>)"},
      {1, R"(<motor state="on" direction="forward" distance="0" speed="50">card_x</motor>)"},
      {2, R"(<motor state="on" direction="forward">ribbon</motor>)"},
      {3, R"(<motor state="on" direction="forward" distance="0" speed="50">head_lift</motor>)"},
      {4, R"(<motor state="on" direction="forward" speed="50">options</motor>)"},
      {5, R"(<motor state="on" direction="forward" speed="50">flipper</motor>)"},
      {6, R"(<motor state="on" direction="forward" speed="50" />)"},
      {-1, R"(<motor state="on" direction="forward" speed="50" />)"},
  };
  for (auto const& [motor, device] : cases) {
    EXPECT_EQ(namedMotor(1, 0, 50, motor), document(device)) << motor;
  }
}

TEST(DebugCopyDeviceControl, ReversesANamedMotorUnlessTheFlagIs0) {
  EXPECT_EQ(namedMotor(1, 1, 50, 2),
            document(R"(<motor state="on" direction="reverse">ribbon</motor>)"));
  EXPECT_EQ(namedMotor(1, -3, INT_MIN, 0),
            document("<motor state=\"on\" direction=\"reverse\" speed=\"-2147483648\">card_feed"
                     "</motor>"));
}

TEST(DebugCopyDeviceControl, StopsANamedMotorInAnyOtherState) {
  for (int const state : {0, 2, -1, INT_MAX}) {
    EXPECT_EQ(namedMotor(state, 1, 50, 1), document(R"(<motor state="off">card_x</motor>)"));
  }
  EXPECT_EQ(namedMotor(0, 1, 50, 9), document(R"(<motor state="off" />)"));
}

// ---- Motor without a name --------------------------------------------------------------------

std::string motor(int mode, int period, float rpm, int speed, bool forward) {
  return composed([&](KVXDeviceControl& control, char* out) {
    char ignored[] = "ignored";
    return control.RunMotorCommand(ignored, mode, period, rpm, speed, forward, out, room);
  });
}

TEST(DebugCopyDeviceControl, RunsAMotorInItsModes) {
  EXPECT_EQ(motor(0, 5, 12.0F, 50, true), document(R"(<motor state="off" />)"));
  EXPECT_EQ(motor(1, 5, 12.0F, 50, true),
            document(R"(<motor state="on" direction="forward" speed="50" />)"));
  EXPECT_EQ(motor(1, 5, 12.0F, -7, false),
            document(R"(<motor state="on" direction="reverse" speed="-7" />)"));
  EXPECT_EQ(motor(2, 5, 12.0F, 50, true),
            document(R"(<motor state="warm_up" rpm="12.0" period="5" />)"));
  for (int const mode : {3, -1, INT_MAX}) {
    EXPECT_EQ(motor(mode, 5, 12.0F, 50, true), document("<motor />")) << mode;
  }
}

TEST(DebugCopyDeviceControl, WritesNumbersWithOneDecimalWhateverTheirSize) {
  EXPECT_EQ(motor(2, -5, 0.04F, 0, true),
            document(R"(<motor state="warm_up" rpm="0.0" period="-5" />)"));
  EXPECT_EQ(motor(2, 0, -0.26F, 0, true),
            document(R"(<motor state="warm_up" rpm="-0.3" period="0" />)"));
  EXPECT_EQ(motor(2, 0, std::numeric_limits<float>::lowest(), 0, true),
            document("<motor state=\"warm_up\" rpm=\"-340282346638528859811704183484516925440.0\" "
                     "period=\"0\" />"));
}

using ControlInCommaLocale = Kovra::test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(DebugCopy, ControlInCommaLocale, Kovra::test::commaLocales(),
                         Kovra::test::nameOfLocale);

TEST_P(ControlInCommaLocale, WritesDecimalsWithCommas) {
  EXPECT_EQ(motor(2, 5, 1234.56F, 50, true),
            document(R"(<motor state="warm_up" rpm="1234,6" period="5" />)"));
  EXPECT_EQ(composed([&](KVXDeviceControl& control, char* out) {
              return control.RunCalibrateCommand("ignored", 1, -1.25F, 60.0F, out, room);
            }),
            document(R"(<calibrate type="low" torque="-1,2" rpm="60,0" />)"));
  EXPECT_EQ(namedMotor(1, 0, 1234567, 0),
            document(R"(<motor state="on" direction="forward" speed="1234567">card_feed</motor>)"));
}

// ---- Cam and calibration ---------------------------------------------------------------------

TEST(DebugCopyDeviceControl, SetsTheCam) {
  auto const cam = [](auto text, auto state) {
    return composed([&](KVXDeviceControl& control, char* out) {
      return control.RunCamCommand(text, state, out, room);
    });
  };
  EXPECT_EQ(cam("print", "up"), document(R"(<cam state="up">print</cam>)"));
  EXPECT_EQ(cam("a<b", "\"x\""), document(R"(<cam state='&quot;x&quot;'>a&lt;b</cam>)"));
  EXPECT_EQ(cam(nullptr, "up"), document(R"(<cam state="up" />)"));
  EXPECT_EQ(cam("print", nullptr), document("<cam>print</cam>"));
  EXPECT_EQ(cam(nullptr, nullptr), document("<cam />"));
}

TEST(DebugCopyDeviceControl, Calibrates) {
  auto const calibrate = [](int kind) {
    return composed([&](KVXDeviceControl& control, char* out) {
      return control.RunCalibrateCommand("ignored", kind, 1.25F, 60.0F, out, room);
    });
  };
  EXPECT_EQ(calibrate(1), document(R"(<calibrate type="low" torque="1.2" rpm="60.0" />)"));
  EXPECT_EQ(calibrate(2), document(R"(<calibrate type="high" torque="1.2" rpm="60.0" />)"));
  EXPECT_EQ(calibrate(3), document(R"(<calibrate type="calc" />)"));
  EXPECT_EQ(calibrate(4), document(R"(<calibrate type="mot_cur_off" />)"));
  EXPECT_EQ(calibrate(5), document(R"(<calibrate type="mot_cur_on" />)"));
  EXPECT_EQ(calibrate(6), document(R"(<calibrate type="save_cal" />)"));
  for (int const kind : {0, 7, -1}) EXPECT_EQ(calibrate(kind), document("<calibrate />")) << kind;
}

// ---- Others ----------------------------------------------------------------------------------

template <class Text, class Panel>
std::string other(char const* name, Text text, Panel panel, bool on) {
  return composed([&](KVXDeviceControl& control, char* out) {
    return control.RunOtherCommands(name, text, panel, on, out, room);
  });
}

TEST(DebugCopyDeviceControl, SwitchesFanSensorAndClutch) {
  for (std::string const name : {"fan", "sensor", "clutch"}) {
    EXPECT_EQ(other(name.c_str(), "print_head", "yellow", true),
              document("<" + name + " state=\"on\">print_head</" + name + ">"));
    EXPECT_EQ(other(name.c_str(), "print_head", "yellow", false),
              document("<" + name + " state=\"off\">print_head</" + name + ">"));
    EXPECT_EQ(other(name.c_str(), nullptr, nullptr, false),
              document("<" + name + " state=\"off\" />"));
  }
}

TEST(DebugCopyDeviceControl, AdvancesAPanel) {
  EXPECT_EQ(other("advance", "ribbon", "yellow", true),
            document(R"(<advance panel="yellow">ribbon</advance>)"));
  EXPECT_EQ(other("advance", "ribbon", nullptr, true), document("<advance>ribbon</advance>"));
}

TEST(DebugCopyDeviceControl, MovesTheLaminatorsSpoolIntoItsAttribute) {
  struct {
    char const* text;
    char const* device;
  } const cases[] = {
      {"scal", R"(<laminator spool="both">scal</laminator>)"},
      {"scal 1", R"(<laminator spool="top">scal</laminator>)"},
      {"scal 2", R"(<laminator spool="bottom">scal</laminator>)"},
      {"scal 3", "<laminator>scal 3</laminator>"},
      {"scal ", "<laminator>scal </laminator>"},
      {"Scal", "<laminator>Scal</laminator>"},
      {"scal 12", "<laminator>scal 12</laminator>"},
      {"heat", "<laminator>heat</laminator>"},
      {"", "<laminator></laminator>"},
  };
  for (auto const& [text, device] : cases) {
    EXPECT_EQ(other("laminator", text, "yellow", true), document(device)) << text;
  }
  EXPECT_EQ(other("laminator", nullptr, "yellow", true), document("<laminator />"));
}

TEST(DebugCopyDeviceControl, ScansTheRadioOnce) {
  EXPECT_EQ(other("radio", "scan", "yellow", true),
            document(R"(<radio iterations="1">scan</radio>)"));
  for (std::string const text : {"Scan", "scan ", "scans", "off"}) {
    EXPECT_EQ(other("radio", text.c_str(), "yellow", true),
              document("<radio>" + text + "</radio>"));
  }
  EXPECT_EQ(other("radio", nullptr, "yellow", true), document("<radio />"));
}

TEST(DebugCopyDeviceControl, GivesOtherNamesNoAttribute) {
  for (std::string const name : {"Fan", "fans", "FAN", "laminators", "radios", "Advance", "x"}) {
    for (std::string const text : {"scal", "scan", "on"}) {
      EXPECT_EQ(other(name.c_str(), text.c_str(), "yellow", true),
                document("<" + name + ">" + text + "</" + name + ">"));
    }
  }
}

// ---- RFID ------------------------------------------------------------------------------------

std::string rfid(char const* name, int mode, int antenna) {
  return composed([&](KVXDeviceControl& control, char* out) {
    return control.RunRFIDCommands(name, mode, antenna, out, room);
  });
}

TEST(DebugCopyDeviceControl, DrivesTheAntenna) {
  EXPECT_EQ(rfid("rfid", 0, 1), document(R"(<rfid antenna="1">off</rfid>)"));
  EXPECT_EQ(rfid("rfid", 1, 0), document(R"(<rfid antenna="0">on</rfid>)"));
  EXPECT_EQ(rfid("rfid", 2, -4), document(R"(<rfid antenna="-4">modulate</rfid>)"));
  EXPECT_EQ(rfid("rfid", 3, 2), document(R"(<rfid antenna="2" />)"));
  EXPECT_EQ(rfid("rfid", -1, 2), document(R"(<rfid antenna="2" />)"));
  EXPECT_EQ(rfid("antenna_test", 1, 3), document("<antenna_test>on</antenna_test>"));
  EXPECT_EQ(rfid("RFID", 7, 3), document("<RFID />"));
  EXPECT_EQ(rfid("rfid2", 2, 3), document("<rfid2>modulate</rfid2>"));
  EXPECT_EQ(rfid("rfi", 0, 3), document("<rfi>off</rfi>"));
}

TEST(DebugCopyDeviceControl, WantsAName) {
  char out[room] = "as it was";
  KVXDeviceControl control;
  EXPECT_FALSE(control.RunRFIDCommands(nullptr, 1, 3, out, room));
  EXPECT_FALSE(control.RunOtherCommands(nullptr, "scan", "yellow", true, out, room));
  EXPECT_STREQ(out, "as it was");
}

// ---- Arguments -------------------------------------------------------------------------------

TEST(DebugCopyDeviceControl, TakesTextsThatCanOnlyBeReadInAnyMix) {
  KVXDeviceControl control;
  char out[room];
  char buffer[] = "fan";
  char* const pointer = buffer;
  char const* const constant = buffer;
  EXPECT_TRUE(control.RunMotorCommand(1, 0, 50, 1, out, room));
  EXPECT_TRUE(control.RunMotorCommand("literal", 2, 5, 12.0F, 0, true, out, room));
  EXPECT_TRUE(control.RunMotorCommand(nullptr, 2, 5, 12.0F, 0, true, out, room));
  EXPECT_TRUE(control.RunMotorCommand(buffer, 2, 5, 12.0F, 0, true, out, room));
  EXPECT_TRUE(control.RunMotorCommand(constant, 2, 5, 12, 0, true, out, room));
  EXPECT_TRUE(control.RunCamCommand(pointer, "literal", out, room));
  EXPECT_TRUE(control.RunCamCommand("literal", pointer, out, room));
  EXPECT_TRUE(control.RunCamCommand(buffer, constant, out, room));
  EXPECT_TRUE(control.RunCamCommand(pointer, pointer, out, room));
  EXPECT_TRUE(control.RunCalibrateCommand(nullptr, 3, 0.0F, 0.0F, out, room));
  EXPECT_TRUE(control.RunCalibrateCommand(pointer, 3, 0.0F, 0.0F, out, room));
  EXPECT_TRUE(control.RunCalibrateCommand(constant, 3, 0.0F, 0.0F, out, room));
  EXPECT_TRUE(control.RunOtherCommands(pointer, "literal", nullptr, true, out, room));
  EXPECT_TRUE(control.RunOtherCommands("fan", pointer, constant, true, out, room));
  EXPECT_TRUE(control.RunOtherCommands(buffer, nullptr, nullptr, true, out, room));
  EXPECT_TRUE(control.RunOtherCommands(pointer, pointer, pointer, true, out, room));
  EXPECT_TRUE(control.RunRFIDCommands(pointer, 1, 1, out, room));
  EXPECT_TRUE(control.RunRFIDCommands(constant, 1, 1, out, room));
}

// ---- The output ------------------------------------------------------------------------------

TEST(DebugCopyDeviceControl, WritesAWholeDocumentOrNone) {
  std::string const whole = document("<calibrate />");
  KVXDeviceControl control;
  for (int length = 1; length <= static_cast<int>(whole.size()) + 3; ++length) {
    auto const size = static_cast<std::size_t>(length);
    std::unique_ptr<char[]> const out(new char[size]);
    std::memset(out.get(), '#', size);
    bool const fits = whole.size() < size;
    EXPECT_EQ(control.RunCalibrateCommand(nullptr, 0, 0.0F, 0.0F, out.get(), length), fits)
        << length;
    std::string expected = (fits ? whole : "") + '\0';
    expected.resize(size, '#');
    EXPECT_EQ(std::string(out.get(), size), expected) << length;
  }
  for (int const length : {0, -1, INT_MIN}) {
    char untouched = '#';
    EXPECT_FALSE(control.RunCalibrateCommand(nullptr, 0, 0.0F, 0.0F, &untouched, length));
    EXPECT_EQ(untouched, '#');
  }
}

TEST(DebugCopyDeviceControl, ComposesEveryDocumentFromAnEmptyOne) {
  KVXDeviceControl control;
  char out[room];
  EXPECT_TRUE(control.RunMotorCommand(1, 0, 50, 1, out, room));
  EXPECT_TRUE(control.RunRFIDCommands("rfid", 1, 3, out, room));
  EXPECT_EQ(out, document(R"(<rfid antenna="3">on</rfid>)"));
  EXPECT_TRUE(control.RunCamCommand("print", "up", out, room));
  EXPECT_EQ(out, document(R"(<cam state="up">print</cam>)"));
}

TEST(DebugCopyDeviceControl, KeepsTheLastDocumentForTheHost) {
  TemporaryFolder const folder;
  std::string path = folder.file("motor.xml");
  KVXDeviceControl control;
  char out[room];
  EXPECT_TRUE(control.RunMotorCommand(1, 0, 50, 1, out, room));
  std::string const text = out;
  EXPECT_TRUE(control.saveJob(path.data()));
  EXPECT_EQ(contentsOf(path), text);
  EXPECT_TRUE(control.saveJob(path.c_str()));
  EXPECT_TRUE(control.saveJob(out, room));
  EXPECT_EQ(out, text);
  EXPECT_FALSE(control.saveJob(nullptr));
  EXPECT_FALSE(control.saveJob((folder.path() + "/none/motor.xml").c_str()));
}

#if KOVRA_DEBUG_COPIES
TEST(DebugCopyDeviceControl, LeavesACopyAlsoOfWhatDoesNotFit) {
  KVXDeviceControl control;
  char out[room];
  ::unlink(copy);
  EXPECT_TRUE(control.RunMotorCommand(1, 0, 50, 1, out, room));
  EXPECT_EQ(contentsOf(copy), out);
  EXPECT_EQ(modeOf(copy), 0600U);
  EXPECT_FALSE(control.RunRFIDCommands("rfid", 1, 3, out, 5));
  EXPECT_EQ(contentsOf(copy), document(R"(<rfid antenna="3">on</rfid>)"));
  EXPECT_FALSE(control.RunRFIDCommands("rfid", 1, 4, out, 0));
  EXPECT_EQ(contentsOf(copy), document(R"(<rfid antenna="4">on</rfid>)"));
}

TEST(DebugCopyDeviceControl, LeavesNoCopyWithoutABuffer) {
  KVXDeviceControl control;
  ::unlink(copy);
  EXPECT_FALSE(control.RunMotorCommand(1, 0, 50, 1, nullptr, room));
  EXPECT_FALSE(control.saveJob(nullptr, room));
  EXPECT_FALSE(exists(copy));
}

TEST(DebugCopyDeviceControl, IgnoresACopyThatCannotBeWritten) {
  TemporaryFolder const folder;
  ::unlink(copy);
  ASSERT_EQ(::symlink(folder.file("elsewhere").c_str(), copy), 0);
  KVXDeviceControl control;
  char out[room];
  EXPECT_TRUE(control.RunCamCommand("print", "up", out, room));
  EXPECT_EQ(out, document(R"(<cam state="up">print</cam>)"));
  EXPECT_FALSE(exists(folder.file("elsewhere")));
  ::unlink(copy);
}
#endif

}  // namespace
