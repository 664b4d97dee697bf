// The wireless link, its radio, and the access points in range.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "kvxstatusparser.h"
#include "support/findings.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::expectWords;
using test::filled;
using test::MemberCase;
using test::Rule;
using test::same;
using test::StatusReply;
using test::TextElement;
using test::Tree;
using test::untouched;
using test::wide;

// ---- The state of the link -------------------------------------------------------------------

StatusReply<_tagWirelessStatus> const wirelessStatus{"get_wireless_status",
                                                     &KVXStatusParser::ParseWirelessStatusXML,
                                                     &KVXStatusParser::parseWirelessStatus};

constexpr MemberCase<_tagWirelessStatus> wirelessStatusMembers[] = {
    {"", "state", "handshake", [](auto& record) { record.state = 6; }},
    {"", "ssid", "badge-office", [](auto& record) { std::strcpy(record.ssid, "badge-office"); }},
    {"", "channel", "11", [](auto& record) { record.channel = 11; }},
    {"", "rssi", "-61", [](auto& record) { record.rssi = -61; }},
    {"", "snr", "31", [](auto& record) { record.snr = 31; }},
    {"", "nf", "-92", [](auto& record) { record.nf = -92; }},
    {"", "security", "WPA", [](auto& record) { record.security |= 3U; }},
    {"", "crypto", "TKIP", [](auto& record) { record.crypto |= 2U; }},
    {"", "rate", "54", [](auto& record) { record.rate = 54; }},
    {"in", "octets", "1000001", [](auto& record) { record.in.octets = 1000001; }},
    {"in", "upkts", "1002", [](auto& record) { record.in.upkts = 1002; }},
    {"in", "nupkts", "13", [](auto& record) { record.in.nupkts = 13; }},
    {"in", "discards", "4", [](auto& record) { record.in.discards = 4; }},
    {"in", "errors", "5", [](auto& record) { record.in.errors = 5; }},
    {"out", "octets", "2000001", [](auto& record) { record.out.octets = 2000001; }},
    {"out", "upkts", "2002", [](auto& record) { record.out.upkts = 2002; }},
    {"out", "nupkts", "23", [](auto& record) { record.out.nupkts = 23; }},
    {"out", "discards", "24", [](auto& record) { record.out.discards = 24; }},
    {"out", "errors", "25", [](auto& record) { record.out.errors = 25; }},
    {"", "link_lost", "3", [](auto& record) { record.link_lost = 3; }},
};

TEST(WirelessStatus, ReadsEachElementIntoItsMember) {
  wirelessStatus.expectMembers(wirelessStatusMembers);
}

TEST(WirelessStatus, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : wirelessStatusMembers) {
    children += member.wrapped(member.name, member.text) + "\n";
  }
  wirelessStatus.expectWideEntry("<?xml version='1.0'?>" + element("get_wireless_status", children),
                                 [](auto& record) {
                                   for (auto const& member : wirelessStatusMembers)
                                     member.set(record);
                                 });
}

TEST(WirelessStatus, States) {
  expectWords({Rule::exact,
               0,
               {{"off", 0},
                {"disconnected", 1},
                {"inactive", 2},
                {"scanning", 3},
                {"associating", 4},
                {"associated", 5},
                {"handshake", 6},
                {"connected", 7}}},
              [](char* word) {
                int const code = KVXStatusParser().GetWirelessState(word);
                if (word != nullptr && *word != '\0') {
                  wirelessStatus.expectRead("<state><![CDATA[" + std::string(word) + "]]></state>",
                                            [&](auto& record) { record.state = code; });
                }
                return code;
              });
}

TEST(WirelessStatus, StatesTakeWordsThatCanOnlyBeRead) {
  KVXStatusParser parser;
  char const* const word = "associated";
  EXPECT_EQ(parser.GetWirelessState(word), 5);
  EXPECT_EQ(parser.GetWirelessState("Connected"), 0);
  EXPECT_EQ(parser.GetWirelessState(nullptr), 0);
}

TEST(WirelessStatus, AnUnknownStateIsReadAsOff) {
  for (std::string const& word :
       {std::string("Connected"), std::string("on"), "connected" + std::string(100, 'x')}) {
    wirelessStatus.expectRead(element("state", word), [](auto& record) { record.state = 0; });
  }
}

