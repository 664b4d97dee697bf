#include "kvxconfigparser.h"

#include <cstdio>
#include <cstring>
#include <mutex>
#include <type_traits>

#include "config/config_documents.hpp"
#include "config/config_tables.hpp"
#include "frame/entry.hpp"
#include "frame/typed/reply.hpp"
#include "frame/typed/secret.hpp"

namespace Kovra {

namespace config {

void announce(RibbonName const& name, char const* description) {
  {
    static std::mutex publishing;
    std::lock_guard<std::mutex> const lock(publishing);
    std::memcpy(szRibbonName, name.get(), sizeof szRibbonName);
  }
  // Tools of hosts look for these lines, also for the second one that never tells anything.
  std::fprintf(stderr, "DEBUG:RIBBON NAME %s\nDEBUG:RIBBON NAME2 %s\n", name.get(), description);
}

}  // namespace config

namespace {

using namespace config;

/// The second root is that of a request: one that was saved can be read back.
constexpr char const* roots[] = {configurationRoot, "set_configuration"};

/// The record starts from zeros as soon as there is a root. What became of the children does not
/// show in the result.
struct ConfigurationReading : TableReading<configuration> {
  static bool read(Element root, _KVConfiguration& record, Watch const& watch) {
    static_assert(std::is_trivially_copyable_v<_KVConfiguration>);
    std::memset(static_cast<void*>(&record), 0, sizeof record);
    walk(root, configuration, record, watch);
    return true;
  }
};

/// The entry answers false, whatever it read.
struct EntryReading : ConfigurationReading {
  static bool read(Element root, _KVConfiguration& record, Watch const& watch) {
    ConfigurationReading::read(root, record, watch);
    return false;
  }
};

constexpr ReplyReader replies[] = {
    secretReader<_KVConfiguration, EntryReading>(
        "configuration", "all settings of the printer: interfaces, media, mechanics, cards", roots),
};

}  // namespace

std::span<frame::ReplyReader const> configurationReplies() {
  return replies;
}

KVXConfigParser::KVXConfigParser() = default;
KVXConfigParser::~KVXConfigParser() = default;

bool KVXConfigParser::GetConfiguration(char const* text, int, _KVConfiguration& out) {
  return readAsDocument(*this, text, roots, [&](Element root) {
    Watch const nobody;
    return EntryReading::read(root, out, nobody);
  });
}

bool KVXConfigParser::parseConfiguration(TiXmlElement* root, _KVConfiguration& out) {
  return readHost<ConfigurationReading>(root, out);
}

bool KVXConfigParser::getNetworkParams(TiXmlElement* element, _NetworkParams& out) {
  return walk(element, ethernet, out);
}

bool KVXConfigParser::getWirelessParams(TiXmlElement* element, _WirelessParams& out) {
  return walk(element, wireless, out);
}

bool KVXConfigParser::getUSBTimeout(TiXmlElement* timeout, _USBTimeout& out) {
  return walk(timeout, usbTimeout, out);
}

bool KVXConfigParser::getOCPLanguage(TiXmlElement* language, _OCPLanguageCaps& out) {
  return walk(language, ocpLanguage, out);
}

bool KVXConfigParser::getErrorControl(TiXmlElement* control, ErrorControl& out) {
  return readHostValue<ErrorControlKind>(control, out);
}

bool KVXConfigParser::getUSBSpeed(TiXmlElement* speed, USB_Speed& out) {
  return readHostValue<UsbSpeedKind>(speed, out);
}

bool KVXConfigParser::getUsageCounters(TiXmlElement* counters, _KVConfiguration& out) {
  return walk(counters, usageCounters, out);
}

bool KVXConfigParser::getPowerAdjustments(TiXmlElement* power, _PowerAdjustments& out) {
  return walk(power, powerAdjustments, out);
}

bool KVXConfigParser::getImagingParameters(TiXmlElement* imaging, _ImagingParams& out) {
  return walk(imaging, imagingParameters, out);
}

bool KVXConfigParser::getTricolorSettings(TiXmlElement* colors, _RGBINT& out) {
  return walk(colors, tricolorSettings, out);
}

bool KVXConfigParser::getRibbonMotorParams(TiXmlElement* parameters, _RibbonMotorParams& out) {
  return walk(parameters, ribbonMotorParameters, out);
}

bool KVXConfigParser::getMechAdjustments(TiXmlElement* adjustments, _MechanicalAdjustments& out) {
  return walk(adjustments, mechAdjustments, out);
}

bool KVXConfigParser::getLaminateInfo(TiXmlElement* element, _Laminate& out) {
  return walk(element, laminate, out);
}

bool KVXConfigParser::getLaminationInfo(TiXmlElement* element, _LaminationIfo& out) {
  return walk(element, lamination, out);
}

bool KVXConfigParser::getCardInformation(TiXmlElement* information, _CustomCardInfo& out) {
  return walk(information, cardInformation, out);
}

bool KVXConfigParser::getTransferTemps(TiXmlElement* temperatures, _TransferTempInfo& out) {
  return walk(temperatures, cardTransferTemps, out);
}

bool KVXConfigParser::getTransferTemps(TiXmlElement* temperatures, _ImageTransferTempInfo& out) {
  return walk(temperatures, transferTemps, out);
}

bool KVXConfigParser::getTransferSpeeds(TiXmlElement* speeds, _TransferSpeedInfo& out) {
  return walk(speeds, transferSpeeds, out);
}

bool KVXConfigParser::getTransferSettings(TiXmlElement* settings, _ImageTransferInfo& out) {
  return walk(settings, transferSettings, out);
}

bool KVXConfigParser::getRibbonInfo(TiXmlElement* ribbon, _RibbonInfo& out) {
  return walk(ribbon, ribbonInfo, out);
}

bool KVXConfigParser::getMediaInfo(TiXmlElement* media, _KVConfiguration& out) {
  return walk(media, mediaInfo, out);
}

bool KVXConfigParser::getInternalEncoder(TiXmlElement* encoder, _InternalEncoderInfo& out) {
  return walk(encoder, internalEncoder, out);
}

bool KVXConfigParser::getCleanParams(TiXmlElement* element, _CleaningParams& out) {
  return walk(element, cleaning, out);
}

bool KVXConfigParser::getCleaningThresholds(TiXmlElement* thresholds, _CleaningParams& out) {
  return walk(thresholds, cleaningThresholds, out);
}

bool KVXConfigParser::getLamAdjustments(TiXmlElement* adjustments, _LaminationAdjustmentsNew& out) {
  return walk(adjustments, laminatorAdjustments, out);
}

bool KVXConfigParser::getCardInfo(TiXmlElement* element, _CustomCardInfo& out) {
  return walk(element, card, out);
}

bool KVXConfigParser::getCards(TiXmlElement* cards, _KVConfiguration& out) {
  return readHost<CardsReading>(cards, out);
}

bool KVXConfigParser::getFeederParams(TiXmlElement* mode, _eFeedMode& out) {
  return readHostValue<FeedModeKind>(mode, out);
}

}  // namespace Kovra
