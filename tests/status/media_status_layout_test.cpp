// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "kvxstatusrecords.h"

namespace Kovra {
namespace {

TEST(MediaStatusLayout, OfOneConsumable) {
  EXPECT_TRUE(std::is_standard_layout_v<_MediaStatusInfo>);
  EXPECT_TRUE(std::is_trivially_copyable_v<_MediaStatusInfo>);
  EXPECT_EQ(offsetof(_MediaStatusInfo, type), 0U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, code), 4U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, description), 8U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, part_number), 40U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, oem_country), 72U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, initial_size), 80U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, remaining), 84U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, diam_payout), 88U);
  EXPECT_EQ(offsetof(_MediaStatusInfo, diam_takeup), 92U);
  EXPECT_EQ(sizeof(_MediaStatusInfo), 96U);
}

TEST(MediaStatusLayout, OfTheTypesInAConsumable) {
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::type), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::code), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::description), char[32]>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::part_number), char[32]>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::oem_country), char[8]>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::initial_size), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::remaining), int>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::diam_payout), float>));
  EXPECT_TRUE((std::is_same_v<decltype(_MediaStatusInfo::diam_takeup), float>));
}

TEST(MediaStatusLayout, OfAllConsumables) {
  EXPECT_TRUE(std::is_standard_layout_v<MediaStatus>);
  EXPECT_TRUE(std::is_trivially_copyable_v<MediaStatus>);
  EXPECT_EQ(offsetof(MediaStatus, ribbon), 0U);
  EXPECT_EQ(offsetof(MediaStatus, reserved), 96U);
  EXPECT_EQ(offsetof(MediaStatus, film), 100U);
  EXPECT_EQ(offsetof(MediaStatus, top_laminate), 196U);
  EXPECT_EQ(offsetof(MediaStatus, bottom_laminate), 292U);
  EXPECT_EQ(sizeof(MediaStatus), 388U);
  EXPECT_EQ(sizeof(MediaStatus::reserved), 4U);
}

}  // namespace
}  // namespace Kovra
