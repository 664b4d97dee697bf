#include <gtest/gtest.h>

#include "kvxconfigrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(ConfigLayout, WiredInterface) {
  test::expectPlain<_NetworkParams>(32);
  EXPECT_MEMBER(_NetworkParams, ip_address, unsigned long, 0);
  EXPECT_MEMBER(_NetworkParams, subnet_mask, unsigned long, 8);
  EXPECT_MEMBER(_NetworkParams, gateway, unsigned long, 16);
  EXPECT_MEMBER(_NetworkParams, dhcp, bool, 24);
  EXPECT_MEMBER(_NetworkParams, snmp, bool, 25);
}

TEST(ConfigLayout, WirelessInterfaceHasItsFlagsFirst) {
  test::expectPlain<_WirelessParams>(224);
  EXPECT_MEMBER(_WirelessParams, snmp, bool, 0);
  EXPECT_MEMBER(_WirelessParams, dhcp, bool, 1);
  EXPECT_MEMBER(_WirelessParams, ip_address, unsigned long, 8);
  EXPECT_MEMBER(_WirelessParams, subnet_mask, unsigned long, 16);
  EXPECT_MEMBER(_WirelessParams, gateway, unsigned long, 24);
  EXPECT_MEMBER(_WirelessParams, radio, bool, 32);
  EXPECT_MEMBER(_WirelessParams, security, WirelessSecurity, 36);
  EXPECT_MEMBER(_WirelessParams, crypto, WirelessCrypto, 40);
  EXPECT_MEMBER(_WirelessParams, ssid, char[34], 44);
  EXPECT_MEMBER(_WirelessParams, bssid, unsigned char[6], 78);
  EXPECT_MEMBER(_WirelessParams, key, char[128], 84);
  EXPECT_MEMBER(_WirelessParams, channel, int, 212);
  EXPECT_MEMBER(_WirelessParams, country, char[8], 216);
}

TEST(ConfigLayout, UsbTimeouts) {
  test::expectPlain<_USBTimeout>(24);
  EXPECT_MEMBER(_USBTimeout, read, _MinMaxVal, 0);
  EXPECT_MEMBER(_USBTimeout, write, _MinMaxVal, 12);
}

TEST(ConfigLayout, PanelLanguage) {
  test::expectPlain<_OCPLanguageCaps>(68);
  EXPECT_MEMBER(_OCPLanguageCaps, type, int, 0);
  EXPECT_MEMBER(_OCPLanguageCaps, name, char[64], 4);
}

TEST(ConfigLayout, PowerAdjustments) {
  test::expectPlain<_PowerAdjustments>(144);
  EXPECT_MEMBER(_PowerAdjustments, yellow, _MinMaxVal, 0);
  EXPECT_MEMBER(_PowerAdjustments, magenta, _MinMaxVal, 12);
  EXPECT_MEMBER(_PowerAdjustments, cyan, _MinMaxVal, 24);
  EXPECT_MEMBER(_PowerAdjustments, k_resin_front, _MinMaxVal, 36);
  EXPECT_MEMBER(_PowerAdjustments, k_resin_back, _MinMaxVal, 48);
  EXPECT_MEMBER(_PowerAdjustments, k_dye, _MinMaxVal, 60);
  EXPECT_MEMBER(_PowerAdjustments, overlay, _MinMaxVal, 72);
  EXPECT_MEMBER(_PowerAdjustments, uv_front, _MinMaxVal, 84);
  EXPECT_MEMBER(_PowerAdjustments, uv_back, _MinMaxVal, 96);
  EXPECT_MEMBER(_PowerAdjustments, inhibit, _MinMaxVal, 108);
  EXPECT_MEMBER(_PowerAdjustments, helper, _MinMaxVal, 120);
  EXPECT_MEMBER(_PowerAdjustments, x_resin, _MinMaxVal, 132);
}

TEST(ConfigLayout, ImagingParameters) {
  test::expectPlain<_ImagingParams>(300);
  EXPECT_MEMBER(_ImagingParams, printhead_resistance, _MinMaxVal, 0);
  EXPECT_MEMBER(_ImagingParams, mfg_power_adjustments, _PowerAdjustments, 12);
  EXPECT_MEMBER(_ImagingParams, user_power_adjustments, _PowerAdjustments, 156);
}

