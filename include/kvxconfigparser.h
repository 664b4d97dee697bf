/// @file
/// The reader of configurations.

#ifndef KVXCONFIGPARSER_H
#define KVXCONFIGPARSER_H

#include "kovra_base.h"
#include "kvxconfigrecords.h"
#include "kvxhelper.h"

namespace Kovra {

/// Reads a printer's configuration into a record. The object is itself a document, which is empty
/// after a reading; its Error() and the like tell what was wrong with a malformed text. Any number
/// of threads may read, each with an object of its own.
///
/// The element readers (get...) take an element of the host's own tree. They visit its children in
/// order, read those that they know, by exact name, and skip the others; a repeated element is read
/// again. Their result is whether the last known child could be read: false after an empty one,
/// though earlier members were filled, and false when there was none, or for a null element.
///
/// An empty element leaves its member. The exceptions store what an unknown word does:
/// "error_control", "coercivity", "transfer_type", "comms_channel", "contact_encoding" and
/// "contactless_encoder".
///
/// A setting with bounds is read from the attributes "min" and "max" and the text; an attribute
/// that is absent leaves its member. Then the value is put up to the lower bound and down to the
/// upper one, so that in a cleared record a setting without bounds reads as 0, and one with crossed
/// bounds as the upper. A flag is set by "enabled" and "yes" and cleared by any other text; an
/// empty "dhcp", "snmp" or "radio" leaves it, while an empty "contact_encoding" clears it. An
/// address that is none reads as 0xFFFFFFFF.
///
/// Decimals have the point of LC_NUMERIC, which is a comma under some locales while the printer's
/// is not: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
class KOVRA_EXPORT KVXConfigParser : public TiXmlDocument {
 public:
  KVXConfigParser();
  ~KVXConfigParser() override;

  /// Reads a configuration: root "configuration" or, where that is missing, "set_configuration",
  /// the request of other hosts. @p text is terminated; @p length is not looked at. With a root the
  /// record is cleared first, so that whatever the reply lacks is zero; without one, or for a
  /// malformed or harmful text (elements nested deeper than 128, more than 256 attributes on one
  /// element), it stays untouched.
  ///
  /// The result is always false: hosts that want to know ask the record, or read with
  /// parseConfiguration.
  ///
  /// For each ribbon and film two lines go to standard error, and its name to szRibbonName.
  bool GetConfiguration(char const* text, int length, _KVConfiguration& out);

  /// Clears the record and reads the children of the root. True, whatever they are; false, with the
  /// record untouched, only for a null root.
  bool parseConfiguration(TiXmlElement* root, _KVConfiguration& out);

  /// Reads the children of "ethernet".
  bool getNetworkParams(TiXmlElement* ethernet, _NetworkParams& out);
  /// Reads the children of "wireless". Unknown words for security and cipher leave the code;
  /// whether a cipher could be read is not told by the result.
  bool getWirelessParams(TiXmlElement* wireless, _WirelessParams& out);
  /// Reads the children of "usb_timeout".
  bool getUSBTimeout(TiXmlElement* timeout, _USBTimeout& out);
  /// Reads the children of "ocp_language".
  bool getOCPLanguage(TiXmlElement* language, _OCPLanguageCaps& out);
  /// Reads the text of "error_control": "none", "med"; any other is high, also no text at all.
  bool getErrorControl(TiXmlElement* control, ErrorControl& out);
  /// Reads the text of "usb_speed": "full", "high"; any other leaves the code.
  bool getUSBSpeed(TiXmlElement* speed, USB_Speed& out);
  /// Reads the children of "usage_counters".
  bool getUsageCounters(TiXmlElement* counters, _KVConfiguration& out);
  /// Reads the children of "mfg_power_adjustments" or "user_power_adjustments".
  bool getPowerAdjustments(TiXmlElement* power, _PowerAdjustments& out);
  /// Reads the children of "imaging_parameters".
  bool getImagingParameters(TiXmlElement* imaging, _ImagingParams& out);
  /// Reads the children of "tricolor_settings".
  bool getTricolorSettings(TiXmlElement* colors, _RGBINT& out);
  /// Reads "takeup_motor" below "ribbon_motor_parameters".
  bool getRibbonMotorParams(TiXmlElement* parameters, _RibbonMotorParams& out);
  /// Reads the children of "mech_adjustments".
  bool getMechAdjustments(TiXmlElement* adjustments, _MechanicalAdjustments& out);
  /// Reads the children of "top_laminate" or "bottom_laminate"; settings of either are taken for
  /// both. Unknown words for width and registration leave the code.
  bool getLaminateInfo(TiXmlElement* laminate, _Laminate& out);
  /// Reads the children of "lamination". Deliberately "laminate_common" marks the top laminate as
  /// installed, as "top_laminate" does.
  bool getLaminationInfo(TiXmlElement* lamination, _LaminationIfo& out);
  /// Reads the children of "information".
  bool getCardInformation(TiXmlElement* information, _CustomCardInfo& out);
  /// Reads the children of "transfer_temps" below a card.
  bool getTransferTemps(TiXmlElement* temperatures, _TransferTempInfo& out);
  /// Reads the children of "transfer_temps" below the transfer settings.
  bool getTransferTemps(TiXmlElement* temperatures, _ImageTransferTempInfo& out);
  /// Reads the children of "transfer_speeds".
  bool getTransferSpeeds(TiXmlElement* speeds, _TransferSpeedInfo& out);
  /// Reads the children of "transfer_settings".
  bool getTransferSettings(TiXmlElement* settings, _ImageTransferInfo& out);
  /// Reads the children of "ribbon" or "film". The description has at most 31 characters; one with
  /// "MONO" in it, wherever that stands, loses its first five: "MONO Black" reads as "Black". The
  /// code of the name stays as it was.
  bool getRibbonInfo(TiXmlElement* ribbon, _RibbonInfo& out);
  /// Reads "ribbon" and "film" below "media_info".
  bool getMediaInfo(TiXmlElement* media, _KVConfiguration& out);
  /// Reads the children of "internal_encoder". While `contactless_encoder` is 0 a contactless
  /// encoder goes there, later ones into `secondContactlessEncoder`.
  bool getInternalEncoder(TiXmlElement* encoder, _InternalEncoderInfo& out);
  /// Reads the child of "cleaning".
  bool getCleanParams(TiXmlElement* cleaning, _CleaningParams& out);
  /// Reads the children of "cleaning_thresholds".
  bool getCleaningThresholds(TiXmlElement* thresholds, _CleaningParams& out);
  /// Reads the children of "laminator_adjustments".
  bool getLamAdjustments(TiXmlElement* adjustments, _LaminationAdjustmentsNew& out);
  /// Reads the children of one "card".
  bool getCardInfo(TiXmlElement* card, _CustomCardInfo& out);
  /// Reads each "card" below "cards" from zeros: one that is described as "Custom 1" into the first
  /// entry, any other into the second, where it replaces an earlier one.
  bool getCards(TiXmlElement* cards, _KVConfiguration& out);
  /// Reads the text of "feeder_mode": "manual", "hopper", "alreadyinprinter", "auto"; any other is
  /// hopper, and no text leaves the mode.
  bool getFeederParams(TiXmlElement* mode, _eFeedMode& out);
};

}  // namespace Kovra

#endif