TEST(WirelessStatus, CutsANetworkNameThatIsTooLongAndLeavesWhatLiesBehind) {
  for (std::size_t const length : {1U, 30U, 31U, 32U, 40U, 1000U}) {
    wirelessStatus.expectRead(element("ssid", std::string(length, 's')), [&](auto& record) {
      std::strcpy(record.ssid, std::string(std::min<std::size_t>(length, 31), 's').c_str());
    });
  }
}

TEST(WirelessStatus, KeepsNumbersOf32Bits) {
  wirelessStatus.expectRead(element("rssi", "-2147483648"),
                            [](auto& record) { record.rssi = INT_MIN; });
  wirelessStatus.expectRead(element("in", element("octets", "4294967295")),
                            [](auto& record) { record.in.octets = -1; });
  wirelessStatus.expectRead(element("rate", "auto"), [](auto& record) { record.rate = 0; });
  wirelessStatus.expectRead(element("nf", " -92dBm"), [](auto& record) { record.nf = -92; });
}

TEST(WirelessStatus, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.rate = 1; };
  std::string const rate = element("rate", "1");
  wirelessStatus.expect(false, rate + "<channel/>", one);
  wirelessStatus.expect(false, rate + "<state/><unknown>1</unknown>", one);
  wirelessStatus.expect(false, rate + "<security/>", one);
  wirelessStatus.expect(false, rate + "<crypto></crypto>", one);
  wirelessStatus.expect(false, rate + "<in/>", one);
  wirelessStatus.expect(false, rate + "<out><unknown>1</unknown></out>", one);
  wirelessStatus.expect(false, rate + "<in><octets/></in>", one);
  wirelessStatus.expect(true, "<channel/><in/>" + rate + "<unknown/>", one);
  wirelessStatus.expect(true, element("rate", "9") + rate, one);
  wirelessStatus.expect(true, "<rate/>" + element("security", "none"), [](auto&) {});
}

TEST(WirelessStatus, ReadersNeedChildren) {
  expectNeedsChildren(wirelessStatus.start, [](TiXmlElement* root, _tagWirelessStatus& record) {
    return KVXStatusParser().parseWirelessStatus(root, record);
  });
  expectNeedsChildren(filled<_tagPackets>(), [](TiXmlElement* packets, _tagPackets& record) {
    return KVXStatusParser().ParsePacketsInfo(packets, record);
  });
}

TEST(WirelessStatus, ReadsThePacketsOfAnyElement) {
  auto packets = filled<_tagPackets>();
  auto expected = packets;
  expected.upkts = 2;
  expected.errors = 5;
  Tree tree("<any><upkts>2</upkts><other>9</other><errors>5</errors></any>");
  EXPECT_TRUE(KVXStatusParser().ParsePacketsInfo(tree.root(), packets));
  EXPECT_TRUE(same(packets, expected));
}

// ---- Security and cipher ---------------------------------------------------------------------

using Combine = bool (KVXStatusParser::*)(TiXmlElement*, unsigned int&);

/// What `combine` makes of a word and a field that held `before`; the word counts as read.
unsigned int combined(Combine combine, std::string const& word, unsigned int before) {
  TextElement element(word);
  unsigned int field = before;
  EXPECT_TRUE((KVXStatusParser().*combine)(element.get(), field)) << word;
  return field;
}

void expectCombines(Combine combine, test::ExpectedWords const& words) {
  expectWords(words, [&](char* word) {
    if (word == nullptr) return words.unknown;
    unsigned int const code = combined(combine, word, 0);
    // Whatever a field holds, a word only adds its bits.
    for (unsigned int const before : {1U, 4U, 0xA5A5A5A0U, UINT_MAX}) {
      EXPECT_EQ(combined(combine, word, before), before | code) << word;
    }
    return static_cast<int>(code);
  });
}

TEST(WirelessSecurityWords, AddTheirBits) {
  expectCombines(&KVXStatusParser::GetSecurity, {Rule::exact,
                                                 0,
                                                 {{"open", 0},
                                                  {"none", 0},
                                                  {"WEP", 1},
                                                  {"wep", 1},
                                                  {"WEP40", 1},
                                                  {"wep40", 1},
                                                  {"WEP104", 2},
                                                  {"wep104", 2},
                                                  {"WPA", 3},
                                                  {"wpa", 3},
                                                  {"WPA2", 4},
                                                  {"wpa2", 4},
                                                  {"WPA_WPA2", 5},
                                                  {"WPA2_WPA", 5},
                                                  {"wpa_wpa2", 5},
                                                  {"wpa2_wpa", 5}}});
}

