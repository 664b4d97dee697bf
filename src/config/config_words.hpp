/// @file
/// The words of the configuration: those that are read and written, and those that are only
/// written.

#ifndef KOVRA_CONFIG_CONFIG_WORDS_HPP
#define KOVRA_CONFIG_CONFIG_WORDS_HPP

#include "frame/kvxhelper_words.hpp"
#include "frame/vocabulary.hpp"
#include "kvxhelper.h"
#include "kvxsetconfig.h"

namespace Kovra::config {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;

/// The word written is the first of its code: "none", never "open".
inline constexpr Word securityWords[] = {
    {"none", wirelessSecurityNone},        {"open", wirelessSecurityNone},
    {"wep40", wirelessSecurityWep40},      {"WEP40", wirelessSecurityWep40},
    {"wep104", wirelessSecurityWep104},    {"WEP104", wirelessSecurityWep104},
    {"wpa", wirelessSecurityWpa},          {"WPA", wirelessSecurityWpa},
    {"wpa2", wirelessSecurityWpa2},        {"WPA2", wirelessSecurityWpa2},
    {"wpa_wpa2", wirelessSecurityWpaWpa2}, {"wpa2_wpa", wirelessSecurityWpaWpa2},
    {"WPA_WPA2", wirelessSecurityWpaWpa2}, {"WPA2_WPA", wirelessSecurityWpaWpa2},
};
inline constexpr Vocabulary securities{securityWords, Match::exact, wirelessSecurityNone};
static_assert(everyWordIsReachable(securities));

/// The mixed cipher counts as CCMP here, though the wireless status has a code of its own for it.
inline constexpr Word cipherWords[] = {
    {"none", wirelessCryptoNone},      {"RC4", wirelessCryptoRc4},
    {"rc4", wirelessCryptoRc4},        {"TKIP", wirelessCryptoTkip},
    {"tkip", wirelessCryptoTkip},      {"CCMP", wirelessCryptoCcmp},
    {"ccmp", wirelessCryptoCcmp},      {"CCMP_TKIP", wirelessCryptoCcmp},
    {"TKIP_CCMP", wirelessCryptoCcmp}, {"ccmp_tkip", wirelessCryptoCcmp},
    {"tkip_ccmp", wirelessCryptoCcmp},
};
inline constexpr Vocabulary ciphers{cipherWords, Match::exact, wirelessCryptoNone};
static_assert(everyWordIsReachable(ciphers));

/// Whatever is neither "none" nor "med" is read as high; whatever is neither none nor high is
/// written as "med".
inline constexpr Word errorControlWords[] = {
    {"none", errorControlNone}, {"med", errorControlMedium}, {"high", errorControlHigh}};
inline constexpr Vocabulary errorControls{errorControlWords, Match::exact, errorControlHigh};
static_assert(everyWordIsReachable(errorControls));

inline constexpr Word usbSpeedWords[] = {{"full", usbSpeedFull}, {"high", usbSpeedHigh}};
inline constexpr Vocabulary usbSpeeds{usbSpeedWords, Match::exact, usbSpeedHigh};
static_assert(everyWordIsReachable(usbSpeeds));

inline constexpr Word feedModeWords[] = {{"hopper", feedModeHopper},
                                         {"manual", feedModeManual},
                                         {"auto", feedModeAuto},
                                         {"alreadyinprinter", feedModeAlreadyInPrinter}};
inline constexpr Vocabulary feedModes{feedModeWords, Match::exact, feedModeHopper};
static_assert(everyWordIsReachable(feedModes));

inline constexpr Word transferTypeWords[] = {{"dual", 2}, {"single", 1}};
inline constexpr Vocabulary transferTypes{transferTypeWords, Match::exact, 0};
static_assert(everyWordIsReachable(transferTypes));

/// The sections by the names that people give them: those of their elements. A wireless section has
/// the name that is read.
inline constexpr Word sectionWords[] = {
    {"physical_address", sectionPhysicalAddress},
    {"ethernet", sectionEthernet},
    {"wireless", sectionWireless},
    {"ocp_language", sectionOcpLanguage},
    {"error_control", sectionErrorControl},
    {"usage_counters", sectionUsageCounters},
    {"standby_timeout", sectionStandbyTimeout},
    {"imaging_parameters", sectionImagingParameters},
    {"ribbon_motor_parameters", sectionRibbonMotorParameters},
    {"ribbon_sensor_offset", sectionRibbonSensorOffset},
    {"mech_adjustments", sectionMechAdjustments},
    {"media_info", sectionMediaInfo},
    {"lamination", sectionLamination},
    {"cleaning", sectionCleaning},
    {"feeder_mode", sectionFeederMode},
    {"cards", sectionCards},
    {"transfer_settings", sectionTransferSettings},
    {"lcd_contrast", sectionLcdContrast},
    {"internal_encoder", sectionInternalEncoder},
};
inline constexpr Vocabulary sectionNames{sectionWords, Match::exact, 0};
static_assert(everyWordIsReachable(sectionNames));

}  // namespace Kovra::config

#endif
