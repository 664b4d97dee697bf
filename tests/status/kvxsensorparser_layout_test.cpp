#include <gtest/gtest.h>

#include "kvxsensorrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(SensorLayout, OfTheStates) {
  test::expectPlain<_KVPrinterSensorInfo>(108);
  EXPECT_MEMBER(_KVPrinterSensorInfo, ribbon_takeup_encoder, char[8], 0);
  EXPECT_MEMBER(_KVPrinterSensorInfo, ribbon_payout_encoder, char[8], 8);
  EXPECT_MEMBER(_KVPrinterSensorInfo, door_open, char[4], 16);
  EXPECT_MEMBER(_KVPrinterSensorInfo, feeder_door_open, char[4], 20);
  EXPECT_MEMBER(_KVPrinterSensorInfo, flipper_sensor_blocked, char[4], 24);
  EXPECT_MEMBER(_KVPrinterSensorInfo, card_in_flipper, char[4], 28);
  EXPECT_MEMBER(_KVPrinterSensorInfo, out_of_cards, char[4], 32);
  EXPECT_MEMBER(_KVPrinterSensorInfo, option_cam_state, char[8], 36);
  EXPECT_MEMBER(_KVPrinterSensorInfo, option_card_motion, char[4], 44);
  EXPECT_MEMBER(_KVPrinterSensorInfo, option_mag_blocked, char[4], 48);
  EXPECT_MEMBER(_KVPrinterSensorInfo, internal_encoder_present, char[4], 52);
  EXPECT_MEMBER(_KVPrinterSensorInfo, external_encoder_present, char[4], 56);
  EXPECT_MEMBER(_KVPrinterSensorInfo, uhf_encoder_present, char[4], 60);
  EXPECT_MEMBER(_KVPrinterSensorInfo, pusher_plate_blocked, char[4], 64);
  EXPECT_MEMBER(_KVPrinterSensorInfo, feeder_mode, char[8], 68);
  EXPECT_MEMBER(_KVPrinterSensorInfo, option_cam_blocked, char[4], 76);
  EXPECT_MEMBER(_KVPrinterSensorInfo, card_edge_blocked, char[4], 80);
  EXPECT_MEMBER(_KVPrinterSensorInfo, tricolor_state, char[16], 84);
  EXPECT_MEMBER(_KVPrinterSensorInfo, head_cam_blocked, char[4], 100);
  EXPECT_MEMBER(_KVPrinterSensorInfo, printhead_fan, char[4], 104);
}

TEST(SensorLayout, OfTheReadings) {
  test::expectPlain<KVSensorInfo>(88);
  EXPECT_MEMBER(KVSensorInfo, atm_card_present, int, 0);
  EXPECT_MEMBER(KVSensorInfo, input_feeder, int, 4);
  EXPECT_MEMBER(KVSensorInfo, output_hopper, int, 8);
  EXPECT_MEMBER(KVSensorInfo, synchro_card, int, 12);
  EXPECT_MEMBER(KVSensorInfo, synchro_mag, int, 16);
  EXPECT_MEMBER(KVSensorInfo, synchro_contact, int, 20);
  EXPECT_MEMBER(KVSensorInfo, synchro_contactless, int, 24);
  EXPECT_MEMBER(KVSensorInfo, flipper_card_present, int, 28);
  EXPECT_MEMBER(KVSensorInfo, head_open, int, 32);
  EXPECT_MEMBER(KVSensorInfo, input_media_open, int, 36);
  EXPECT_MEMBER(KVSensorInfo, output_media_open, int, 40);
  EXPECT_MEMBER(KVSensorInfo, head_down, int, 44);
  EXPECT_MEMBER(KVSensorInfo, flipper_ready_in, int, 48);
  EXPECT_MEMBER(KVSensorInfo, flipper_ready_out, int, 52);
  EXPECT_MEMBER(KVSensorInfo, encoder, int, 56);
  EXPECT_MEMBER(KVSensorInfo, ribbon_sync_detection, int, 60);
  EXPECT_MEMBER(KVSensorInfo, led_1, int, 64);
  EXPECT_MEMBER(KVSensorInfo, led_2, int, 68);
  EXPECT_MEMBER(KVSensorInfo, led_3, int, 72);
  EXPECT_MEMBER(KVSensorInfo, film_sensor, int, 76);
  EXPECT_MEMBER(KVSensorInfo, supply_motor_pulses, int, 80);
  EXPECT_MEMBER(KVSensorInfo, takeup_encoder_pulses, int, 84);
}

}  // namespace
}  // namespace Kovra
