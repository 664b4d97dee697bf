/// @file
/// The writer of configurations.

#ifndef KVXSETCONFIG_H
#define KVXSETCONFIG_H

#include "kovra_base.h"
#include "kvxconfigrecords.h"
#include "kvxhelper.h"

namespace Kovra {

/// The sections of a configuration document. Their order in the document is that of this list, not
/// that of their bits; bits that are not listed select nothing.
enum ConfigurationSection : int {
  sectionPhysicalAddress = 0x1,          ///< 'physical_address'
  sectionEthernet = 0x2,                 ///< 'ethernet', the wired interface
  sectionWireless = 0x4,                 ///< a second 'ethernet', the wireless interface
  sectionOcpLanguage = 0x8,              ///< 'ocp_language'
  sectionErrorControl = 0x10,            ///< 'error_control' and 'usb_speed'
  sectionUsageCounters = 0x20,           ///< 'usage_counters'
  sectionStandbyTimeout = 0x40,          ///< 'standby_timeout'
  sectionImagingParameters = 0x80,       ///< 'imaging_parameters'
  sectionRibbonMotorParameters = 0x200,  ///< 'ribbon_motor_parameters'
  sectionRibbonSensorOffset = 0x400,     ///< 'ribbon_sensor_offset'
  sectionMechAdjustments = 0x1000,       ///< 'mech_adjustments' and 'usb_timeout'
  sectionMediaInfo = 0x2000,             ///< 'media_info'
  sectionLamination = 0x40000,           ///< 'lamination', if a laminate is marked as installed
  sectionCleaning = 0x20000,             ///< 'cleaning' and 'cleaning_thresholds'
  sectionFeederMode = 0x400000,          ///< 'feeder_mode'
  sectionCards = 0x4000,                 ///< 'cards'
  sectionTransferSettings = 0x8000,      ///< 'transfer_settings', not without film
  sectionLcdContrast = 0x10000,          ///< 'lcd_contrast'
  sectionInternalEncoder = 0x80000,      ///< 'internal_encoder'
};

/// Composes the document that sets a printer's configuration. The writer is itself the document:
/// use one object for each, and each object in one thread at a time.
///
/// What is written is not what KVXConfigParser reads, and hosts and printers rely on it:
///  - wireless parameters go into a second "ethernet" element, where "wireless" is read;
///  - ribbon and film are described by `ribbonNameCode`, which is never read, and not by the
///    `description` that is;
///  - width and registration of a laminate are numbers, where words are read;
///  - both words of "internal_encoder" come from `contactless_encoder`, and the second contactless
///    encoder is not written;
///  - of the power adjustments only the user's are written; "VtoI", "tricolor_settings",
///    "bemf_potentiometer" and the wireless "country" are not.
///
/// Decimals are written with the point of LC_NUMERIC, which is a comma under some locales while the
/// printer takes "." alone: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
///
/// The add operations each add their own element below @p target, children from the sub-record, and
/// return whether the last thing that they added could be; false for a null target. Whether what
/// belongs to the transfer film is added follows from the last SetConfiguration.
class KOVRA_EXPORT KVXSetConfig : public TiXmlDocument {
 public:
  KVXSetConfig();
  ~KVXSetConfig() override;
  KVXSetConfig(KVXSetConfig const&) = delete;
  KVXSetConfig& operator=(KVXSetConfig const&) = delete;

  /// Composes the sections whose bits are set in @p sections, prints the document and stores it in
  /// @p out, at most @p outLength wide characters; a terminator only where there is room for it.
  /// 32768 hold any configuration; convention 8 of kvxhelper.h says how one that was cut is seen.
  ///
  /// @p cardSelect 0 writes both cards. Otherwise only the section of the cards is written, if its
  /// bit is set: 1 writes the first card, 2 the second, and any other value nothing. @p filmless
  /// leaves out whatever belongs to the transfer film.
  ///
  /// False when nothing was composed: then @p out stays as it was. Otherwise a debugging copy is
  /// left at "/tmp/firmwaresettings" (when it is skipped, convention 6 of kvxhelper.h says) before
  /// @p out is looked at; a null one gives false.
  bool SetConfiguration(_KVConfiguration const& config, wchar_t* out, int outLength, long sections,
                        int cardSelect, bool filmless);

  /// Adds the sections to @p root, as above. The result is that of the last thing that was added;
  /// false when there was none, or no root.
  bool addConfiguration(TiXmlElement* root, _KVConfiguration const& config, long sections,
                        int cardSelect);

  /// Leaves the debugging copy and prints the document; false for a null @p out, or when printing
  /// fails.
  bool saveJob(wchar_t* out, int outLen);
  /// Saves the document to a file; false for a null path, or when saving fails.
  bool saveJob(char* path);

