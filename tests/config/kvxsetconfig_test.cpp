#include "kvxsetconfig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>
#include <string>

#include "kvxconfigparser.h"
#include "support/allocations.hpp"
#include "support/configuration.hpp"
#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/room.hpp"
#include "support/streams.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::same;

constexpr char debugCopy[] = "/tmp/firmwaresettings";
constexpr long allSections = ~0L;

/// The record of samples/config/full.xml, with the names that only the writer knows.
std::unique_ptr<_KVConfiguration> fullConfiguration() {
  auto record = std::make_unique<_KVConfiguration>();
  test::setFullConfiguration(*record);
  record->ribbon.ribbonNameCode = 256;
  record->film.ribbonNameCode = 271;
  return record;
}

std::unique_ptr<_KVConfiguration> emptyConfiguration() {
  auto record = std::make_unique<_KVConfiguration>();
  std::memset(static_cast<void*>(record.get()), 0, sizeof *record);
  return record;
}

std::string sample(char const* name) {
  return test::contentsOf(std::string(KOVRA_SAMPLES_DIR "/config/") + name);
}

std::string narrowed(wchar_t const* text) {
  std::string result;
  for (; *text != L'\0'; ++text) result += static_cast<char>(*text);
  return result;
}

/// The children of the root without line breaks, or "failed".
std::string sections(_KVConfiguration const& config, long bits, int cardSelect = 0) {
  TiXmlElement root("r");
  if (!KVXSetConfig().addConfiguration(&root, config, bits, cardSelect)) return "failed";
  std::string text;
  for (TiXmlNode* child = root.FirstChild(); child != nullptr; child = child->NextSibling()) {
    text += test::printed(*child);
  }
  return text;
}

/// The names of the root's children.
std::string names(long bits, int cardSelect = 0) {
  TiXmlElement root("r");
  KVXSetConfig().addConfiguration(&root, *fullConfiguration(), bits, cardSelect);
  std::string list;
  for (TiXmlElement* e = root.FirstChildElement(); e != nullptr; e = e->NextSiblingElement()) {
    list += (list.empty() ? "" : " ") + e->ValueStr();
  }
  return list;
}

// The whole. These leave debugging copies.

TEST(DebugCopyConfiguration, WholeDocumentByteForByte) {
  std::wstring out(20000, L'?');
  ASSERT_TRUE(KVXSetConfig().SetConfiguration(*fullConfiguration(), out.data(), 20000, allSections,
                                              0, false));
  EXPECT_EQ(narrowed(out.c_str()), sample("request.xml"));
}

TEST(DebugCopyConfiguration, WholeDocumentWithoutFilm) {
  std::wstring out(20000, L'?');
  ASSERT_TRUE(KVXSetConfig().SetConfiguration(*fullConfiguration(), out.data(), 20000, allSections,
                                              0, true));
  EXPECT_EQ(narrowed(out.c_str()), sample("request-filmless.xml"));
}

TEST(DebugCopyConfiguration, IsWrittenAlsoWithoutAnOutput) {
  std::remove(debugCopy);
  EXPECT_FALSE(KVXSetConfig().SetConfiguration(*fullConfiguration(), nullptr, 0, sectionLcdContrast,
                                               0, false));
#if KOVRA_DEBUG_COPIES
  EXPECT_NE(test::contentsOf(debugCopy).find("<lcd_contrast min=\"0\" max=\"63\">40"),
            std::string::npos);
  EXPECT_EQ(test::modeOf(debugCopy), 0600U);
#else
  EXPECT_FALSE(test::exists(debugCopy));
#endif
}

TEST(DebugCopyConfiguration, IsNotWrittenWhenNothingIsComposed) {
  std::remove(debugCopy);
  wchar_t out[4] = L"abc";
  EXPECT_FALSE(KVXSetConfig().SetConfiguration(*fullConfiguration(), out, 4, 0, 0, false));
  EXPECT_FALSE(
      KVXSetConfig().SetConfiguration(*fullConfiguration(), out, 4, allSections, 3, false));
  EXPECT_FALSE(KVXSetConfig().SetConfiguration(*fullConfiguration(), out, 4,
                                               sectionTransferSettings, 0, true));
  EXPECT_STREQ(out, L"abc");
  EXPECT_FALSE(test::exists(debugCopy));
}

