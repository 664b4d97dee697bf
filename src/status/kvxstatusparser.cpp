#include "kvxstatusparser.h"

#include "frame/message.hpp"
#include "status/status_tables.hpp"

namespace Kovra {

namespace {

using namespace status;

constexpr auto securityAlone = security<&_tagWirelessStatus::security>("");
constexpr auto cipherAlone = cipher<&_tagWirelessStatus::crypto>("");

/// Reads the number of cards with `read`, which takes a record, and hands it to the host's variable
/// when there was one.
template <class Read>
bool readCards(int& out, Read read) {
  CardsUntilCleaning record;
  bool const result = read(record);
  if (record.total_cards_until_next_cleaning) out = *record.total_cards_until_next_cleaning;
  return result;
}

}  // namespace

KVXStatusParser::KVXStatusParser() = default;
KVXStatusParser::~KVXStatusParser() = default;

bool KVXStatusParser::ParseStatus(wchar_t const& text, int len, KVGeneralStatus& out) {
  return readReply(text, len, generalStatusRoots, generalStatus, out);
}

bool KVXStatusParser::parseStatus(TiXmlElement* root, KVGeneralStatus& out) {
  return walk(root, generalStatus, out);
}

int KVXStatusParser::printerStateToInt(char* keyword) {
  return printerStates.codeOf(keyword);
}

int KVXStatusParser::lamStateToInt(char* keyword) {
  return laminatorStates.codeOf(keyword);
}

// Jobs.

bool KVXStatusParser::ParseJobList(wchar_t const& text, int len, KVJobList& out) {
  return readReplyBy<JobListReading>(text, len, jobListRoots, out);
}

bool KVXStatusParser::parseJobList(TiXmlElement* root, KVJobList& out) {
  return readHost<JobListReading>(root, out);
}

bool KVXStatusParser::parseJobInfo(TiXmlElement* job, _KVJobInfo& out) {
  return walk(job, jobInfo, out);
}

bool KVXStatusParser::ParseJobStatus(wchar_t const& text, int len, KVJobStatus& out) {
  return readReply(text, len, jobStatusRoots, jobStatus, out);
}

bool KVXStatusParser::parseJobStatus(TiXmlElement* root, KVJobStatus& out) {
  return walk(root, jobStatus, out);
}

bool KVXStatusParser::parseJobPrinting(TiXmlElement* printing, KVJobStatus& out) {
  return walk(printing, jobPrinting, out);
}

bool KVXStatusParser::getStatus(TiXmlElement* encoder, KVJobStatus& out) {
  return walk(encoder, encoderStates, out);
}

int KVXStatusParser::jobStatusToInt(char* keyword) {
  return jobStates.codeOf(keyword);
}

// Counters.

bool KVXStatusParser::ParseCardCount(wchar_t const& text, int len, KVCardCount& out) {
  return readReply(text, len, countRoots, cardCount, out);
}

bool KVXStatusParser::parseCardCount(TiXmlElement* root, KVCardCount& out) {
  return walk(root, cardCount, out);
}

bool KVXStatusParser::ParseCleanLogCount(wchar_t const& text, int len, int& out) {
  return readCards(out, [&](CardsUntilCleaning& record) {
    return readReply(text, len, countRoots, cardsUntilCleaning, record);
  });
}

bool KVXStatusParser::parseCleanLog(TiXmlElement* root, int& out) {
  return readCards(
      out, [&](CardsUntilCleaning& record) { return walk(root, cardsUntilCleaning, record); });
}

bool KVXStatusParser::ParseUpTime(wchar_t const& text, int len, KVUpTimes& out) {
  return readReply(text, len, upTimeRoots, upTimes, out);
}

bool KVXStatusParser::parseUpTime(TiXmlElement* root, KVUpTimes& out) {
  return walk(root, upTimes, out);
}

bool KVXStatusParser::ParseCleaningStatus(wchar_t const& text, int len, KVCleaningStatus& out) {
  return readReply(text, len, cleaningStatusRoots, cleaningStatus, out);
}

int KVXStatusParser::cleaningStateToInt(char* keyword) {
  return cleaningStates.codeOf(keyword);
}

bool KVXStatusParser::GetPrinterFreeSpace(wchar_t const& text, int len, __MEMORY& out) {
  return readReply(text, len, freeRamRoots, freeSpace, out);
}

bool KVXStatusParser::GetFlashFreeSpace(wchar_t const& text, int len, __MEMORY& out) {
  return readReply(text, len, freeFlashRoots, freeSpace, out);
}

bool KVXStatusParser::getFreeSpace(TiXmlElement* root, __MEMORY& out) {
  return walk(root, freeSpace, out);
}

// Media.

bool KVXStatusParser::ParseMediaStatus(wchar_t const& text, int len, MediaStatus& out) {
  return readReply(text, len, mediaStatusRoots, mediaStatus, out);
}

bool KVXStatusParser::parseMediaStatus(TiXmlElement* root, MediaStatus& out) {
  return walk(root, mediaStatus, out);
}

bool KVXStatusParser::getRibbonStatus(TiXmlElement* element, MediaStatus& out) {
  return walk(element, ribbon, out.ribbon);
}

bool KVXStatusParser::getInTMStatus(TiXmlElement* element, MediaStatus& out) {
  return walk(element, film, out.film);
}

bool KVXStatusParser::getLaminateStatus(TiXmlElement* element, _MediaStatusInfo& out) {
  return walk(element, laminate, out);
}

bool KVXStatusParser::getRibbonDescription(TiXmlElement* sequence, char* description) {
  if (description == nullptr) return false;
  Description whole(description, Description::extent);
  return walk(sequence, ribbonPanels, whole);
}

// Sensors.

bool KVXStatusParser::ParseSensorStatus(wchar_t const& text, int len, _SENSOR& out) {
  return readReply(text, len, sensorStatusRoots, sensorStatus, out);
}

bool KVXStatusParser::parseSensorStatus(TiXmlElement* root, _SENSOR& out) {
  return walk(root, sensorStatus, out);
}

bool KVXStatusParser::parseSensorState(TiXmlElement* states, _SENSOR& out) {
  return walk(states, sensorStates, out);
}

bool KVXStatusParser::parseSensorValue(TiXmlElement* values, _SENSOR& out) {
  return walk(values, sensorValues, out);
}

// Wireless.

bool KVXStatusParser::ParseWirelessStatusXML(wchar_t const& text, int len,
                                             _tagWirelessStatus& out) {
  return readReply(text, len, wirelessStatusRoots, wirelessStatus, out);
}

bool KVXStatusParser::parseWirelessStatus(TiXmlElement* root, _tagWirelessStatus& out) {
  return walk(root, wirelessStatus, out);
}

bool KVXStatusParser::ParsePacketsInfo(TiXmlElement* element, _tagPackets& out) {
  return walk(element, packets, out);
}

bool KVXStatusParser::ParseWirlessRadioXML(wchar_t const& text, int len,
                                           _tagWirelessRadioStatus& out) {
  return readReply(text, len, radioStatusRoots, radioStatus, out);
}

bool KVXStatusParser::parseWirelessRadioStatus(TiXmlElement* root, _tagWirelessRadioStatus& out) {
  return walk(root, radioStatus, out);
}

bool KVXStatusParser::ParseAccessPoints(wchar_t const& text, int len, _tagAccessPoints& out) {
  return readReplyBy<AccessPointsReading>(text, len, accessPointsRoots, out);
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
  return readHostMember<&_tagWirelessStatus::security, securityAlone>(element, out);
}

bool KVXStatusParser::GetCrypto(TiXmlElement* element, unsigned int& out) {
  return readHostMember<&_tagWirelessStatus::crypto, cipherAlone>(element, out);
}

}  // namespace Kovra
