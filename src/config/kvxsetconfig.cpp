#include "kvxsetconfig.h"

#include "config/config_tables.hpp"
#include "frame/output.hpp"
#include "frame/text.hpp"

namespace Kovra {

namespace {

using namespace config;

constexpr char debugCopy[] = "/tmp/firmwaresettings";

/// Adds an element with the table's children, as one of the public add operations.
template <class Record, std::size_t N>
bool add(TiXmlElement* target, char const* name, Table<Record, N> const& table,
         Record const& record, Circumstances circumstances) {
  return target != nullptr && writeBelow(*target, name, table, record, circumstances);
}

/// Adds the element of a row of the configuration, of which there is nothing but this member.
template <auto M, auto const& Field>
bool addMember(TiXmlElement* target, typename frame::Member<M>::Type value) {
  static_assert(Field.row().place == &frame::detail::memberIn<M>, "this row is not the member's");
  if (target == nullptr) return false;
  TreeSink sink(*target);
  return Field.row().kind->write(Field.row(), sink, &value, 0, false);
}

/// Stores the word of `code` in the caller's buffer, which has room for 32 characters; for a code
/// without one an empty text, and false.
bool storeWord(Vocabulary const& words, int code, char* out) {
  if (out == nullptr) return false;
  std::string_view const word = words.wordOf(code);
  out[word.copy(out, word.size())] = '\0';
  return !word.empty();
}

/// The same within `length` characters. A code without a word is no failure.
bool storeWordWithin(Vocabulary const& words, int code, char* out, int length) {
  if (out != nullptr) copyBounded(words.wordOrEmpty(code), out, length);
  return true;
}

}  // namespace

KVXSetConfig::KVXSetConfig() : root_(nullptr), filmless_(false) {}
KVXSetConfig::~KVXSetConfig() = default;

bool KVXSetConfig::SetConfiguration(_KVConfiguration const& config, wchar_t* out, int outLength,
                                    long sections, int cardSelect, bool filmless) {
  filmless_ = filmless;
  root_ = beginDocument(*this, configurationRoots[0]);
  return addConfiguration(root_, config, sections, cardSelect) && saveJob(out, outLength);
}

bool KVXSetConfig::addConfiguration(TiXmlElement* root, _KVConfiguration const& config,
                                    long sections, int cardSelect) {
  return root != nullptr && writeAll(*root, configuration, config,
                                     chosenSections(sections, cardSelect, filmless_), false);
}

bool KVXSetConfig::saveJob(wchar_t* out, int outLen) {
  saveDebugCopy(*this, debugCopy);
  return printWide(*this, out, outLen);
}

bool KVXSetConfig::saveJob(char* path) {
  return saveTo(*this, path);
}

bool KVXSetConfig::addNetworkParams(TiXmlElement* target, _NetworkParams const& params) {
  return add(target, "ethernet", ethernet, params, filmSwitch(filmless_));
}

bool KVXSetConfig::addWirelessParams(TiXmlElement* target, _WirelessParams const& params) {
  return add(target, "ethernet", wireless, params, filmSwitch(filmless_));
}

bool KVXSetConfig::addUSBTimeout(TiXmlElement* target, _USBTimeout const& timeout) {
  return add(target, "usb_timeout", usbTimeout, timeout, filmSwitch(filmless_));
}

bool KVXSetConfig::addOCPLanguage(TiXmlElement* target, _OCPLanguageCaps const& language) {
  return add(target, "ocp_language", shared::language, language, filmSwitch(filmless_));
}

bool KVXSetConfig::addErrorControl(TiXmlElement* target, ErrorControl control) {
  return addMember<&_KVConfiguration::error_control, errorControl>(target, control);
}

bool KVXSetConfig::addUSBSpeed(TiXmlElement* target, USB_Speed speed) {
  return addMember<&_KVConfiguration::usb_speed, usbSpeed>(target, speed);
}

bool KVXSetConfig::addUsageCounters(TiXmlElement* target, _KVConfiguration const& config) {
  return add(target, "usage_counters", usageCounters, config, filmSwitch(filmless_));
}

bool KVXSetConfig::addPowerAdjustments(TiXmlElement* target, _PowerAdjustments const& power) {
  return add(target, "user_power_adjustments", powerAdjustments, power, filmSwitch(filmless_));
}

bool KVXSetConfig::addImagingParameters(TiXmlElement* target, _ImagingParams const& imaging) {
  return add(target, "imaging_parameters", imagingParameters, imaging, filmSwitch(filmless_));
}

bool KVXSetConfig::addTricolorSettings(TiXmlElement* target, _RGBINT const& colors) {
  return add(target, "tricolor_settings", tricolorSettings, colors, filmSwitch(filmless_));
}

bool KVXSetConfig::addRibbonMotorParams(TiXmlElement* target, _RibbonMotorParams const& motor) {
  return add(target, "ribbon_motor_parameters", ribbonMotorParameters, motor,
             filmSwitch(filmless_));
}

bool KVXSetConfig::addMechAdjustments(TiXmlElement* target,
                                      _MechanicalAdjustments const& adjustments) {
  return add(target, "mech_adjustments", mechAdjustments, adjustments, filmSwitch(filmless_));
}

bool KVXSetConfig::addLaminateInfo(TiXmlElement* target, _Laminate const& info, bool top) {
  return add(target, top ? "top_laminate" : "bottom_laminate", laminate, info,
             top ? topLaminate : bottomLaminate);
}

bool KVXSetConfig::addLaminationInfo(TiXmlElement* target, _LaminationIfo const& info) {
  return add(target, "lamination", lamination, info, filmSwitch(filmless_));
}

bool KVXSetConfig::addCardInformation(TiXmlElement* target, _CustomCardInfo const& info) {
  return add(target, "information", shared::cardInformation<_CustomCardInfo>, info,
             filmSwitch(filmless_));
}

bool KVXSetConfig::addTransferTemps(TiXmlElement* target, _TransferTempInfo const& temperatures) {
  return add(target, "transfer_temps", shared::transferTemps<shared::WithBounds>, temperatures,
             filmSwitch(filmless_));
}

bool KVXSetConfig::addTransferTemps(TiXmlElement* target,
                                    _ImageTransferTempInfo const& temperatures) {
  return add(target, "transfer_temps", transferTemps, temperatures, filmSwitch(filmless_));
}

bool KVXSetConfig::addTransferSpeeds(TiXmlElement* target, _TransferSpeedInfo const& speeds) {
  return add(target, "transfer_speeds", transferSpeeds, speeds, filmSwitch(filmless_));
}

bool KVXSetConfig::addTransferSettings(TiXmlElement* target, _ImageTransferInfo const& transfer) {
  return add(target, "transfer_settings", transferSettings, transfer, filmSwitch(filmless_));
}

bool KVXSetConfig::addRibbonInfo(TiXmlElement* target, _RibbonInfo const& ribbon, bool film) {
  return add(target, film ? "film" : "ribbon", ribbonInfo, ribbon, filmSwitch(filmless_));
}

bool KVXSetConfig::addMediaInfo(TiXmlElement* target, _KVConfiguration const& config) {
  return add(target, "media_info", mediaInfo, config, filmSwitch(filmless_));
}

bool KVXSetConfig::addInternalEncoder(TiXmlElement* target, _InternalEncoderInfo const& encoder) {
  return add(target, "internal_encoder", internalEncoder, encoder, filmSwitch(filmless_));
}

bool KVXSetConfig::addCleanParams(TiXmlElement* target, _CleaningParams const& params) {
  return target != nullptr &&
         writeAll(*target, cleaningSiblings, params, filmSwitch(filmless_), false);
}

bool KVXSetConfig::addLamAdjustments(TiXmlElement* target,
                                     _LaminationAdjustmentsNew const& adjustments) {
  return add(target, "laminator_adjustments", laminatorAdjustments, adjustments,
             filmSwitch(filmless_));
}

bool KVXSetConfig::addCardInfo(TiXmlElement* target, _CustomCardInfo const& info) {
  return add(target, cardEntries.item.data(), card, info, filmSwitch(filmless_));
}

bool KVXSetConfig::addFeederParams(TiXmlElement* target, _eFeedMode mode) {
  return addMember<&_KVConfiguration::feeder_mode, feedMode>(target, mode);
}

char const* KVXSetConfig::GetSecurity(int code) {
  return securities.wordOrEmpty(code);
}

char const* KVXSetConfig::GetCrypto(int code) {
  return ciphers.wordOrEmpty(code);
}

char const* KVXSetConfig::FeederModeToString(int code) {
  return feedModes.wordOr(code, feedModeKeyword.otherwise);
}

bool KVXSetConfig::RibbonNameToString(char* out, int code) {
  return storeWord(ribbonNames, code, out);
}

bool KVXSetConfig::ribbonTypeToString(char* out, int code) {
  return storeWord(writableRibbonTypes, code, out);
}

bool KVXSetConfig::feederSmartToString(char* out, int code) {
  return storeWord(feederSmarts, code, out);
}

bool KVXSetConfig::feederTypeToString(char* out, int code) {
  return storeWord(feederTypes, code, out);
}

bool KVXSetConfig::CommsChannelFromInt(int code, char* out, int outLen) {
  return storeWordWithin(commsChannels, code, out, outLen);
}

bool KVXSetConfig::ContactlessEncFromInt(int code, char* out, int outLen) {
  return storeWordWithin(writtenContactlessEncoders, code, out, outLen);
}

}  // namespace Kovra