TEST(DebugCopyConfiguration, OutputIsBounded) {
  std::wstring whole(20000, L'?');
  ASSERT_TRUE(KVXSetConfig().SetConfiguration(*fullConfiguration(), whole.data(), 20000,
                                              sectionLcdContrast, 0, false));
  int const length = static_cast<int>(std::wcslen(whole.c_str()));
  for (int const room : {0, 1, length - 1, length, length + 1}) {
    std::wstring out(static_cast<std::size_t>(length) + 5, L'?');
    EXPECT_TRUE(KVXSetConfig().SetConfiguration(*fullConfiguration(), out.data(), room,
                                                sectionLcdContrast, 0, false));
    auto const written = static_cast<std::size_t>(std::min(room, length));
    EXPECT_EQ(out.substr(0, written), whole.substr(0, written)) << room;
    EXPECT_EQ(out[written], room > length ? L'\0' : L'?') << room;
    EXPECT_EQ(out.substr(written + 1), std::wstring(out.size() - written - 1, L'?')) << room;
  }
}

TEST(DebugCopyConfiguration, SavesToAFile) {
  test::TemporaryFolder folder;
  KVXSetConfig writer;
  ASSERT_FALSE(writer.SetConfiguration(*fullConfiguration(), nullptr, 0, allSections, 0, false));
  EXPECT_FALSE(writer.saveJob(static_cast<char*>(nullptr)));
  EXPECT_TRUE(writer.saveJob(folder.file("saved.xml").c_str()));
  EXPECT_EQ(test::contentsOf(folder.file("saved.xml")), sample("request.xml"));
  EXPECT_FALSE(writer.saveJob(folder.file("missing/saved.xml").c_str()));
}

TEST(DebugCopyConfiguration, SecondCallAppends) {
  KVXSetConfig writer;
  wchar_t out[400];
  writer.SetConfiguration(*emptyConfiguration(), out, 400, sectionStandbyTimeout, 0, false);
  ASSERT_TRUE(
      writer.SetConfiguration(*emptyConfiguration(), out, 400, sectionStandbyTimeout, 0, false));
  std::string const once =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<configuration>\n"
      "    <standby_timeout>0</standby_timeout>\n</configuration>\n";
  EXPECT_EQ(narrowed(out), once + once);
}

// Sections.

TEST(ConfigurationSections, StandInTheirOwnOrder) {
  EXPECT_EQ(
      names(allSections),
      "physical_address ethernet ethernet ocp_language error_control usb_speed "
      "usage_counters standby_timeout imaging_parameters ribbon_motor_parameters "
      "ribbon_sensor_offset mech_adjustments usb_timeout media_info lamination cleaning "
      "cleaning_thresholds feeder_mode cards transfer_settings lcd_contrast internal_encoder");
}

TEST(ConfigurationSections, EachHasItsBit) {
  struct {
    long bit;
    char const* names;
  } const rows[] = {{0x1, "physical_address"},
                    {0x2, "ethernet"},
                    {0x4, "ethernet"},
                    {0x8, "ocp_language"},
                    {0x10, "error_control usb_speed"},
                    {0x20, "usage_counters"},
                    {0x40, "standby_timeout"},
                    {0x80, "imaging_parameters"},
                    {0x200, "ribbon_motor_parameters"},
                    {0x400, "ribbon_sensor_offset"},
                    {0x1000, "mech_adjustments usb_timeout"},
                    {0x2000, "media_info"},
                    {0x40000, "lamination"},
                    {0x20000, "cleaning cleaning_thresholds"},
                    {0x400000, "feeder_mode"},
                    {0x4000, "cards"},
                    {0x8000, "transfer_settings"},
                    {0x10000, "lcd_contrast"},
                    {0x80000, "internal_encoder"}};
  long known = 0;
  for (auto const& row : rows) {
    EXPECT_EQ(names(row.bit), row.names) << std::hex << row.bit;
    known |= row.bit;
  }
  EXPECT_EQ(names(~known), "");
  EXPECT_EQ(sections(*fullConfiguration(), ~known), "failed");
  EXPECT_EQ(sections(*fullConfiguration(), 0), "failed");
}

TEST(ConfigurationSections, WantARoot) {
  EXPECT_FALSE(KVXSetConfig().addConfiguration(nullptr, *fullConfiguration(), allSections, 0));
}