TEST(WirelessCryptoWords, AddTheirBits) {
  expectCombines(&KVXStatusParser::GetCrypto, {Rule::exact,
                                               0,
                                               {{"none", 0},
                                                {"RC4", 1},
                                                {"rc4", 1},
                                                {"TKIP", 2},
                                                {"tkip", 2},
                                                {"CCMP", 3},
                                                {"ccmp", 3},
                                                {"TKIP_CCMP", 4},
                                                {"CCMP_TKIP", 4},
                                                {"tkip_ccmp", 4},
                                                {"ccmp_tkip", 4}}});
}

TEST(WirelessSecurityWords, AreCombinedAndNotAssigned) {
  EXPECT_EQ(combined(&KVXStatusParser::GetSecurity, "wep40", 0), 1U);
  EXPECT_EQ(combined(&KVXStatusParser::GetSecurity, "WPA", 4), 7U);
  EXPECT_EQ(combined(&KVXStatusParser::GetCrypto, "ccmp_tkip", 0), 4U);
  EXPECT_EQ(combined(&KVXStatusParser::GetCrypto, "TKIP", 1), 3U);
}

TEST(WirelessSecurityWords, AreUnknownInMixedCase) {
  for (char const* const word : {"Wep", "wEP40", "Wep104", "Wpa", "WPa2", "WPA_wpa2", "wpa2_WPA"}) {
    EXPECT_EQ(combined(&KVXStatusParser::GetSecurity, word, 8), 8U) << word;
  }
  for (char const* const word : {"Rc4", "tKIP", "Ccmp", "TKIP_ccmp", "Ccmp_tkip"}) {
    EXPECT_EQ(combined(&KVXStatusParser::GetCrypto, word, 8), 8U) << word;
  }
}

TEST(WirelessSecurityWords, OpenIsNoWordForTheCipher) {
  EXPECT_EQ(combined(&KVXStatusParser::GetCrypto, "open", 9), 9U);
  EXPECT_EQ(combined(&KVXStatusParser::GetSecurity, "TKIP", 9), 9U);
}

TEST(WirelessSecurityWords, FailUntouchedWithoutAText) {
  TiXmlElement empty("security");
  for (TiXmlElement* const element : {static_cast<TiXmlElement*>(nullptr), &empty}) {
    for (Combine const combine : {&KVXStatusParser::GetSecurity, &KVXStatusParser::GetCrypto}) {
      unsigned int field = 0xA5A5A5A5;
      EXPECT_FALSE((KVXStatusParser().*combine)(element, field));
      EXPECT_EQ(field, 0xA5A5A5A5);
    }
  }
}

TEST(WirelessStatus, MergesASecondSecurityIntoTheFirst) {
  auto status = wirelessStatus;
  status.start.security = 0;
  status.start.crypto = 0;
  status.expectRead("<security>WEP</security><security>WPA2</security>",
                    [](auto& record) { record.security = 5; });
  status.expectRead("<crypto>rc4</crypto><crypto>TKIP</crypto><crypto>none</crypto>",
                    [](auto& record) { record.crypto = 3; });
  status.expectRead("<security>wpa3</security><security>none</security><security>open</security>",
                    [](auto&) {});
}

// ---- The radio -------------------------------------------------------------------------------

StatusReply<_tagWirelessRadioStatus> const radioStatus{"get_wireless_radio_status",
                                                       &KVXStatusParser::ParseWirlessRadioXML,
                                                       &KVXStatusParser::parseWirelessRadioStatus};