  /// Adds "ethernet".
  bool addNetworkParams(TiXmlElement* target, _NetworkParams const& params);
  /// Adds "ethernet" with the wireless parameters.
  bool addWirelessParams(TiXmlElement* target, _WirelessParams const& params);
  /// Adds "usb_timeout".
  bool addUSBTimeout(TiXmlElement* target, _USBTimeout const& timeout);
  /// Adds "ocp_language".
  bool addOCPLanguage(TiXmlElement* target, _OCPLanguageCaps const& language);
  /// Adds "error_control": "none", "high", or "med" for any other value.
  bool addErrorControl(TiXmlElement* target, ErrorControl control);
  /// Adds "usb_speed": "full", or "high" for any other value.
  bool addUSBSpeed(TiXmlElement* target, USB_Speed speed);
  /// Adds "usage_counters" with the counters of the configuration.
  bool addUsageCounters(TiXmlElement* target, _KVConfiguration const& config);
  /// Adds "user_power_adjustments".
  bool addPowerAdjustments(TiXmlElement* target, _PowerAdjustments const& power);
  /// Adds "imaging_parameters".
  bool addImagingParameters(TiXmlElement* target, _ImagingParams const& imaging);
  /// Adds "tricolor_settings", which no section does.
  bool addTricolorSettings(TiXmlElement* target, _RGBINT const& colors);
  /// Adds "ribbon_motor_parameters".
  bool addRibbonMotorParams(TiXmlElement* target, _RibbonMotorParams const& motor);
  /// Adds "mech_adjustments".
  bool addMechAdjustments(TiXmlElement* target, _MechanicalAdjustments const& adjustments);
  /// Adds "top_laminate", or "bottom_laminate" when @p top is false.
  bool addLaminateInfo(TiXmlElement* target, _Laminate const& laminate, bool top);
  /// Adds "lamination"; both laminates only if the top one is marked as installed.
  bool addLaminationInfo(TiXmlElement* target, _LaminationIfo const& lamination);
  /// Adds "information".
  bool addCardInformation(TiXmlElement* target, _CustomCardInfo const& card);
  /// Adds "transfer_temps", of a card.
  bool addTransferTemps(TiXmlElement* target, _TransferTempInfo const& temperatures);
  /// Adds "transfer_temps", of the transfer settings.
  bool addTransferTemps(TiXmlElement* target, _ImageTransferTempInfo const& temperatures);
  /// Adds "transfer_speeds".
  bool addTransferSpeeds(TiXmlElement* target, _TransferSpeedInfo const& speeds);
  /// Adds "transfer_settings".
  bool addTransferSettings(TiXmlElement* target, _ImageTransferInfo const& transfer);
  /// Adds "film", or "ribbon" when @p film is false.
  bool addRibbonInfo(TiXmlElement* target, _RibbonInfo const& ribbon, bool film);
  /// Adds "media_info" with the ribbon and the film of the configuration.
  bool addMediaInfo(TiXmlElement* target, _KVConfiguration const& config);
  /// Adds "internal_encoder".
  bool addInternalEncoder(TiXmlElement* target, _InternalEncoderInfo const& encoder);
  /// Adds "cleaning" and, beside it, "cleaning_thresholds".
  bool addCleanParams(TiXmlElement* target, _CleaningParams const& cleaning);
  /// Adds "laminator_adjustments".
  bool addLamAdjustments(TiXmlElement* target, _LaminationAdjustmentsNew const& adjustments);
  /// Adds "card".
  bool addCardInfo(TiXmlElement* target, _CustomCardInfo const& card);
  /// Adds "feeder_mode": "manual", "alreadyinprinter", "auto", or "hopper" for any other value.
  bool addFeederParams(TiXmlElement* target, _eFeedMode mode);

  /// @name Codes as the printer's words
  /// @{

  /// 0 "none", 1 "wep40", 2 "wep104", 3 "wpa", 4 "wpa2", 5 "wpa_wpa2"; any other gives an empty
  /// text.
  char const* GetSecurity(int code);
  /// 0 "none", 1 "RC4", 2 "TKIP", 3 "CCMP"; any other gives an empty text.
  char const* GetCrypto(int code);
  /// 0 "manual", 2 "alreadyinprinter", 3 "auto"; any other gives "hopper".
  char const* FeederModeToString(int code);

  /// The next four store the word in @p out, which has room for 32 characters; for an unknown code
  /// they store an empty text and return false. A null @p out gives false.
  ///
  /// The names of ribbons, 256 "YMCKO" to 271 "Hologram": see KVXHelper::RibbonNameToInt.
  bool RibbonNameToString(char* out, int code);
  /// 0 "dye_sub", 1 "resin".
  bool ribbonTypeToString(char* out, int code);
  /// 0 "contact", 1 "iclass", 2 "mifare", 3 "prox", 4 "uhf", 5 "legic".
  bool feederSmartToString(char* out, int code);
  /// 0 "composite", 1 "pvc".
  bool feederTypeToString(char* out, int code);

  /// 1 "serial", 2 "usb"; any other gives an empty text. Stores at most @p outLen characters with
  /// the terminator. Always true, also for a null @p out.
  bool CommsChannelFromInt(int code, char* out, int outLen);
  /// 1 "mifare"; any other gives an empty text. As above.
  bool ContactlessEncFromInt(int code, char* out, int outLen);
  /// @}

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(detail::borrowed(path));
  }
  /// @}

 private:
  TiXmlElement* root_;
  bool filmless_;
};

}  // namespace Kovra

#endif