TEST(ConfigurationSections, CardsAreSelected) {
  EXPECT_EQ(names(allSections, 1), "cards");
  std::string const first = sections(*fullConfiguration(), sectionCards, 1);
  std::string const second = sections(*fullConfiguration(), sectionCards, 2);
  EXPECT_NE(first.find("Custom 1"), std::string::npos);
  EXPECT_EQ(first.find("Visitor badge"), std::string::npos);
  EXPECT_NE(second.find("Visitor badge"), std::string::npos);
  EXPECT_EQ(second.find("Custom 1"), std::string::npos);
  for (int const other : {3, -1, 4}) {
    EXPECT_EQ(sections(*fullConfiguration(), allSections, other), "failed") << other;
    EXPECT_EQ(names(allSections, other), "cards") << "left empty";
  }
  EXPECT_EQ(sections(*fullConfiguration(), allSections & ~sectionCards, 1), "failed");
  EXPECT_EQ(names(allSections & ~sectionCards, 2), "");
}

TEST(ConfigurationSections, LaminationFollowsTheFlags) {
  auto record = emptyConfiguration();
  EXPECT_EQ(sections(*record, sectionLamination), "failed");
  EXPECT_NE(sections(*record, sectionLamination | sectionStandbyTimeout), "failed");
  record->lamination.bottomLaminateInstalled = true;
  std::string const zero = " min=\"0\" max=\"0\">0</";
  EXPECT_EQ(sections(*record, sectionLamination),
            "<lamination><laminate_common><patch_length_adj" + zero +
                "patch_length_adj><coarse_x_offset" + zero + "coarse_x_offset><speed_adjust" +
                zero + "speed_adjust><passthru_speed_adj" + zero +
                "passthru_speed_adj></laminate_common></lamination>");
  record->lamination.topLaminateInstalled = true;
  record->lamination.bottomLaminateInstalled = false;
  std::string const both = sections(*record, sectionLamination);
  EXPECT_NE(both.find("<top_laminate>"), std::string::npos);
  EXPECT_NE(both.find("<bottom_laminate>"), std::string::npos) << "by the top flag alone";
}

// Values.

TEST(ConfigurationValues, WithoutAWord) {
  auto record = emptyConfiguration();
  record->wireless.security = static_cast<WirelessSecurity>(7);
  record->wireless.crypto = static_cast<WirelessCrypto>(4);
  EXPECT_NE(sections(*record, sectionWireless).find("<security></security><crypto></crypto>"),
            std::string::npos);
  record->error_control = static_cast<ErrorControl>(3);
  record->usb_speed = static_cast<USB_Speed>(2);
  EXPECT_EQ(sections(*record, sectionErrorControl),
            "<error_control>med</error_control><usb_speed>high</usb_speed>");
  record->feeder_mode = static_cast<_eFeedMode>(9);
  EXPECT_EQ(sections(*record, sectionFeederMode), "<feeder_mode>hopper</feeder_mode>");
  record->ribbon.ribbonNameCode = 300;
  std::strcpy(record->ribbon.description, "YMCKO");
  EXPECT_NE(sections(*record, sectionMediaInfo).find("<type>0</type><description></description>"),
            std::string::npos);
  record->transfer_settings.transfer_type = 3;
  EXPECT_NE(sections(*record, sectionTransferSettings).find("<transfer_type></transfer_type>"),
            std::string::npos);
  record->cards[0].coercivity = 3;
  EXPECT_NE(sections(*record, sectionCards).find("<coercivity>none</coercivity>"),
            std::string::npos);
}

TEST(ConfigurationValues, ErrorControlAndSpeed) {
  auto record = emptyConfiguration();
  EXPECT_EQ(sections(*record, sectionErrorControl),
            "<error_control>none</error_control><usb_speed>high</usb_speed>");
  record->error_control = errorControlHigh;
  record->usb_speed = usbSpeedFull;
  EXPECT_EQ(sections(*record, sectionErrorControl),
            "<error_control>high</error_control><usb_speed>full</usb_speed>");
}

TEST(ConfigurationValues, BothEncoderWordsComeFromOneMember) {
  auto record = emptyConfiguration();
  record->internal_encoder.comms_channel = 2;
  record->internal_encoder.secondContactlessEncoder = 1;
  struct {
    int encoder;
    char const* channel;
    char const* word;
  } const rows[] = {{0, "", ""}, {1, "serial", "mifare"}, {2, "usb", ""}, {3, "", ""}, {5, "", ""}};
  for (auto const& row : rows) {
    record->internal_encoder.contactless_encoder = row.encoder;
    EXPECT_EQ(sections(*record, sectionInternalEncoder),
              "<internal_encoder><comms_channel>" + std::string(row.channel) +
                  "</comms_channel><contact_encoding>no</contact_encoding><contactless_encoder>" +
                  row.word + "</contactless_encoder></internal_encoder>");
  }
}

