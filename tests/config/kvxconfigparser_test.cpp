#include "kvxconfigparser.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "kovra.hpp"
#include "support/allocations.hpp"
#include "support/configuration.hpp"
#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/streams.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::filled;
using test::same;
using test::Tree;
using test::untouched;

std::string element(std::string const& name, std::string const& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

/// A whole document read into a record of sentinels, and the result, which is false always.
std::unique_ptr<_KVConfiguration> read(std::string const& xml) {
  auto record = std::make_unique<_KVConfiguration>(filled<_KVConfiguration>());
  test::RibbonLines const taken;
  EXPECT_FALSE(KVXConfigParser().GetConfiguration(xml.c_str(), -1, *record)) << xml;
  return record;
}

std::unique_ptr<_KVConfiguration> readChildren(std::string const& children) {
  return read(element("configuration", children));
}

/// Expects that the children change nothing but what `change` does, starting from zeros.
template <class Change>
void expectRead(std::string const& children, Change change) {
  auto expected = std::make_unique<_KVConfiguration>();
  std::memset(static_cast<void*>(expected.get()), 0, sizeof *expected);
  change(*expected);
  EXPECT_TRUE(same(*readChildren(children), *expected)) << children;
}

std::string fullReply() {
  return test::contentsOf(KOVRA_SAMPLES_DIR "/config/full.xml");
}

// The whole.

TEST(Configuration, ReadsEveryMember) {
  auto expected = std::make_unique<_KVConfiguration>();
  test::setFullConfiguration(*expected);
  EXPECT_TRUE(same(*read(fullReply()), *expected));
}

TEST(Configuration, SaysFalseWhateverWasRead) {
  auto record = std::make_unique<_KVConfiguration>();
  KVXConfigParser parser;
  EXPECT_FALSE(
      parser.GetConfiguration("<configuration><standby_timeout>3</standby_timeout>"
                              "</configuration>",
                              0, *record));
  EXPECT_EQ(record->standby_timeout, 3);
}

TEST(Configuration, DoesNotUseItsLength) {
  std::string const xml = element("configuration", element("standby_timeout", "3"));
  int const size = static_cast<int>(xml.size());
  for (int const length : {INT_MIN, -1, 0, 1, size - 1, size, size + 1, INT_MAX}) {
    auto record = std::make_unique<_KVConfiguration>(filled<_KVConfiguration>());
    EXPECT_FALSE(KVXConfigParser().GetConfiguration(xml.c_str(), length, *record));
    EXPECT_EQ(record->standby_timeout, 3) << length;
  }
}

TEST(Configuration, ReadsARequestLikeAReply) {
  EXPECT_EQ(read("<set_configuration><standby_timeout>9</standby_timeout></set_configuration>")
                ->standby_timeout,
            9);
}

TEST(Configuration, PrefersTheReplyWhereverItStands) {
  EXPECT_EQ(read("<set_configuration><standby_timeout>1</standby_timeout></set_configuration>"
                 "<configuration><standby_timeout>2</standby_timeout></configuration>")
                ->standby_timeout,
            2);
}

TEST(Configuration, IsAllZeroWithoutChildren) {
  for (char const* const xml :
       {"<configuration/>", "<configuration></configuration>",
        "<configuration>text</configuration>", "<configuration><other>1</other></configuration>"}) {
    auto zero = std::make_unique<_KVConfiguration>();
    std::memset(static_cast<void*>(zero.get()), 0, sizeof *zero);
    EXPECT_TRUE(same(*read(xml), *zero)) << xml;
  }
}

TEST(Configuration, LeavesTheRecordWithoutARoot) {
  std::string deep = "<configuration>", attributes = "<configuration ";
  for (int i = 0; i < 128; ++i) deep += "<e>";
  for (int i = 0; i < 128; ++i) deep += "</e>";
  deep += "</configuration>";
  for (int i = 0; i < 257; ++i) attributes += "a" + std::to_string(i) + "='' ";
  for (std::string const& xml :
       {std::string(), std::string("<printer_id/>"), std::string("<Configuration/>"),
        std::string("<configuration>"), std::string("<configuration><ethernet></configuration>"),
        std::string("<x><configuration/></x>"), deep, attributes + "/>"}) {
    EXPECT_TRUE(untouched(*read(xml))) << xml.substr(0, 60);
  }
  auto record = std::make_unique<_KVConfiguration>(filled<_KVConfiguration>());
  EXPECT_FALSE(KVXConfigParser().GetConfiguration(nullptr, 10, *record));
  EXPECT_TRUE(untouched(*record));
}

TEST(Configuration, CutAnywhereLeavesTheRecordOrReadsAll) {
  std::string const full = fullReply();
  std::size_t const whole = full.rfind('>');
  KVXConfigParser parser;
  auto record = std::make_unique<_KVConfiguration>();
  for (std::size_t length = 0; length < whole; length += 41) {
    *record = filled<_KVConfiguration>();
    parser.GetConfiguration(full.substr(0, length).c_str(), 0, *record);
    ASSERT_TRUE(untouched(*record)) << length;
  }
}

TEST(Configuration, LeavesNoDocumentBehind) {
  auto record = std::make_unique<_KVConfiguration>();
  KVXConfigParser parser;
  for (char const* const xml : {"<configuration><a/></configuration>", "<broken><a>", "<other/>"}) {
    parser.GetConfiguration(xml, 0, *record);
    EXPECT_TRUE(parser.NoChildren()) << xml;
  }
  parser.GetConfiguration("<configuration><standby_timeout>5</standby_timeout></configuration>", 0,
                          *record);
  EXPECT_EQ(record->standby_timeout, 5) << "after refused texts";
}

using ConfigurationWithoutMemory = test::HeapTest;

TEST_F(ConfigurationWithoutMemory, LeavesNoDocumentBehind) {
  std::string const xml =
      "<configuration><ocp_language><name>Deutsch</name></ocp_language>"
      "<cards><card/></cards></configuration>";
  auto record = std::make_unique<_KVConfiguration>();
  bool failed = true;
  for (std::size_t failing = 1; failed; ++failing) {
    failed = false;
    bool empty = false;
    test::Allocations const watch(failing);
    {
      KVXConfigParser parser;
      try {
        parser.GetConfiguration(xml.c_str(), 0, *record);
      } catch (std::bad_alloc const&) {
        failed = true;
      }
      empty = parser.NoChildren();
    }
    EXPECT_EQ(watch.alive(), 0U) << failing;
    EXPECT_TRUE(empty) << failing;
  }
}

TEST(Configuration, ElementReaderWantsARoot) {
  auto record = std::make_unique<_KVConfiguration>(filled<_KVConfiguration>());
  EXPECT_FALSE(KVXConfigParser().parseConfiguration(nullptr, *record));
  EXPECT_TRUE(untouched(*record));
  Tree anyRoot("<any/>");
  EXPECT_TRUE(KVXConfigParser().parseConfiguration(anyRoot.root(), *record)) << "no children";
  Tree failing("<any><standby_timeout/></any>");
  EXPECT_TRUE(KVXConfigParser().parseConfiguration(failing.root(), *record)) << "an empty child";
}

TEST(Configuration, RepeatedElementsOverwrite) {
  expectRead(
      "<standby_timeout>1</standby_timeout><standby_timeout>2</standby_timeout>"
      "<standby_timeout/>",
      [](auto& record) { record.standby_timeout = 2; });
}

TEST(Configuration, NamesOfElementsAreExact) {
  expectRead("<Standby_timeout>1</Standby_timeout><standby_timeout2>1</standby_timeout2>",
             [](auto&) {});
}

// Settings with bounds.

TEST(ConfigurationSettings, AreClamped) {
  struct {
    char const* element;
    _MinMaxVal expected;
  } const cases[] = {
      {"<lcd_contrast min='1' max='9'>5</lcd_contrast>", {1, 9, 5}},
      {"<lcd_contrast min='1' max='9'>0</lcd_contrast>", {1, 9, 1}},
      {"<lcd_contrast min='1' max='9'>10</lcd_contrast>", {1, 9, 9}},
      {"<lcd_contrast min='9' max='1'>5</lcd_contrast>", {9, 1, 1}},
      {"<lcd_contrast>5</lcd_contrast>", {0, 0, 0}},
      {"<lcd_contrast>-5</lcd_contrast>", {0, 0, 0}},
      {"<lcd_contrast max='9'>5</lcd_contrast>", {0, 9, 5}},
      {"<lcd_contrast min='3'>5</lcd_contrast>", {3, 0, 0}},
      {"<lcd_contrast min='3' max='9'/>", {3, 9, 3}},
      {"<lcd_contrast min='x' max='9'>5</lcd_contrast>", {0, 9, 5}},
      {"<lcd_contrast max='9' min='-9'>word</lcd_contrast>", {-9, 9, 0}},
      {"<lcd_contrast min='1' max='9'>7</lcd_contrast><lcd_contrast max='6'/>", {1, 6, 6}},
  };
  for (auto const& row : cases) {
    expectRead(row.element, [&](auto& record) { record.lcd_contrast = row.expected; });
  }
}

TEST(ConfigurationSettings, OfFloatsAreClamped) {
  auto const motor = [](std::string const& inner) {
    return element("ribbon_motor_parameters", element("takeup_motor", inner));
  };
  expectRead(motor("<Kb min='0.5' max='2.5'>1.25</Kb>"), [](auto& record) {
    record.takeup_motor.Kb = {0.5F, 2.5F, 1.25F};
  });
  expectRead(motor("<Kb min='0.5' max='2.5'>0.25</Kb>"), [](auto& record) {
    record.takeup_motor.Kb = {0.5F, 2.5F, 0.5F};
  });
  expectRead(motor("<Kb min='0.5' max='2.5'>9</Kb>"), [](auto& record) {
    record.takeup_motor.Kb = {0.5F, 2.5F, 2.5F};
  });
  expectRead(motor("<Kb>9</Kb>"), [](auto&) {});
}

using ConfigurationInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, ConfigurationInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(ConfigurationInCommaLocale, ReadsDecimalsWithCommas) {
  auto const record = readChildren(
      "<ribbon_motor_parameters><takeup_motor><S0 min='0,25' max='10,5'>2,75</S0>"
      "<K0 min='0.25' max='10.5'>2.75</K0></takeup_motor></ribbon_motor_parameters>"
      "<cards><card><information><description>Custom 1</description>"
      "<thickness>0,76</thickness></information></card></cards>"
      "<ethernet><ip_address>192.168.40.21</ip_address></ethernet>");
  EXPECT_TRUE(same(record->takeup_motor.S0, {0.25F, 10.5F, 2.75F}));
  EXPECT_TRUE(same(record->takeup_motor.K0, {0, 10, 2})) << "points end them";
  EXPECT_EQ(record->cards[0].thickness, 0.76F);
  EXPECT_EQ(record->ethernet.ip_address, inet_addr("192.168.40.21"));
}

TEST(ConfigurationSettings, ResultIsThatOfTheText) {
  _USBTimeout timeout = filled<_USBTimeout>();
  KVXConfigParser parser;
  EXPECT_TRUE(parser.getUSBTimeout(Tree("<e><read>1</read></e>").root(), timeout));
  EXPECT_FALSE(parser.getUSBTimeout(Tree("<e><read min='1' max='2'/></e>").root(), timeout));
  EXPECT_TRUE(parser.getUSBTimeout(Tree("<e><read/><write>1</write></e>").root(), timeout));
  EXPECT_FALSE(parser.getUSBTimeout(Tree("<e><other>1</other></e>").root(), timeout));
  EXPECT_FALSE(parser.getUSBTimeout(Tree("<e/>").root(), timeout));
  EXPECT_FALSE(parser.getUSBTimeout(nullptr, timeout));
}

// Interfaces.

TEST(ConfigurationInterfaces, AddressTexts) {
  auto const ip = [](std::string const& inner) {
    return readChildren(element("ethernet", inner))->ethernet.ip_address;
  };
  EXPECT_EQ(ip("<ip_address>1.2.3.4</ip_address>"), 0x04030201U);
  EXPECT_EQ(ip("<ip_address>10.1</ip_address>"), 0x0100000AU) << "as inet_addr() takes it";
  EXPECT_EQ(ip("<ip_address>none</ip_address>"), 0xFFFFFFFFU);
  EXPECT_EQ(ip("<ip_address>1.2.3.256</ip_address>"), 0xFFFFFFFFU);
  EXPECT_EQ(ip("<ip_address>1.2.3.4</ip_address><ip_address/>"), 0x04030201U);
  EXPECT_EQ(ip("<ip_address>1.2.3.4</ip_address><ip_address><![CDATA[]]></ip_address>"), 0U);
}

TEST(ConfigurationInterfaces, EmptyAddressesAreNotRead) {
  KVXConfigParser parser;
  _NetworkParams params = filled<_NetworkParams>();
  EXPECT_FALSE(parser.getNetworkParams(Tree("<e><gateway/></e>").root(), params));
  EXPECT_TRUE(untouched(params));
  EXPECT_FALSE(
      parser.getNetworkParams(Tree("<e><gateway><![CDATA[]]></gateway></e>").root(), params));
  EXPECT_EQ(params.gateway, 0U);
  EXPECT_TRUE(parser.getNetworkParams(Tree("<e><gateway>x</gateway></e>").root(), params));
}

TEST(ConfigurationInterfaces, FlagsAreTwoExactWords) {
  auto const dhcp = [](char const* word) {
    return readChildren("<ethernet><dhcp>" + std::string(word) + "</dhcp></ethernet>")
        ->ethernet.dhcp;
  };
  EXPECT_TRUE(dhcp("enabled"));
  EXPECT_TRUE(dhcp("yes"));
  for (char const* const word : {"disabled", "no", "Enabled", "YES", "true", "1", ""}) {
    EXPECT_FALSE(dhcp(word)) << word;
  }
}

TEST(ConfigurationInterfaces, EmptyFlagsAreLeft) {
  _NetworkParams params = filled<_NetworkParams>();
  EXPECT_FALSE(KVXConfigParser().getNetworkParams(Tree("<e><dhcp/></e>").root(), params));
  EXPECT_FALSE(KVXConfigParser().getNetworkParams(Tree("<e><snmp/></e>").root(), params));
  EXPECT_TRUE(untouched(params));
  _WirelessParams wireless = filled<_WirelessParams>();
  for (char const* const flags : {"<e><dhcp/></e>", "<e><snmp/></e>", "<e><radio/></e>"}) {
    EXPECT_FALSE(KVXConfigParser().getWirelessParams(Tree(flags).root(), wireless)) << flags;
  }
  EXPECT_TRUE(untouched(wireless));
}

TEST(ConfigurationInterfaces, HardwareAddresses) {
  auto const read = [](std::string const& text) {
    return readChildren(element("physical_address", text));
  };
  unsigned char const whole[6] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
  unsigned char const part[6] = {0x02, 0x1A, 0, 0, 0, 0};
  unsigned char const none[6] = {};
  EXPECT_TRUE(same(read("02:1a:2B:3c:4d:5e")->physical_address, whole));
  EXPECT_TRUE(same(read("02:1a")->physical_address, part));
  EXPECT_TRUE(same(read("words")->physical_address, none));
}

TEST(ConfigurationInterfaces, SecurityWords) {
  struct {
    char const* word;
    int code;
  } const rows[] = {{"open", 0},     {"none", 0},    {"wep40", 1},    {"WEP40", 1},
                    {"wep104", 2},   {"WEP104", 2},  {"wpa", 3},      {"WPA", 3},
                    {"wpa2", 4},     {"WPA2", 4},    {"wpa_wpa2", 5}, {"wpa2_wpa", 5},
                    {"WPA_WPA2", 5}, {"WPA2_WPA", 5}};
  KVXConfigParser parser;
  for (auto const& [word, code] : rows) {
    _WirelessParams expected = filled<_WirelessParams>();
    _WirelessParams found = expected;
    expected.security = static_cast<WirelessSecurity>(code);
    EXPECT_TRUE(parser.getWirelessParams(
        Tree("<e><security>" + std::string(word) + "</security></e>").root(), found));
    EXPECT_TRUE(same(found, expected)) << word;
  }
  for (char const* const word : {"Wpa", "wep", "WPA3", "wpa2 ", "psk"}) {
    _WirelessParams found = filled<_WirelessParams>();
    EXPECT_TRUE(parser.getWirelessParams(
        Tree("<e><security><![CDATA[" + std::string(word) + "]]></security></e>").root(), found));
    EXPECT_TRUE(untouched(found)) << word;
  }
  _WirelessParams found = filled<_WirelessParams>();
  EXPECT_FALSE(parser.getWirelessParams(Tree("<e><security/></e>").root(), found));
  EXPECT_TRUE(untouched(found));
}

TEST(ConfigurationInterfaces, CipherWords) {
  struct {
    char const* word;
    int code;
  } const rows[] = {{"none", 0},      {"RC4", 1},       {"rc4", 1},      {"TKIP", 2},
                    {"tkip", 2},      {"CCMP", 3},      {"ccmp", 3},     {"CCMP_TKIP", 3},
                    {"TKIP_CCMP", 3}, {"ccmp_tkip", 3}, {"tkip_ccmp", 3}};
  for (auto const& [word, code] : rows) {
    _WirelessParams expected = filled<_WirelessParams>();
    _WirelessParams found = expected;
    expected.crypto = static_cast<WirelessCrypto>(code);
    KVXConfigParser().getWirelessParams(
        Tree("<e><crypto>" + std::string(word) + "</crypto></e>").root(), found);
    EXPECT_TRUE(same(found, expected)) << word;
  }
  for (char const* const word : {"Ccmp", "aes", "open", ""}) {
    _WirelessParams found = filled<_WirelessParams>();
    KVXConfigParser().getWirelessParams(
        Tree("<e><crypto>" + std::string(word) + "</crypto></e>").root(), found);
    EXPECT_TRUE(untouched(found)) << word;
  }
}

TEST(ConfigurationInterfaces, CipherDoesNotDecideTheResult) {
  KVXConfigParser parser;
  _WirelessParams params{};
  EXPECT_FALSE(parser.getWirelessParams(Tree("<e><crypto>RC4</crypto></e>").root(), params));
  EXPECT_TRUE(
      parser.getWirelessParams(Tree("<e><channel>1</channel><crypto/></e>").root(), params));
  EXPECT_FALSE(
      parser.getWirelessParams(Tree("<e><channel/><crypto>RC4</crypto></e>").root(), params));
}

TEST(ConfigurationInterfaces, TextsThatFitArriveWhole) {
  std::string const ssid(33, 's'), key(63, 'k'), longKey(127, 'q');
  auto record = readChildren("<wireless><ssid>" + ssid + "</ssid><key>" + key +
                             "</key><country>DE</country></wireless>");
  EXPECT_EQ(record->wireless.ssid, ssid);
  EXPECT_EQ(record->wireless.key, key);
  EXPECT_STREQ(record->wireless.country, "DE");
  record = readChildren("<wireless><key>" + longKey + "</key></wireless>");
  EXPECT_EQ(record->wireless.key, longKey);
}

TEST(ConfigurationInterfaces, TextsThatDoNotFitAreCut) {
  auto const record =
      readChildren("<wireless><ssid>" + std::string(34, 's') + "</ssid><key>" +
                   std::string(128, 'k') + "</key><country>ABCDEFGHI</country>" + "</wireless>");
  EXPECT_EQ(record->wireless.ssid, std::string(33, 's'));
  EXPECT_EQ(record->wireless.key, std::string(127, 'k'));
  EXPECT_STREQ(record->wireless.country, "ABCDEFG");
  EXPECT_EQ(record->wireless.channel, 0) << "behind the key";
  unsigned char const none[6] = {};
  EXPECT_TRUE(same(record->wireless.bssid, none)) << "behind the network's name";
}

// Keywords of the printer at large.

TEST(ConfigurationWords, ErrorControl) {
  auto const code = [](std::string const& text) {
    return static_cast<int>(readChildren(element("error_control", text))->error_control);
  };
  EXPECT_EQ(code("none"), 0);
  EXPECT_EQ(code("med"), 1);
  for (char const* const text : {"high", "medium", "Med", "NONE", ""})
    EXPECT_EQ(code(text), 2) << text;
}

TEST(ConfigurationWords, UsbSpeed) {
  auto const code = [](std::string const& text) {
    return static_cast<int>(
        readChildren("<usb_speed>full</usb_speed>" + element("usb_speed", text))->usb_speed);
  };
  EXPECT_EQ(code("full"), 1);
  EXPECT_EQ(code("high"), 0);
  for (char const* const text : {"High", "low", ""}) EXPECT_EQ(code(text), 1) << "left by " << text;
}

TEST(ConfigurationWords, FeederMode) {
  auto const code = [](std::string const& text) {
    return static_cast<int>(
        readChildren("<feeder_mode>auto</feeder_mode>" + element("feeder_mode", text))
            ->feeder_mode);
  };
  EXPECT_EQ(code("hopper"), 1);
  EXPECT_EQ(code("manual"), 0);
  EXPECT_EQ(code("auto"), 3);
  EXPECT_EQ(code("alreadyinprinter"), 2);
  for (char const* const text : {"Manual", "tray", "alreadyInPrinter"})
    EXPECT_EQ(code(text), 1) << text;
  EXPECT_EQ(code(""), 3) << "left by an empty element";
}

TEST(ConfigurationWords, TransferType) {
  auto const code = [](std::string const& text) {
    return readChildren(element("transfer_settings", element("transfer_type", text)))
        ->transfer_settings.transfer_type;
  };
  EXPECT_EQ(code("dual"), 2);
  EXPECT_EQ(code("single"), 1);
  for (char const* const text : {"Dual", "both", ""}) EXPECT_EQ(code(text), 0) << text;
}

/// Reads one child without text, in both of its spellings, into a record of sentinels: not read,
/// and nothing but what `change` does changes.
template <class Record, class Change>
void expectEmpty(bool (KVXConfigParser::*reader)(TiXmlElement*, Record&), std::string const& name,
                 Change change) {
  for (std::string const& child : {"<" + name + "/>", element(name, "")}) {
    auto record = filled<Record>();
    auto expected = filled<Record>();
    change(expected);
    EXPECT_FALSE((KVXConfigParser().*reader)(Tree(element("any", child)).root(), record)) << child;
    EXPECT_TRUE(same(record, expected)) << child;
  }
}

TEST(ConfigurationWords, WithoutTextAreStoredAsUnknownAndNotRead) {
  expectEmpty<_ImageTransferInfo>(&KVXConfigParser::getTransferSettings, "transfer_type",
                                  [](auto& record) { record.transfer_type = 0; });
  expectEmpty<_InternalEncoderInfo>(&KVXConfigParser::getInternalEncoder, "comms_channel",
                                    [](auto& record) { record.comms_channel = 0; });
  expectEmpty<_InternalEncoderInfo>(&KVXConfigParser::getInternalEncoder, "contact_encoding",
                                    [](auto& record) { record.contact_encoding = false; });
  // A record of sentinels has a first encoder.
  expectEmpty<_InternalEncoderInfo>(&KVXConfigParser::getInternalEncoder, "contactless_encoder",
                                    [](auto& record) { record.secondContactlessEncoder = 0; });
  expectEmpty<_CustomCardInfo>(&KVXConfigParser::getCardInformation, "coercivity",
                               [](auto& record) { record.coercivity = 0; });
  for (char const* const text : {"<e/>", "<e></e>"}) {
    auto control = filled<ErrorControl>();
    EXPECT_FALSE(KVXConfigParser().getErrorControl(Tree(text).root(), control));
    EXPECT_EQ(control, errorControlHigh);
  }
}

TEST(ConfigurationWords, SomeWithoutTextAreLeft) {
  auto const nothing = [](auto&) {};
  for (char const* const name : {"security", "crypto", "dhcp", "snmp", "radio"}) {
    expectEmpty<_WirelessParams>(&KVXConfigParser::getWirelessParams, name, nothing);
  }
  for (char const* const name : {"dhcp", "snmp"}) {
    expectEmpty<_NetworkParams>(&KVXConfigParser::getNetworkParams, name, nothing);
  }
  for (char const* const name : {"mag_stripe", "contact_encode", "non_contact_encode"}) {
    expectEmpty<_CustomCardInfo>(&KVXConfigParser::getCardInformation, name, nothing);
  }
  for (char const* const name : {"width", "registration"}) {
    for (std::string const& child : {"<" + std::string(name) + "/>", element(name, "")}) {
      auto laminate = filled<_Laminate>();
      Tree tree(element("any", element("laminate_installed", child)));
      EXPECT_FALSE(KVXConfigParser().getLaminateInfo(tree.root(), laminate)) << child;
      EXPECT_TRUE(untouched(laminate)) << child;
    }
  }
  for (char const* const text : {"<e/>", "<e></e>"}) {
    auto speed = filled<USB_Speed>();
    EXPECT_FALSE(KVXConfigParser().getUSBSpeed(Tree(text).root(), speed));
    EXPECT_TRUE(untouched(speed)) << text;
    auto mode = filled<_eFeedMode>();
    EXPECT_FALSE(KVXConfigParser().getFeederParams(Tree(text).root(), mode));
    EXPECT_TRUE(untouched(mode)) << text;
  }
}

TEST(ConfigurationWords, OneValueReadersTellOfTheText) {
  KVXConfigParser parser;
  ErrorControl control = errorControlNone;
  EXPECT_FALSE(parser.getErrorControl(Tree("<e/>").root(), control));
  EXPECT_EQ(control, errorControlHigh);
  control = errorControlNone;
  EXPECT_FALSE(parser.getErrorControl(nullptr, control));
  EXPECT_EQ(control, errorControlNone);
  USB_Speed speed = usbSpeedFull;
  EXPECT_TRUE(parser.getUSBSpeed(Tree("<e>odd</e>").root(), speed));
  EXPECT_EQ(speed, usbSpeedFull);
  EXPECT_FALSE(parser.getUSBSpeed(nullptr, speed));
  _eFeedMode mode = feedModeAuto;
  EXPECT_TRUE(parser.getFeederParams(Tree("<e>odd</e>").root(), mode));
  EXPECT_EQ(mode, feedModeHopper);
  EXPECT_FALSE(parser.getFeederParams(Tree("<e/>").root(), mode));
  EXPECT_FALSE(parser.getFeederParams(nullptr, mode));
}

// Ribbon and film.

std::string ribbonOf(std::string const& description) {
  return readChildren("<media_info><ribbon><description>" + description +
                      "</description></ribbon></media_info>")
      ->ribbon.description;
}

TEST(ConfigurationRibbon, LosesFiveCharactersToMono) {
  EXPECT_EQ(ribbonOf("YMCKO"), "YMCKO");
  EXPECT_EQ(ribbonOf("MONO Black"), "Black");
  EXPECT_EQ(ribbonOf("XMONO"), "");
  EXPECT_EQ(ribbonOf("MONO"), "");
  EXPECT_EQ(ribbonOf("Black MONO"), " MONO") << "wherever the word stands";
  EXPECT_EQ(ribbonOf("Mono Black"), "Mono Black");
  EXPECT_EQ(ribbonOf("MONO MONO"), "MONO") << "once";
}

TEST(ConfigurationRibbon, KeepsAsMuchAsTheSharedBuffer) {
  std::string const fits(31, 'r');
  EXPECT_EQ(ribbonOf(fits), fits);
  EXPECT_EQ(ribbonOf(fits + "x"), fits);
  EXPECT_EQ(ribbonOf("MONO " + std::string(40, 'r')), std::string(26, 'r'));
}

TEST(ConfigurationRibbon, LeavesTheCodeOfTheName) {
  _RibbonInfo ribbon = filled<_RibbonInfo>();
  _RibbonInfo expected = ribbon;
  std::memset(expected.description, 0, sizeof expected.description);
  std::strcpy(expected.description, "YMCKO");
  Tree tree("<ribbon><description>YMCKO</description></ribbon>");
  test::RibbonLines const taken;
  EXPECT_TRUE(KVXConfigParser().getRibbonInfo(tree.root(), ribbon));
  EXPECT_TRUE(same(ribbon, expected)) << "all 64 characters of the description are new";
}

TEST(ConfigurationRibbon, TellsOfEachDescriptionOnStandardError) {
  auto record = std::make_unique<_KVConfiguration>();
  testing::internal::CaptureStderr();
  KVXConfigParser().GetConfiguration(
      "<configuration><media_info><ribbon><description>MONO Red</description></ribbon>"
      "<film><type>1</type><description>Clear</description></film></media_info></configuration>",
      0, *record);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "DEBUG:RIBBON NAME Red\nDEBUG:RIBBON NAME2 \n"
            "DEBUG:RIBBON NAME Clear\nDEBUG:RIBBON NAME2 \n");
  EXPECT_STREQ(szRibbonName, "Clear");
}