TEST(ConfigLayout, Tricolor) {
  test::expectPlain<_RGBINT>(12);
  EXPECT_MEMBER(_RGBINT, red, int, 0);
  EXPECT_MEMBER(_RGBINT, green, int, 4);
  EXPECT_MEMBER(_RGBINT, blue, int, 8);
}

TEST(ConfigLayout, TakeupMotor) {
  test::expectPlain<_RibbonMotorParams>(96);
  EXPECT_MEMBER(_RibbonMotorParams, S0, _MinMaxValFloat, 0);
  EXPECT_MEMBER(_RibbonMotorParams, K0, _MinMaxValFloat, 12);
  EXPECT_MEMBER(_RibbonMotorParams, Kb, _MinMaxValFloat, 24);
  EXPECT_MEMBER(_RibbonMotorParams, Ka, _MinMaxValFloat, 36);
  EXPECT_MEMBER(_RibbonMotorParams, M0, _MinMaxValFloat, 48);
  EXPECT_MEMBER(_RibbonMotorParams, Mb, _MinMaxValFloat, 60);
  EXPECT_MEMBER(_RibbonMotorParams, Ma, _MinMaxValFloat, 72);
  EXPECT_MEMBER(_RibbonMotorParams, VtoI, _MinMaxValFloat, 84);
}

TEST(ConfigLayout, MechanicalAdjustments) {
  test::expectPlain<_MechanicalAdjustments>(192);
  EXPECT_MEMBER(_MechanicalAdjustments, film_print_x_offset, _MinMaxVal, 0);
  EXPECT_MEMBER(_MechanicalAdjustments, film_print_y_offset, _MinMaxVal, 12);
  EXPECT_MEMBER(_MechanicalAdjustments, film_transfer_start_offset, _MinMaxVal, 24);
  EXPECT_MEMBER(_MechanicalAdjustments, card_center_x_offset, _MinMaxVal, 36);
  EXPECT_MEMBER(_MechanicalAdjustments, card_mag_x_offset, _MinMaxVal, 48);
  EXPECT_MEMBER(_MechanicalAdjustments, card_smart_card_x_offset, _MinMaxVal, 60);
  EXPECT_MEMBER(_MechanicalAdjustments, card_smart_card_lf_x_offset, _MinMaxVal, 72);
  EXPECT_MEMBER(_MechanicalAdjustments, card_smart_card_hf_x_offset, _MinMaxVal, 84);
  EXPECT_MEMBER(_MechanicalAdjustments, card_smart_card_uhf_x_offset, _MinMaxVal, 96);
  EXPECT_MEMBER(_MechanicalAdjustments, card_center_y_offset, _MinMaxVal, 108);
  EXPECT_MEMBER(_MechanicalAdjustments, flipper_sensor_offset, _MinMaxVal, 120);
  EXPECT_MEMBER(_MechanicalAdjustments, card_transfer_start_y_offset, _MinMaxVal, 132);
  EXPECT_MEMBER(_MechanicalAdjustments, card_transfer_end_y_offset, _MinMaxVal, 144);
  EXPECT_MEMBER(_MechanicalAdjustments, card_transfer_roll_y_offset, _MinMaxVal, 156);
  EXPECT_MEMBER(_MechanicalAdjustments, film_end_roll_transfer_offset, _MinMaxVal, 168);
  EXPECT_MEMBER(_MechanicalAdjustments, film_extra_transfer_takeup_move, _MinMaxVal, 180);
}

TEST(ConfigLayout, RibbonAndFilm) {
  test::expectPlain<_RibbonInfo>(88);
  EXPECT_MEMBER(_RibbonInfo, type, int, 0);
  EXPECT_MEMBER(_RibbonInfo, description, char[64], 4);
  EXPECT_MEMBER(_RibbonInfo, ribbonNameCode, int, 68);
  EXPECT_MEMBER(_RibbonInfo, oem_country, char[8], 72);
  EXPECT_MEMBER(_RibbonInfo, initial_size, int, 80);
  EXPECT_MEMBER(_RibbonInfo, panels_remaining, int, 84);
}

