#include <gtest/gtest.h>

#include "kvxstatusrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(CountersLayout, OfTheCardCounters) {
  test::expectPlain<KVCardCount>(24);
  EXPECT_MEMBER(KVCardCount, total_cards_done, unsigned long, 0);
  EXPECT_MEMBER(KVCardCount, laminator_cards_laminated, unsigned long, 8);
  EXPECT_MEMBER(KVCardCount, laminator_cards_processed, unsigned long, 16);
}

TEST(CountersLayout, OfTheUpTimes) {
  test::expectPlain<KVUpTimes>(24);
  EXPECT_MEMBER(KVUpTimes, laminator_total_up_time, unsigned long, 0);
  EXPECT_MEMBER(KVUpTimes, laminator_top_bulb_on_time, unsigned long, 8);
  EXPECT_MEMBER(KVUpTimes, laminator_bottom_bulb_on_time, unsigned long, 16);
}

TEST(CountersLayout, OfTheCleaningStatus) {
  test::expectPlain<KVCleaningStatus>(4);
  EXPECT_MEMBER(KVCleaningStatus, cleaning_status, int, 0);
}

TEST(CountersLayout, OfTheFreeMemory) {
  test::expectPlain<__MEMORY>(4);
  EXPECT_MEMBER(__MEMORY, bytes_free, unsigned int, 0);
}

}  // namespace
}  // namespace Kovra