constexpr MemberCase<_tagWirelessRadioStatus> radioMembers[] = {
    {"", "mcasttxframe", "101", [](auto& record) { record.mcasttxframe = 101; }},
    {"", "failed", "102", [](auto& record) { record.failed = 102; }},
    {"", "retry", "103", [](auto& record) { record.retry = 103; }},
    {"", "multiretry", "104", [](auto& record) { record.multiretry = 104; }},
    {"", "framedup", "105", [](auto& record) { record.framedup = 105; }},
    {"", "rtssuccess", "106", [](auto& record) { record.rtssuccess = 106; }},
    {"", "rtsfailure", "107", [](auto& record) { record.rtsfailure = 107; }},
    {"", "ackfailure", "108", [](auto& record) { record.ackfailure = 108; }},
    {"", "rxfrag", "109", [](auto& record) { record.rxfrag = 109; }},
    {"", "mcastrxframe", "110", [](auto& record) { record.mcastrxframe = 110; }},
    {"", "fcserror", "111", [](auto& record) { record.fcserror = 111; }},
    {"", "txframe", "112", [](auto& record) { record.txframe = 112; }},
    {"", "tx_success", "113", [](auto& record) { record.tx_success = 113; }},
    {"", "tx_retry", "12", [](auto& record) { record.tx_retry = 12; }},
    {"", "rx_success", "115", [](auto& record) { record.rx_success = 115; }},
    {"", "rx_duplicate", "116", [](auto& record) { record.rx_duplicate = 116; }},
    {"", "rts_success", "117", [](auto& record) { record.rts_success = 117; }},
};

TEST(WirelessRadio, ReadsEachElementIntoItsCounter) {
  radioStatus.expectMembers(radioMembers);
}

TEST(WirelessRadio, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : radioMembers) children += element(member.name, member.text);
  radioStatus.expectWideEntry(element("get_wireless_radio_status", children), [](auto& record) {
    for (auto const& member : radioMembers) member.set(record);
  });
}

TEST(WirelessRadio, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.retry = 1; };
  radioStatus.expect(false, "<retry>1</retry><failed/><unknown>1</unknown>", one);
  radioStatus.expect(true, "<failed/><retry>7</retry><retry>1</retry><unknown/>", one);
  radioStatus.expectSkipped("<unknown>1</unknown>");
  expectNeedsChildren(radioStatus.start, [](TiXmlElement* root, _tagWirelessRadioStatus& record) {
    return KVXStatusParser().parseWirelessRadioStatus(root, record);
  });
}

// ---- One access point ------------------------------------------------------------------------

/// Reads one access point: as the only one of a list, and by the reader of its element.
struct AccessPointParser : KVXStatusParser {
  bool listed(wchar_t const& text, int len, _tagAccessPoint& out) {
    std::wstring const list =
        L"<AccessPoints>" + std::wstring(&text, static_cast<std::size_t>(len)) + L"</AccessPoints>";
    _tagAccessPoints record{&out, 0};
    bool const result = ParseAccessPoints(*list.c_str(), static_cast<int>(list.size()), record);
    EXPECT_EQ(record.count, 1U);
    return result;
  }
  bool alone(TiXmlElement* element, _tagAccessPoint& out) {
    return parseWirelessAccessPoints(element, out);
  }
};

StatusReply<_tagAccessPoint, AccessPointParser> const accessPoint{
    "AccessPoint", &AccessPointParser::listed, &AccessPointParser::alone};

void setAddress(_tagAccessPoint& record, std::vector<unsigned char> const& bytes) {
  for (std::size_t i = 0; i < sizeof record.bssid; ++i) record.bssid[i] = bytes.at(i);
}

