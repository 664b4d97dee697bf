// What a decoded reply has notes on, through the face: every kind of note, every kind of value.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "kovra.hpp"

namespace Kovra {
namespace {

using Texts = std::vector<std::string>;

std::vector<Note> notesOf(std::string const& reply, std::string const& as = {}) {
  Decoding const decoding = decode(reply, as);
  EXPECT_TRUE(decoding) << decoding.refusal().message();
  return decoding.notes();
}

/// The name of a note's kind.
std::string kindOf(Note const& note) {
  for (FindingKind const& kind : findingKinds()) {
    if (kind.id() == note.id()) return kind.name();
  }
  return "none";
}

/// "LINE:COLUMN sentence"
std::string told(Note const& note) {
  return std::to_string(note.line()) + ':' + std::to_string(note.column()) + ' ' + note.message();
}

Texts toldOf(std::string const& reply, std::string const& as = {}) {
  Texts all;
  for (Note const& note : notesOf(reply, as)) all.push_back(told(note));
  return all;
}

std::string repeated(std::string const& piece, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += piece;
  return all;
}

/// A reply with one thing in it that is worth a note, in its second line.
struct Noted {
  std::string reply;
  std::string kind;
  std::string element;
  std::string found;
  std::string kept;
  Texts expected;
  std::string sentence;
};

std::string status(std::string const& children) {
  return "<get_general_status>\n" + children + "</get_general_status>";
}
std::string settings(std::string const& children) {
  return "<configuration>\n" + children + "</configuration>";
}

Texts const whole = {"a whole decimal number"};
Texts const hexadecimal = {"a hexadecimal number with 0x before it"};
Texts const address = {"six hexadecimal bytes with colons between them"};
Texts const ipv4 = {"an IPv4 address, four numbers with dots between them"};
std::string const digits = "0123456789";

std::vector<Noted> const noted = {
    {status("<other>5</other>"),
     "unknown_element",
     "other",
     "",
     "",
     {},
     "<other>: unknown element, skipped"},
    // Words: of a keyword, of a flag, of one of several flags that share a member, of a text.
    {settings("<usb_speed>warp</usb_speed>"),
     "unknown_word",
     "usb_speed",
     "warp",
     "",
     {"full", "high"},
     "<usb_speed>: unknown word \"warp\"; one of: full, high"},
    {"<configuration><ethernet>\n<dhcp>maybe</dhcp></ethernet></configuration>",
     "unknown_word",
     "dhcp",
     "maybe",
     "",
     {"enabled", "yes", "disabled", "no"},
     "<dhcp>: unknown word \"maybe\"; one of: enabled, yes, disabled, no"},
    {"<capabilities><image_sharpening_levels>\n<image_sharpening_level>odd"
     "</image_sharpening_level></image_sharpening_levels></capabilities>",
     "unknown_word",
     "image_sharpening_level",
     "odd",
     "",
     {"off", "normal", "high", "low"},
     "<image_sharpening_level>: unknown word \"odd\"; one of: off, normal, high, low"},
    {"<capabilities>\n<laminator>perhaps</laminator></capabilities>",
     "unknown_word",
     "laminator",
     "perhaps",
     "",
     {"present", "notpresent"},
     "<laminator>: unknown word \"perhaps\"; one of: present, notpresent"},
    // What is no number of the form.
    {status("<error>five</error>"), "not_a_number", "error", "five", "", whole,
     "<error>: \"five\" is not a whole decimal number"},
    {status("<error>5x</error>"), "not_a_number", "error", "5x", "", whole,
     "<error>: \"5x\" is not a whole decimal number"},
    {"<printer_id>\n<printer_serial>x</printer_serial></printer_id>", "not_a_number",
     "printer_serial", "x", "", whole, "<printer_serial>: \"x\" is not a whole decimal number"},
    {"<get_sensor_status><sensor_values>\n<voltage_24>high</voltage_24></sensor_values>"
     "</get_sensor_status>",
     "not_a_number",
     "voltage_24",
     "high",
     "",
     {"a decimal number"},
     "<voltage_24>: \"high\" is not a decimal number"},
    {status("<alarms>1A</alarms>"), "not_a_number", "alarms", "1A", "", hexadecimal,
     "<alarms>: \"1A\" is not a hexadecimal number with 0x before it"},
    {"<diffie_hellman>\n<modulus>prime</modulus></diffie_hellman>",
     "not_a_number",
     "modulus",
     "prime",
     "",
     {"a whole number, decimal or with 0x before it"},
     "<modulus>: \"prime\" is not a whole number, decimal or with 0x before it"},
    {settings("<physical_address>1:2:3</physical_address>"), "not_a_number", "physical_address",
     "1:2:3", "", address,
     "<physical_address>: \"1:2:3\" is not six hexadecimal bytes with colons between them"},
    {"<configuration><ethernet>\n<ip_address>300.1.1.1</ip_address></ethernet></configuration>",
     "not_a_number", "ip_address", "300.1.1.1", "", ipv4,
     "<ip_address>: \"300.1.1.1\" is not an IPv4 address, four numbers with dots between them"},
    // A number with something behind it is read all the same, and so are short addresses.
    {status("<alarms>0x1A and more</alarms>"), "not_a_number", "alarms", "0x1A and more", "",
     hexadecimal, "<alarms>: \"0x1A and more\" is not a hexadecimal number with 0x before it"},
    {"<configuration><ethernet>\n<ip_address>10.0.0.1 and more</ip_address></ethernet>"
     "</configuration>",
     "not_a_number", "ip_address", "10.0.0.1 and more", "", ipv4,
     "<ip_address>: \"10.0.0.1 and more\" is not an IPv4 address, four numbers with dots between "
     "them"},
    {"<configuration><ethernet>\n<ip_address>010.0.0.1</ip_address></ethernet></configuration>",
     "not_a_number", "ip_address", "010.0.0.1", "", ipv4,
     "<ip_address>: \"010.0.0.1\" is not an IPv4 address, four numbers with dots between them"},
    {settings("<lcd_contrast min=\"0\" max=\"63x\">5</lcd_contrast>"), "not_a_number",
     "lcd_contrast", "63x", "", whole, "<lcd_contrast>: \"63x\" is not a whole decimal number"},
    {"<get_sensor_status><doors>\n<head_open reading=\"1 x\"/></doors></get_sensor_status>",
     "not_a_number", "head_open", "1 x", "", whole,
     "<head_open>: \"1 x\" is not a whole decimal number"},
    // Numbers that their member cannot hold, and those beyond their bounds.
    {settings("<lcd_contrast min=\"4294967296\" max=\"63\">5</lcd_contrast>"),
     "changed_number",
     "lcd_contrast",
     "4294967296",
     "0",
     {},
     "<lcd_contrast>: \"4294967296\" does not fit, kept as 0"},
    {status("<param_chg_counter>70000</param_chg_counter>"),
     "changed_number",
     "param_chg_counter",
     "70000",
     "4464",
     {},
     "<param_chg_counter>: \"70000\" does not fit, kept as 4464"},
    {status("<error>4294967301</error>"),
     "changed_number",
     "error",
     "4294967301",
     "5",
     {},
     "<error>: \"4294967301\" does not fit, kept as 5"},
    {status("<alarms>0x1FFFFFFFF</alarms>"),
     "changed_number",
     "alarms",
     "0x1FFFFFFFF",
     "0xffffffff",
     {},
     "<alarms>: \"0x1FFFFFFFF\" does not fit, kept as 0xffffffff"},
    {"<get_sensor_status><sensor_values>\n<voltage_24>1e99</voltage_24></sensor_values>"
     "</get_sensor_status>",
     "changed_number",
     "voltage_24",
     "1e99",
     "inf",
     {},
     "<voltage_24>: \"1e99\" does not fit, kept as inf"},
    {settings("<lcd_contrast min=\"0\" max=\"63\">70</lcd_contrast>"),
     "changed_number",
     "lcd_contrast",
     "70",
     "63",
     {},
     "<lcd_contrast>: \"70\" does not fit, kept as 63"},
    {"<configuration><ribbon_motor_parameters><takeup_motor>\n<S0 min=\"0.5\" max=\"1\">0.25</S0>"
     "</takeup_motor></ribbon_motor_parameters></configuration>",
     "changed_number",
     "S0",
     "0.25",
     "0.5",
     {},
     "<S0>: \"0.25\" does not fit, kept as 0.5"},
    // Texts that are too long: of a member, and joined of several elements.
    {"<printer_id>\n<oem_country>" + digits + "</oem_country></printer_id>",
     "cut_text",
     "oem_country",
     digits,
     "0123456",
     {},
     "<oem_country>: text too long, cut to \"0123456\""},
    // Empty elements: of a value, of a keyword that is stored all the same, of a setting, of a
    // root.
    {status("<error/>"), "empty_element", "error", "", "", {}, "<error>: empty, not read"},
    {settings("<error_control/>"),
     "empty_element",
     "error_control",
     "",
     "",
     {},
     "<error_control>: empty, not read"},
    {settings("<lcd_contrast min=\"0\" max=\"63\"/>"),
     "empty_element",
     "lcd_contrast",
     "",
     "",
     {},
     "<lcd_contrast>: empty, not read"},
    {"\n<nonce/>", "empty_element", "nonce", "", "", {}, "<nonce>: empty, not read"},
    // Attributes: one bound of a setting, both, and those of a sensor.
    {settings("<lcd_contrast max=\"63\">5</lcd_contrast>"),
     "no_attribute",
     "lcd_contrast",
     "",
     "",
     {"min"},
     "<lcd_contrast>: no number in attribute \"min\", not read"},
    {settings("<lcd_contrast>0</lcd_contrast>"),
     "no_attribute",
     "lcd_contrast",
     "",
     "",
     {"min", "max"},
     "<lcd_contrast>: no number in attribute \"min, max\", not read"},
    {"<get_sensor_status><doors>\n<head_open reading=\"x\"/></doors></get_sensor_status>",
     "no_attribute",
     "head_open",
     "x",
     "",
     {"reading"},
     "<head_open>: no number in attribute \"reading\", found \"x\", not read"},
    // Lists that are full.
    {"<get_log_cleaning_history>" + repeated("<cleaning/>", 32) +
         "\n<cleaning/></get_log_cleaning_history>",
     "surplus_entries",
     "cleaning",
     "",
     "32",
     {},
     "<cleaning>: more than 32 entries, one skipped"},
    {"<get_job_list>" + repeated("<job><uuid>1</uuid></job>", 128) + "\n<job/></get_job_list>",
     "surplus_entries",
     "job",
     "",
     "128",
     {},
     "<job>: more than 128 entries, one skipped"},
};

TEST(Notes, TellWhatWasFoundWhatIsKeptAndWhatWouldBeRight) {
  for (Noted const& one : noted) {
    std::vector<Note> const notes = notesOf(one.reply);
    SCOPED_TRACE(one.sentence);
    ASSERT_EQ(notes.size(), 1U) << one.reply;
    Note const& note = notes.front();
    EXPECT_EQ(kindOf(note), one.kind);
    EXPECT_EQ(note.line(), 2);
    EXPECT_EQ(note.column(), 1);
    EXPECT_EQ(note.element(), one.element);
    EXPECT_EQ(note.found(), one.found);
    EXPECT_EQ(note.kept(), one.kept);
    EXPECT_EQ(note.expected(), one.expected);
    EXPECT_EQ(note.message(), one.sentence);
  }
}

// What stands where a number is read, and what people would call one.
TEST(Notes, AreNotMadeOfWhatIsReadWhole) {
  for (std::string const& reply :
       {status("<error> 5 </error>"), status("<error>-5</error>"), status("<alarms>0xFf</alarms>"),
        settings("<lcd_contrast min=\"0\" max=\"63\">63</lcd_contrast>"),
        settings("<physical_address>02:00:5e:10:20:3a</physical_address>"),
        std::string("<configuration><ethernet><gateway>255.255.255.255</gateway></ethernet>"
                    "</configuration>"),
        std::string("<printer_id><oem_country>0123456</oem_country></printer_id>"),
        "<get_log_cleaning_history>" + repeated("<cleaning/>", 32) +
            "</get_log_cleaning_history>"}) {
    EXPECT_EQ(toldOf(reply), Texts{}) << reply;
  }
}

TEST(Notes, TellWhatStandsInAttributesThatAreNoNumbers) {
  EXPECT_EQ(
      toldOf(settings("<lcd_contrast min='x' max='y'>0</lcd_contrast>")),
      Texts{"2:1 <lcd_contrast>: no number in attribute \"min, max\", found \"x, y\", not read"});
  EXPECT_EQ(
      toldOf(settings("<lcd_contrast max='y'>0</lcd_contrast>")),
      Texts{"2:1 <lcd_contrast>: no number in attribute \"min, max\", found \"y\", not read"});
}

TEST(Notes, TellOnceOfATextWhereElementsAreRead) {
  EXPECT_EQ(toldOf("<keys><set>\nTEXT</set></keys>"), Texts{"2:1 <set>: a text is not read"});
  EXPECT_EQ(toldOf("<configuration>\n<wireless>Office</wireless></configuration>"),
            Texts{"2:11 <wireless>: a text is not read"});
  EXPECT_EQ(toldOf("<configuration>\n<wireless><!-- none --></wireless></configuration>"),
            Texts{"2:1 <wireless>: empty, not read"});
  EXPECT_EQ(toldOf("<configuration>\n<wireless><!-- none -->x</wireless></configuration>"),
            Texts{"2:24 <wireless>: a text is not read"});
}

TEST(Notes, TellOfNumbersThatOnlyTheConversionTakes) {
  auto const voltage = [](std::string const& text) {
    return toldOf("<get_sensor_status><sensor_values>\n<voltage_24>" + text +
                  "</voltage_24></sensor_values></get_sensor_status>");
  };
  for (std::string const text : {"nan", "inf", "-Infinity", "0x10", "0x1p3", "nan(1)"}) {
    EXPECT_EQ(voltage(text), Texts{"2:1 <voltage_24>: \"" + text + "\" is not a decimal number"});
  }
  for (char const* const text : {"1", "-1.5", "+1.5", "1e2", "1.5E-2", ".5", "5."}) {
    EXPECT_EQ(voltage(text), Texts{}) << text;
  }
  auto const hardware = [](std::string const& text) {
    return toldOf(settings("<physical_address>" + text + "</physical_address>"));
  };
  for (std::string const text :
       {"-1:00:5e:aa:0b:0c", "+1:00:5e:aa:0b:0c", "0x:00:5e:aa:0b:0c", "02: 0:5e:aa:0b:0c"}) {
    EXPECT_EQ(hardware(text), Texts{"2:1 <physical_address>: \"" + text +
                                    "\" is not six hexadecimal bytes with colons between them"});
  }
  EXPECT_EQ(hardware("2:0:5e:aa:b:c"), Texts{});
  EXPECT_EQ(hardware("02:00:5E:AA:0B:0C"), Texts{});
}

TEST(Notes, OfOneElementMayBeSeveral) {
  EXPECT_EQ(toldOf(settings("<lcd_contrast>5</lcd_contrast>")),
            (Texts{"2:1 <lcd_contrast>: no number in attribute \"min, max\", not read",
                   "2:1 <lcd_contrast>: \"5\" does not fit, kept as 0"}))
      << "within bounds that are zero";
  EXPECT_EQ(toldOf(settings("<lcd_contrast max=\"63\">0</lcd_contrast>"
                            "<ribbon_sensor_offset max=\"9\">0</ribbon_sensor_offset>")),
            (Texts{"2:1 <lcd_contrast>: no number in attribute \"min\", not read",
                   "2:40 <ribbon_sensor_offset>: no number in attribute \"min\", not read"}))
      << "each its own";
}

TEST(Notes, OfPanelsTellWhichOneWasCutAndWhatTheyMakeTogether) {
  std::vector<Note> const notes =
      notesOf("<get_media_status><ribbon>\n<sequence>\n<panel>y</panel>\n<panel>" +
              repeated("m", 40) + "</panel></sequence></ribbon></get_media_status>");
  ASSERT_EQ(notes.size(), 2U);
  std::string const kept = "y" + repeated("m", 30);
  EXPECT_EQ(notes[0].found(), kept);
  EXPECT_EQ(told(notes[0]).substr(0, 55), "2:1 <sequence>: unknown word \"" + kept.substr(0, 25));
  EXPECT_EQ(told(notes[1]), "4:1 <panel>: text too long, cut to \"" + kept + '"');
}

// Nothing of a secret goes where people read.
TEST(Notes, OfASecretTellNoText) {
  std::string const secret(300, 's');
  for (auto const& [reply, sentence] : std::vector<std::pair<std::string, std::string>>{
           {"\n<passkey>" + secret + "</passkey>", "<passkey>: text too long"},
           {"<keys>\n<printer_lock_key>" + secret + "</printer_lock_key></keys>",
            "<printer_lock_key>: text too long"},
           {"<keys><set>\n<new_passkey>" + secret + "</new_passkey></set></keys>",
            "<new_passkey>: text too long"},
           {"<action>lock_printer\n<hmac>" + secret + "</hmac></action>", "<hmac>: text too long"},
           {"<data><mag>\n<track2>" + secret + "</track2></mag></data>", "<track2>: text too long"},
           {"<configuration><wireless>\n<key>" + secret + "</key></wireless></configuration>",
            "<key>: text too long"},
           {"<keys>\n<printer_lock_key/></keys>", "<printer_lock_key>: empty, not read"},
       }) {
    std::vector<Note> const notes = notesOf(reply);
    ASSERT_EQ(notes.size(), 1U) << sentence;
    EXPECT_EQ(told(notes[0]), "2:1 " + sentence);
    EXPECT_EQ(notes[0].found() + notes[0].kept(), "") << sentence;
    EXPECT_TRUE(notes[0].expected().empty()) << sentence;
  }
}

TEST(Notes, BehindASecretHaveTheirTextsAgain) {
  EXPECT_EQ(toldOf("<configuration><wireless><key>k</key>\n<channel>six</channel></wireless>"
                   "</configuration>"),
            Texts{"2:1 <channel>: \"six\" is not a whole decimal number"});
}

TEST(Notes, StandInTheOrderOfTheirPlacesWhicheverReaderHasThem) {
  EXPECT_EQ(toldOf("<keys>\n<set><new_passkey/></set>\n<printer_lock_key/><other/></keys>"),
            (Texts{"2:6 <new_passkey>: empty, not read", "3:1 <printer_lock_key>: empty, not read",
                   "3:20 <other>: unknown element, skipped"}));
}

TEST(Notes, OfOnePlaceStandInTheOrderInWhichTheyWereMade) {
  // So many that sorting them would show.
  std::string text = "<configuration>\n";
  Texts expected;
  for (int line = 2; line < 52; ++line) {
    text += "<lcd_contrast max='9'>x</lcd_contrast>\n";
    std::string const place = std::to_string(line) + ":1 <lcd_contrast>: ";
    expected.push_back(place + "no number in attribute \"min\", not read");
    expected.push_back(place + "\"x\" is not a whole decimal number");
    if (line > 2) expected.push_back(place + "for the second time, overwrites \"x\"");
  }
  EXPECT_EQ(toldOf(text + "</configuration>"), expected);
}

TEST(Notes, OfAnElementAreToldOnceForAllReaders) {
  EXPECT_EQ(toldOf("<get_count><other/></get_count>"),
            Texts{"1:12 <other>: unknown element, skipped"});
  EXPECT_EQ(toldOf("<get_count><total_cards_done/></get_count>"),
            Texts{"1:12 <total_cards_done>: empty, not read"})
      << "known to one of them";
}

TEST(Notes, OfOneReaderAloneAreThoseThatItHas) {
  std::string const both =
      "<get_count>\n<total_cards_done>5</total_cards_done>\n<total_cards_until_next_cleaning>x"
      "</total_cards_until_next_cleaning></get_count>";
  std::string const cleaning =
      "3:1 <total_cards_until_next_cleaning>: \"x\" is not a whole decimal number";
  EXPECT_EQ(toldOf(both, "cards-until-cleaning"),
            (Texts{"2:1 <total_cards_done>: unknown element, skipped", cleaning}));
  EXPECT_EQ(toldOf(both), Texts{cleaning});
}

TEST(Notes, BeyondAThousandAreCounted) {
  EXPECT_EQ(notesOf(status(repeated("<other/>", 1000))).size(), 1000U);
  for (std::size_t const more : {std::size_t{1}, std::size_t{3}}) {
    std::vector<Note> const notes =
        notesOf(status(repeated("<other/>", 1000 + static_cast<int>(more))));
    ASSERT_EQ(notes.size(), 1001U);
    EXPECT_EQ(kindOf(notes[999]), "unknown_element");
    EXPECT_EQ(kindOf(notes.back()), "unlisted");
    EXPECT_EQ(notes.back().count(), more);
    EXPECT_EQ(notes.back().element() + notes.back().found() + notes.back().path(), "");
    EXPECT_EQ(told(notes.back()),
              "0:0 " + std::to_string(more) + (more == 1 ? " more note" : " more notes"));
  }
}

TEST(Notes, BeyondAThousandAreCountedOnceForAllReaders) {
  std::string const both = repeated("<total_cards_done>x</total_cards_done>", 1005) +
                           repeated(
                               "<total_cards_until_next_cleaning>x"
                               "</total_cards_until_next_cleaning>",
                               1);
  std::vector<Note> const notes = notesOf("<get_count>" + both + "</get_count>");
  ASSERT_EQ(notes.size(), 1001U);
  EXPECT_GT(notes.back().count(), 1000U) << "each is no number, and comes again";
}

// What no reading uses.

TEST(Notes, TellOfAttributesThatAreNotRead) {
  EXPECT_EQ(toldOf("<get_general_status a=\"1\"><error unit='none'>5</error>"
                   "</get_general_status>"),
            (Texts{"1:21 <get_general_status>: attribute a=\"1\" is not read",
                   "1:34 <error>: attribute unit='none' is not read"}));
  EXPECT_EQ(toldOf("<?xml version='1.0' encoding='UTF-8'?><get_general_status/>").size(), 1U)
      << "those of a declaration are not the printer's";
}

TEST(Notes, TellOfTextsThatAreNotRead) {
  EXPECT_EQ(toldOf("<get_general_status>ok<error>5<!-- and -->6</error></get_general_status>"),
            (Texts{"1:21 <get_general_status>: text \"ok\" is not read",
                   "1:43 <error>: text \"6\" is not read"}));
  EXPECT_EQ(toldOf("<get_sensor_status><doors>\n<head_open reading=\"1\">x</head_open></doors>"
                   "</get_sensor_status>"),
            Texts{"2:24 <head_open>: text \"x\" is not read"});
}

TEST(Notes, TellNothingOfWhatIsInAnUnknownElement) {
  EXPECT_EQ(toldOf(status("<other a='1'>Tom & Jerry<b/>x</other>")),
            Texts{"2:1 <other>: unknown element, skipped"});
}

TEST(Notes, TellOfElementsThatComeAgain) {
  EXPECT_EQ(toldOf(status("<error>5</error>\n<error>6</error>\n<error>7</error>")),
            (Texts{"3:1 <error>: for the second time, overwrites \"5\"",
                   "4:1 <error>: for the second time, overwrites \"6\""}));
  EXPECT_EQ(toldOf("<configuration><wireless><key>abc</key>\n<key>def</key></wireless>"
                   "</configuration>"),
            Texts{"2:1 <key>: for the second time"})
      << "nothing of a secret";
  EXPECT_EQ(toldOf("<get_job_list><job><uuid>1</uuid></job><job><uuid>2</uuid></job>"
                   "</get_job_list>"),
            Texts{})
      << "entries of a list";
}

TEST(Notes, TellOfNumbersWithMoreBehindThem) {
  EXPECT_EQ(toldOf(status("<alarms>0x1G</alarms>")),
            Texts{"2:1 <alarms>: \"0x1G\" is not a hexadecimal number with 0x before it"});
  EXPECT_EQ(decode(status("<alarms>0x1G</alarms>")).readings()[0].record().at("alarms"), Value(1));
}

TEST(Notes, TellOfTagsThatAreNone) {
  EXPECT_EQ(toldOf(status("<1 a='lost'/>\n<error>5</error>")).size(), 1U);
  EXPECT_EQ(toldOf(status("<error>5</error>") + "</other>").size(), 1U);
  EXPECT_EQ(toldOf("<!DOCTYPE get_general_status>" + status("<error>5</error>")), Texts{});
}

TEST(Notes, TellOfElementsThatFillTheMemberOfAnother) {
  EXPECT_EQ(toldOf("<get_media_status><ribbon><panels_remaining>5<b/></panels_remaining>\n"
                   "<ribbon_remaining>6</ribbon_remaining>\n"
                   "<panels_remaining>7</panels_remaining></ribbon></get_media_status>"),
            (Texts{"1:46 <b>: unknown element, skipped",
                   "2:1 <ribbon_remaining>: overwrites \"5\" of <panels_remaining>",
                   "3:1 <panels_remaining>: overwrites \"6\" of <ribbon_remaining>"}));
  EXPECT_EQ(toldOf("<get_media_status><ribbon><panels_remaining>5</panels_remaining>\n"
                   "<ribbon_remaining/>\n"
                   "<panels_remaining>7</panels_remaining></ribbon></get_media_status>"),
            (Texts{"2:1 <ribbon_remaining>: empty, not read",
                   "3:1 <panels_remaining>: for the second time, overwrites \"5\""}));
  EXPECT_EQ(toldOf("<get_media_status><ribbon><sequence><panel>ymcko</panel></sequence>\n"
                   "<description>YMCKO</description></ribbon></get_media_status>"),
            Texts{"2:1 <description>: overwrites what <sequence> said"});
  EXPECT_EQ(toldOf("<configuration><lamination><top_laminate><laminate_control>"
                   "<top_temp_adjust min='0' max='9'>5</top_temp_adjust>\n"
                   "<bot_temp_adjust min='0' max='9'>6</bot_temp_adjust>"
                   "</laminate_control></top_laminate></lamination></configuration>"),
            Texts{"2:1 <bot_temp_adjust>: overwrites \"5\" of <top_temp_adjust>"});
}

/// Encoders' elements share a table, and a state is stored by its own name.
TEST(Notes, TellOfAStateThatAnotherEncoderSays) {
  std::string const reply =
      "<get_job_status><status_mag><mag_state>reading</mag_state></status_mag>"
      "<status_contact>\n<mag_state>encoding</mag_state></status_contact></get_job_status>";
  std::string const note = "2:1 <mag_state>: for the second time, overwrites \"reading\"";
  EXPECT_EQ(toldOf(reply), Texts{note});
  EXPECT_EQ(toldOf("<get_job_status><status_mag><mag_state>reading</mag_state></status_mag>"
                   "<status_contact><contact_state>encoding</contact_state></status_contact>"
                   "</get_job_status>"),
            Texts{});
  Reply<KVJobStatus> const read = Kovra::read<KVJobStatus>(reply);
  ASSERT_EQ(read.notes().size(), 1U) << "nor where nothing is shown";
  EXPECT_EQ(told(read.notes().front()), note);
}

TEST(Notes, TellOfCardsThatTakeThePlaceOfAnother) {
  std::string const one = "<card><information><description>";
  std::string const end = "</description></information></card>\n";
  EXPECT_EQ(toldOf("<configuration><cards>\n" + one + "Custom 1" + end + one + "Staff" + end +
                   "</cards></configuration>"),
            Texts{});
  EXPECT_EQ(toldOf("<configuration><cards>\n" + one + "Staff" + end + one + "Custom 1" + end + one +
                   "Guest" + end + one + "Custom 1" + end + "</cards></configuration>"),
            (Texts{"4:1 <card>: for the second time", "5:1 <card>: for the second time"}));
  EXPECT_EQ(toldOf("<configuration><cards>\n" + one + "Custom 1" + end + "</cards><cards>\n" + one +
                   "Staff" + end + "</cards></configuration>"),
            Texts{})
      << "each has its place";
  EXPECT_EQ(toldOf("<configuration><cards>\n" + one + "Staff" + end + "</cards><cards>\n" + one +
                   "Guest" + end + "</cards></configuration>"),
            Texts{"4:1 <card>: for the second time"});
}

TEST(Notes, TellNothingOfListsThatComeAgainAndAppend) {
  std::string const films = "<films><film><description>a</description></film></films>\n";
  EXPECT_EQ(toldOf("<media>\n" + films + films + "</media>"), Texts{});
  std::string const text = "<image_sharpening_level>";
  std::string const end = "</image_sharpening_level></image_sharpening_levels>\n";
  std::string const high = "<image_sharpening_levels>" + text + "high" + end;
  std::string const low = "<image_sharpening_levels>" + text + "low" + end;
  EXPECT_EQ(toldOf("<capabilities>\n" + high + low + "</capabilities>"), Texts{});
  EXPECT_EQ(toldOf("<capabilities>\n" + high + high + "</capabilities>"),
            Texts{"3:26 <image_sharpening_level>: for the second time, overwrites \"high\""});
}

TEST(Notes, TellNothingOfElementsThatOverwriteNothing) {
  EXPECT_EQ(toldOf(status("<error>5</error>\n<error/>")), Texts{"3:1 <error>: empty, not read"});
  std::string const port = "<device_port><port_id>1</port_id></device_port>";
  EXPECT_EQ(toldOf("<capabilities><device_ports>" + port +
                   "<device_port/></device_ports>"
                   "</capabilities>"),
            Texts{});
  EXPECT_EQ(toldOf("<configuration><wireless><ssid>a</ssid></wireless>\n<wireless/>"
                   "</configuration>"),
            Texts{"2:1 <wireless>: empty, not read"});
}

TEST(Notes, TellOfASharpeningLevelThatComesAgain) {
  std::string const high = "<image_sharpening_level>high</image_sharpening_level>\n";
  std::string const low = "<image_sharpening_level>low</image_sharpening_level>\n";
  EXPECT_EQ(toldOf("<capabilities><image_sharpening_levels>\n" + high + low + high +
                   "</image_sharpening_levels></capabilities>"),
            Texts{"4:1 <image_sharpening_level>: for the second time, overwrites \"high\""});
}

TEST(Notes, TellWhatDecodingDropped) {
  auto const ssid = [](std::string const& text) {
    return toldOf("<get_wireless_status><ssid>" + text + "</ssid></get_wireless_status>");
  };
  EXPECT_EQ(ssid("Tom & Jerry"), Texts{"1:32 <ssid>: \"&\" in the text was dropped or changed"});
  EXPECT_EQ(ssid("a&nbsp;b"), Texts{"1:29 <ssid>: \"&\" in the text was dropped or changed"});
  EXPECT_EQ(ssid("&#1;"), Texts{"1:28 <ssid>: \"&#1;\" in the text was dropped or changed"});
  EXPECT_EQ(ssid("&#xD800;").size(), 1U) << "half a pair";
  EXPECT_EQ(ssid("&#x110000;").size(), 1U) << "beyond Unicode";
  EXPECT_EQ(ssid("a  b"), Texts{"1:29 <ssid>: several blanks in the text became one"});
  EXPECT_EQ(ssid("a\nb").size(), 1U);
  EXPECT_EQ(ssid("Tom &amp; &#74;erry &#x263A;"), Texts{});
  EXPECT_EQ(ssid("a&#x9;&#9;b"), Texts{}) << "a single digit";
  EXPECT_EQ(ssid("&#x0000263A;&#00000074;"), Texts{}) << "eight";
  EXPECT_EQ(ssid("&#x00000263A;").size(), 1U);
  EXPECT_EQ(ssid("&#000000074;").size(), 1U);
  EXPECT_EQ(ssid("  a b  "), Texts{}) << "blanks around a text are not its own";
  EXPECT_EQ(toldOf("<configuration><wireless><key>a & b</key></wireless></configuration>"),
            Texts{"1:33 <key>: the text was dropped or changed"})
      << "nothing of a secret";
}

TEST(Notes, TellOfBytesThatAreNoCharacter) {
  Decoding const decoding =
      decode("<get_wireless_status><ssid>Caf\xE9!</ssid></get_wireless_status>");
  ASSERT_EQ(decoding.notes().size(), 1U);
  Note const note = decoding.notes()[0];
  EXPECT_EQ(kindOf(note), "replaced_bytes");
  EXPECT_EQ(note.offset(), 30U);
  EXPECT_EQ(note.endOffset(), 31U);
  EXPECT_EQ(decoding.readings()[0].record().at("ssid").asText(), "Caf\xEF\xBF\xBD!");
}

TEST(Notes, TellOfWhatStandsBehindTheDocument) {
  EXPECT_EQ(toldOf(status("<error>5</error>") + "\n\nC:\\>"),
            Texts{"4:1 text behind the document is not looked at"});
  EXPECT_EQ(toldOf(status("<error>5</error>") + " \n<!-- done -->\n"), Texts{});
  EXPECT_EQ(toldOf(status("<error>5</error>") + "\n<other/>"),
            Texts{"3:1 <other>: unknown element, skipped"});
}

TEST(Notes, TellOfAFurtherDocument) {
  std::string const text = "<get_job_list/>\n" + status("<error>5</error>") + '\n' +
                           status("<error>6</error>") + "<get_job_list/>";
  auto const toldAs = [&](char const* as) {
    Texts all;
    for (Note const& note : decode(text, as).notes()) all.push_back(told(note));
    return all;
  };
  std::string const status = "4:1 <get_general_status>: a further document, not looked at";
  std::string const list = "5:38 <get_job_list>: a further document, not looked at";
  EXPECT_EQ(toldAs("general-status"),
            (Texts{"1:1 <get_job_list>: unknown element, skipped", status, list}))
      << "the first one stands in front";
  EXPECT_EQ(toldAs(""), (Texts{status, list})) << "one of each is read";
  std::vector<Note> const notes = notesOf(text);
  ASSERT_EQ(notes.size(), 2U);
  EXPECT_EQ(notes[0].id(), "K108");
  EXPECT_EQ(notes[0].path(), "/get_general_status");
}

TEST(Notes, TellOfSurplusEntriesOnce) {
  std::vector<Note> const notes =
      notesOf("<get_job_list>" + repeated("<job><x/></job>", 128) +
              repeated("<job><uuid>1</uuid></job>", 5) + "</get_job_list>");
  ASSERT_FALSE(notes.empty());
  EXPECT_EQ(notes.back().message(), "<job>: more than 128 entries, 5 skipped");
  EXPECT_EQ(notes.back().count(), 5U);
}

TEST(Notes, TellOfWordsInAnotherSpelling) {
  EXPECT_EQ(toldOf("<action>please lock_printer now</action>"),
            Texts{"1:1 <action>: \"please lock_printer now\" is spelled otherwise, taken for "
                  "lock_printer"});
}

TEST(Notes, HaveBeginAndEndInTheHostsBytes) {
  std::string const latin =
      "<?xml version='1.0' encoding='ISO-8859-1'?>\n<get_wireless_status>\xE4"
      "<ssid>\xE9t\xE9</ssid>\n<chann\xE9l>6</chann\xE9l></get_wireless_status>";
  for (Note const& note : notesOf(latin)) {
    std::string const piece = latin.substr(note.offset(), note.endOffset() - note.offset());
    if (kindOf(note) == "unread_text") {
      EXPECT_EQ(piece, "\xE4");
    }
    if (kindOf(note) == "unknown_element") {
      EXPECT_EQ(piece, "<chann\xE9l>6</chann\xE9l>");
      EXPECT_EQ(note.line(), 3);
      EXPECT_EQ(note.column(), 1);
      EXPECT_EQ(note.endColumn(), 21);
      EXPECT_EQ(note.path(), "/get_wireless_status/chann\xC3\xA9l");
    }
  }
  EXPECT_EQ(notesOf(latin).size(), 2U);
  EXPECT_EQ(decode(latin).readings()[0].record().at("ssid").asText(), "\xC3\xA9t\xC3\xA9");
}

TEST(Notes, AreEmptyOfNothing) {
  Note const note;
  EXPECT_EQ(note.id() + note.path() + note.found() + note.kept() + note.message(), "");
  EXPECT_EQ(note.line(), 0);
  EXPECT_TRUE(note.expected().empty());
}

// The kinds.

TEST(FindingKinds, HaveExamplesThatGiveThem) {
  std::set<std::string> ids;
  std::set<std::string> names;
  for (FindingKind const& kind : findingKinds()) {
    SCOPED_TRACE(kind.id());
    EXPECT_TRUE(ids.insert(kind.id()).second);
    EXPECT_TRUE(names.insert(kind.name()).second);
    EXPECT_FALSE(kind.title().empty());
    EXPECT_GT(kind.explanation().size(), 20U);
    Decoding const decoding = decode(kind.example(), kind.exampleAs(), kind.exampleOptions());
    std::vector<Note> const notes = decoding.notes();
    bool const isNoted = std::any_of(notes.begin(), notes.end(), [&](Note const& note) {
      return note.id() == kind.id() && note.severity() == kind.severity();
    });
    bool const isRefused = decoding.refusal().id() == kind.id();
    EXPECT_TRUE(isNoted || isRefused) << decoding.toJson();
    EXPECT_EQ(isRefused, kind.severity() == Severity::error);
  }
  EXPECT_EQ(*ids.begin(), "K001");
  EXPECT_TRUE(ids.contains("K101"));
}

TEST(Notes, QuoteNoAttributeWithTheNameOfASecret) {
  std::string const reply =
      "<configuration><lcd_contrast key='pa55w0rd' val='1' min='0' "
      "max='9'>5</lcd_contrast></configuration>";
  Decoding const decoding = decode(reply);
  ASSERT_TRUE(decoding);
  std::vector<std::string> texts;
  for (Note const& note : decoding.notes()) texts.push_back(note.message());
  EXPECT_EQ(texts, (std::vector<std::string>{"<lcd_contrast>: attribute key is not read",
                                             "<lcd_contrast>: attribute val='1' is not read"}));
}

/// The lines of a table in the documents that begin with an id.
std::vector<std::string> documented() {
  std::ifstream file(std::string(KOVRA_SAMPLES_DIR) + "/../docs/json.md");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("| K", 0) == 0) lines.push_back(line);
  }
  return lines;
}

TEST(FindingKinds, StandInTheDocuments) {
  std::string text;
  for (std::string const& line : documented()) text += line + '\n';
  // Those of broken XML share a line.
  std::set<std::string> const shared = {"K007", "K008", "K009"};
  for (FindingKind const& kind : findingKinds()) {
    EXPECT_NE(text.find('`' + kind.name() + '`'), std::string::npos) << kind.name();
    bool const isShared = shared.contains(kind.id());
    EXPECT_EQ(text.find(kind.id()) == std::string::npos, isShared) << kind.id();
  }
}

}  // namespace
}  // namespace Kovra
