#include "support/reading_operations.hpp"

#include <cxxabi.h>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <typeinfo>
#include <utility>

#include "kvxcapsparser.h"
#include "kvxconfigparser.h"
#include "kvxgetein.h"
#include "kvxlogparser.h"
#include "kvxmediaparser.h"
#include "kvxndc.h"
#include "kvxprinteridparser.h"
#include "kvxsecactionparser.h"
#include "kvxsensorparser.h"
#include "kvxstatusparser.h"
#include "support/folder.hpp"
#include "support/records.hpp"
#include "support/wide.hpp"

namespace Kovra::test {

// ---- Replies ---

/// What an operation reads, in the forms in which hosts have it.
struct HostReply {
  std::string narrow;
  std::wstring wide;
  TiXmlDocument tree;
  TiXmlElement* element = nullptr;  ///< of the tree: what the operation is called with
};

namespace {

// ---- Records ---------------------------------------------------------------------------------

template <class Part>
std::string bytesOf(Part const* parts, std::size_t count = 1) {
  return {reinterpret_cast<char const*>(parts), count * sizeof(Part)};
}

/// What a host puts into a record before it is read.
void prepare(...) {}
void prepare(KVJobList* list) {
  list->count = 128;
}  // the room that there is
void prepare(_MediaStatusInfo* media) {
  *media->description = '\0';
}  // panels are appended
void prepare(unsigned int* bits) {
  *bits = 0;
}  // bits are added

/// A record as a host has it, every byte the sentinel, on the heap since some are large.
template <class Record>
class Started {
 public:
  Started() { prepare(record_.get()); }
  Record& record() { return *record_; }
  std::string contents() const { return bytesOf(record_.get()); }

 private:
  std::unique_ptr<Record> record_ = std::make_unique<Record>(filled<Record>());
};

/// An array of `N` entries for the host's end of a pointer, every byte the sentinel.
template <class Entry, std::size_t N>
class Room {
 public:
  Room() { std::memset(static_cast<void*>(entries_.data()), sentinel, N * sizeof(Entry)); }
  Entry* data() { return entries_.data(); }
  std::string contents() const { return bytesOf(entries_.data(), N); }

 private:
  std::array<Entry, N> entries_;
};

template <>
class Started<_tagAccessPoints> {
 public:
  _tagAccessPoints& record() { return record_; }
  std::string contents() const { return bytesOf(&record_.count) + points_.contents(); }

 private:
  Room<_tagAccessPoint, 16> points_;
  _tagAccessPoints record_{points_.data(), 77};
};

template <>
class Started<_tagLogServiceXML> {
 public:
  _tagLogServiceXML& record() { return record_; }
  std::string contents() const { return bytesOf(&record_.count) + entries_.contents(); }

 private:
  Room<_tagLogServiceValues, 16> entries_;
  _tagLogServiceXML record_{16, entries_.data()};
};

template <>
class Started<_Capabilities> {
 public:
  Started() : record_(std::make_unique<_Capabilities>(filled<_Capabilities>())) {
    _Capabilities& caps = *record_;
    caps.hostPorts = hostPorts_.data();
    caps.devicePorts = devicePorts_.data();
    caps.swInterfaces = interfaces_.data();
    caps.ocpLanguages = languages_.data();
    caps.graphicFormats = formats_.data();
    caps.fonts = fonts_.data();
    caps.templates = templates_.data();
    caps.graphics = graphics_.data();
    caps.barcodes = barcodes_.data();
    for (int* const count : {&caps.hostPortCount, &caps.devicePortCount, &caps.swInterfaceCount,
                             &caps.ocpLanguageCount, &caps.graphicFormatCount, &caps.fontCount,
                             &caps.templateCount, &caps.graphicCount, &caps.barcodeCount}) {
      *count = most;
    }
  }

  _Capabilities& record() { return *record_; }