constexpr MemberCase<_tagAccessPoint> accessPointMembers[] = {
    {"", "SSID", "badge-office", [](auto& record) { std::strcpy(record.ssid, "badge-office"); }},
    {"", "BSSID", "00:1A:2b:3C:4d:5e",
     [](auto& record) {
       setAddress(record, {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
     }},
    {"", "Selected", "true", [](auto& record) { record.selected = true; }},
    {"", "Channel", "6", [](auto& record) { record.channel = 6; }},
    {"", "Privacy", "1", [](auto& record) { record.privacy = 1; }},
    {"", "SignalStrength", "-48", [](auto& record) { record.signalStrength = -48; }},
    {"", "Infrastructure", "false", [](auto& record) { record.infrastructure = false; }},
    {"", "Security", "wpa", [](auto& record) { record.security |= 3U; }},
    {"", "Encryption", "tkip", [](auto& record) { record.encryption |= 2U; }},
    {"", "MaxDataRate", "54", [](auto& record) { record.maxDataRate = 54; }},
};

TEST(AccessPoint, ReadsEachElementIntoItsMember) {
  accessPoint.expectMembers(accessPointMembers);
}

TEST(AccessPoint, FlagsAreSetByTheExactWordTrueOnly) {
  accessPoint.expectRead(element("Infrastructure", "true"),
                         [](auto& record) { record.infrastructure = true; });
  for (std::string const& word :
       {std::string("TRUE"), std::string("True"), std::string("1"), std::string("yes"),
        std::string("false"), std::string("true."), "true" + std::string(100, 'e')}) {
    accessPoint.expectRead(element("Selected", word), [](auto& r) { r.selected = false; });
    accessPoint.expectRead(element("Infrastructure", word),
                           [](auto& r) { r.infrastructure = false; });
  }
}

TEST(AccessPoint, CutsANetworkNameThatIsTooLongAndLeavesWhatLiesBehind) {
  for (std::size_t const length : {1U, 32U, 33U, 34U, 40U, 1000U}) {
    accessPoint.expectRead(element("SSID", std::string(length, 's')), [&](auto& record) {
      std::strcpy(record.ssid, std::string(std::min<std::size_t>(length, 33), 's').c_str());
    });
  }
}

TEST(AccessPoint, WritesAllBytesOfAnAddress) {
  accessPoint.expectRead(element("BSSID", "00:1A:2b"), [](auto& r) {
    setAddress(r, {0x00, 0x1A, 0x2B, 0, 0, 0});
  });
  accessPoint.expectRead(element("BSSID", "none"), [](auto& r) {
    setAddress(r, {0, 0, 0, 0, 0, 0});
  });
}

TEST(AccessPoint, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.channel = 1; };
  std::string const channel = element("Channel", "1");
  for (char const* const empty : {"<SSID/>", "<BSSID/>", "<Selected/>", "<Privacy></Privacy>",
                                  "<Security/>", "<Encryption/>"}) {
    accessPoint.expect(false, channel + empty + "<Unknown>1</Unknown>", one);
    accessPoint.expect(true, empty + channel + "<Unknown/>", one);
  }
  accessPoint.expectSkipped("<Unknown>1</Unknown>");
  expectNeedsChildren(accessPoint.start, [](TiXmlElement* element, _tagAccessPoint& record) {
    return KVXStatusParser().parseWirelessAccessPoints(element, record);
  });
}

// ---- The access points in range --------------------------------------------------------------

/// A host's array and its count. The array has room for the children of every list below.
struct AccessPoints {
  unsigned int count;
  _tagAccessPoint points[4];
};

struct AccessPointsParser : KVXStatusParser {
  bool entry(wchar_t const& text, int len, AccessPoints& out) {
    return into(out, [&](auto& record) { return ParseAccessPoints(text, len, record); });
  }
  bool reader(TiXmlElement* root, AccessPoints& out) {
    return into(out, [&](auto& record) { return parseAllWirelessAccessPoint(root, record); });
  }

 private:
  template <class Read>
  bool into(AccessPoints& out, Read read) {
    _tagAccessPoints record{out.points, out.count};
    bool const result = read(record);
    EXPECT_EQ(record.accessPoints, out.points);
    out.count = record.count;
    return result;
  }
};

StatusReply<AccessPoints, AccessPointsParser> const accessPoints{
    "AccessPoints", &AccessPointsParser::entry, &AccessPointsParser::reader};

/// The same without an array: only the count is asked for.
struct CountParser : KVXStatusParser {
  bool entry(wchar_t const& text, int len, unsigned int& count) {
    return into(count, [&](auto& record) { return ParseAccessPoints(text, len, record); });
  }
  bool reader(TiXmlElement* root, unsigned int& count) {
    return into(count, [&](auto& record) { return parseAllWirelessAccessPoint(root, record); });
  }

 private:
  template <class Read>
  bool into(unsigned int& count, Read read) {
    _tagAccessPoints record{nullptr, count};
    bool const result = read(record);
    EXPECT_EQ(record.accessPoints, nullptr);
    count = record.count;
    return result;
  }
};

StatusReply<unsigned int, CountParser> const sizeQuery{"AccessPoints", &CountParser::entry,
                                                       &CountParser::reader};

std::string point(std::string const& channel) {
  return element("AccessPoint", element("Channel", channel));
}

TEST(AccessPoints, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : accessPointMembers) children += element(member.name, member.text);
  accessPoints.expectWideEntry(
      element("AccessPoints", element("AccessPoint", children) + "\n" + point("13")),
      [](auto& record) {
        for (auto const& member : accessPointMembers) member.set(record.points[0]);
        record.points[1].channel = 13;
        record.count = 2;
      });
}

