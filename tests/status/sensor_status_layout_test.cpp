// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "kvxstatusrecords.h"

namespace Kovra {
namespace {

TEST(SensorStatusLayout, OfTheStates) {
  EXPECT_EQ(offsetof(_SENSOR, ribbon_takeup_encoder), 0U);
  EXPECT_EQ(offsetof(_SENSOR, door_open), 32U);
  EXPECT_EQ(offsetof(_SENSOR, flipoptions_door_open), 33U);
  EXPECT_EQ(offsetof(_SENSOR, flipper_card_blocked), 34U);
  EXPECT_EQ(offsetof(_SENSOR, flipper_rotation_blocked), 35U);
  EXPECT_EQ(offsetof(_SENSOR, cardout_sensor_set), 36U);
  EXPECT_EQ(offsetof(_SENSOR, option_mag_blocked), 37U);
  EXPECT_EQ(offsetof(_SENSOR, option_cam_blocked), 38U);
  EXPECT_EQ(offsetof(_SENSOR, card_exit_blocked), 39U);
  EXPECT_EQ(offsetof(_SENSOR, card_edge_blocked), 40U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_state), 41U);
  EXPECT_EQ(offsetof(_SENSOR, head_cam_blocked), 73U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_error), 76U);
  EXPECT_EQ(offsetof(_SENSOR, printhead_fan), 80U);
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::ribbon_takeup_encoder), char[32]>));
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::tricolor_state), char[32]>));
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::tricolor_error), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::printhead_fan), char>));
}

TEST(SensorStatusLayout, OfTheValues) {
  EXPECT_EQ(offsetof(_SENSOR, voltage_24), 84U);
  EXPECT_EQ(offsetof(_SENSOR, voltage_raw), 88U);
  EXPECT_EQ(offsetof(_SENSOR, mag_track_1), 92U);
  EXPECT_EQ(offsetof(_SENSOR, mag_track_2), 96U);
  EXPECT_EQ(offsetof(_SENSOR, mag_track_3), 100U);
  EXPECT_EQ(offsetof(_SENSOR, print_head_temp), 104U);
  EXPECT_EQ(offsetof(_SENSOR, mag_head_type), 108U);
  EXPECT_EQ(offsetof(_SENSOR, ribbon_bemf), 112U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_any), 116U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_red), 120U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_green), 124U);
  EXPECT_EQ(offsetof(_SENSOR, tricolor_blue), 128U);
  EXPECT_EQ(offsetof(_SENSOR, platen_temp128), 132U);
  EXPECT_EQ(offsetof(_SENSOR, RLEC), 136U);
  EXPECT_EQ(offsetof(_SENSOR, RSEC), 140U);
  EXPECT_EQ(offsetof(_SENSOR, RLDC), 144U);
  EXPECT_EQ(offsetof(_SENSOR, RSDC), 148U);
  EXPECT_EQ(offsetof(_SENSOR, RGSU), 152U);
  EXPECT_EQ(offsetof(_SENSOR, RGSD), 156U);
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::voltage_24), float>));
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::voltage_raw), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_SENSOR::RGSD), int>));
}

TEST(SensorStatusLayout, OfTheWholeRecord) {
  EXPECT_TRUE(std::is_standard_layout_v<_SENSOR>);
  EXPECT_TRUE(std::is_trivially_copyable_v<_SENSOR>);
  EXPECT_EQ(sizeof(_SENSOR), 160U);
}

}  // namespace
}  // namespace Kovra