TEST(ConfigurationValues, OfAddressesTheLow32Bits) {
  auto record = emptyConfiguration();
  record->ethernet.ip_address = 0xFFFFFFFF04030201UL;
  record->ethernet.gateway = 0xFFFFFFFFUL;
  EXPECT_EQ(sections(*record, sectionEthernet),
            "<ethernet><ip_address>1.2.3.4</ip_address><gateway>255.255.255.255</gateway>"
            "<subnet_mask>0.0.0.0</subnet_mask><dhcp>disabled</dhcp><snmp>disabled</snmp>"
            "</ethernet>");
}

TEST(ConfigurationValues, TextsEndWithTheirArrays) {
  auto record = emptyConfiguration();
  std::memset(record->wireless.ssid, 's', sizeof record->wireless.ssid);
  std::memset(record->wireless.key, 'k', sizeof record->wireless.key);
  std::memset(record->cleaning.cleaning_deadline_is_soft, 'c', 10);
  EXPECT_NE(sections(*record, sectionWireless).find("<ssid>" + std::string(34, 's') + "</ssid>"),
            std::string::npos);
  EXPECT_NE(sections(*record, sectionWireless).find("<key>" + std::string(128, 'k') + "</key>"),
            std::string::npos);
  EXPECT_NE(sections(*record, sectionCleaning).find(">cccccccccc<"), std::string::npos);
}

TEST(ConfigurationValues, MarkupIsEscaped) {
  auto record = emptyConfiguration();
  std::strcpy(record->wireless.key, "<a&\"b'>");
  EXPECT_NE(sections(*record, sectionWireless).find("<key>&lt;a&amp;&quot;b&apos;&gt;</key>"),
            std::string::npos);
}

TEST(ConfigurationValues, CardFeaturesAreThreeBits) {
  auto record = emptyConfiguration();
  record->cards[0].cardFeatures = 0xFA;
  EXPECT_NE(sections(*record, sectionCards, 1)
                .find("<mag_stripe>no</mag_stripe><contact_encode>yes</contact_encode>"
                      "<non_contact_encode>no</non_contact_encode>"),
            std::string::npos);
}

TEST(ConfigurationValues, LargeSizesStayPositive) {
  auto record = emptyConfiguration();
  record->lamination.topLaminateInstalled = true;
  record->lamination.top_laminate.laminate_installed.initial_size = 4294967295U;
  EXPECT_NE(sections(*record, sectionLamination).find("<initial_size>4294967295</initial_size>"),
            std::string::npos);
}

using ConfigurationWriterInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, ConfigurationWriterInCommaLocale, test::commaLocales(),
                         test::nameOfLocale);

TEST_P(ConfigurationWriterInCommaLocale, WritesDecimalsWithCommas) {
  auto record = emptyConfiguration();
  record->takeup_motor.S0 = {-0.5F, 10.25F, 2.125F};
  record->cards[0].thickness = 0.75F;
  record->ethernet.ip_address = inet_addr("192.168.40.21");
  record->num_lines_printed = 1234567;
  EXPECT_NE(sections(*record, sectionRibbonMotorParameters)
                .find("<S0 min=\"-0,50\" max=\"10,25\">2,1250</S0>"),
            std::string::npos);
  EXPECT_NE(sections(*record, sectionCards).find("<thickness>0,7500</thickness>"),
            std::string::npos);
  EXPECT_NE(sections(*record, sectionEthernet).find("<ip_address>192.168.40.21</ip_address>"),
            std::string::npos);
  EXPECT_NE(sections(*record, sectionUsageCounters)
                .find("<num_lines_printed>1234567</num_lines_printed>"),
            std::string::npos);
}

// The add operations, each on its own.