TEST(AccessPoints, CountsTheChildrenOfAWholeReplyAndRefusesWhatIsNone) {
  sizeQuery.expectWideEntry(element("AccessPoints", point("1") + point("6") + point("13")),
                            [](unsigned int& count) { count = 3; });
}

TEST(AccessPoints, TellsTheCountWithoutAnArray) {
  sizeQuery.expectRead(point("1") + point("6") + point("11"), [](auto& count) { count = 3; });
  sizeQuery.expectRead("", [](auto& count) { count = 0; });
  sizeQuery.expectRead("text<!-- no child -->", [](auto& count) { count = 0; });
}

TEST(AccessPoints, CountsChildrenOfAnyName) {
  std::string const mixed = point("1") + "<Scan><AccessPoint/></Scan>" + point("6");
  sizeQuery.expectRead(mixed, [](auto& count) { count = 3; });
  accessPoints.expectRead(mixed, [](auto& record) {
    record.count = 3;
    record.points[0].channel = 1;
    record.points[1].channel = 6;
  });
  accessPoints.expectRead("<Scan/>" + point("6"), [](auto& record) {
    record.count = 2;
    record.points[0].channel = 6;
  });
  sizeQuery.expectRead("<accesspoint/><Other>1</Other>", [](auto& count) { count = 2; });
}

TEST(AccessPoints, StoresTheCountAlsoWhenNothingIsRead) {
  accessPoints.expect(false, "", [](auto& record) { record.count = 0; });
  accessPoints.expect(false, "<accesspoint><Channel>1</Channel></accesspoint><Other/>",
                      [](auto& record) { record.count = 2; });
  accessPoints.expect(false, "<AccessPoint/>", [](auto& record) { record.count = 1; });
}

TEST(AccessPoints, ResultIsThatOfTheLastAccessPoint) {
  auto const two = [](auto& record) {
    record.count = 2;
    record.points[0].channel = 1;
  };
  accessPoints.expect(false, point("1") + "<AccessPoint/>", two);
  accessPoints.expect(false, point("1") + point(""), two);
  accessPoints.expect(true, point("1") + "<Other/>", two);
  accessPoints.expect(true, "<AccessPoint/>" + point("6"), [](auto& record) {
    record.count = 2;
    record.points[1].channel = 6;
  });
  accessPoints.expect(false, "<AccessPoint/><Other>1</Other>",
                      [](auto& record) { record.count = 2; });
}

TEST(AccessPoints, MergeSecurityIntoWhatTheHostLeftInItsArray) {
  auto list = accessPoints;
  list.start.points[0].security = 0;
  list.start.points[1].security = 4;
  list.expectRead(
      "<AccessPoint><Security>WPA</Security></AccessPoint>"
      "<AccessPoint><Security>WPA</Security></AccessPoint>",
      [](auto& record) {
        record.count = 2;
        record.points[0].security = 3;
        record.points[1].security = 7;
      });
}

TEST(AccessPoints, ReaderFailsUntouchedForANullElement) {
  auto point = filled<_tagAccessPoint>();
  for (_tagAccessPoint* const array : {&point, static_cast<_tagAccessPoint*>(nullptr)}) {
    _tagAccessPoints record{array, 77};
    EXPECT_FALSE(KVXStatusParser().parseAllWirelessAccessPoint(nullptr, record));
    EXPECT_EQ(record.accessPoints, array);
    EXPECT_EQ(record.count, 77U);
  }
  EXPECT_TRUE(untouched(point));
}

TEST(AccessPoints, AHostAsksMakesRoomAndReadsAgain) {
  std::string children;
  for (int i = 0; i < 1000; ++i) children += point(std::to_string(i));
  std::wstring const text = wide(element("AccessPoints", children));
  auto const length = static_cast<int>(text.size());

  _tagAccessPoints record{nullptr, 0};
  ASSERT_TRUE(KVXStatusParser().ParseAccessPoints(*text.c_str(), length, record));
  ASSERT_EQ(record.count, 1000U);
  std::vector<_tagAccessPoint> array(record.count, filled<_tagAccessPoint>());
  record.accessPoints = array.data();
  ASSERT_TRUE(KVXStatusParser().ParseAccessPoints(*text.c_str(), length, record));
  EXPECT_EQ(record.count, 1000U);
  for (std::size_t i = 0; i < array.size(); ++i) {
    auto expected = filled<_tagAccessPoint>();
    expected.channel = static_cast<int>(i);
    EXPECT_TRUE(same(array[i], expected)) << i;
  }
}

