#include <memory>

#include "frame/typed/reply.hpp"
#include "frame/vocabulary.hpp"
#include "kvxstatusparser.h"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// An unknown word is taken for "off".
constexpr Word wirelessStateWords[] = {
    {"off", 0},         {"disconnected", 1}, {"inactive", 2},  {"scanning", 3},
    {"associating", 4}, {"associated", 5},   {"handshake", 6}, {"connected", 7},
};
constexpr Vocabulary wirelessStates{wirelessStateWords, Match::exact, 0};
static_assert(everyWordIsReachable(wirelessStates));

// Security and cipher. Words in mixed case are unknown. The words of code 0 set nothing.

constexpr Word securityWords[] = {
    {"open", 0},     {"none", 0},     {"WEP", 1},      {"wep", 1},      {"WEP40", 1}, {"wep40", 1},
    {"WEP104", 2},   {"wep104", 2},   {"WPA", 3},      {"wpa", 3},      {"WPA2", 4},  {"wpa2", 4},
    {"WPA_WPA2", 5}, {"WPA2_WPA", 5}, {"wpa_wpa2", 5}, {"wpa2_wpa", 5},
};
constexpr Vocabulary securities{securityWords, Match::exact, 0};
static_assert(everyWordIsReachable(securities));

/// The mixed cipher is 4 in the wireless replies, though the configuration knows it as 3: meant.
constexpr Word cipherWords[] = {
    {"none", 0},      {"RC4", 1},       {"rc4", 1},       {"TKIP", 2},
    {"tkip", 2},      {"CCMP", 3},      {"ccmp", 3},      {"TKIP_CCMP", 4},
    {"CCMP_TKIP", 4}, {"tkip_ccmp", 4}, {"ccmp_tkip", 4},
};
constexpr Vocabulary ciphers{cipherWords, Match::exact, 0};
static_assert(everyWordIsReachable(ciphers));

/// A keyword whose code is combined by OR with what the member holds, so that a second element
/// merges into the first ("WEP" then "WPA2" gives 5): hosts rely on it. Words of code 0 and unknown
/// ones count as read and change nothing.
template <Vocabulary const& Words>
struct MergedKeywordKind : NeverWritten, NeverAssigned {
  static_assert(Words.unknown == 0, "an unknown word sets nothing");

  static bool read(Element element, unsigned int& out) {
    WordText text;
    if (!text.read(element)) return false;
    out |= static_cast<unsigned int>(Words.codeOf(text.get()));
    return true;
  }

  /// Where the member holds more than this element's word, the word shown is that of the member.
  static void report(Observer& observer, std::string_view name, Element element,
                     unsigned int value) {
    WordText text;
    text.read(element);
    int const code = static_cast<int>(value);
    Word const* const sent = Words.find(text.get());
    if (sent == nullptr) observer.unknownWord(element, element.text(), Words);
    std::string_view const word =
        sent != nullptr && sent->code == code ? sent->text : Words.wordOf(code);
    bool const known = !word.empty() && (sent != nullptr || code != 0);
    observer.member(name, shownKeyword(code, known ? word : text.get(), known));
  }

  static void outline(Outline& outline) {
    for (Word const& word : Words.words) outline.emplace(word.text);
  }
};

template <auto M>
constexpr auto security(std::string_view element) {
  return row<M, MergedKeywordKind<securities>>(element);
}

template <auto M>
constexpr auto cipher(std::string_view element) {
  return row<M, MergedKeywordKind<ciphers>>(element);
}

// The state of the link.

constexpr Table packets = {
    number<&_tagPackets::octets>("octets"), number<&_tagPackets::upkts>("upkts"),
    number<&_tagPackets::nupkts>("nupkts"), number<&_tagPackets::discards>("discards"),
    number<&_tagPackets::errors>("errors"),
};

constexpr Table wirelessStatus = {
    keyword<&_tagWirelessStatus::state, wirelessStates>("state"),
    text<&_tagWirelessStatus::ssid>("ssid"),
    number<&_tagWirelessStatus::channel>("channel"),
    number<&_tagWirelessStatus::rssi>("rssi"),
    number<&_tagWirelessStatus::snr>("snr"),
    number<&_tagWirelessStatus::nf>("nf"),
    security<&_tagWirelessStatus::security>("security"),
    cipher<&_tagWirelessStatus::crypto>("crypto"),
    number<&_tagWirelessStatus::rate>("rate"),
    nested<&_tagWirelessStatus::in, packets>("in"),
    nested<&_tagWirelessStatus::out, packets>("out"),
    number<&_tagWirelessStatus::link_lost>("link_lost"),
};

// The radio.

constexpr Table radioStatus = {
    number<&_tagWirelessRadioStatus::mcasttxframe>("mcasttxframe"),
    number<&_tagWirelessRadioStatus::failed>("failed"),
    number<&_tagWirelessRadioStatus::retry>("retry"),
    number<&_tagWirelessRadioStatus::multiretry>("multiretry"),
    number<&_tagWirelessRadioStatus::framedup>("framedup"),
    number<&_tagWirelessRadioStatus::rtssuccess>("rtssuccess"),
    number<&_tagWirelessRadioStatus::rtsfailure>("rtsfailure"),
    number<&_tagWirelessRadioStatus::ackfailure>("ackfailure"),
    number<&_tagWirelessRadioStatus::rxfrag>("rxfrag"),
    number<&_tagWirelessRadioStatus::mcastrxframe>("mcastrxframe"),
    number<&_tagWirelessRadioStatus::fcserror>("fcserror"),
    number<&_tagWirelessRadioStatus::txframe>("txframe"),
    number<&_tagWirelessRadioStatus::tx_success>("tx_success"),
    number<&_tagWirelessRadioStatus::tx_retry>("tx_retry"),
    number<&_tagWirelessRadioStatus::rx_success>("rx_success"),
    number<&_tagWirelessRadioStatus::rx_duplicate>("rx_duplicate"),
    number<&_tagWirelessRadioStatus::rts_success>("rts_success"),
};