TEST(ConfigurationAddOperations, AddWhatTheirSectionsAdd) {
  auto const record = fullConfiguration();
  _KVConfiguration const& r = *record;
  KVXSetConfig writer;
  TiXmlElement root("r"), expected("r");
  EXPECT_TRUE(writer.addNetworkParams(&root, r.ethernet));
  EXPECT_TRUE(writer.addWirelessParams(&root, r.wireless));
  EXPECT_TRUE(writer.addOCPLanguage(&root, r.ocp_language));
  EXPECT_TRUE(writer.addErrorControl(&root, r.error_control));
  EXPECT_TRUE(writer.addUSBSpeed(&root, r.usb_speed));
  EXPECT_TRUE(writer.addUsageCounters(&root, r));
  EXPECT_TRUE(writer.addImagingParameters(&root, r.imaging_parameters));
  EXPECT_TRUE(writer.addRibbonMotorParams(&root, r.takeup_motor));
  EXPECT_TRUE(writer.addMechAdjustments(&root, r.mech_adjustments));
  EXPECT_TRUE(writer.addUSBTimeout(&root, r.usb_timeout));
  EXPECT_TRUE(writer.addMediaInfo(&root, r));
  EXPECT_TRUE(writer.addLaminationInfo(&root, r.lamination));
  EXPECT_TRUE(writer.addCleanParams(&root, r.cleaning));
  EXPECT_TRUE(writer.addFeederParams(&root, r.feeder_mode));
  EXPECT_TRUE(writer.addTransferSettings(&root, r.transfer_settings));
  EXPECT_TRUE(writer.addInternalEncoder(&root, r.internal_encoder));
  writer.addConfiguration(
      &expected, r,
      allSections & ~(sectionPhysicalAddress | sectionStandbyTimeout | sectionRibbonSensorOffset |
                      sectionCards | sectionLcdContrast),
      0);
  EXPECT_EQ(test::printed(root), test::printed(expected));
}

TEST(ConfigurationAddOperations, AddPartsOfSections) {
  auto const record = fullConfiguration();
  _CustomCardInfo const& first = record->cards[0];
  KVXSetConfig writer;
  TiXmlElement root("r"), whole("r"), cards("r");
  EXPECT_TRUE(writer.addCardInfo(&root, first));
  writer.addConfiguration(&whole, *record, sectionCards, 1);
  EXPECT_EQ(test::printed(*root.FirstChild()), test::printed(*whole.FirstChild()->FirstChild()));
  EXPECT_TRUE(writer.addCardInformation(&cards, first));
  EXPECT_TRUE(writer.addTransferTemps(&cards, first.transfer_temps));
  EXPECT_TRUE(writer.addTransferSpeeds(&cards, first.transfer_speeds));
  KVXHelper::AddTagNumber(&cards, "cal_table", first.cal_table);
  EXPECT_TRUE(writer.addLamAdjustments(&cards, first.laminator_adjustments));
  cards.SetValue("card");
  EXPECT_EQ(test::printed(cards), test::printed(*root.FirstChild()));
}

/// What each operation adds whose element depends on the film.
std::string addedWithAFilmSwitch(KVXSetConfig& writer, _KVConfiguration const& r) {
  TiXmlElement root("r");
  EXPECT_TRUE(writer.addImagingParameters(&root, r.imaging_parameters));
  EXPECT_TRUE(writer.addMechAdjustments(&root, r.mech_adjustments));
  EXPECT_TRUE(writer.addMediaInfo(&root, r));
  TiXmlElement* const cards = KVXHelper::AddTag(&root, "cards");
  EXPECT_TRUE(writer.addCardInfo(cards, r.cards[0]));
  EXPECT_TRUE(writer.addCardInfo(cards, r.cards[1]));
  return test::printed(root);
}

TEST(ConfigurationAddOperations, KnowOfTheFilmWhatTheirWriterWasTold) {
  auto const record = fullConfiguration();
  _KVConfiguration const& r = *record;
  constexpr long bits =
      sectionImagingParameters | sectionMechAdjustments | sectionMediaInfo | sectionCards;
  TiXmlDocument sampleDocument;
  KVXSetConfig writer;
  for (bool const filmless : {true, false, true}) {
    // Without a section nothing is written, yet the writer was told.
    EXPECT_FALSE(writer.SetConfiguration(r, nullptr, 0, 0, 0, filmless));
    sampleDocument.Clear();
    sampleDocument.Parse(sample(filmless ? "request-filmless.xml" : "request.xml").c_str());
    TiXmlElement expected("r");
    for (char const* const name :
         {"imaging_parameters", "mech_adjustments", "media_info", "cards"}) {
      expected.InsertEndChild(*sampleDocument.RootElement()->FirstChildElement(name));
    }
    EXPECT_EQ(addedWithAFilmSwitch(writer, r), test::printed(expected));
    TiXmlElement power("r"), whole("r");
    EXPECT_TRUE(writer.addPowerAdjustments(&power, r.imaging_parameters.user_power_adjustments));
    EXPECT_EQ(test::printed(power).find("<inhibit") == std::string::npos, filmless);
    EXPECT_TRUE(writer.addConfiguration(&whole, r, bits, 0));
    EXPECT_EQ(test::printed(*whole.FirstChildElement("media_info")),
              test::printed(*expected.FirstChildElement("media_info")));
    EXPECT_EQ(writer.addConfiguration(&whole, r, sectionTransferSettings, 0), !filmless);
  }
}