// ---- Decoded ---------------------------------------------------------------------------------

/// What the face shows of one element of the link's status.
struct Shown {
  Value value;
  std::vector<Note> notes;
};

Shown shownOfLink(std::string const& children, std::string const& member) {
  std::string const reply = element("get_wireless_status", children);
  Decoding const decoding = decode(reply);
  std::vector<Reading> const readings = decoding.readings();
  EXPECT_EQ(readings.size(), 1U) << reply;
  Value const* const found = readings.empty() ? nullptr : readings[0].record().find(member);
  EXPECT_NE(found, nullptr) << reply;
  return {found != nullptr ? *found : Value(), decoding.notes()};
}

void expectKeyword(Value const& value, int code, std::string const& word, bool known) {
  ASSERT_TRUE(value.isKeyword()) << word;
  EXPECT_EQ(value.code(), code) << word;
  EXPECT_EQ(value.word(), word);
  EXPECT_EQ(value.isKnown(), known) << word;
}

TEST(DecodedWireless, ShowsTheWordOfWhatTheMemberHolds) {
  struct {
    char const* member;
    std::vector<char const*> words;
    int code;
    char const* word;
    bool known;
  } const cases[] = {
      {"security", {"WPA"}, 3, "WPA", true},
      {"security", {"wep104"}, 2, "wep104", true},
      {"security", {"open"}, 0, "open", true},
      {"security", {"none"}, 0, "none", true},
      {"security", {"WEP", "WPA2"}, 5, "WPA_WPA2", true},
      {"security", {"wpa2_wpa", "wep"}, 5, "WPA_WPA2", true},
      {"security", {"WPA2", "WEP104"}, 6, "WEP104", false},  // no word has this code
      {"crypto", {"tkip"}, 2, "tkip", true},
      {"crypto", {"RC4", "tkip"}, 3, "CCMP", true},
      {"crypto", {"CCMP_TKIP"}, 4, "CCMP_TKIP", true},
      {"crypto", {"none"}, 0, "none", true},
      {"crypto", {"TKIP_CCMP", "rc4"}, 5, "rc4", false},
  };
  for (auto const& one : cases) {
    std::string children;
    for (char const* const word : one.words) children += element(one.member, word);
    Shown const shown = shownOfLink(children, one.member);
    expectKeyword(shown.value, one.code, one.word, one.known);
    std::vector<std::string> told;
    for (Note const& note : shown.notes) told.push_back(test::kindOf(note) + ' ' + note.found());
    std::vector<std::string> expected;
    if (one.words.size() > 1) {
      if (one.known) expected.push_back(std::string("other_spelling ") + one.words[1]);
      expected.push_back(std::string("repeated_element ") + one.words[0]);
    }
    EXPECT_EQ(told, expected) << children;
  }
}

TEST(DecodedWireless, NotesWordsThatItDoesNotKnow) {
  Shown const alone = shownOfLink(element("security", "Wpa"), "security");
  expectKeyword(alone.value, 0, "Wpa", false);
  ASSERT_EQ(alone.notes.size(), 1U);
  EXPECT_EQ(test::kindOf(alone.notes[0]), "unknown_word");
  EXPECT_EQ(alone.notes[0].element(), "security");
  EXPECT_EQ(alone.notes[0].found(), "Wpa");
  EXPECT_EQ(alone.notes[0].expected().size(), 16U);
  Shown const behind = shownOfLink(element("crypto", "TKIP") + element("crypto", "open"), "crypto");
  expectKeyword(behind.value, 2, "TKIP", true);
  ASSERT_EQ(behind.notes.size(), 1U) << "nothing is overwritten";
  EXPECT_EQ(test::kindOf(behind.notes[0]), "unknown_word");
  EXPECT_EQ(behind.notes[0].found(), "open");
  EXPECT_EQ(behind.notes[0].expected().size(), 11U);
}