  /// Without the pointers, which are this record's own.
  std::string contents() const {
    _Capabilities caps;
    std::memcpy(static_cast<void*>(&caps), record_.get(), sizeof caps);
    caps.hostPorts = nullptr;
    caps.devicePorts = nullptr;
    caps.swInterfaces = nullptr;
    caps.ocpLanguages = nullptr;
    caps.graphicFormats = nullptr;
    caps.fonts = nullptr;
    caps.templates = nullptr;
    caps.graphics = nullptr;
    caps.barcodes = nullptr;
    return bytesOf(&caps) + hostPorts_.contents() + devicePorts_.contents() +
           interfaces_.contents() + languages_.contents() + formats_.contents() +
           fonts_.contents() + templates_.contents() + graphics_.contents() + barcodes_.contents();
  }

 private:
  static constexpr int most = 8;

  std::unique_ptr<_Capabilities> record_;
  Room<_PortCaps, most> hostPorts_;
  Room<_PortCaps, most> devicePorts_;
  Room<_InterfaceCaps, most> interfaces_;
  Room<_OCPLanguageCaps, most> languages_;
  Room<int, most> formats_;
  Room<_FontCaps, most> fonts_;
  Room<_TemplateCaps, most> templates_;
  Room<_TemplateCaps, most> graphics_;
  Room<_BarCodeCaps, most> barcodes_;
};

/// The entries in the order in which a reply has them, so that a reading that was cut short shows
/// as the beginning of a whole one.
template <>
class Started<_KVMediaInfo> {
 public:
  Started() { BuildKVMedia(record_.get()); }
  _KVMediaInfo& record() { return *record_; }
  std::string contents() const {
    std::string all;
    for (_CardInfo const* const card : *record_->cards) all += bytesOf(card);
    for (auto const* const list : {record_->films, record_->ribbons, record_->laminates}) {
      for (_MediaRibbonInfo const* const entry : *list) all += bytesOf(entry);
    }
    return all;
  }

 private:
  struct Destroy {
    void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
  };
  std::unique_ptr<_KVMediaInfo, Destroy> record_{GetKVMedia()};
};

/// Values that hosts get without a record around them.
template <std::size_t N>
struct Text {
  char text[N];
};
struct Exchange {
  _tagHostDHKeys host;
  long printer;
};
struct Cleanings {
  _tagCleaningLogEntry entries[32];
};

/// Comments enough that neither the text nor its nodes find room on the stack.
constexpr std::size_t commentCount = 700;
constexpr char commentText[] = " in the way ";

TiXmlElement* findElement(TiXmlNode& parent, char const* name) {
  for (TiXmlElement* child = parent.FirstChildElement(); child != nullptr;
       child = child->NextSiblingElement()) {
    if (std::strcmp(child->Value(), name) == 0) return child;
    if (TiXmlElement* const deeper = findElement(*child, name)) return deeper;
  }
  return nullptr;
}

std::string lengthened(std::string text) {
  std::string comments;
  for (std::size_t i = 0; i < commentCount; ++i) {
    comments.append("<!--").append(commentText).append("-->");
  }
  return text.insert(text.rfind("</"), comments);
}

std::unique_ptr<HostReply> replyOf(std::string const& text) {
  auto reply = std::make_unique<HostReply>();
  reply->narrow = text;
  reply->wide = test::wide(text);
  return reply;
}

/// The first element of that name from the sample, in a tree of the host's.
std::unique_ptr<HostReply> replyOf(std::string const& text, char const* element, Length length) {
  auto reply = std::make_unique<HostReply>();
  reply->tree.Parse(text.c_str());
  EXPECT_FALSE(reply->tree.Error()) << reply->tree.ErrorDesc();
  reply->element = findElement(reply->tree, element);
  if (length == Length::beyondTheStack && reply->element != nullptr) {
    for (std::size_t i = 0; i < commentCount; ++i) {
      reply->element->LinkEndChild(new TiXmlComment(commentText));
    }
  }
  return reply;
}

// ---- Operations ------------------------------------------------------------------------------

template <class Record>
using Call = std::function<bool(HostReply&, Record&)>;

template <class Record>
class TrialOf : public Trial {
 public:
  TrialOf(Call<Record> const& call, std::unique_ptr<HostReply> reply)
      : call_(&call), reply_(std::move(reply)) {}