TEST(ConfigurationAddOperations, ThatNoSectionUses) {
  KVXSetConfig writer;
  TiXmlElement root("r");
  EXPECT_TRUE(writer.addTricolorSettings(&root, {1, 2, 3}));
  EXPECT_EQ(test::printed(root),
            "<r><tricolor_settings><red>1</red><green>2</green><blue>3</blue></tricolor_settings>"
            "</r>");
}

TEST(ConfigurationAddOperations, NameTheirSides) {
  auto const record = fullConfiguration();
  KVXSetConfig writer;
  TiXmlElement root("r");
  EXPECT_TRUE(writer.addLaminateInfo(&root, record->lamination.top_laminate, true));
  EXPECT_TRUE(writer.addLaminateInfo(&root, record->lamination.bottom_laminate, false));
  EXPECT_TRUE(writer.addRibbonInfo(&root, record->ribbon, false));
  EXPECT_TRUE(writer.addRibbonInfo(&root, record->film, true));
  EXPECT_TRUE(writer.addPowerAdjustments(&root, record->imaging_parameters.user_power_adjustments));
  EXPECT_TRUE(writer.addTransferTemps(&root, record->transfer_settings.transfer_temps));
  std::string list;
  for (TiXmlElement* e = root.FirstChildElement(); e != nullptr; e = e->NextSiblingElement()) {
    list += e->ValueStr() + " ";
  }
  EXPECT_EQ(list,
            "top_laminate bottom_laminate ribbon film user_power_adjustments transfer_temps ");
  EXPECT_NE(test::printed(root).find("<bot_temp_adjust"), std::string::npos);
}

TEST(ConfigurationAddOperations, WantATarget) {
  auto const record = fullConfiguration();
  _KVConfiguration const& r = *record;
  KVXSetConfig writer;
  EXPECT_FALSE(writer.addNetworkParams(nullptr, r.ethernet));
  EXPECT_FALSE(writer.addErrorControl(nullptr, r.error_control));
  EXPECT_FALSE(writer.addUSBSpeed(nullptr, r.usb_speed));
  EXPECT_FALSE(writer.addFeederParams(nullptr, r.feeder_mode));
  EXPECT_FALSE(writer.addCleanParams(nullptr, r.cleaning));
  EXPECT_FALSE(writer.addLaminateInfo(nullptr, r.lamination.top_laminate, true));
  EXPECT_FALSE(writer.addCardInfo(nullptr, r.cards[0]));
}

// Codes as words.

/// What a conversion stores in a buffer of 32, and its result.
template <class Convert>
std::string word(Convert convert, bool expected) {
  char out[33];
  std::memset(out, 'x', sizeof out);
  EXPECT_EQ(convert(out), expected);
  EXPECT_EQ(out[32], 'x');
  return out;
}

TEST(ConfigurationConversions, Texts) {
  KVXSetConfig w;
  char const* const security[] = {"none", "wep40", "wep104", "wpa", "wpa2", "wpa_wpa2", ""};
  char const* const crypto[] = {"none", "RC4", "TKIP", "CCMP", ""};
  char const* const modes[] = {"manual", "hopper", "alreadyinprinter", "auto", "hopper"};
  for (int i = 0; i < 7; ++i) EXPECT_STREQ(w.GetSecurity(i), security[i]) << i;
  for (int i = 0; i < 5; ++i) EXPECT_STREQ(w.GetCrypto(i), crypto[i]) << i;
  for (int i = 0; i < 5; ++i) EXPECT_STREQ(w.FeederModeToString(i), modes[i]) << i;
  EXPECT_STREQ(w.GetSecurity(-1), "");
  EXPECT_STREQ(w.GetCrypto(-1), "");
  EXPECT_STREQ(w.FeederModeToString(-1), "hopper");
}