TEST(DecodedWireless, ShowsAccessPointsInARoomOfTheirNumber) {
  std::string const reply = element(
      "AccessPoints",
      element("AccessPoint", element("SSID", "first") + element("Channel", "1") +
                                 element("Encryption", "ccmp") + element("Selected", "true")) +
          "<note/>" +
          element("AccessPoint",
                  element("BSSID", "02:00:5e:aa:0b:0c") + element("Security", "wpa")));
  Decoding const decoding = decode(reply);
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].message(), "access-points");
  EXPECT_TRUE(readings[0].result());
  Value const& record = readings[0].record();
  ASSERT_NE(record.find("count"), nullptr);
  EXPECT_EQ(record.find("count")->asNatural(), 3U) << "of all children";
  Value const* const points = record.find("accessPoints");
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(*points, Value::list({Value::object({{"ssid", "first"},
                                                 {"channel", 1},
                                                 {"encryption", Value::keyword(3, "ccmp")},
                                                 {"selected", true}}),
                                  Value::object({{"bssid", "02:00:5e:aa:0b:0c"},
                                                 {"security", Value::keyword(3, "wpa")}})}));
  std::vector<Note> const notes = decoding.notes();
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(test::kindOf(notes[0]), "unknown_element");
}

TEST(DecodedWireless, ShowsAnEmptyListOfAccessPoints) {
  std::vector<Reading> const readings = decode("<AccessPoints/>").readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_FALSE(readings[0].result());
  ASSERT_NE(readings[0].record().find("count"), nullptr);
  EXPECT_EQ(readings[0].record().find("count")->asNatural(), 0U);
}

TEST(WirelessVocabulary, HasEveryWordAndElement) {
  std::vector<std::string> const all = vocabulary();
  for (char const* const word :
       {"off",       "disconnected", "inactive",  "scanning",  "associating", "associated",
        "handshake", "connected",    "open",      "none",      "WEP",         "wep",
        "WEP40",     "wep40",        "WEP104",    "wep104",    "WPA",         "wpa",
        "WPA2",      "wpa2",         "WPA_WPA2",  "WPA2_WPA",  "wpa_wpa2",    "wpa2_wpa",
        "RC4",       "rc4",          "TKIP",      "tkip",      "CCMP",        "ccmp",
        "TKIP_CCMP", "CCMP_TKIP",    "tkip_ccmp", "ccmp_tkip", "AccessPoint", "SSID",
        "BSSID",     "MaxDataRate",  "link_lost", "upkts",     "rts_success"}) {
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), word)) << word;
  }
}

// ---- The interface ---------------------------------------------------------------------------

TEST(KVXStatusParser, HasEveryOperationOfTheWirelessNetworkWithItsSignature) {
  using P = KVXStatusParser;
  using Root = TiXmlElement*;
  using Text = wchar_t const&;
  [[maybe_unused]] bool (P::*const a)(Text, int, _tagWirelessStatus&) = &P::ParseWirelessStatusXML;
  [[maybe_unused]] bool (P::*const b)(Text, int, _tagWirelessRadioStatus&) =
      &P::ParseWirlessRadioXML;
  [[maybe_unused]] bool (P::*const c)(Text, int, _tagAccessPoints&) = &P::ParseAccessPoints;
  [[maybe_unused]] bool (P::*const d)(Root, _tagWirelessStatus&) = &P::parseWirelessStatus;
  [[maybe_unused]] bool (P::*const e)(Root, _tagWirelessRadioStatus&) =
      &P::parseWirelessRadioStatus;
  [[maybe_unused]] bool (P::*const f)(Root, _tagAccessPoints&) = &P::parseAllWirelessAccessPoint;
  [[maybe_unused]] bool (P::*const g)(Root, _tagAccessPoint&) = &P::parseWirelessAccessPoints;
  [[maybe_unused]] bool (P::*const h)(Root, _tagPackets&) = &P::ParsePacketsInfo;
  Combine const combine[] = {&P::GetSecurity, &P::GetCrypto};
  int (P::*const conversion)(char*) = &P::GetWirelessState;
  char word[] = "inactive";
  EXPECT_EQ((P().*conversion)(word), 2);
  EXPECT_EQ(combined(combine[0], "WEP104", 0), combined(combine[1], "TKIP", 0));
}

}  // namespace
}  // namespace Kovra
