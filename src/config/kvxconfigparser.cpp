#include "kvxconfigparser.h"

#include "config/config_tables.hpp"
#include "frame/message.hpp"

namespace Kovra {

using namespace config;

KVXConfigParser::KVXConfigParser() = default;
KVXConfigParser::~KVXConfigParser() = default;

bool KVXConfigParser::GetConfiguration(char const* text, int, _KVConfiguration& out) {
  return readAsDocument(*this, text, configurationRoots,
                        [&](Element root) { return EntryReading::read(root, out, Watch()); });
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
  return walk(language, shared::language, out);
}

bool KVXConfigParser::getErrorControl(TiXmlElement* control, ErrorControl& out) {
  return readHostMember<&_KVConfiguration::error_control, errorControl>(control, out);
}

bool KVXConfigParser::getUSBSpeed(TiXmlElement* speed, USB_Speed& out) {
  return readHostMember<&_KVConfiguration::usb_speed, usbSpeed>(speed, out);
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
  return walk(information, shared::cardInformation<_CustomCardInfo>, out);
}

bool KVXConfigParser::getTransferTemps(TiXmlElement* temperatures, _TransferTempInfo& out) {
  return walk(temperatures, shared::transferTemps<shared::WithBounds>, out);
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
  return readHostMember<&_KVConfiguration::feeder_mode, feedMode>(mode, out);
}

}  // namespace Kovra