TEST(ConfigurationConversions, RibbonNames) {
  KVXSetConfig w;
  char const* const all[] = {"YMCKO",  "YMCKOK", "1/2 YMCKO", "1/2 YMCKOKO", "YMCPKO", "KdO",
                             "KrO",    "Black",  "White",     "Red",         "Blue",   "Gold",
                             "Silver", "YMCKLL", "SrDYMCKO",  "Hologram"};
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(word([&](char* out) { return w.RibbonNameToString(out, 256 + i); }, true), all[i]);
  }
  for (int const code : {0, 255, 272, 300, -1}) {
    EXPECT_EQ(word([&](char* out) { return w.RibbonNameToString(out, code); }, false), "") << code;
  }
  EXPECT_FALSE(w.RibbonNameToString(nullptr, 256));
}

TEST(ConfigurationConversions, TypesAndFeeders) {
  KVXSetConfig w;
  auto const type = [&](int code) {
    return [&w, code](char* o) { return w.ribbonTypeToString(o, code); };
  };
  auto const smart = [&](int code) {
    return [&w, code](char* o) { return w.feederSmartToString(o, code); };
  };
  auto const feeder = [&](int code) {
    return [&w, code](char* o) { return w.feederTypeToString(o, code); };
  };
  EXPECT_EQ(word(type(0), true), "dye_sub");
  EXPECT_EQ(word(type(1), true), "resin");
  EXPECT_EQ(word(type(2), false), "");
  EXPECT_EQ(word(type(-1), false), "");
  char const* const smarts[] = {"contact", "iclass", "mifare", "prox", "uhf", "legic"};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(word(smart(i), true), smarts[i]);
  EXPECT_EQ(word(smart(6), false), "");
  EXPECT_EQ(word(smart(-1), false), "");
  EXPECT_EQ(word(feeder(0), true), "composite");
  EXPECT_EQ(word(feeder(1), true), "pvc");
  EXPECT_EQ(word(feeder(2), false), "");
}

TEST(ConfigurationConversions, EncodersAlwaysSucceed) {
  KVXSetConfig w;
  auto const comms = [&](int code, int room) {
    return [&w, code, room](char* o) { return w.CommsChannelFromInt(code, o, room); };
  };
  auto const encoder = [&](int code, int room) {
    return [&w, code, room](char* o) { return w.ContactlessEncFromInt(code, o, room); };
  };
  EXPECT_EQ(word(comms(1, 32), true), "serial");
  EXPECT_EQ(word(comms(2, 32), true), "usb");
  EXPECT_EQ(word(comms(0, 32), true), "");
  EXPECT_EQ(word(comms(3, 32), true), "");
  EXPECT_EQ(word(comms(1, 4), true), "ser") << "bounded";
  EXPECT_EQ(word(encoder(1, 32), true), "mifare");
  EXPECT_EQ(word(encoder(2, 32), true), "") << "though it is read";
  EXPECT_EQ(word(encoder(0, 32), true), "");
  char one = 'x';
  EXPECT_TRUE(w.CommsChannelFromInt(1, &one, 0));
  EXPECT_EQ(one, 'x');
  EXPECT_TRUE(w.ContactlessEncFromInt(1, &one, 1));
  EXPECT_EQ(one, '\0');
  EXPECT_TRUE(w.CommsChannelFromInt(1, nullptr, 32));
  EXPECT_TRUE(w.ContactlessEncFromInt(1, nullptr, 32));
}

// Room, and what is left when memory ends.

/// Everything in it takes much room.
std::unique_ptr<_KVConfiguration> wideConfiguration() {
  auto record = std::make_unique<_KVConfiguration>();
  test::fillWide(*record);
  for (bool* const flag :
       {&record->ethernet.dhcp, &record->ethernet.snmp, &record->wireless.dhcp,
        &record->wireless.snmp, &record->wireless.radio, &record->internal_encoder.contact_encoding,
        &record->internal_encoder.contact_station}) {
    *flag = false;
  }
  record->lamination.topLaminateInstalled = record->lamination.bottomLaminateInstalled = true;
  _RibbonMotorParams& motor = record->takeup_motor;
  motor = {test::wideDecimals, test::wideDecimals, test::wideDecimals, test::wideDecimals,
           test::wideDecimals, test::wideDecimals, test::wideDecimals, test::wideDecimals};
  _TransferSpeedInfo const speeds = {test::wideDecimals, test::wideDecimals, test::wideDecimals,
                                     test::wideDecimals};
  record->transfer_settings.transfer_speeds = speeds;
  for (_CustomCardInfo& card : record->cards) {
    card.thickness = test::wideDecimal;
    card.transfer_speeds = speeds;
    card.laminator_adjustments.speed_adjust = test::wideDecimals;
  }
  return record;
}

