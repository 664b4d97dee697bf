/// @file
/// The record of a printer's configuration: what the configuration reader fills and the
/// configuration writer sends. Plain structures without pointers: a host owns them, and may copy
/// and clear them as blocks. Members are named after their elements; all units are the printer's.
///
/// The capabilities and the media catalogue share some of these records.

#ifndef KVXCONFIGRECORDS_H
#define KVXCONFIGRECORDS_H

#include "kvxsettingrecords.h"

namespace Kovra {

/// How the wireless network is protected. The words are those that the writer sends.
enum WirelessSecurity : int {
  wirelessSecurityNone = 0,     ///< "none", also read as "open"
  wirelessSecurityWep40 = 1,    ///< "wep40"
  wirelessSecurityWep104 = 2,   ///< "wep104"
  wirelessSecurityWpa = 3,      ///< "wpa"
  wirelessSecurityWpa2 = 4,     ///< "wpa2"
  wirelessSecurityWpaWpa2 = 5,  ///< "wpa_wpa2"
};

/// How the wireless network is encrypted.
enum WirelessCrypto : int {
  wirelessCryptoNone = 0,  ///< "none"
  wirelessCryptoRc4 = 1,   ///< "RC4"
  wirelessCryptoTkip = 2,  ///< "TKIP"
  wirelessCryptoCcmp = 3,  ///< "CCMP", also read as both ciphers mixed
};

/// The speed of the printer's USB port.
enum USB_Speed : int {
  usbSpeedHigh = 0,  ///< "high"
  usbSpeedFull = 1,  ///< "full"
};

/// How hard the printer tries to recover from errors.
enum ErrorControl : int {
  errorControlNone = 0,    ///< "none"
  errorControlMedium = 1,  ///< "med"
  errorControlHigh = 2,    ///< "high"
};

/// Where cards come from.
enum _eFeedMode : int {
  feedModeManual = 0,            ///< "manual"
  feedModeHopper = 1,            ///< "hopper"
  feedModeAlreadyInPrinter = 2,  ///< "alreadyinprinter"
  feedModeAuto = 3,              ///< "auto"
};

/// The wired interface. Addresses are IPv4, as inet_addr() gives them: in network byte order, in
/// the low 32 bits; a text that is no address gives 0xFFFFFFFF.
struct _NetworkParams {
  unsigned long ip_address;   ///< 'ip_address'
  unsigned long subnet_mask;  ///< 'subnet_mask'
  unsigned long gateway;      ///< 'gateway'
  bool dhcp;                  ///< 'dhcp', "enabled" or "disabled"
  bool snmp;                  ///< 'snmp', "enabled" or "disabled"
};

/// The wireless interface. Its first two flags stand in another order than the wired ones.
struct _WirelessParams {
  bool snmp;                  ///< 'snmp', "enabled" or "disabled"
  bool dhcp;                  ///< 'dhcp', "enabled" or "disabled"
  unsigned long ip_address;   ///< 'ip_address'
  unsigned long subnet_mask;  ///< 'subnet_mask'
  unsigned long gateway;      ///< 'gateway'
  bool radio;                 ///< 'radio', "enabled" or "disabled"
  WirelessSecurity security;  ///< 'security'
  WirelessCrypto crypto;      ///< 'crypto'
  char ssid[34];              ///< 'ssid', the network's name, at most 33 characters
  unsigned char bssid[6];     ///< 'bssid', the access point's hardware address
  char key[128];              ///< 'key', the network's key or pass phrase, a secret
  int channel;                ///< 'channel'
  char country[8];            ///< 'country', a two-letter code; never written
};

/// How long the printer waits for the host.
struct _USBTimeout {
  _MinMaxVal read;   ///< 'read'
  _MinMaxVal write;  ///< 'write'
};

/// The language of the operator control panel.
struct _OCPLanguageCaps {
  int type;       ///< 'type', the language's number
  char name[64];  ///< 'name'
};

/// The power of the printhead for each kind of ribbon panel.
struct _PowerAdjustments {
  _MinMaxVal yellow;         ///< 'yellow'
  _MinMaxVal magenta;        ///< 'magenta'
  _MinMaxVal cyan;           ///< 'cyan'
  _MinMaxVal k_resin_front;  ///< 'k-resin_front'
  _MinMaxVal k_resin_back;   ///< 'k-resin_back'
  _MinMaxVal k_dye;          ///< 'k-dye'
  _MinMaxVal overlay;        ///< 'overlay'
  _MinMaxVal uv_front;       ///< 'uv_front'
  _MinMaxVal uv_back;        ///< 'uv_back'
  _MinMaxVal inhibit;        ///< 'inhibit', not written for printers without film
  _MinMaxVal helper;         ///< 'helper'
  _MinMaxVal x_resin;        ///< 'x-resin'
};

struct _ImagingParams {
  _MinMaxVal printhead_resistance;  ///< 'printhead_resistance'
  _PowerAdjustments
      mfg_power_adjustments;  ///< 'mfg_power_adjustments', of the factory; not written
  _PowerAdjustments user_power_adjustments;  ///< 'user_power_adjustments'
};

struct _RGBINT {
  int red;    ///< 'red'
  int green;  ///< 'green'
  int blue;   ///< 'blue'
};

/// The coefficients that control the take-up motor.
struct _RibbonMotorParams {
  _MinMaxValFloat S0;    ///< 'S0'
  _MinMaxValFloat K0;    ///< 'K0'
  _MinMaxValFloat Kb;    ///< 'Kb'
  _MinMaxValFloat Ka;    ///< 'Ka'
  _MinMaxValFloat M0;    ///< 'M0'
  _MinMaxValFloat Mb;    ///< 'Mb'
  _MinMaxValFloat Ma;    ///< 'Ma'
  _MinMaxValFloat VtoI;  ///< 'VtoI', never written
};

/// Where the mechanics put card and film. The order is not that of the document.
struct _MechanicalAdjustments {
  _MinMaxVal film_print_x_offset;              ///< 'film_print_x_offset'
  _MinMaxVal film_print_y_offset;              ///< 'film_print_y_offset'
  _MinMaxVal film_transfer_start_offset;       ///< 'film_transfer_start_offset'
  _MinMaxVal card_center_x_offset;             ///< 'card_center_x_offset'
  _MinMaxVal card_mag_x_offset;                ///< 'card_mag_x_offset'
  _MinMaxVal card_smart_card_x_offset;         ///< 'card_smart_card_x_offset'
  _MinMaxVal card_smart_card_lf_x_offset;      ///< 'card_smart_card_lf_x_offset'
  _MinMaxVal card_smart_card_hf_x_offset;      ///< 'card_smart_card_hf_x_offset'
  _MinMaxVal card_smart_card_uhf_x_offset;     ///< 'card_smart_card_uhf_x_offset'
  _MinMaxVal card_center_y_offset;             ///< 'card_center_y_offset'
  _MinMaxVal flipper_sensor_offset;            ///< 'flipper_sensor_offset', printers without film
  _MinMaxVal card_transfer_start_y_offset;     ///< 'card_transfer_start_y_offset'
  _MinMaxVal card_transfer_end_y_offset;       ///< 'card_transfer_end_y_offset'
  _MinMaxVal card_transfer_roll_y_offset;      ///< 'card_transfer_roll_y_offset'
  _MinMaxVal film_end_roll_transfer_offset;    ///< 'film_end_roll_transfer_offset'
  _MinMaxVal film_extra_transfer_takeup_move;  ///< 'film_extra_transfer_takeup_move'
};

/// A ribbon or a transfer film. The reader knows its name as a text, the writer as a code.
struct _RibbonInfo {
  int type;              ///< 'type'
  char description[64];  ///< 'description' as it was read, at most 31 characters; never written
  int ribbonNameCode;    ///< 'description' as it is written, 256 to 271; never read
  char oem_country[8];   ///< 'oem_country'
  int initial_size;      ///< 'initial_size', panels when it was new
  int panels_remaining;  ///< 'panels_remaining'
};

/// What holds for both laminates.
struct _laminate_common {
  _MinMaxVal patch_length_adj;    ///< 'patch_length_adj'
  _MinMaxVal coarse_x_offset;     ///< 'coarse_x_offset'
  _MinMaxVal speed_adjust;        ///< 'speed_adjust'
  _MinMaxVal passthru_speed_adj;  ///< 'passthru_speed_adj'
};

/// The laminate that is loaded. Width and registration are read as words and written as numbers.
struct _LaminateInstalled {
  int type;                       ///< 'type'
  char description[64];           ///< 'description'
  int thickness;                  ///< 'thickness'
  int width;                      ///< 'width', 0 "full", 1 "mag", 2 "signature"
  int registration;               ///< 'registration', 0 "none", 1 "hologram", 2 "contact"
  char oem_country[8];            ///< 'oem_country'
  unsigned int initial_size;      ///< 'initial_size', panels when it was new
  unsigned int panels_remaining;  ///< 'panels_remaining'
};

/// The settings of one laminate. Elements begin with "top_" or "bot_".
struct _laminateControl {
  _MinMaxVal x_adj_fine_offset;  ///< 'top_x_adj_fine_offset' or 'bot_x_adj_fine_offset'
  _MinMaxVal temp_adjust;        ///< 'top_temp_adjust' or 'bot_temp_adjust'
};

struct _Laminate {
  _LaminateInstalled laminate_installed;  ///< 'laminate_installed'
  _laminateControl laminate_control;      ///< 'laminate_control'
};

/// The laminator. The reader sets a flag when it meets the element; the writer asks for them.
struct _LaminationIfo {
  _laminate_common laminate_common;  ///< 'laminate_common'
  _Laminate top_laminate;            ///< 'top_laminate'
  bool topLaminateInstalled;         ///< there was a 'top_laminate' or a 'laminate_common'
  _Laminate bottom_laminate;         ///< 'bottom_laminate'
  bool bottomLaminateInstalled;      ///< there was a 'bottom_laminate'
};

/// The temperatures of the transfer rollers for one kind of card.
struct _TransferTempInfo {
  _MinMaxVal top_single;  ///< 'top_single'
  _MinMaxVal bot_single;  ///< 'bot_single'
  _MinMaxVal top_double;  ///< 'top_double'
  _MinMaxVal bot_double;  ///< 'bot_double'
};

/// The speeds of the transfer.
struct _TransferSpeedInfo {
  _MinMaxValFloat input_single;   ///< 'input_single'
  _MinMaxValFloat output_single;  ///< 'output_single'
  _MinMaxValFloat input_double;   ///< 'input_double'
  _MinMaxValFloat output_double;  ///< 'output_double'
};

/// The laminator's settings for one kind of card.
struct _LaminationAdjustmentsNew {
  _MinMaxVal top_temp_adjust;    ///< 'top_temp_adjust'
  _MinMaxVal bot_temp_adjust;    ///< 'bot_temp_adjust'
  _MinMaxValFloat speed_adjust;  ///< 'speed_adjust'
};

/// One kind of card that the customer defined.
struct _CustomCardInfo {
  int type;                                         ///< 'type'
  char halvex_part_number[16];                      ///< 'halvex_part_number'
  char description[64];                             ///< 'description'
  float thickness;                                  ///< 'thickness'
  unsigned char coercivity;                         ///< 'coercivity', index into COERCIVITYTYPES
  unsigned char cardFeatures;                       ///< bit 0 'mag_stripe', bit 1 'contact_encode',
                                                    ///< bit 2 'non_contact_encode'
  _TransferTempInfo transfer_temps;                 ///< 'transfer_temps'
  _TransferSpeedInfo transfer_speeds;               ///< 'transfer_speeds'
  int cal_table;                                    ///< 'cal_table', number of a calibration table
  _LaminationAdjustmentsNew laminator_adjustments;  ///< 'laminator_adjustments'
};

/// The temperatures of the transfer rollers, with their corrections.
struct _ImageTransferTempInfo {
  _MinMaxVal top_single;         ///< 'top_single'
  _MinMaxVal bot_single;         ///< 'bot_single'
  _MinMaxVal top_double;         ///< 'top_double'
  _MinMaxVal bot_double;         ///< 'bot_double'
  _MinMaxVal top_single_offset;  ///< 'top_single_offset'
  _MinMaxVal bot_single_offset;  ///< 'bot_single_offset'
  _MinMaxVal top_double_offset;  ///< 'top_double_offset'
  _MinMaxVal bot_double_offset;  ///< 'bot_double_offset'
  _MinMaxVal top_temp_cal;       ///< 'top_temp_cal'
  _MinMaxVal bot_temp_cal;       ///< 'bot_temp_cal'
  _MinMaxVal top_temp_tilt;      ///< 'top_temp_tilt'
  _MinMaxVal bot_temp_tilt;      ///< 'bot_temp_tilt'
};

struct _ImageTransferInfo {
  int transfer_type;                      ///< 'transfer_type', 0 unset, 1 "single", 2 "dual"
  _ImageTransferTempInfo transfer_temps;  ///< 'transfer_temps'
  _TransferSpeedInfo transfer_speeds;     ///< 'transfer_speeds'
};

struct _CleaningParams {
  char cleaning_deadline_is_soft[10];  ///< 'cleaning_deadline_is_soft', the printer's own text
  _MinMaxVal alcohol_card_cleaning;    ///< 'alcohol_card_cleaning', cards between cleanings
  _MinMaxVal pre_warning;              ///< 'pre_warning'
};

/// The encoder inside the printer.
struct _InternalEncoderInfo {
  int comms_channel;             ///< 'comms_channel', 0 none, code of CommsChannelToInt
  bool contact_encoding;         ///< 'contact_encoding', "yes" or "no"
  int contactless_encoder;       ///< the first 'contactless_encoder', code of ContactlessEncToInt
  int secondContactlessEncoder;  ///< a later 'contactless_encoder'; never written
  bool contact_station;          ///< 'contact_station', of the capabilities only
};

/// A printer's whole configuration: root "configuration".
struct _KVConfiguration {
  unsigned char physical_address[6];        ///< 'physical_address', of the wired interface
  _NetworkParams ethernet;                  ///< 'ethernet'
  _WirelessParams wireless;                 ///< 'wireless'; written as a second 'ethernet'
  _USBTimeout usb_timeout;                  ///< 'usb_timeout'
  _OCPLanguageCaps ocp_language;            ///< 'ocp_language'
  USB_Speed usb_speed;                      ///< 'usb_speed'
  ErrorControl error_control;               ///< 'error_control'
  int num_cards_printed;                    ///< 'usage_counters/num_cards_printed'
  int num_lines_printed;                    ///< 'usage_counters/num_lines_printed'
  int standby_timeout;                      ///< 'standby_timeout'
  _ImagingParams imaging_parameters;        ///< 'imaging_parameters'
  _RGBINT tricolor_settings;                ///< 'tricolor_settings', never written
  _RibbonMotorParams takeup_motor;          ///< 'ribbon_motor_parameters/takeup_motor'
  _MinMaxVal ribbon_sensor_offset;          ///< 'ribbon_sensor_offset'
  int bemf_potentiometer;                   ///< 'bemf_potentiometer', never written
  _MechanicalAdjustments mech_adjustments;  ///< 'mech_adjustments'
  _RibbonInfo ribbon;                       ///< 'media_info/ribbon', the ribbon that is installed
  _RibbonInfo film;                         ///< 'media_info/film', the transfer film
  _LaminationIfo lamination;                ///< 'lamination'
  _CustomCardInfo cards[2];               ///< 'cards/card': "Custom 1", and whatever else was sent
  _ImageTransferInfo transfer_settings;   ///< 'transfer_settings'
  _MinMaxVal lcd_contrast;                ///< 'lcd_contrast'
  _CleaningParams cleaning;               ///< 'cleaning' and 'cleaning_thresholds'
  _InternalEncoderInfo internal_encoder;  ///< 'internal_encoder'
  _eFeedMode feeder_mode;                 ///< 'feeder_mode'
};

}  // namespace Kovra

#endif