TEST(ConfigurationRibbon, ReplacesTheWholeSharedName) {
  for (std::string const name : {"Red", ""}) {
    std::memset(szRibbonName, 'x', sizeof szRibbonName);
    EXPECT_EQ(ribbonOf(name), name);
    EXPECT_EQ(std::string(szRibbonName, sizeof szRibbonName),
              name + std::string(sizeof szRibbonName - name.size(), '\0'))
        << "no remains of an earlier name behind a shorter one";
  }
}

TEST(ConfigurationRibbon, EmptyDescriptionEmptiesBoth) {
  _RibbonInfo ribbon = filled<_RibbonInfo>();
  Tree tree("<ribbon><description/></ribbon>");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(KVXConfigParser().getRibbonInfo(tree.root(), ribbon));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "DEBUG:RIBBON NAME \nDEBUG:RIBBON NAME2 \n");
  EXPECT_STREQ(ribbon.description, "");
  EXPECT_STREQ(szRibbonName, "");
}

TEST(ConfigurationRibbon, FaceReadsWithoutTraces) {
  std::string const xml =
      "<configuration><media_info><ribbon><description>Gold</description>"
      "</ribbon></media_info></configuration>";
  std::strcpy(szRibbonName, "before");
  testing::internal::CaptureStderr();
  Decoding const decoding = decode(xml);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_STREQ(szRibbonName, "before");
  EXPECT_EQ(decoding.readings().at(0).record().at("ribbon.description").asText(), "Gold");
}