TEST(DebugCopyConfiguration, OfAnyRecordFitsInto32768Characters) {
  auto const record = wideConfiguration();
  test::expectRoomFor(
      32768,
      [&](wchar_t* out, int length) {
        return KVXSetConfig().SetConfiguration(*record, out, length, allSections, 0, false);
      },
      2 * sizeof *record / sizeof(int));
}

using DebugCopyConfigurationWithoutMemory = test::HeapTest;

TEST_F(DebugCopyConfigurationWithoutMemory, LeavesTheOutputUntouched) {
  auto const record = fullConfiguration();
  bool threw = true;
  for (std::size_t failing = 1; threw; ++failing) {
    KVXSetConfig writer;
    auto out = test::filled<std::array<wchar_t, 2000>>();
    bool result = true;
    try {
      test::Allocations const allocations(failing);
      result = writer.SetConfiguration(*record, out.data(), 2000, sectionWireless, 0, false);
      threw = false;
    } catch (std::bad_alloc const&) {
    }
    EXPECT_TRUE(result);
    EXPECT_EQ(test::untouched(out), threw) << failing;
    EXPECT_TRUE(threw || failing > 1) << "asked for nothing";
  }
}

// There and back.

/// What a written document says when it is read again.
std::unique_ptr<_KVConfiguration> readBack(_KVConfiguration const& config, bool filmless) {
  KVXSetConfig writer;
  wchar_t none[1];
  writer.SetConfiguration(config, none, 0, allSections, 0, filmless);
  auto record = std::make_unique<_KVConfiguration>();
  test::RibbonLines const taken;
  KVXConfigParser().parseConfiguration(writer.RootElement(), *record);
  return record;
}

/// Members that never come back.
void dropWhatIsNeverWritten(_KVConfiguration& record) {
  // The second "ethernet" is read over the first, and nothing into the wireless parameters.
  record.ethernet.ip_address = record.wireless.ip_address;
  record.ethernet.subnet_mask = record.wireless.subnet_mask;
  record.ethernet.gateway = record.wireless.gateway;
  record.ethernet.dhcp = record.wireless.dhcp;
  record.ethernet.snmp = record.wireless.snmp;
  std::memset(static_cast<void*>(&record.wireless), 0, sizeof record.wireless);
  // The names come back as texts, never as codes.
  test::setText(record.ribbon.description, "YMCKO");
  test::setText(record.film.description, "Hologram");
  record.ribbon.ribbonNameCode = record.film.ribbonNameCode = 0;
  // Numbers in place of words are not understood.
  for (_Laminate* laminate :
       {&record.lamination.top_laminate, &record.lamination.bottom_laminate}) {
    laminate->laminate_installed.width = laminate->laminate_installed.registration = 0;
  }
  record.imaging_parameters.mfg_power_adjustments = {};
  record.takeup_motor.VtoI = {};
  record.tricolor_settings = {};
  record.bemf_potentiometer = 0;
  record.internal_encoder.comms_channel = 1;  // as the contactless encoder is
  record.internal_encoder.secondContactlessEncoder = 0;
}

TEST(DebugCopyConfiguration, WrittenAndReadAgainMostMembersSurvive) {
  auto expected = fullConfiguration();
  expected->mech_adjustments.flipper_sensor_offset = {};
  dropWhatIsNeverWritten(*expected);
  EXPECT_TRUE(same(*readBack(*fullConfiguration(), false), *expected));
}

TEST(DebugCopyConfiguration, WithoutFilmItsMembersDoNotSurvive) {
  auto expected = fullConfiguration();
  _MechanicalAdjustments& mechanics = expected->mech_adjustments;
  mechanics.film_print_x_offset = mechanics.film_print_y_offset = {};
  mechanics.film_transfer_start_offset = {};
  mechanics.card_transfer_start_y_offset = mechanics.card_transfer_end_y_offset = {};
  mechanics.card_transfer_roll_y_offset = mechanics.film_end_roll_transfer_offset = {};
  mechanics.film_extra_transfer_takeup_move = {};
  dropWhatIsNeverWritten(*expected);
  expected->film = {};
  expected->imaging_parameters.user_power_adjustments.inhibit = {};
  expected->transfer_settings = {};
  for (_CustomCardInfo& card : expected->cards) {
    card.transfer_temps = {};
    card.transfer_speeds = {};
  }
  EXPECT_TRUE(same(*readBack(*fullConfiguration(), true), *expected));
}

}  // namespace
}  // namespace Kovra