// Access points. Their elements are spelled in a style of their own.

constexpr Table accessPoint = {
    text<&_tagAccessPoint::ssid>("SSID"),
    address<&_tagAccessPoint::bssid>("BSSID"),
    flagIf<&_tagAccessPoint::selected, "true">("Selected"),
    number<&_tagAccessPoint::channel>("Channel"),
    number<&_tagAccessPoint::privacy>("Privacy"),
    number<&_tagAccessPoint::signalStrength>("SignalStrength"),
    flagIf<&_tagAccessPoint::infrastructure, "true">("Infrastructure"),
    security<&_tagAccessPoint::security>("Security"),
    cipher<&_tagAccessPoint::encryption>("Encryption"),
    number<&_tagAccessPoint::maxDataRate>("MaxDataRate"),
};

/// The count is stored before anything else, and it is that of all children, so it may be more than
/// what is stored. It is also all that a host with an array promises to have room for.
struct AccessPointsReading
    : EntriesOf<&_tagAccessPoints::accessPoints, "AccessPoint", accessPoint> {
  static bool read(Element root, _tagAccessPoints& record, Watch const& watch) {
    record.count = static_cast<unsigned int>(countChildren(root));
    if (record.accessPoints == nullptr) return true;
    return EntriesOf::read(root, {record.accessPoints, record.count}, watch);
  }
};

/// What a host does: it asks for the count, makes room, and reads again.
bool decodeAccessPoints(Element root, Observer& observer) {
  Watch const nobody;
  _tagAccessPoints record{};
  AccessPointsReading::read(root, record, nobody);
  auto const room = std::make_unique<_tagAccessPoint[]>(record.count);
  record.accessPoints = room.get();
  observer.member(frame::Member<&_tagAccessPoints::count>::name(), shown(record.count));
  return AccessPointsReading::read(root, record, observer);
}

// All wireless replies.

constexpr char const* wirelessStatusRoots[] = {"get_wireless_status"};
constexpr char const* radioStatusRoots[] = {"get_wireless_radio_status"};
constexpr char const* accessPointsRoots[] = {"AccessPoints"};

using WirelessStatusReading = TableReading<wirelessStatus>;
using RadioStatusReading = TableReading<radioStatus>;

constexpr ReplyReader replies[] = {
    reader<_tagWirelessStatus, WirelessStatusReading>(
        "wireless-status", "state, signal and packets of the wireless link", wirelessStatusRoots),
    reader<_tagWirelessRadioStatus, RadioStatusReading>(
        "wireless-radio", "frame counters of the wireless radio", radioStatusRoots),
    {"access-points", "access points in range", accessPointsRoots, decodeAccessPoints,
     AccessPointsReading::outline},
};

}  // namespace

std::span<frame::ReplyReader const> wirelessReplies() {
  return replies;
}

bool KVXStatusParser::ParseWirelessStatusXML(wchar_t const& text, int len,
                                             _tagWirelessStatus& out) {
  return readReply<WirelessStatusReading>(text, len, wirelessStatusRoots, out);
}

bool KVXStatusParser::parseWirelessStatus(TiXmlElement* root, _tagWirelessStatus& out) {
  return walk(root, wirelessStatus, out);
}

bool KVXStatusParser::ParsePacketsInfo(TiXmlElement* element, _tagPackets& out) {
  return walk(element, packets, out);
}

bool KVXStatusParser::ParseWirlessRadioXML(wchar_t const& text, int len,
                                           _tagWirelessRadioStatus& out) {
  return readReply<RadioStatusReading>(text, len, radioStatusRoots, out);
}

bool KVXStatusParser::parseWirelessRadioStatus(TiXmlElement* root, _tagWirelessRadioStatus& out) {
  return walk(root, radioStatus, out);
}

bool KVXStatusParser::ParseAccessPoints(wchar_t const& text, int len, _tagAccessPoints& out) {
  return readReply<AccessPointsReading>(text, len, accessPointsRoots, out);
}

bool KVXStatusParser::parseAllWirelessAccessPoint(TiXmlElement* root, _tagAccessPoints& out) {
  return readHost<AccessPointsReading>(root, out);
}

bool KVXStatusParser::parseWirelessAccessPoints(TiXmlElement* element, _tagAccessPoint& out) {
  return walk(element, accessPoint, out);
}

int KVXStatusParser::GetWirelessState(char* keyword) {
  return wirelessStates.codeOf(keyword);
}

bool KVXStatusParser::GetSecurity(TiXmlElement* element, unsigned int& out) {
  return readHostValue<MergedKeywordKind<securities>>(element, out);
}

bool KVXStatusParser::GetCrypto(TiXmlElement* element, unsigned int& out) {
  return readHostValue<MergedKeywordKind<ciphers>>(element, out);
}

}  // namespace Kovra