TEST(ConfigLayout, LaminateCommon) {
  test::expectPlain<_laminate_common>(48);
  EXPECT_MEMBER(_laminate_common, patch_length_adj, _MinMaxVal, 0);
  EXPECT_MEMBER(_laminate_common, coarse_x_offset, _MinMaxVal, 12);
  EXPECT_MEMBER(_laminate_common, speed_adjust, _MinMaxVal, 24);
  EXPECT_MEMBER(_laminate_common, passthru_speed_adj, _MinMaxVal, 36);
}

TEST(ConfigLayout, LaminateInstalled) {
  test::expectPlain<_LaminateInstalled>(96);
  EXPECT_MEMBER(_LaminateInstalled, type, int, 0);
  EXPECT_MEMBER(_LaminateInstalled, description, char[64], 4);
  EXPECT_MEMBER(_LaminateInstalled, thickness, int, 68);
  EXPECT_MEMBER(_LaminateInstalled, width, int, 72);
  EXPECT_MEMBER(_LaminateInstalled, registration, int, 76);
  EXPECT_MEMBER(_LaminateInstalled, oem_country, char[8], 80);
  EXPECT_MEMBER(_LaminateInstalled, initial_size, unsigned int, 88);
  EXPECT_MEMBER(_LaminateInstalled, panels_remaining, unsigned int, 92);
}

TEST(ConfigLayout, LaminateControl) {
  test::expectPlain<_laminateControl>(24);
  EXPECT_MEMBER(_laminateControl, x_adj_fine_offset, _MinMaxVal, 0);
  EXPECT_MEMBER(_laminateControl, temp_adjust, _MinMaxVal, 12);
}

TEST(ConfigLayout, Laminate) {
  test::expectPlain<_Laminate>(120);
  EXPECT_MEMBER(_Laminate, laminate_installed, _LaminateInstalled, 0);
  EXPECT_MEMBER(_Laminate, laminate_control, _laminateControl, 96);
}

TEST(ConfigLayout, Lamination) {
  test::expectPlain<_LaminationIfo>(296);
  EXPECT_MEMBER(_LaminationIfo, laminate_common, _laminate_common, 0);
  EXPECT_MEMBER(_LaminationIfo, top_laminate, _Laminate, 48);
  EXPECT_MEMBER(_LaminationIfo, topLaminateInstalled, bool, 168);
  EXPECT_MEMBER(_LaminationIfo, bottom_laminate, _Laminate, 172);
  EXPECT_MEMBER(_LaminationIfo, bottomLaminateInstalled, bool, 292);
}

TEST(ConfigLayout, CardTemperatures) {
  test::expectPlain<_TransferTempInfo>(48);
  EXPECT_MEMBER(_TransferTempInfo, top_single, _MinMaxVal, 0);
  EXPECT_MEMBER(_TransferTempInfo, bot_single, _MinMaxVal, 12);
  EXPECT_MEMBER(_TransferTempInfo, top_double, _MinMaxVal, 24);
  EXPECT_MEMBER(_TransferTempInfo, bot_double, _MinMaxVal, 36);
}

TEST(ConfigLayout, TransferSpeeds) {
  test::expectPlain<_TransferSpeedInfo>(48);
  EXPECT_MEMBER(_TransferSpeedInfo, input_single, _MinMaxValFloat, 0);
  EXPECT_MEMBER(_TransferSpeedInfo, output_single, _MinMaxValFloat, 12);
  EXPECT_MEMBER(_TransferSpeedInfo, input_double, _MinMaxValFloat, 24);
  EXPECT_MEMBER(_TransferSpeedInfo, output_double, _MinMaxValFloat, 36);
}

