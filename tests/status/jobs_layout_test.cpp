// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "kvxstatusrecords.h"

namespace Kovra {
namespace {

TEST(JobsLayout, OfOneJobOfTheList) {
  EXPECT_TRUE(std::is_standard_layout_v<_KVJobInfo>);
  EXPECT_TRUE(std::is_trivially_copyable_v<_KVJobInfo>);
  EXPECT_EQ(offsetof(_KVJobInfo, action_id), 0U);
  EXPECT_EQ(offsetof(_KVJobInfo, uuid), 8U);
  EXPECT_EQ(offsetof(_KVJobInfo, print_state), 48U);
  EXPECT_EQ(sizeof(_KVJobInfo), 56U);
  EXPECT_TRUE((std::is_same_v<decltype(_KVJobInfo::action_id), unsigned long>));
  EXPECT_TRUE((std::is_same_v<decltype(_KVJobInfo::uuid), char[40]>));
  EXPECT_TRUE((std::is_same_v<decltype(_KVJobInfo::print_state), int>));
}

TEST(JobsLayout, OfTheList) {
  EXPECT_TRUE(std::is_standard_layout_v<KVJobList>);
  EXPECT_TRUE(std::is_trivially_copyable_v<KVJobList>);
  EXPECT_EQ(offsetof(KVJobList, count), 0U);
  EXPECT_EQ(offsetof(KVJobList, jobs), 8U);
  EXPECT_EQ(sizeof(KVJobList), 8U + 128U * 56U);
  EXPECT_TRUE((std::is_same_v<decltype(KVJobList::count), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobList::jobs), _KVJobInfo[128]>));
}

TEST(JobsLayout, OfTheStatusOfAJob) {
  EXPECT_TRUE(std::is_standard_layout_v<KVJobStatus>);
  EXPECT_TRUE(std::is_trivially_copyable_v<KVJobStatus>);
  EXPECT_EQ(offsetof(KVJobStatus, action_id), 0U);
  EXPECT_EQ(offsetof(KVJobStatus, uuid), 8U);
  EXPECT_EQ(offsetof(KVJobStatus, ready_for_next_job), 48U);
  EXPECT_EQ(offsetof(KVJobStatus, copies_done), 52U);
  EXPECT_EQ(offsetof(KVJobStatus, copies_total_specified), 56U);
  EXPECT_EQ(offsetof(KVJobStatus, error_code), 60U);
  EXPECT_EQ(offsetof(KVJobStatus, print_state), 64U);
  EXPECT_EQ(offsetof(KVJobStatus, mag_state), 68U);
  EXPECT_EQ(offsetof(KVJobStatus, contact_state), 72U);
  EXPECT_EQ(offsetof(KVJobStatus, contactless_state), 76U);
  EXPECT_EQ(offsetof(KVJobStatus, position_in_transport), 80U);
  EXPECT_EQ(offsetof(KVJobStatus, laminator_state), 84U);
  EXPECT_EQ(sizeof(KVJobStatus), 88U);
}

TEST(JobsLayout, OfTheTypesInTheStatusOfAJob) {
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::action_id), unsigned long>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::uuid), char[40]>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::ready_for_next_job), char>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::copies_done), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::copies_total_specified), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::error_code), unsigned short>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::print_state), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::mag_state), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::contact_state), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::contactless_state), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::position_in_transport), int>));
  EXPECT_TRUE((std::is_same_v<decltype(KVJobStatus::laminator_state), int>));
}

}  // namespace
}  // namespace Kovra
