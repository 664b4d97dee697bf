/// @file
/// The record of samples/config/full.xml, member by member.

#ifndef KOVRA_TESTS_SUPPORT_CONFIGURATION_HPP
#define KOVRA_TESTS_SUPPORT_CONFIGURATION_HPP

#include <arpa/inet.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>

#include "kvxconfigrecords.h"

namespace Kovra::test {

template <std::size_t N>
void setText(char (&out)[N], char const* text) {
  std::strncpy(out, text, N);
}

inline void setBytes(unsigned char (&out)[6], std::initializer_list<unsigned char> bytes) {
  std::copy(bytes.begin(), bytes.end(), out);
}

inline void setInterfaces(_KVConfiguration& record) {
  setBytes(record.physical_address, {0x02, 0x00, 0x5e, 0x10, 0x20, 0x3a});
  record.ethernet.ip_address = inet_addr("192.168.40.21");
  record.ethernet.subnet_mask = inet_addr("255.255.255.0");
  record.ethernet.gateway = inet_addr("192.168.40.1");
  record.ethernet.dhcp = false;
  record.ethernet.snmp = true;
  record.wireless.ip_address = inet_addr("10.20.0.77");
  record.wireless.subnet_mask = inet_addr("255.255.0.0");
  record.wireless.gateway = inet_addr("10.20.0.1");
  record.wireless.dhcp = true;
  record.wireless.snmp = false;
  record.wireless.radio = true;
  record.wireless.security = wirelessSecurityWpa2;
  record.wireless.crypto = wirelessCryptoCcmp;
  setText(record.wireless.ssid, "Badge office, second floor");
  setBytes(record.wireless.bssid, {0x02, 0x00, 0x5e, 0xaa, 0x0b, 0x0c});
  setText(record.wireless.key, "seven red umbrellas");
  record.wireless.channel = 11;
  setText(record.wireless.country, "CH");
  record.usb_timeout.read = {1, 120, 30};
  record.usb_timeout.write = {1, 120, 45};
}

inline void setPrinter(_KVConfiguration& record) {
  record.ocp_language.type = 2;
  setText(record.ocp_language.name, "Deutsch");
  record.usb_speed = usbSpeedFull;
  record.error_control = errorControlMedium;
  record.feeder_mode = feedModeAuto;
  record.num_cards_printed = 10482;
  record.num_lines_printed = 10734210;
  record.standby_timeout = 30;
  record.lcd_contrast = {0, 63, 40};
  setText(record.cleaning.cleaning_deadline_is_soft, "yes");
  record.cleaning.alcohol_card_cleaning = {500, 5000, 3000};
  record.cleaning.pre_warning = {0, 500, 100};
  record.internal_encoder.comms_channel = 2;
  record.internal_encoder.contact_encoding = true;
  record.internal_encoder.contactless_encoder = 1;
  record.internal_encoder.secondContactlessEncoder = 3;
}

inline void setImaging(_KVConfiguration& record) {
  _ImagingParams& imaging = record.imaging_parameters;
  imaging.printhead_resistance = {2000, 4000, 3127};
  imaging.mfg_power_adjustments.yellow = {-100, 100, -12};
  imaging.mfg_power_adjustments.magenta = {-100, 100, -11};
  imaging.mfg_power_adjustments.cyan = {-100, 100, -10};
  imaging.mfg_power_adjustments.k_resin_front = {-100, 100, -9};
  imaging.mfg_power_adjustments.k_resin_back = {-100, 100, -8};
  imaging.mfg_power_adjustments.k_dye = {-100, 100, -7};
  imaging.mfg_power_adjustments.overlay = {-100, 100, -6};
  imaging.mfg_power_adjustments.uv_front = {-100, 100, -5};
  imaging.mfg_power_adjustments.uv_back = {-100, 100, -4};
  imaging.mfg_power_adjustments.inhibit = {-100, 100, -3};
  imaging.mfg_power_adjustments.helper = {-100, 100, -2};
  imaging.mfg_power_adjustments.x_resin = {-100, 100, -1};
  imaging.user_power_adjustments.yellow = {-100, 100, 4};
  imaging.user_power_adjustments.magenta = {-100, 100, 5};
  imaging.user_power_adjustments.cyan = {-100, 100, 6};
  imaging.user_power_adjustments.k_resin_front = {-100, 100, 7};
  imaging.user_power_adjustments.k_resin_back = {-100, 100, 8};
  imaging.user_power_adjustments.k_dye = {-100, 100, 9};
  imaging.user_power_adjustments.overlay = {-100, 100, 10};
  imaging.user_power_adjustments.uv_front = {-100, 100, 11};
  imaging.user_power_adjustments.uv_back = {-100, 100, 12};
  imaging.user_power_adjustments.inhibit = {-100, 100, 13};
  imaging.user_power_adjustments.helper = {-100, 100, 14};
  imaging.user_power_adjustments.x_resin = {-100, 100, 15};
  record.tricolor_settings = {128, 64, 255};
  record.takeup_motor.S0 = {0, 10, 0.25F};
  record.takeup_motor.K0 = {0, 10, 0.75F};
  record.takeup_motor.Kb = {0, 10, 1.25F};
  record.takeup_motor.Ka = {0, 10, 1.75F};
  record.takeup_motor.M0 = {0, 10, 2.25F};
  record.takeup_motor.Mb = {0, 10, 2.75F};
  record.takeup_motor.Ma = {0, 10, 3.25F};
  record.takeup_motor.VtoI = {0, 10, 3.75F};
  record.ribbon_sensor_offset = {0, 255, 131};
  record.bemf_potentiometer = 77;
}

inline void setMechanics(_KVConfiguration& record) {
  record.mech_adjustments.film_print_x_offset = {-250, 250, -40};
  record.mech_adjustments.film_print_y_offset = {-250, 250, -33};
  record.mech_adjustments.film_transfer_start_offset = {-250, 250, -26};
  record.mech_adjustments.card_center_x_offset = {-250, 250, -19};
  record.mech_adjustments.card_mag_x_offset = {-250, 250, -12};
  record.mech_adjustments.card_smart_card_x_offset = {-250, 250, -5};
  record.mech_adjustments.card_smart_card_lf_x_offset = {-250, 250, 2};
  record.mech_adjustments.card_smart_card_hf_x_offset = {-250, 250, 9};
  record.mech_adjustments.card_smart_card_uhf_x_offset = {-250, 250, 16};
  record.mech_adjustments.card_center_y_offset = {-250, 250, 23};
  record.mech_adjustments.flipper_sensor_offset = {-250, 250, 30};
  record.mech_adjustments.card_transfer_start_y_offset = {-250, 250, 37};
  record.mech_adjustments.card_transfer_end_y_offset = {-250, 250, 44};
  record.mech_adjustments.card_transfer_roll_y_offset = {-250, 250, 51};
  record.mech_adjustments.film_end_roll_transfer_offset = {-250, 250, 58};
  record.mech_adjustments.film_extra_transfer_takeup_move = {-250, 250, 65};
}

inline void setMedia(_KVConfiguration& record) {
  record.ribbon.type = 1;
  setText(record.ribbon.description, "YMCKO");
  setText(record.ribbon.oem_country, "EU");
  record.ribbon.initial_size = 500;
  record.ribbon.panels_remaining = 312;
  record.film.type = 4;
  setText(record.film.description, "Clear transfer film");
  setText(record.film.oem_country, "EU");
  record.film.initial_size = 1500;
  record.film.panels_remaining = 988;
}

inline void setLamination(_KVConfiguration& record) {
  _laminate_common& common = record.lamination.laminate_common;
  common.patch_length_adj = {-10, 10, 2};
  common.coarse_x_offset = {-99, 99, -14};
  common.speed_adjust = {-5, 5, 1};
  common.passthru_speed_adj = {-5, 5, -2};
  record.lamination.topLaminateInstalled = true;
  record.lamination.bottomLaminateInstalled = true;
  record.lamination.top_laminate.laminate_installed.type = 3;
  setText(record.lamination.top_laminate.laminate_installed.description, "Hologram patch");
  record.lamination.top_laminate.laminate_installed.thickness = 25;
  record.lamination.top_laminate.laminate_installed.width = 0;
  record.lamination.top_laminate.laminate_installed.registration = 1;
  setText(record.lamination.top_laminate.laminate_installed.oem_country, "EU");
  record.lamination.top_laminate.laminate_installed.initial_size = 600;
  record.lamination.top_laminate.laminate_installed.panels_remaining = 411;
  record.lamination.top_laminate.laminate_control.x_adj_fine_offset = {-30, 30, 5};
  record.lamination.top_laminate.laminate_control.temp_adjust = {-15, 15, 6};
  record.lamination.bottom_laminate.laminate_installed.type = 2;
  setText(record.lamination.bottom_laminate.laminate_installed.description,
          "Clear, magnetic stripe free");
  record.lamination.bottom_laminate.laminate_installed.thickness = 15;
  record.lamination.bottom_laminate.laminate_installed.width = 1;
  record.lamination.bottom_laminate.laminate_installed.registration = 2;
  setText(record.lamination.bottom_laminate.laminate_installed.oem_country, "US");
  record.lamination.bottom_laminate.laminate_installed.initial_size = 600;
  record.lamination.bottom_laminate.laminate_installed.panels_remaining = 402;
  record.lamination.bottom_laminate.laminate_control.x_adj_fine_offset = {-30, 30, -6};
  record.lamination.bottom_laminate.laminate_control.temp_adjust = {-15, 15, -5};
}

inline void setCards(_KVConfiguration& record) {
  record.cards[0].type = 0;
  setText(record.cards[0].halvex_part_number, "HX-30-PVC");
  setText(record.cards[0].description, "Custom 1");
  record.cards[0].thickness = 0.76F;
  record.cards[0].coercivity = 2;
  record.cards[0].cardFeatures = 0x05;
  record.cards[0].transfer_temps.top_single = {100, 200, 175};
  record.cards[0].transfer_temps.bot_single = {100, 200, 176};
  record.cards[0].transfer_temps.top_double = {100, 200, 177};
  record.cards[0].transfer_temps.bot_double = {100, 200, 178};
  record.cards[0].transfer_speeds.input_single = {0.5F, 5, 1.75F};
  record.cards[0].transfer_speeds.output_single = {0.5F, 5, 2.0F};
  record.cards[0].transfer_speeds.input_double = {0.5F, 5, 2.25F};
  record.cards[0].transfer_speeds.output_double = {0.5F, 5, 2.5F};
  record.cards[0].cal_table = 2;
  record.cards[0].laminator_adjustments.top_temp_adjust = {-20, 20, -1};
  record.cards[0].laminator_adjustments.bot_temp_adjust = {-20, 20, -3};
  record.cards[0].laminator_adjustments.speed_adjust = {-1, 1, 0.5F};
  record.cards[1].type = 1;
  setText(record.cards[1].halvex_part_number, "HX-40-COMP");
  setText(record.cards[1].description, "Visitor badge");
  record.cards[1].thickness = 0.82F;
  record.cards[1].coercivity = 1;
  record.cards[1].cardFeatures = 0x02;
  record.cards[1].transfer_temps.top_single = {100, 200, 160};
  record.cards[1].transfer_temps.bot_single = {100, 200, 161};
  record.cards[1].transfer_temps.top_double = {100, 200, 162};
  record.cards[1].transfer_temps.bot_double = {100, 200, 163};
  record.cards[1].transfer_speeds.input_single = {0.5F, 5, 1.875F};
  record.cards[1].transfer_speeds.output_single = {0.5F, 5, 2.125F};
  record.cards[1].transfer_speeds.input_double = {0.5F, 5, 2.375F};
  record.cards[1].transfer_speeds.output_double = {0.5F, 5, 2.625F};
  record.cards[1].cal_table = 3;
  record.cards[1].laminator_adjustments.top_temp_adjust = {-20, 20, 0};
  record.cards[1].laminator_adjustments.bot_temp_adjust = {-20, 20, -2};
  record.cards[1].laminator_adjustments.speed_adjust = {-1, 1, 0.75F};
}

inline void setTransfer(_KVConfiguration& record) {
  record.transfer_settings.transfer_type = 2;
  record.transfer_settings.transfer_temps.top_single = {-50, 200, 100};
  record.transfer_settings.transfer_temps.bot_single = {-50, 200, 101};
  record.transfer_settings.transfer_temps.top_double = {-50, 200, 102};
  record.transfer_settings.transfer_temps.bot_double = {-50, 200, 103};
  record.transfer_settings.transfer_temps.top_single_offset = {-50, 200, 104};
  record.transfer_settings.transfer_temps.bot_single_offset = {-50, 200, 105};
  record.transfer_settings.transfer_temps.top_double_offset = {-50, 200, 106};
  record.transfer_settings.transfer_temps.bot_double_offset = {-50, 200, 107};
  record.transfer_settings.transfer_temps.top_temp_cal = {-50, 200, 108};
  record.transfer_settings.transfer_temps.bot_temp_cal = {-50, 200, 109};
  record.transfer_settings.transfer_temps.top_temp_tilt = {-50, 200, 110};
  record.transfer_settings.transfer_temps.bot_temp_tilt = {-50, 200, 111};
  record.transfer_settings.transfer_speeds.input_single = {0.5F, 5, 2.125F};
  record.transfer_settings.transfer_speeds.output_single = {0.5F, 5, 2.375F};
  record.transfer_settings.transfer_speeds.input_double = {0.5F, 5, 2.625F};
  record.transfer_settings.transfer_speeds.output_double = {0.5F, 5, 2.875F};
}

/// All that the reply says; the rest is zero, padding included.
inline void setFullConfiguration(_KVConfiguration& record) {
  std::memset(static_cast<void*>(&record), 0, sizeof record);
  setInterfaces(record);
  setPrinter(record);
  setImaging(record);
  setMechanics(record);
  setMedia(record);
  setLamination(record);
  setCards(record);
  setTransfer(record);
}

}  // namespace Kovra::test

#endif