TEST(ConfigLayout, LaminatorAdjustments) {
  test::expectPlain<_LaminationAdjustmentsNew>(36);
  EXPECT_MEMBER(_LaminationAdjustmentsNew, top_temp_adjust, _MinMaxVal, 0);
  EXPECT_MEMBER(_LaminationAdjustmentsNew, bot_temp_adjust, _MinMaxVal, 12);
  EXPECT_MEMBER(_LaminationAdjustmentsNew, speed_adjust, _MinMaxValFloat, 24);
}

TEST(ConfigLayout, Card) {
  test::expectPlain<_CustomCardInfo>(228);
  EXPECT_MEMBER(_CustomCardInfo, type, int, 0);
  EXPECT_MEMBER(_CustomCardInfo, halvex_part_number, char[16], 4);
  EXPECT_MEMBER(_CustomCardInfo, description, char[64], 20);
  EXPECT_MEMBER(_CustomCardInfo, thickness, float, 84);
  EXPECT_MEMBER(_CustomCardInfo, coercivity, unsigned char, 88);
  EXPECT_MEMBER(_CustomCardInfo, cardFeatures, unsigned char, 89);
  EXPECT_MEMBER(_CustomCardInfo, transfer_temps, _TransferTempInfo, 92);
  EXPECT_MEMBER(_CustomCardInfo, transfer_speeds, _TransferSpeedInfo, 140);
  EXPECT_MEMBER(_CustomCardInfo, cal_table, int, 188);
  EXPECT_MEMBER(_CustomCardInfo, laminator_adjustments, _LaminationAdjustmentsNew, 192);
}

TEST(ConfigLayout, TransferTemperatures) {
  test::expectPlain<_ImageTransferTempInfo>(144);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_single, _MinMaxVal, 0);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_single, _MinMaxVal, 12);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_double, _MinMaxVal, 24);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_double, _MinMaxVal, 36);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_single_offset, _MinMaxVal, 48);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_single_offset, _MinMaxVal, 60);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_double_offset, _MinMaxVal, 72);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_double_offset, _MinMaxVal, 84);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_temp_cal, _MinMaxVal, 96);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_temp_cal, _MinMaxVal, 108);
  EXPECT_MEMBER(_ImageTransferTempInfo, top_temp_tilt, _MinMaxVal, 120);
  EXPECT_MEMBER(_ImageTransferTempInfo, bot_temp_tilt, _MinMaxVal, 132);
}

TEST(ConfigLayout, TransferSettings) {
  test::expectPlain<_ImageTransferInfo>(196);
  EXPECT_MEMBER(_ImageTransferInfo, transfer_type, int, 0);
  EXPECT_MEMBER(_ImageTransferInfo, transfer_temps, _ImageTransferTempInfo, 4);
  EXPECT_MEMBER(_ImageTransferInfo, transfer_speeds, _TransferSpeedInfo, 148);
}

TEST(ConfigLayout, Cleaning) {
  test::expectPlain<_CleaningParams>(36);
  EXPECT_MEMBER(_CleaningParams, cleaning_deadline_is_soft, char[10], 0);
  EXPECT_MEMBER(_CleaningParams, alcohol_card_cleaning, _MinMaxVal, 12);
  EXPECT_MEMBER(_CleaningParams, pre_warning, _MinMaxVal, 24);
}

TEST(ConfigLayout, InternalEncoder) {
  test::expectPlain<_InternalEncoderInfo>(20);
  EXPECT_MEMBER(_InternalEncoderInfo, comms_channel, int, 0);
  EXPECT_MEMBER(_InternalEncoderInfo, contact_encoding, bool, 4);
  EXPECT_MEMBER(_InternalEncoderInfo, contactless_encoder, int, 8);
  EXPECT_MEMBER(_InternalEncoderInfo, secondContactlessEncoder, int, 12);
  EXPECT_MEMBER(_InternalEncoderInfo, contact_station, bool, 16);
}