  bool read() override { return (*call_)(*reply_, started_.record()); }
  std::string contents() const override { return started_.contents(); }

 private:
  Call<Record> const* call_;
  std::unique_ptr<HostReply> reply_;
  Started<Record> started_;
};

/// As an export's name begins: with namespace and class.
template <class Reader>
std::string nameIn(char const* operation) {
  std::unique_ptr<char, void (*)(void*)> const type(
      abi::__cxa_demangle(typeid(Reader).name(), nullptr, nullptr, nullptr), std::free);
  return std::string(type.get()) + "::" + operation;
}

template <class Reader, class Record>
ReadingOperation operation(char const* name, char const* sample, char const* element,
                           Call<Record> call) {
  auto start = [call = std::move(call)](std::unique_ptr<HostReply> reply) {
    return std::make_unique<TrialOf<Record>>(call, std::move(reply));
  };
  return {nameIn<Reader>(name), sample, element, std::move(start)};
}

ReadingOperation asking(Asks asks, ReadingOperation operation) {
  operation.asks = asks;
  return operation;
}

template <class Reader, class Number, class Record>
ReadingOperation wide(char const* name, char const* sample,
                      bool (Reader::*read)(wchar_t const&, Number, Record&)) {
  return operation<Reader, Record>(name, sample, nullptr, [read](HostReply& reply, Record& record) {
    return (Reader().*read)(*reply.wide.c_str(), static_cast<Number>(reply.wide.size()), record);
  });
}

template <class Reader, class Record>
ReadingOperation narrow(char const* name, char const* sample,
                        bool (Reader::*read)(char const*, int, Record&)) {
  return operation<Reader, Record>(name, sample, nullptr, [read](HostReply& reply, Record& record) {
    return (Reader().*read)(reply.narrow.c_str(), 0, record);
  });
}

template <class Reader, class Record>
ReadingOperation narrow(char const* name, char const* sample,
                        bool (Reader::*read)(char const&, int, Record&)) {
  return operation<Reader, Record>(name, sample, nullptr, [read](HostReply& reply, Record& record) {
    return (Reader().*read)(*reply.narrow.c_str(), 0, record);
  });
}

template <class Reader, class Record>
ReadingOperation host(char const* name, char const* sample, char const* element,
                      bool (Reader::*read)(TiXmlElement*, Record&)) {
  return operation<Reader, Record>(name, sample, element, [read](HostReply& reply, Record& record) {
    return (Reader().*read)(reply.element, record);
  });
}

std::vector<ReadingOperation> statusOperations() {
  using R = KVXStatusParser;
  return {
      wide("ParseStatus", "status/idle", &R::ParseStatus),
      host("parseStatus", "status/idle", "get_general_status", &R::parseStatus),
      wide("ParseJobList", "status/job_list_full", &R::ParseJobList),
      host("parseJobList", "status/job_list_full", "get_job_list", &R::parseJobList),
      host("parseJobInfo", "status/job_list_full", "job", &R::parseJobInfo),
      wide("ParseJobStatus", "status/job_status_full", &R::ParseJobStatus),
      host("parseJobStatus", "status/job_status_full", "get_job_status", &R::parseJobStatus),
      host("parseJobPrinting", "status/job_status_full", "status_printing", &R::parseJobPrinting),
      host("getStatus", "status/job_status_full", "status_mag", &R::getStatus),
      wide("ParseMediaStatus", "status/media_full", &R::ParseMediaStatus),
      host("parseMediaStatus", "status/media_full", "get_media_status", &R::parseMediaStatus),
      host("getRibbonStatus", "status/media_full", "ribbon", &R::getRibbonStatus),
      host("getInTMStatus", "status/media_full", "film", &R::getInTMStatus),
      host("getLaminateStatus", "status/media_full", "top_laminate", &R::getLaminateStatus),
      operation<R, _MediaStatusInfo>("getRibbonDescription", "status/media_full", "sequence",
                                     [](HostReply& reply, _MediaStatusInfo& record) {
                                       return R().getRibbonDescription(reply.element,
                                                                       record.description);
                                     }),
      wide("ParseSensorStatus", "status/sensor_status_full", &R::ParseSensorStatus),
      host("parseSensorStatus", "status/sensor_status_full", "get_sensor_status",
           &R::parseSensorStatus),
      host("parseSensorState", "status/sensor_status_full", "sensor_states", &R::parseSensorState),
      host("parseSensorValue", "status/sensor_status_full", "sensor_values", &R::parseSensorValue),
      wide("ParseCardCount", "status/counters_cards", &R::ParseCardCount),
      host("parseCardCount", "status/counters_cards", "get_count", &R::parseCardCount),
      wide("ParseCleanLogCount", "status/counters_cards", &R::ParseCleanLogCount),
      host("parseCleanLog", "status/counters_cards", "get_count", &R::parseCleanLog),
      wide("ParseUpTime", "status/counters_up_times", &R::ParseUpTime),
      host("parseUpTime", "status/counters_up_times", "get_laminator_up_times", &R::parseUpTime),
      wide("ParseCleaningStatus", "status/cleaning_progress", &R::ParseCleaningStatus),
      wide("GetPrinterFreeSpace", "status/memory_ram", &R::GetPrinterFreeSpace),
      wide("GetFlashFreeSpace", "status/memory_flash", &R::GetFlashFreeSpace),
      host("getFreeSpace", "status/memory_ram", "get_free_ram", &R::getFreeSpace),
      wide("ParseWirelessStatusXML", "status/wireless_link", &R::ParseWirelessStatusXML),
      host("parseWirelessStatus", "status/wireless_link", "get_wireless_status",
           &R::parseWirelessStatus),
      host("ParsePacketsInfo", "status/wireless_link", "in", &R::ParsePacketsInfo),
      host("GetSecurity", "status/wireless_link", "security", &R::GetSecurity),
      host("GetCrypto", "status/wireless_link", "crypto", &R::GetCrypto),
      wide("ParseWirlessRadioXML", "status/wireless_radio", &R::ParseWirlessRadioXML),
      host("parseWirelessRadioStatus", "status/wireless_radio", "get_wireless_radio_status",
           &R::parseWirelessRadioStatus),
      wide("ParseAccessPoints", "status/wireless_access_points", &R::ParseAccessPoints),
      host("parseAllWirelessAccessPoint", "status/wireless_access_points", "AccessPoints",
           &R::parseAllWirelessAccessPoint),
      host("parseWirelessAccessPoints", "status/wireless_access_points", "AccessPoint",
           &R::parseWirelessAccessPoints),
  };
}

std::vector<ReadingOperation> sensorOperations() {
  using R = KVXSensorParser;
  return {
      narrow("ParseSensorStates", "status/sensor_states", &R::ParseSensorStates),
      host("getSensorStates", "status/sensor_states", "get_sensor_status", &R::getSensorStates),
      host("getSensorState", "status/sensor_states", "sensor_states", &R::getSensorState),
      wide("ParseSensorInfo", "status/sensor_info", &R::ParseSensorInfo),
      host("parseSensorInfo", "status/sensor_info", "get_sensor_status", &R::parseSensorInfo),
      host("getInputOutputSensorInfo", "status/sensor_info", "input_output",
           &R::getInputOutputSensorInfo),
      host("getCardPathSensorInfo", "status/sensor_info", "card_path", &R::getCardPathSensorInfo),
      host("getDoorSensorInfo", "status/sensor_info", "doors", &R::getDoorSensorInfo),
      host("getPositioningSensorInfo", "status/sensor_info", "positioning",
           &R::getPositioningSensorInfo),
      host("getWebMediaSensorInfo", "status/sensor_info", "web_media", &R::getWebMediaSensorInfo),
      host("getRibbonSensorInfo", "status/sensor_info", "ribbon", &R::getRibbonSensorInfo),
      host("getRibbonColorSensorInfo", "status/sensor_info", "color", &R::getRibbonColorSensorInfo),
      host("getInTMSensorInfo", "status/sensor_info", "intm", &R::getInTMSensorInfo),
  };
}

std::vector<ReadingOperation> logOperations() {
  using R = KVXLogParser;
  using Response = Text<512>;
  return {
      wide("ParseLogServiceXML", "logs/service_history", &R::ParseLogServiceXML),
      host("parseServiceHistoryValues", "logs/service_history", "get_log_service_history",
           &R::parseServiceHistoryValues),
      host("getServiceValues", "logs/service_history", "service", &R::getServiceValues),
      operation<R, Cleanings>("ParseCleaningLog", "logs/cleaning_history", nullptr,
                              [](HostReply& reply, Cleanings& record) {
                                return R().ParseCleaningLog(*reply.wide.c_str(), reply.wide.size(),
                                                            record.entries);
                              }),
      operation<R, Cleanings>("getCleaningLogValues", "logs/cleaning_history",
                              "get_log_cleaning_history",
                              [](HostReply& reply, Cleanings& record) {
                                return R().getCleaningLogValues(reply.element, record.entries);
                              }),
      host("getCleaningLogEntry", "logs/cleaning_history", "cleaning", &R::getCleaningLogEntry),
      narrow("GetMagneticTracks", "logs/magnetic_tracks", &KVXGetEIN::GetMagneticTracks),
      host("parseMag", "logs/magnetic_tracks", "data", &KVXGetEIN::parseMag),
      host("parseTrack", "logs/magnetic_tracks", "mag", &KVXGetEIN::parseTrack),
      operation<KVXNDC, Response>("GetLaminatorResponse", "logs/laminator_response", nullptr,
                                  [](HostReply& reply, Response& record) {
                                    return KVXNDC().GetLaminatorResponse(
                                        *reply.wide.c_str(), static_cast<int>(reply.wide.size()),
                                        record.text);
                                  }),
  };
}

std::vector<ReadingOperation> configurationOperations() {
  using R = KVXConfigParser;
  char const* const full = "config/full";
  return {
      asking(Asks::forNodes, narrow("GetConfiguration", full, &R::GetConfiguration)),
      host("parseConfiguration", full, "configuration", &R::parseConfiguration),
      host("getNetworkParams", full, "ethernet", &R::getNetworkParams),
      host("getWirelessParams", full, "wireless", &R::getWirelessParams),
      host("getUSBTimeout", full, "usb_timeout", &R::getUSBTimeout),
      host("getOCPLanguage", full, "ocp_language", &R::getOCPLanguage),
      host("getErrorControl", full, "error_control", &R::getErrorControl),
      host("getUSBSpeed", full, "usb_speed", &R::getUSBSpeed),
      host("getUsageCounters", full, "usage_counters", &R::getUsageCounters),
      host("getPowerAdjustments", full, "mfg_power_adjustments", &R::getPowerAdjustments),
      host("getImagingParameters", full, "imaging_parameters", &R::getImagingParameters),
      host("getTricolorSettings", full, "tricolor_settings", &R::getTricolorSettings),
      host("getRibbonMotorParams", full, "ribbon_motor_parameters", &R::getRibbonMotorParams),
      host("getMechAdjustments", full, "mech_adjustments", &R::getMechAdjustments),
      host("getLaminateInfo", full, "top_laminate", &R::getLaminateInfo),
      host("getLaminationInfo", full, "lamination", &R::getLaminationInfo),
      host("getCardInformation", full, "information", &R::getCardInformation),
      host<R, _TransferTempInfo>("getTransferTemps", full, "transfer_temps", &R::getTransferTemps),
      host<R, _ImageTransferTempInfo>("getTransferTemps", full, "transfer_temps",
                                      &R::getTransferTemps),
      host("getTransferSpeeds", full, "transfer_speeds", &R::getTransferSpeeds),
      host("getTransferSettings", full, "transfer_settings", &R::getTransferSettings),
      host("getRibbonInfo", full, "ribbon", &R::getRibbonInfo),
      host("getMediaInfo", full, "media_info", &R::getMediaInfo),
      host("getInternalEncoder", full, "internal_encoder", &R::getInternalEncoder),
      host("getCleanParams", full, "cleaning", &R::getCleanParams),
      host("getCleaningThresholds", full, "cleaning_thresholds", &R::getCleaningThresholds),
      host("getLamAdjustments", full, "laminator_adjustments", &R::getLamAdjustments),
      host("getCardInfo", full, "card", &R::getCardInfo),
      host("getCards", full, "cards", &R::getCards),
      host("getFeederParams", full, "feeder_mode", &R::getFeederParams),
  };
}

std::vector<ReadingOperation> capabilitiesOperations() {
  using R = KVXCapsParser;
  char const* const full = "caps/full";
  return {
      wide("GetCapabilities", full, &R::GetCapabilities),
      host("parseCapabilities", full, "capabilities", &R::parseCapabilities),
      host("getHostPorts", full, "host_ports", &R::getHostPorts),
      host("getDevicePorts", full, "device_ports", &R::getDevicePorts),
      host("getSwInterfaces", full, "software_interfaces", &R::getSwInterfaces),
      host("getOCPLanguages", full, "ocp_languages", &R::getOCPLanguages),
      host("getGraphicFormatCaps", full, "graphic_formats", &R::getGraphicFormatCaps),
      host("getFontsCaps", full, "fonts", &R::getFontsCaps),
      host("getTemplates", full, "templates", &R::getTemplates),
      host("getGraphics", full, "graphics", &R::getGraphics),
      host("getBarCodes", full, "barcodes", &R::getBarCodes),
      host("getHostPort", full, "host_port", &R::getHostPort),
      host("getSwInterface", full, "software_interface", &R::getSwInterface),
      host("getOCPLanguage", full, "ocp_language", &R::getOCPLanguage),
      host("getFontCaps", full, "font", &R::getFontCaps),
      host("getTemplate", full, "template", &R::getTemplate),
      host("getSecurityCaps", full, "security", &R::getSecurityCaps),
      host("getInternalEncoderInfo", full, "internal_encoder", &R::getInternalEncoderInfo),
      host("getImageSharpeningLevels", full, "image_sharpening_levels",
           &R::getImageSharpeningLevels),
      host("getMemoryCaps", full, "memory", &R::getMemoryCaps),
      host("getMediaPath", full, "media_path", &R::getMediaPath),
      host("getImageCaps", full, "image", &R::getImageCaps),
      host("getLogicalPage", full, "logical_page", &R::getLogicalPage),
      host("getPhysicalPage", full, "physical_page", &R::getPhysicalPage),
      host("getPrintSystem", full, "print_system", &R::getPrintSystem),
      host("getPrintType", full, "print_type", &R::getPrintType),
      host("getLaminator", full, "laminator", &R::getLaminator),
      host("getLaminatorType", full, "laminator_type", &R::getLaminatorType),
  };
}

std::vector<ReadingOperation> mediaOperations() {
  using R = KVXMediaParser;
  char const* const full = "media/full";
  auto const appending = [](ReadingOperation appends) { return asking(Asks::forEntries, appends); };
  return {
      appending(narrow("GetMedia", full, &R::GetMedia)),
      appending(host("parseMedia", full, "media", &R::parseMedia)),
      appending(host("getCardsInfo", full, "cards", &R::getCardsInfo)),
      appending(host("getFilmsInfo", full, "films", &R::getFilmsInfo)),
      appending(host("getRibbonsInfo", full, "laminates", &R::getRibbonsInfo)),
      appending(host("getLaminatesInfo", full, "laminates", &R::getLaminatesInfo)),
      appending(host("getCardInfo", full, "card", &R::getCardInfo)),
      appending(host("getFilmInfo", full, "film", &R::getFilmInfo)),
      appending(host("getRibbonInfo", full, "film", &R::getRibbonInfo)),
      appending(host("getLaminateInfo", full, "laminate", &R::getLaminateInfo)),
      host("getCardInformation", full, "information", &R::getCardInformation),
      host("getTransferTemp", full, "transfer_temps", &R::getTransferTemp),
      host("getTransferSpeed", full, "transfer_speeds", &R::getTransferSpeed),
      host("getLaminationAdjustments", full, "laminator_adjustments", &R::getLaminationAdjustments),
  };
}

std::vector<ReadingOperation> securityOperations() {
  using R = KVXSecAction;
  return {
      operation<R, Text<32>>("GetNonceValue", "security/nonce", nullptr,
                             [](HostReply& reply, Text<32>& record) {
                               return R().GetNonceValue(*reply.wide.c_str(),
                                                        static_cast<int>(reply.wide.size()),
                                                        record.text);
                             }),
      wide("ParseHostDHKeyValues", "security/diffie-hellman", &R::ParseHostDHKeyValues),
      wide("ParsePrinterDHKeyValues", "security/diffie-hellman", &R::ParsePrinterDHKeyValues),
      operation<R, _tagSecReqXML>(
          "ParseSecureRequestValues", "security/secure-action-request", nullptr,
          [](HostReply& reply, _tagSecReqXML& record) {
            return R().ParseSecureRequestValues(reply.wide.data(), reply.wide.size(), record);
          }),
      wide("ParseSecureDirectiveValues", "security/secure-action-directive",
           &R::ParseSecureDirectiveValues),
      wide("ParseSecurityKeys", "security/security-keys", &R::ParseSecurityKeys),
      wide("ParseSetSecurityKeys", "security/security-key-change", &R::ParseSetSecurityKeys),
      wide("ParseGetSecureActionRequest", "security/passkey", &R::ParseGetSecureActionRequest),
      operation<R, Exchange>("ParseDHKeys", "security/diffie-hellman", "diffie_hellman",
                             [](HostReply& reply, Exchange& record) {
                               return R().ParseDHKeys(reply.element, record.host, record.printer);
                             }),
      asking(Asks::forAttributes, host("ParseDirectiveValues", "security/secure-action-directive",
                                       "action", &R::ParseDirectiveValues)),
      asking(Asks::forAttributes, host("ParseReqValues", "security/secure-action-request",
                                       "secure_action_request", &R::ParseReqValues)),
      host("ParseHostNEncryptKey", "security/security-keys", "keys", &R::ParseHostNEncryptKey),
      host("ParsePassKey", "security/security-key-change", "keys", &R::ParsePassKey),
      host("ParsePassKey1", "security/security-key-change", "set", &R::ParsePassKey1),
  };
}

std::vector<ReadingOperation> identityOperations() {
  using R = KVXPrinterIDParser;
  return {
      asking(Asks::forNodes, narrow("ParsePrinterInfo", "identity/full", &R::ParsePrinterInfo)),
      host("parsePrinterInfo", "identity/full", "printer_id", &R::parsePrinterInfo),
  };
}

}  // namespace

std::string ReadingOperation::text() const {
  std::string ascii = contentsOf(KOVRA_SAMPLES_DIR "/" + sample + ".xml");
  std::replace_if(
      ascii.begin(), ascii.end(), [](char c) { return (c & 0x80) != 0; }, '?');
  return ascii;
}

std::unique_ptr<Trial> ReadingOperation::startOn(std::string const& text, Length length) const {
  if (element != nullptr) return start(replyOf(text, element, length));
  return start(replyOf(length == Length::beyondTheStack ? lengthened(text) : text));
}

std::vector<ReadingOperation> readingOperations() {
  std::vector<ReadingOperation> all;
  for (auto const& family :
       {statusOperations(), sensorOperations(), logOperations(), configurationOperations(),
        capabilitiesOperations(), mediaOperations(), securityOperations(), identityOperations()}) {
    all.insert(all.end(), family.begin(), family.end());
  }
  return all;
}

}  // namespace Kovra::test