TEST(ThreadsConfiguration, NeverMixTheirRibbons) {
  test::RibbonLines const taken;
  std::vector<std::thread> threads;
  std::vector<int> mixed(4, 0);
  for (std::size_t t = 0; t < mixed.size(); ++t) {
    threads.emplace_back([&mixed, t] {
      std::string const name(20 + t, static_cast<char>('a' + t));
      std::string const xml = "<configuration><media_info><ribbon><description>" + name +
                              "</description></ribbon></media_info></configuration>";
      KVXConfigParser parser;
      auto record = std::make_unique<_KVConfiguration>();
      for (int i = 0; i < 200; ++i) {
        parser.GetConfiguration(xml.c_str(), 0, *record);
        if (record->ribbon.description != name) ++mixed[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mixed, std::vector<int>(4, 0));
  std::string const name = szRibbonName;
  EXPECT_GE(name.size(), 20U);
  EXPECT_EQ(name, std::string(name.size(), static_cast<char>('a' + name.size() - 20)));
}

// Cards.

std::string card(std::string const& description, int calTable) {
  return "<card><information><description>" + description + "</description></information>" +
         "<cal_table>" + std::to_string(calTable) + "</cal_table></card>";
}

TEST(ConfigurationCards, TakeTheirPlaceByDescription) {
  auto record = readChildren("<cards>" + card("Other", 1) + card("Custom 1", 2) + "</cards>");
  EXPECT_EQ(record->cards[0].cal_table, 2);
  EXPECT_EQ(record->cards[1].cal_table, 1);
  for (char const* const description : {"custom 1", "Custom 10", "Custom 2", "Custom", ""}) {
    record = readChildren("<cards>" + card(description, 7) + "</cards>");
    EXPECT_EQ(record->cards[0].cal_table, 0) << description;
    EXPECT_EQ(record->cards[1].cal_table, 7) << description;
  }
}

TEST(ConfigurationCards, LaterCardReplacesAnEarlierOneWhole) {
  expectRead("<cards>" + card("A", 1) + card("B", 2) +
                 "<card><information><type>3</type></information></card></cards>",
             [](auto& record) { record.cards[1].type = 3; });
}

TEST(ConfigurationCards, WithoutInformationIsTheSecond) {
  auto const record = readChildren("<cards><card><cal_table>4</cal_table></card></cards>");
  EXPECT_EQ(record->cards[0].cal_table, 0);
  EXPECT_EQ(record->cards[1].cal_table, 4);
}

TEST(ConfigurationCards, ResultIsThatOfTheLast) {
  KVXConfigParser parser;
  auto record = std::make_unique<_KVConfiguration>();
  EXPECT_TRUE(
      parser.getCards(Tree("<e><card/><card><cal_table>1</cal_table></card></e>").root(), *record));
  EXPECT_FALSE(
      parser.getCards(Tree("<e><card><cal_table>1</cal_table></card><card/></e>").root(), *record));
  EXPECT_TRUE(
      parser.getCards(Tree("<e><card><cal_table>1</cal_table></card><x/></e>").root(), *record));
  EXPECT_FALSE(parser.getCards(Tree("<e/>").root(), *record));
  EXPECT_FALSE(parser.getCards(nullptr, *record));
}

TEST(ConfigurationCards, CoercivityAndFeatures) {
  auto const read = [](std::string const& inner) {
    return readChildren("<cards><card><information>" + inner + "</information></card></cards>")
        ->cards[1];
  };
  EXPECT_EQ(read("<coercivity>low</coercivity>").coercivity, 1);
  EXPECT_EQ(read("<coercivity>high</coercivity>").coercivity, 2);
  EXPECT_EQ(read("<coercivity>none</coercivity>").coercivity, 0);
  EXPECT_EQ(read("<coercivity>low</coercivity><coercivity>Low</coercivity>").coercivity, 0);
  EXPECT_EQ(read("<mag_stripe>yes</mag_stripe>").cardFeatures, 1);
  EXPECT_EQ(read("<contact_encode>yes</contact_encode>").cardFeatures, 2);
  EXPECT_EQ(read("<non_contact_encode>enabled</non_contact_encode>").cardFeatures, 4);
  EXPECT_EQ(read("<mag_stripe>yes</mag_stripe><contact_encode>yes</contact_encode>"
                 "<non_contact_encode>yes</non_contact_encode><mag_stripe>no</mag_stripe>")
                .cardFeatures,
            6)
      << "a flag that is not set clears its bit";
}

TEST(ConfigurationCards, OtherBitsAreLeft) {
  _CustomCardInfo info = filled<_CustomCardInfo>();
  _CustomCardInfo expected = info;
  expected.cardFeatures = 0xA5 & ~0x01;
  Tree tree("<information><mag_stripe>no</mag_stripe><contact_encode/></information>");
  EXPECT_FALSE(KVXConfigParser().getCardInformation(tree.root(), info));
  EXPECT_TRUE(same(info, expected));
}

// Lamination.

TEST(ConfigurationLamination, PresenceMarksAsInstalled) {
  auto const read = [](char const* inner) {
    return readChildren(element("lamination", inner))->lamination;
  };
  EXPECT_FALSE(read("<other/>").topLaminateInstalled);
  EXPECT_TRUE(read("<laminate_common/>").topLaminateInstalled) << "deliberately the top flag";
  EXPECT_FALSE(read("<laminate_common/>").bottomLaminateInstalled);
  EXPECT_TRUE(read("<top_laminate/>").topLaminateInstalled);
  EXPECT_FALSE(read("<bottom_laminate/>").topLaminateInstalled);
  EXPECT_TRUE(read("<bottom_laminate/>").bottomLaminateInstalled);
}

TEST(ConfigurationLamination, WidthAndRegistration) {
  auto const read = [](std::string const& inner) {
    return readChildren("<lamination><top_laminate><laminate_installed>" + inner +
                        "</laminate_installed></top_laminate></lamination>")
        ->lamination.top_laminate.laminate_installed;
  };
  EXPECT_EQ(read("<width>full</width>").width, 0);
  EXPECT_EQ(read("<width>mag</width>").width, 1);
  EXPECT_EQ(read("<width>signature</width>").width, 2);
  EXPECT_EQ(read("<width>signature</width><width>Mag</width>").width, 2) << "left";
  EXPECT_EQ(read("<registration>none</registration>").registration, 0);
  EXPECT_EQ(read("<registration>hologram</registration>").registration, 1);
  EXPECT_EQ(read("<registration>contact</registration>").registration, 2);
  EXPECT_EQ(read("<registration>contact</registration><registration>1</registration>").registration,
            2)
      << "left";
  EXPECT_EQ(read("<initial_size>4294967295</initial_size>").initial_size, 4294967295U);
}

TEST(ConfigurationLamination, SettingsOfEitherSideAreTakenForBoth) {
  auto const record = readChildren(
      "<lamination><top_laminate><laminate_control>"
      "<bot_x_adj_fine_offset min='0' max='9'>1</bot_x_adj_fine_offset>"
      "<bot_temp_adjust min='0' max='9'>2</bot_temp_adjust></laminate_control></top_laminate>"
      "<bottom_laminate><laminate_control>"
      "<top_x_adj_fine_offset min='0' max='9'>3</top_x_adj_fine_offset>"
      "<top_temp_adjust min='0' max='9'>4</top_temp_adjust></laminate_control></bottom_laminate>"
      "</lamination>");
  EXPECT_EQ(record->lamination.top_laminate.laminate_control.x_adj_fine_offset.val, 1);
  EXPECT_EQ(record->lamination.top_laminate.laminate_control.temp_adjust.val, 2);
  EXPECT_EQ(record->lamination.bottom_laminate.laminate_control.x_adj_fine_offset.val, 3);
  EXPECT_EQ(record->lamination.bottom_laminate.laminate_control.temp_adjust.val, 4);
}

// Cleaning, encoder, motor.

TEST(ConfigurationCleaning, TwoElementsFillOneRecord) {
  expectRead(
      "<cleaning><cleaning_deadline_is_soft>yes</cleaning_deadline_is_soft>"
      "<pre_warning min='0' max='9'>1</pre_warning></cleaning>"
      "<cleaning_thresholds><pre_warning min='0' max='9'>2</pre_warning>"
      "<cleaning_deadline_is_soft>no</cleaning_deadline_is_soft></cleaning_thresholds>",
      [](auto& record) {
        test::setText(record.cleaning.cleaning_deadline_is_soft, "yes");
        record.cleaning.pre_warning = {0, 9, 2};
      });
}

TEST(ConfigurationEncoder, SecondContactlessEncoder) {
  auto const read = [](std::string const& inner) {
    return readChildren(element("internal_encoder", inner))->internal_encoder;
  };
  auto const encoder = [](char const* word) { return element("contactless_encoder", word); };
  _InternalEncoderInfo const three = read(encoder("mifare") + encoder("lf") + encoder("hf"));
  EXPECT_EQ(three.contactless_encoder, 1);
  EXPECT_EQ(three.secondContactlessEncoder, 4) << "the last one stays";
  _InternalEncoderInfo const unknownFirst = read(encoder("nfc") + encoder("felica"));
  EXPECT_EQ(unknownFirst.contactless_encoder, 2);
  EXPECT_EQ(unknownFirst.secondContactlessEncoder, 0);
  EXPECT_EQ(read(encoder("uhf")).contactless_encoder, 3);
  _InternalEncoderInfo const emptyFirst = read("<contactless_encoder/>" + encoder("felica"));
  EXPECT_EQ(emptyFirst.contactless_encoder, 2) << "it leaves the place";
  EXPECT_EQ(emptyFirst.secondContactlessEncoder, 0);
  _InternalEncoderInfo const emptyLast =
      read(encoder("mifare") + encoder("lf") + "<contactless_encoder/>");
  EXPECT_EQ(emptyLast.contactless_encoder, 1);
  EXPECT_EQ(emptyLast.secondContactlessEncoder, 0) << "as an unknown one";
}

TEST(ConfigurationEncoder, ChannelAndContactEncoding) {
  auto const read = [](std::string const& inner) {
    return readChildren(element("internal_encoder", inner))->internal_encoder;
  };
  EXPECT_EQ(read("<comms_channel>serial</comms_channel>").comms_channel, 1);
  EXPECT_EQ(read("<comms_channel>usb</comms_channel>").comms_channel, 2);
  EXPECT_EQ(
      read("<comms_channel>usb</comms_channel><comms_channel>x</comms_channel>").comms_channel, 0);
  EXPECT_TRUE(read("<contact_encoding>yes</contact_encoding>").contact_encoding);
  EXPECT_FALSE(
      read("<contact_encoding>yes</contact_encoding><contact_encoding/>").contact_encoding);
  EXPECT_FALSE(read("<contact_station>yes</contact_station>").contact_station) << "not read here";
}

TEST(ConfigurationMotor, IsReadBelowItsElementOnly) {
  expectRead(
      "<ribbon_motor_parameters><S0 min='0' max='9'>1</S0></ribbon_motor_parameters>"
      "<takeup_motor><S0 min='0' max='9'>1</S0></takeup_motor>",
      [](auto&) {});
}

TEST(ConfigurationReaders, WantAnElement) {
  KVXConfigParser parser;
  auto record = std::make_unique<_KVConfiguration>(filled<_KVConfiguration>());
  auto& r = *record;
  EXPECT_FALSE(parser.getNetworkParams(nullptr, r.ethernet));
  EXPECT_FALSE(parser.getWirelessParams(nullptr, r.wireless));
  EXPECT_FALSE(parser.getOCPLanguage(nullptr, r.ocp_language));
  EXPECT_FALSE(parser.getUsageCounters(nullptr, r));
  EXPECT_FALSE(parser.getPowerAdjustments(nullptr, r.imaging_parameters.mfg_power_adjustments));
  EXPECT_FALSE(parser.getImagingParameters(nullptr, r.imaging_parameters));
  EXPECT_FALSE(parser.getTricolorSettings(nullptr, r.tricolor_settings));
  EXPECT_FALSE(parser.getRibbonMotorParams(nullptr, r.takeup_motor));
  EXPECT_FALSE(parser.getMechAdjustments(nullptr, r.mech_adjustments));
  EXPECT_FALSE(parser.getLaminateInfo(nullptr, r.lamination.top_laminate));
  EXPECT_FALSE(parser.getLaminationInfo(nullptr, r.lamination));
  EXPECT_FALSE(parser.getCardInformation(nullptr, r.cards[0]));
  EXPECT_FALSE(parser.getTransferTemps(nullptr, r.cards[0].transfer_temps));
  EXPECT_FALSE(parser.getTransferTemps(nullptr, r.transfer_settings.transfer_temps));
  EXPECT_FALSE(parser.getTransferSpeeds(nullptr, r.cards[0].transfer_speeds));
  EXPECT_FALSE(parser.getTransferSettings(nullptr, r.transfer_settings));
  EXPECT_FALSE(parser.getRibbonInfo(nullptr, r.ribbon));
  EXPECT_FALSE(parser.getMediaInfo(nullptr, r));
  EXPECT_FALSE(parser.getInternalEncoder(nullptr, r.internal_encoder));
  EXPECT_FALSE(parser.getCleanParams(nullptr, r.cleaning));
  EXPECT_FALSE(parser.getCleaningThresholds(nullptr, r.cleaning));
  EXPECT_FALSE(parser.getLamAdjustments(nullptr, r.cards[0].laminator_adjustments));
  EXPECT_FALSE(parser.getCardInfo(nullptr, r.cards[0]));
  EXPECT_TRUE(untouched(r));
}

}  // namespace
}  // namespace Kovra