TEST(ConfigLayout, Configuration) {
  test::expectPlain<_KVConfiguration>(2192);
  EXPECT_MEMBER(_KVConfiguration, physical_address, unsigned char[6], 0);
  EXPECT_MEMBER(_KVConfiguration, ethernet, _NetworkParams, 8);
  EXPECT_MEMBER(_KVConfiguration, wireless, _WirelessParams, 40);
  EXPECT_MEMBER(_KVConfiguration, usb_timeout, _USBTimeout, 264);
  EXPECT_MEMBER(_KVConfiguration, ocp_language, _OCPLanguageCaps, 288);
  EXPECT_MEMBER(_KVConfiguration, usb_speed, USB_Speed, 356);
  EXPECT_MEMBER(_KVConfiguration, error_control, ErrorControl, 360);
  EXPECT_MEMBER(_KVConfiguration, num_cards_printed, int, 364);
  EXPECT_MEMBER(_KVConfiguration, num_lines_printed, int, 368);
  EXPECT_MEMBER(_KVConfiguration, standby_timeout, int, 372);
  EXPECT_MEMBER(_KVConfiguration, imaging_parameters, _ImagingParams, 376);
  EXPECT_MEMBER(_KVConfiguration, tricolor_settings, _RGBINT, 676);
  EXPECT_MEMBER(_KVConfiguration, takeup_motor, _RibbonMotorParams, 688);
  EXPECT_MEMBER(_KVConfiguration, ribbon_sensor_offset, _MinMaxVal, 784);
  EXPECT_MEMBER(_KVConfiguration, bemf_potentiometer, int, 796);
  EXPECT_MEMBER(_KVConfiguration, mech_adjustments, _MechanicalAdjustments, 800);
  EXPECT_MEMBER(_KVConfiguration, ribbon, _RibbonInfo, 992);
  EXPECT_MEMBER(_KVConfiguration, film, _RibbonInfo, 1080);
  EXPECT_MEMBER(_KVConfiguration, lamination, _LaminationIfo, 1168);
  EXPECT_MEMBER(_KVConfiguration, cards, _CustomCardInfo[2], 1464);
  EXPECT_MEMBER(_KVConfiguration, transfer_settings, _ImageTransferInfo, 1920);
  EXPECT_MEMBER(_KVConfiguration, lcd_contrast, _MinMaxVal, 2116);
  EXPECT_MEMBER(_KVConfiguration, cleaning, _CleaningParams, 2128);
  EXPECT_MEMBER(_KVConfiguration, internal_encoder, _InternalEncoderInfo, 2164);
  EXPECT_MEMBER(_KVConfiguration, feeder_mode, _eFeedMode, 2184);
}

template <class Enumeration>
void expectInt() {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Enumeration>, int>));
}

TEST(ConfigLayout, EnumerationsAreIntegers) {
  expectInt<WirelessSecurity>();
  expectInt<WirelessCrypto>();
  expectInt<USB_Speed>();
  expectInt<ErrorControl>();
  expectInt<_eFeedMode>();
}

TEST(ConfigLayout, EnumeratorsHaveTheirCodes) {
  EXPECT_EQ(wirelessSecurityNone, 0);
  EXPECT_EQ(wirelessSecurityWep40, 1);
  EXPECT_EQ(wirelessSecurityWep104, 2);
  EXPECT_EQ(wirelessSecurityWpa, 3);
  EXPECT_EQ(wirelessSecurityWpa2, 4);
  EXPECT_EQ(wirelessSecurityWpaWpa2, 5);
  EXPECT_EQ(wirelessCryptoNone, 0);
  EXPECT_EQ(wirelessCryptoRc4, 1);
  EXPECT_EQ(wirelessCryptoTkip, 2);
  EXPECT_EQ(wirelessCryptoCcmp, 3);
  EXPECT_EQ(usbSpeedHigh, 0);
  EXPECT_EQ(usbSpeedFull, 1);
  EXPECT_EQ(errorControlNone, 0);
  EXPECT_EQ(errorControlMedium, 1);
  EXPECT_EQ(errorControlHigh, 2);
  EXPECT_EQ(feedModeManual, 0);
  EXPECT_EQ(feedModeHopper, 1);
  EXPECT_EQ(feedModeAlreadyInPrinter, 2);
  EXPECT_EQ(feedModeAuto, 3);
}

}  // namespace
}  // namespace Kovra
