// Every operation that reads, with every allocation failing in turn: nothing is lost, the record is
// as it was or as far as it had come, and the next call is right.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

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
#include "support/allocations.hpp"
#include "support/folder.hpp"
#include "support/records.hpp"
#include "support/streams.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::Allocations;
using test::contentsOf;
using test::filled;
using test::sentinel;

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

// ---- Replies ---------------------------------------------------------------------------------

/// What an operation reads, in the forms in which hosts have it.
struct Reply {
  std::string narrow;
  std::wstring wide;
  TiXmlDocument tree;
  TiXmlElement* element = nullptr;  ///< of the tree: what the operation is called with
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

enum class Length { ofOrdinaryReplies, beyondTheStack };

std::string lengthened(std::string text) {
  std::string comments;
  for (std::size_t i = 0; i < commentCount; ++i) {
    comments.append("<!--").append(commentText).append("-->");
  }
  return text.insert(text.rfind("</"), comments);
}

std::unique_ptr<Reply> replyOf(std::string const& text) {
  auto reply = std::make_unique<Reply>();
  reply->narrow = text;
  reply->wide = test::wide(text);
  return reply;
}

/// The first element of that name from the sample, in a tree of the host's.
std::unique_ptr<Reply> replyOf(std::string const& text, char const* element, Length length) {
  auto reply = std::make_unique<Reply>();
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

/// One call of an operation: its reply and the record that it fills.
class Trial {
 public:
  Trial() = default;
  virtual ~Trial() = default;
  Trial(Trial const&) = delete;
  Trial& operator=(Trial const&) = delete;

  virtual bool read() = 0;
  virtual std::string contents() const = 0;
};

template <class Record>
using Call = std::function<bool(Reply&, Record&)>;

template <class Record>
class TrialOf : public Trial {
 public:
  TrialOf(Call<Record> const& call, std::unique_ptr<Reply> reply)
      : call_(&call), reply_(std::move(reply)) {}

  bool read() override { return (*call_)(*reply_, started_.record()); }
  std::string contents() const override { return started_.contents(); }

 private:
  Call<Record> const* call_;
  std::unique_ptr<Reply> reply_;
  Started<Record> started_;
};

/// What a reading asks of the heap for itself, besides what its reply takes.
enum class Asks {
  nothing,
  forAttributes,  ///< it sets some in the host's tree, before it reads
  forNodes,       ///< the reader is itself a document, and shows its outcome before it reads
  forEntries,     ///< of the record: a reading cut short leaves those that it had read
};

struct Operation {
  std::string name;
  std::string sample;
  char const* element;  ///< null for those that take a text
  std::function<std::unique_ptr<Trial>(std::unique_ptr<Reply>)> start;
  Asks asks = Asks::nothing;

  /// The sample, readable in any locale.
  std::string text() const {
    std::string ascii = contentsOf(KOVRA_SAMPLES_DIR "/" + sample + ".xml");
    std::replace_if(
        ascii.begin(), ascii.end(), [](char c) { return (c & 0x80) != 0; }, '?');
    return ascii;
  }

  std::unique_ptr<Trial> startOn(std::string const& text, Length length) const {
    if (element != nullptr) return start(replyOf(text, element, length));
    return start(replyOf(length == Length::beyondTheStack ? lengthened(text) : text));
  }
};

template <class Record>
Operation operation(char const* name, char const* sample, char const* element, Call<Record> call) {
  return {name, sample, element, [call = std::move(call)](std::unique_ptr<Reply> reply) {
            return std::make_unique<TrialOf<Record>>(call, std::move(reply));
          }};
}

Operation asking(Asks asks, Operation operation) {
  operation.asks = asks;
  return operation;
}

template <class Reader, class Number, class Record>
Operation wide(char const* name, char const* sample,
               bool (Reader::*read)(wchar_t const&, Number, Record&)) {
  return operation<Record>(name, sample, nullptr, [read](Reply& reply, Record& record) {
    return (Reader().*read)(*reply.wide.c_str(), static_cast<Number>(reply.wide.size()), record);
  });
}

template <class Reader, class Record>
Operation narrow(char const* name, char const* sample,
                 bool (Reader::*read)(char const*, int, Record&)) {
  return operation<Record>(name, sample, nullptr, [read](Reply& reply, Record& record) {
    return (Reader().*read)(reply.narrow.c_str(), 0, record);
  });
}

template <class Reader, class Record>
Operation narrow(char const* name, char const* sample,
                 bool (Reader::*read)(char const&, int, Record&)) {
  return operation<Record>(name, sample, nullptr, [read](Reply& reply, Record& record) {
    return (Reader().*read)(*reply.narrow.c_str(), 0, record);
  });
}

template <class Reader, class Record>
Operation host(char const* name, char const* sample, char const* element,
               bool (Reader::*read)(TiXmlElement*, Record&)) {
  return operation<Record>(name, sample, element, [read](Reply& reply, Record& record) {
    return (Reader().*read)(reply.element, record);
  });
}

std::vector<Operation> statusOperations() {
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
      operation<_MediaStatusInfo>("getRibbonDescription", "status/media_full", "sequence",
                                  [](Reply& reply, _MediaStatusInfo& record) {
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

std::vector<Operation> sensorOperations() {
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

std::vector<Operation> logOperations() {
  using R = KVXLogParser;
  using Response = Text<512>;
  return {
      wide("ParseLogServiceXML", "logs/service_history", &R::ParseLogServiceXML),
      host("parseServiceHistoryValues", "logs/service_history", "get_log_service_history",
           &R::parseServiceHistoryValues),
      host("getServiceValues", "logs/service_history", "service", &R::getServiceValues),
      operation<Cleanings>("ParseCleaningLog", "logs/cleaning_history", nullptr,
                           [](Reply& reply, Cleanings& record) {
                             return R().ParseCleaningLog(*reply.wide.c_str(), reply.wide.size(),
                                                         record.entries);
                           }),
      operation<Cleanings>("getCleaningLogValues", "logs/cleaning_history",
                           "get_log_cleaning_history",
                           [](Reply& reply, Cleanings& record) {
                             return R().getCleaningLogValues(reply.element, record.entries);
                           }),
      host("getCleaningLogEntry", "logs/cleaning_history", "cleaning", &R::getCleaningLogEntry),
      narrow("GetMagneticTracks", "logs/magnetic_tracks", &KVXGetEIN::GetMagneticTracks),
      host("parseMag", "logs/magnetic_tracks", "data", &KVXGetEIN::parseMag),
      host("parseTrack", "logs/magnetic_tracks", "mag", &KVXGetEIN::parseTrack),
      operation<Response>("GetLaminatorResponse", "logs/laminator_response", nullptr,
                          [](Reply& reply, Response& record) {
                            return KVXNDC().GetLaminatorResponse(
                                *reply.wide.c_str(), static_cast<int>(reply.wide.size()),
                                record.text);
                          }),
  };
}

std::vector<Operation> configurationOperations() {
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
      host<R, _TransferTempInfo>("getTransferTemps of a card", full, "transfer_temps",
                                 &R::getTransferTemps),
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

std::vector<Operation> capabilitiesOperations() {
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

std::vector<Operation> mediaOperations() {
  using R = KVXMediaParser;
  char const* const full = "media/full";
  auto const appending = [](Operation appends) { return asking(Asks::forEntries, appends); };
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

std::vector<Operation> securityOperations() {
  using R = KVXSecAction;
  return {
      operation<Text<32>>("GetNonceValue", "security/nonce", nullptr,
                          [](Reply& reply, Text<32>& record) {
                            return R().GetNonceValue(*reply.wide.c_str(),
                                                     static_cast<int>(reply.wide.size()),
                                                     record.text);
                          }),
      wide("ParseHostDHKeyValues", "security/diffie-hellman", &R::ParseHostDHKeyValues),
      wide("ParsePrinterDHKeyValues", "security/diffie-hellman", &R::ParsePrinterDHKeyValues),
      operation<_tagSecReqXML>(
          "ParseSecureRequestValues", "security/secure-action-request", nullptr,
          [](Reply& reply, _tagSecReqXML& record) {
            return R().ParseSecureRequestValues(reply.wide.data(), reply.wide.size(), record);
          }),
      wide("ParseSecureDirectiveValues", "security/secure-action-directive",
           &R::ParseSecureDirectiveValues),
      wide("ParseSecurityKeys", "security/security-keys", &R::ParseSecurityKeys),
      wide("ParseSetSecurityKeys", "security/security-key-change", &R::ParseSetSecurityKeys),
      wide("ParseGetSecureActionRequest", "security/passkey", &R::ParseGetSecureActionRequest),
      operation<Exchange>("ParseDHKeys", "security/diffie-hellman", "diffie_hellman",
                          [](Reply& reply, Exchange& record) {
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

std::vector<Operation> identityOperations() {
  using R = KVXPrinterIDParser;
  return {
      asking(Asks::forNodes, narrow("ParsePrinterInfo", "identity/full", &R::ParsePrinterInfo)),
      host("parsePrinterInfo", "identity/full", "printer_id", &R::parsePrinterInfo),
  };
}

std::vector<Operation> allOperations() {
  std::vector<Operation> all;
  for (auto const& family :
       {statusOperations(), sensorOperations(), logOperations(), configurationOperations(),
        capabilitiesOperations(), mediaOperations(), securityOperations(), identityOperations()}) {
    all.insert(all.end(), family.begin(), family.end());
  }
  return all;
}

// ---- What becomes of them --------------------------------------------------------------------

/// Lets allocation number `failing` of a reading fail; did the exception reach the host?
bool throws(Trial& trial, std::size_t failing) {
  Allocations const allocations(failing);
  try {
    trial.read();
  } catch (std::bad_alloc const&) {
    return true;
  }
  return false;
}

/// How many blocks are left when the reading is over and the host has destroyed what is his.
std::size_t lostBy(std::unique_ptr<Trial> trial, std::size_t failing) {
  Allocations const allocations(failing);
  try {
    std::unique_ptr<Trial> const owned = std::move(trial);
    owned->read();
  } catch (std::bad_alloc const&) {
  }
  return allocations.alive();
}

bool isBeginning(std::string const& part, std::string const& whole) {
  return whole.compare(0, part.size(), part) == 0;
}

/// One operation on one reply, with each allocation failing. The result is how many there were.
std::size_t expectHarmless(Operation const& operation, std::string const& text, Length length) {
  auto const start = [&] { return operation.startOn(text, length); };
  auto const whole = start();
  std::string const before = whole->contents();
  bool const result = whole->read();
  std::string const expected = whole->contents();

  for (std::size_t failing = 1;; ++failing) {
    SCOPED_TRACE("allocation " + std::to_string(failing));
    auto trial = start();
    bool const threw = throws(*trial, failing);
    EXPECT_EQ(lostBy(start(), failing), 0U);
    if (!threw) {
      EXPECT_EQ(trial->contents(), expected);
      return failing - 1;
    }
    std::string const left = trial->contents();
    if (operation.asks == Asks::forEntries) {
      EXPECT_TRUE(isBeginning(left, expected)) << "no entry is cut or lost";
      trial = start();
    } else {
      EXPECT_EQ(left, before);
    }
    EXPECT_EQ(trial->read(), result);
    EXPECT_EQ(trial->contents(), expected) << "the next call is right";
  }
}

using ReadingWithoutMemory = test::HeapTest;

TEST_F(ReadingWithoutMemory, LosesNothingAndLeavesTheRecordUsable) {
  test::RibbonLines const taken;
  for (Operation const& operation : allOperations()) {
    SCOPED_TRACE(operation.name);
    std::string const text = operation.text();
    auto const trial = operation.startOn(text, Length::ofOrdinaryReplies);
    std::string const before = trial->contents();
    trial->read();
    // An exchanged request is read for its effect on the host's tree alone.
    EXPECT_EQ(trial->contents() == before, operation.sample == "security/secure-action-request");

    std::size_t const ordinary = expectHarmless(operation, text, Length::ofOrdinaryReplies);
    std::size_t const beyond = expectHarmless(operation, text, Length::beyondTheStack);
    // One block for a text beyond the stack, one for its nodes.
    std::size_t const copies = operation.element == nullptr && text.size() > 8192 ? 1 : 0;
    if (operation.asks == Asks::nothing) {
      EXPECT_EQ(ordinary, 0U);
      EXPECT_EQ(beyond, 2U);
    } else {
      EXPECT_GT(ordinary, copies);
      EXPECT_EQ(beyond - ordinary, 2U - copies);
    }
  }
}

TEST_F(ReadingWithoutMemory, LeavesTheRecordAloneWhereTheTextIsRefused) {
  for (Operation const& operation : allOperations()) {
    if (operation.element != nullptr) continue;
    SCOPED_TRACE(operation.name);
    std::string text = operation.text();
    text.insert(text.rfind("</"), "<open>");
    auto const trial = operation.startOn(text, Length::ofOrdinaryReplies);
    std::string const before = trial->contents();
    EXPECT_FALSE(trial->read());
    EXPECT_EQ(trial->contents(), before);
    expectHarmless(operation, text, Length::beyondTheStack);
  }
}

/// What comes of a text that a reader refuses, which is itself a document.
struct Outcome {
  bool threw = false;
  std::size_t lost = 0;  ///< blocks; they are given back here
  std::string next;      ///< the error that is shown when the call is made again
};

std::string errorOf(TiXmlDocument const& document) {
  return document.ErrorDesc() + (" at " + std::to_string(document.ErrorRow()));
}

Outcome outcomeOf(char const* text, std::size_t failing) {
  Outcome outcome;
  outcome.next.reserve(100);
  KVPrinterInfo record;
  Allocations allocations(failing);
  {
    KVXPrinterIDParser parser;
    try {
      parser.ParsePrinterInfo(text, 0, record);
    } catch (std::bad_alloc const&) {
      outcome.threw = true;
    }
    if (outcome.threw) {
      parser.ParsePrinterInfo(text, 0, record);
      std::string const error = errorOf(parser);
      outcome.next.assign(error);
    }
  }
  outcome.lost = allocations.reclaim();
  return outcome;
}

// Where a text ends or breaks behind an attribute, only a parse can set the error, and TinyXML
// loses its element when there is no memory for the attribute.
TEST_F(ReadingWithoutMemory, LosesNothingWhereADocumentShowsAnError) {
  constexpr std::size_t none = 0;
  struct {
    char const* text;
    std::size_t losing;  ///< the one allocation that TinyXML cannot do without
  } const rows[] = {
      {"", none},      {" ", none},      {"<a", none},       {"<a ", none},
      {"<a b=", none}, {"<a/", none},    {"<a>", none},      {"<a> ", none},
      {"<a></", none}, {"<a></b", none}, {"<a></a", none},   {"\xEF\xBB\xBF<a", none},
      {"<a b=c", 3},   {"<a b='", 3},    {"<a b=1 b=2>", 3},
  };
  for (auto const& row : rows) {
    TiXmlDocument byTinyXml;
    byTinyXml.SetTabSize(0);
    byTinyXml.Parse(row.text);
    std::size_t failing = 0;
    bool threw = true;
    while (threw) {
      Outcome const outcome = outcomeOf(row.text, ++failing);
      threw = outcome.threw;
      EXPECT_EQ(outcome.lost, failing == row.losing ? 1U : 0U) << row.text << ' ' << failing;
      EXPECT_EQ(outcome.next, threw ? errorOf(byTinyXml) : "") << row.text << ' ' << failing;
    }
    EXPECT_GT(failing, 1U) << row.text;
  }
}

}  // namespace
}  // namespace Kovra
