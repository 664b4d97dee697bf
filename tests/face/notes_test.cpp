// What a decoded reply has notes on, through the face: every kind of note, every kind of value.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "kovra.hpp"

namespace Kovra {
namespace {

using Kind = Note::Kind;
using Texts = std::vector<std::string>;

std::vector<Note> notesOf(std::string const& reply, std::string const& as = {}) {
  Decoding const decoding = decode(reply.data(), reply.size(), as);
  EXPECT_EQ(decoding.status, Decoding::Status::decoded) << decoding.description();
  return decoding.notes;
}

/// "LINE:COLUMN sentence"
std::string told(Note const& note) {
  return std::to_string(note.place.line) + ':' + std::to_string(note.place.column) + ' ' +
         note.description();
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
  Kind kind;
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
     Kind::unknownElement,
     "other",
     "",
     "",
     {},
     "<other>: unknown element, skipped"},
    // Words: of a keyword, of a flag, of one of several flags that share a member, of a text.
    {settings("<usb_speed>warp</usb_speed>"),
     Kind::unknownWord,
     "usb_speed",
     "warp",
     "",
     {"full", "high"},
     "<usb_speed>: unknown word \"warp\"; one of: full, high"},
    {"<configuration><ethernet>\n<dhcp>maybe</dhcp></ethernet></configuration>",
     Kind::unknownWord,
     "dhcp",
     "maybe",
     "",
     {"enabled", "yes", "disabled", "no"},
     "<dhcp>: unknown word \"maybe\"; one of: enabled, yes, disabled, no"},
    {"<capabilities><image_sharpening_levels>\n<image_sharpening_level>odd"
     "</image_sharpening_level></image_sharpening_levels></capabilities>",
     Kind::unknownWord,
     "image_sharpening_level",
     "odd",
     "",
     {"off", "normal", "high", "low"},
     "<image_sharpening_level>: unknown word \"odd\"; one of: off, normal, high, low"},
    {"<capabilities>\n<laminator>perhaps</laminator></capabilities>",
     Kind::unknownWord,
     "laminator",
     "perhaps",
     "",
     {"present", "notpresent"},
     "<laminator>: unknown word \"perhaps\"; one of: present, notpresent"},
    // What is no number of the form.
    {status("<error>five</error>"), Kind::notANumber, "error", "five", "", whole,
     "<error>: \"five\" is not a whole decimal number"},
    {status("<error>5x</error>"), Kind::notANumber, "error", "5x", "", whole,
     "<error>: \"5x\" is not a whole decimal number"},
    {"<printer_id>\n<printer_serial>x</printer_serial></printer_id>", Kind::notANumber,
     "printer_serial", "x", "", whole, "<printer_serial>: \"x\" is not a whole decimal number"},
    {"<get_sensor_status><sensor_values>\n<voltage_24>high</voltage_24></sensor_values>"
     "</get_sensor_status>",
     Kind::notANumber,
     "voltage_24",
     "high",
     "",
     {"a decimal number"},
     "<voltage_24>: \"high\" is not a decimal number"},
    {status("<alarms>1A</alarms>"), Kind::notANumber, "alarms", "1A", "", hexadecimal,
     "<alarms>: \"1A\" is not a hexadecimal number with 0x before it"},
    {"<diffie_hellman>\n<modulus>prime</modulus></diffie_hellman>",
     Kind::notANumber,
     "modulus",
     "prime",
     "",
     {"a whole number, decimal or with 0x before it"},
     "<modulus>: \"prime\" is not a whole number, decimal or with 0x before it"},
    {settings("<physical_address>1:2:3</physical_address>"), Kind::notANumber, "physical_address",
     "1:2:3", "", address,
     "<physical_address>: \"1:2:3\" is not six hexadecimal bytes with colons between them"},
    {"<configuration><ethernet>\n<ip_address>300.1.1.1</ip_address></ethernet></configuration>",
     Kind::notANumber, "ip_address", "300.1.1.1", "", ipv4,
     "<ip_address>: \"300.1.1.1\" is not an IPv4 address, four numbers with dots between them"},
    // Numbers that their member cannot hold, and those beyond their bounds.
    {status("<param_chg_counter>70000</param_chg_counter>"),
     Kind::changedNumber,
     "param_chg_counter",
     "70000",
     "4464",
     {},
     "<param_chg_counter>: \"70000\" does not fit, kept as 4464"},
    {status("<error>4294967301</error>"),
     Kind::changedNumber,
     "error",
     "4294967301",
     "5",
     {},
     "<error>: \"4294967301\" does not fit, kept as 5"},
    {status("<alarms>0x1FFFFFFFF</alarms>"),
     Kind::changedNumber,
     "alarms",
     "0x1FFFFFFFF",
     "0xffffffff",
     {},
     "<alarms>: \"0x1FFFFFFFF\" does not fit, kept as 0xffffffff"},
    {"<get_sensor_status><sensor_values>\n<voltage_24>1e99</voltage_24></sensor_values>"
     "</get_sensor_status>",
     Kind::changedNumber,
     "voltage_24",
     "1e99",
     "inf",
     {},
     "<voltage_24>: \"1e99\" does not fit, kept as inf"},
    {settings("<lcd_contrast min=\"0\" max=\"63\">70</lcd_contrast>"),
     Kind::changedNumber,
     "lcd_contrast",
     "70",
     "63",
     {},
     "<lcd_contrast>: \"70\" does not fit, kept as 63"},
    {"<configuration><ribbon_motor_parameters><takeup_motor>\n<S0 min=\"0.5\" max=\"1\">0.25</S0>"
     "</takeup_motor></ribbon_motor_parameters></configuration>",
     Kind::changedNumber,
     "S0",
     "0.25",
     "0.5",
     {},
     "<S0>: \"0.25\" does not fit, kept as 0.5"},
    // Texts that are too long: of a member, and joined of several elements.
    {"<printer_id>\n<oem_country>" + digits + "</oem_country></printer_id>",
     Kind::cutText,
     "oem_country",
     digits,
     "0123456",
     {},
     "<oem_country>: text too long, cut to \"0123456\""},
    // Empty elements: of a value, of a keyword that is stored all the same, of a setting, of a
    // root.
    {status("<error/>"), Kind::emptyElement, "error", "", "", {}, "<error>: empty, not read"},
    {settings("<error_control/>"),
     Kind::emptyElement,
     "error_control",
     "",
     "",
     {},
     "<error_control>: empty, not read"},
    {settings("<lcd_contrast min=\"0\" max=\"63\"/>"),
     Kind::emptyElement,
     "lcd_contrast",
     "",
     "",
     {},
     "<lcd_contrast>: empty, not read"},
    {"\n<nonce/>", Kind::emptyElement, "nonce", "", "", {}, "<nonce>: empty, not read"},
    // Attributes: one bound of a setting, both, and those of a sensor.
    {settings("<lcd_contrast max=\"63\">5</lcd_contrast>"),
     Kind::noAttribute,
     "lcd_contrast",
     "",
     "",
     {"min"},
     "<lcd_contrast>: no number in attribute \"min\", not read"},
    {settings("<lcd_contrast>0</lcd_contrast>"),
     Kind::noAttribute,
     "lcd_contrast",
     "",
     "",
     {"min", "max"},
     "<lcd_contrast>: no number in attribute \"min, max\", not read"},
    {"<get_sensor_status><doors>\n<head_open reading=\"x\"/></doors></get_sensor_status>",
     Kind::noAttribute,
     "head_open",
     "",
     "",
     {"reading"},
     "<head_open>: no number in attribute \"reading\", not read"},
    // Lists that are full.
    {"<get_log_cleaning_history>" + repeated("<cleaning/>", 32) +
         "\n<cleaning/></get_log_cleaning_history>",
     Kind::surplusEntry,
     "cleaning",
     "",
     "32",
     {},
     "<cleaning>: more than 32 entries, skipped"},
    {"<get_job_list>" + repeated("<job><uuid>1</uuid></job>", 128) + "\n<job/></get_job_list>",
     Kind::surplusEntry,
     "job",
     "",
     "128",
     {},
     "<job>: more than 128 entries, skipped"},
};

TEST(Notes, TellWhatWasFoundWhatIsKeptAndWhatWouldBeRight) {
  for (Noted const& one : noted) {
    std::vector<Note> const notes = notesOf(one.reply);
    SCOPED_TRACE(one.sentence);
    ASSERT_EQ(notes.size(), 1U) << one.reply;
    Note const& note = notes.front();
    EXPECT_EQ(note.kind, one.kind);
    EXPECT_EQ(note.place.line, 2);
    EXPECT_EQ(note.place.column, 1);
    EXPECT_EQ(note.element, one.element);
    EXPECT_EQ(note.found, one.found);
    EXPECT_EQ(note.kept, one.kept);
    EXPECT_EQ(note.expected, one.expected);
    EXPECT_EQ(note.description(), one.sentence);
  }
}

// Only that of more notes than are listed has a test of its own.
TEST(Notes, AreTestedOfEveryKind) {
  std::set<Kind> kinds;
  for (Noted const& one : noted) kinds.insert(one.kind);
  EXPECT_EQ(kinds.size(), static_cast<std::size_t>(Kind::unlisted));
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
  EXPECT_EQ(notes[0].found, kept);
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
    EXPECT_EQ(notes[0].found + notes[0].kept, "") << sentence;
    EXPECT_TRUE(notes[0].expected.empty()) << sentence;
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
    text += "<lcd_contrast/>\n";
    std::string const place = std::to_string(line) + ":1 <lcd_contrast>: ";
    expected.push_back(place + "no number in attribute \"min, max\", not read");
    expected.push_back(place + "empty, not read");
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
  for (int const more : {1, 3}) {
    std::vector<Note> const notes = notesOf(status(repeated("<other/>", 1000 + more)));
    ASSERT_EQ(notes.size(), 1001U);
    EXPECT_EQ(notes[999].kind, Kind::unknownElement);
    EXPECT_EQ(notes.back().kind, Kind::unlisted);
    EXPECT_EQ(notes.back().kept, std::to_string(more));
    EXPECT_EQ(notes.back().element + notes.back().found, "");
    EXPECT_EQ(told(notes.back()), "0:0 " + std::to_string(more) + " more notes");
  }
}

TEST(Notes, HaveWordsWithoutATextToTell) {
  auto const sentence = [](Kind kind, Texts const& expected = {}) {
    Note note;
    note.kind = kind;
    note.element = "e";
    note.expected = expected;
    return note.description();
  };
  EXPECT_EQ(sentence(Kind::unknownWord, {"a", "b"}), "<e>: unknown word; one of: a, b");
  EXPECT_EQ(sentence(Kind::notANumber, {"a number"}), "<e>: the text is not a number");
  EXPECT_EQ(sentence(Kind::changedNumber), "<e>: the text does not fit");
  EXPECT_EQ(sentence(Kind::cutText), "<e>: text too long");
  EXPECT_EQ(sentence(static_cast<Kind>(99)), "") << "no kind";
}

}  // namespace
}  // namespace Kovra
